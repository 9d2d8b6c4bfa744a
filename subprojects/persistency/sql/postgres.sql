-- The store of the kernel on PostgreSQL. The kernel never creates tables: the set-up script runs this
-- once per database. Every statement is idempotent, so running it again changes nothing.
-- Identifiers of N are computed by the object tree; those of the value tables come from sequences
-- named <TABLE>_ID_SEQ, which the driver reads back with CURRVAL.

-- NODES
CREATE TABLE IF NOT EXISTS N (
        ID                      integer PRIMARY KEY,
        TAG                     character (50),
        DESCRIPTION             character (255),
        TYPE                    character (50),
        FULLTAG                 character (255),
        UUID                    character (36),
        CREATED_AT              timestamp,
        UPDATED_AT              timestamp,
        LOCKED_BY               character (50),
        LOCKED_UNTIL            timestamp,
        PARENT                  integer REFERENCES N (ID),
        ROOT                    integer REFERENCES N (ID),
        RANGE                   integer
);
-- INTEGERS
CREATE SEQUENCE IF NOT EXISTS I_ID_SEQ;
CREATE TABLE IF NOT EXISTS I (
        ID                      integer PRIMARY KEY DEFAULT nextval('I_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   integer
);
-- INTEGERVECTORS
CREATE SEQUENCE IF NOT EXISTS IV_ID_SEQ;
CREATE TABLE IF NOT EXISTS IV (
        ID                      integer PRIMARY KEY DEFAULT nextval('IV_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255)
);
-- INTEGERVECTORVALUES
CREATE SEQUENCE IF NOT EXISTS IVV_ID_SEQ;
CREATE TABLE IF NOT EXISTS IVV (
        ID                      integer PRIMARY KEY DEFAULT nextval('IVV_ID_SEQ'),
        VID                     integer REFERENCES IV (ID),
        VALUE                   integer
);
-- QUANTITIES
CREATE SEQUENCE IF NOT EXISTS Q_ID_SEQ;
CREATE TABLE IF NOT EXISTS Q (
        ID                      integer PRIMARY KEY DEFAULT nextval('Q_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   double precision,
        UNIT                    character (50),
        INPUT                   boolean,
        OUTPUT                  boolean
);
-- QUANTITYVECTORS
CREATE SEQUENCE IF NOT EXISTS QV_ID_SEQ;
CREATE TABLE IF NOT EXISTS QV (
        ID                      integer PRIMARY KEY DEFAULT nextval('QV_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        UNIT                    character (50),
        INPUT                   boolean,
        OUTPUT                  boolean
);
-- QUANTITYVECTORVALUES
CREATE SEQUENCE IF NOT EXISTS QVV_ID_SEQ;
CREATE TABLE IF NOT EXISTS QVV (
        ID                      integer PRIMARY KEY DEFAULT nextval('QVV_ID_SEQ'),
        VID                     integer REFERENCES QV (ID),
        VALUE                   double precision
);
-- QUANTITYMATRICES
CREATE SEQUENCE IF NOT EXISTS QM_ID_SEQ;
CREATE TABLE IF NOT EXISTS QM (
        ID                      integer PRIMARY KEY DEFAULT nextval('QM_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        UNIT                    character (50),
        INPUT                   boolean,
        OUTPUT                  boolean,
        ROWS                    integer
);
-- QUANTITYMATRIXVALUES, arranged by columns
-- for example the matrix
-- | 0 1 |
-- | 2 3 |
-- will be stored as: [ 0 2 1 3 ]
CREATE SEQUENCE IF NOT EXISTS QMV_ID_SEQ;
CREATE TABLE IF NOT EXISTS QMV (
        ID                      integer PRIMARY KEY DEFAULT nextval('QMV_ID_SEQ'),
        MID                     integer REFERENCES QM (ID),
        VALUE                   double precision
);
-- STRINGS
CREATE SEQUENCE IF NOT EXISTS S_ID_SEQ;
CREATE TABLE IF NOT EXISTS S (
        ID                      integer PRIMARY KEY DEFAULT nextval('S_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   character (255)
);
-- STRINGVECTORS
CREATE SEQUENCE IF NOT EXISTS SV_ID_SEQ;
CREATE TABLE IF NOT EXISTS SV (
        ID                      integer PRIMARY KEY DEFAULT nextval('SV_ID_SEQ'),
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255)
);
-- STRINGVECTORSVALUES
CREATE SEQUENCE IF NOT EXISTS SVV_ID_SEQ;
CREATE TABLE IF NOT EXISTS SVV (
        ID                      integer PRIMARY KEY DEFAULT nextval('SVV_ID_SEQ'),
        VID                     integer REFERENCES SV (ID),
        VALUE                   character (255)
);
-- Indexes on the links: reads, updates and block removals select by owner, never the whole table.
CREATE INDEX IF NOT EXISTS N_PARENT_IDX ON N (PARENT);
-- Removing a node checks that no node names it as its root: without this, a scan of every node per node.
CREATE INDEX IF NOT EXISTS N_ROOT_IDX ON N (ROOT);
-- A new tree's block starts past the largest end of a block: one index lookup, not a scan of every node.
CREATE INDEX IF NOT EXISTS N_END_IDX ON N ((ID + RANGE));
CREATE INDEX IF NOT EXISTS I_NID_IDX ON I (NID, TAG);
CREATE INDEX IF NOT EXISTS IV_NID_IDX ON IV (NID);
CREATE INDEX IF NOT EXISTS IVV_VID_IDX ON IVV (VID);
CREATE INDEX IF NOT EXISTS Q_NID_IDX ON Q (NID, TAG);
CREATE INDEX IF NOT EXISTS QV_NID_IDX ON QV (NID);
CREATE INDEX IF NOT EXISTS QVV_VID_IDX ON QVV (VID);
CREATE INDEX IF NOT EXISTS QM_NID_IDX ON QM (NID);
CREATE INDEX IF NOT EXISTS QMV_MID_IDX ON QMV (MID);
CREATE INDEX IF NOT EXISTS S_NID_IDX ON S (NID, TAG);
CREATE INDEX IF NOT EXISTS SV_NID_IDX ON SV (NID);
CREATE INDEX IF NOT EXISTS SVV_VID_IDX ON SVV (VID);
-- The tables whose rows every calculation rewrites keep room in each page, so that a new value lands beside
-- the old one without touching the indexes (the column VALUE is in none), and the journal holds the change
-- alone instead of whole rows and index entries.
ALTER TABLE N SET (fillfactor = 50);
ALTER TABLE Q SET (fillfactor = 50);
ALTER TABLE QVV SET (fillfactor = 50);
ALTER TABLE QMV SET (fillfactor = 50);
