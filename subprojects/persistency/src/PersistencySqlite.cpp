#include <tarvo/persistency/Node.h>
#include <tarvo/persistency/PersistencySqlite.h>

#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

const SqlDialect sqlite{
    "INSERT INTO I(NID, TAG, DESCRIPTION, VALUE) values(?, ?, ?, ?)",
    "INSERT INTO Q(NID, TAG, DESCRIPTION, VALUE, UNIT, INPUT, OUTPUT) values(?, ?, ?, ?, ?, ?, ?)",
    "INSERT INTO S(NID, TAG, DESCRIPTION, VALUE) values(?, ?, ?, ?)",
    "INSERT INTO %s(NID, TAG, DESCRIPTION) values(?, ?, ?)",
    "INSERT INTO %s(NID, TAG, DESCRIPTION, UNIT, INPUT, OUTPUT) values(?, ?, ?, ?, ?, ?)",
    "INSERT INTO %sV (%s,VALUE) values(?, ?)",
    "UPDATE %s SET VALUE=? WHERE TAG=? AND NID=?",
    "UPDATE %s SET VALUE=? WHERE ID=?",
    "UPDATE %s SET VALUE=? WHERE ID=?",
    "select ID, UUID, TAG, DESCRIPTION, TYPE, PARENT, ROOT, strftime('%%s', CREATED_AT), strftime('%%s', UPDATED_AT), "
    "RANGE from N where ID >= %d and ID < %d + (select RANGE from N where ID = %d) order by ID",
    "select NID, trim(TAG), VALUE, ID from I where NID >= %d and NID < %d",
    "select NID, trim(TAG), VALUE, TRIM(UNIT), INPUT, OUTPUT, ID from Q where NID >= %d and NID < %d",
    "select NID, trim(TAG), VALUE, VALUE, ID from S where NID >= %d and NID < %d",
    "SELECT V.NID, V.ID, trim(V.TAG), W.ID, W.VALUE%s FROM %s V LEFT JOIN %sV W ON W.%s = V.ID "
    "WHERE V.NID >= %d AND V.NID < %d ORDER BY V.ID, W.ID",
    "DELETE FROM %sV WHERE %s=?",
    "",
    "",
    {"delete from ivv where vid IN (SELECT id FROM iv where nid >= %d and nid < %d + (select range from n where id = %d))",
     "delete from svv where vid IN (SELECT id FROM sv where nid >= %d and nid < %d + (select range from n where id = %d))",
     "delete from qvv where vid IN (SELECT id FROM qv where nid >= %d and nid < %d + (select range from n where id = %d))",
     "delete from qmv where mid IN (SELECT id FROM qm where nid >= %d and nid < %d + (select range from n where id = %d))",
     "delete from i where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from iv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from s where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from sv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from q where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from qv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from qm where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from n where id >= %d and id < %d + (select range from n where id = %d)"},
    "select coalesce(max(ID+range),0) from N",
    "",
};

const char* const schema = R"(-- NODES
CREATE TABLE N (
        ID                      integer PRIMARY KEY,
        TAG                     character (50),
        DESCRIPTION             character (255),
        TYPE                    character (50),
        FULLTAG                 character (255),
        UUID                    character (36),
        CREATED_AT              datetime,
        UPDATED_AT              datetime,
        LOCKED_BY               character (50),
        LOCKED_UNTIL            datetime,
        PARENT                  integer REFERENCES N (ID),
        ROOT                    integer REFERENCES N (ID),
        RANGE                   integer
);
-- INTEGERS
CREATE TABLE I (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   integer
);
-- INTEGERVECTORS
CREATE TABLE IV (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255)
);
-- INTEGERVECTORVALUES
CREATE TABLE IVV (
        ID                      integer PRIMARY KEY,
        VID                     integer REFERENCES IV (ID),
        VALUE                   integer
);
-- QUANTITIES
CREATE TABLE Q (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   double precision,
        UNIT                    character (50),
        INPUT                   boolean,
        OUTPUT                  boolean
);
-- QUANTITYVECTORS
CREATE TABLE QV (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        UNIT                    character (50),
        INPUT                   boolean,
        OUTPUT                  boolean
);
-- QUANTITYVECTORVALUES
CREATE TABLE QVV (
        ID                      integer PRIMARY KEY,
        VID                     integer REFERENCES QV (ID),
        VALUE                   double precision
);
-- QUANTITYMATRICES
CREATE TABLE QM (
        ID                      integer PRIMARY KEY,
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
CREATE TABLE QMV (
        ID                      integer PRIMARY KEY,
        MID                     integer REFERENCES QM (ID),
        VALUE                   double precision
);
-- STRINGS
CREATE TABLE S (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255),
        VALUE                   character (255)
);
-- STRINGVECTORS
CREATE TABLE SV (
        ID                      integer PRIMARY KEY,
        NID                     integer REFERENCES N (ID),
        TAG                     character (50),
        DESCRIPTION             character (255)
);
-- STRINGVECTORSVALUES
CREATE TABLE SVV (
        ID                      integer PRIMARY KEY,
        VID                     integer REFERENCES SV (ID),
        VALUE                   character (255)
);
)";

int integerOf(const std::optional<std::string>& text) { return text ? std::atoi(text->c_str()) : 0; }

// The related objects of `id`: its ancestors and descendants as recorded in TC, and itself.
const char* const related = "ID IN ( SELECT finish FROM TC WHERE (start = %ld) OR (finish = %ld) UNION select %ld )";

bool validHolder(int id, const std::string& who) { return id >= 0 && !who.empty() && who.size() < 50 && who != "NULL"; }

} // namespace

ErrorSqlite::ErrorSqlite(const std::string& function, const std::string& text) : Error(function) {
    addSection("Sqlite database driver Error: " + text);
}

ErrorSqlite::ErrorSqlite(const std::string& function, const std::string& text, int code) : Error(function) {
    addSection("Sqlite database driver Error: " + text + ", SQLite error code: " + std::to_string(code) + " " +
               sqlite3_errstr(code));
}

ErrorSqlite::ErrorSqlite(const std::string& function, const std::string& text, char* message) : Error(function) {
    addSection("Sqlite database driver Error: " + text + ", SQLite error message: " + (message ? message : ""));
    sqlite3_free(message);
}

// A statement prepared once for a map: reset, bind, step for every item.
class SqliteStatement : public SqlStatement {
public:
    SqliteStatement(PersistencySqlite& db, const std::string& sql, std::string table) : db_(db), table_(std::move(table)) {
        ++db_.statements_;
        if (sqlite3_prepare_v2(db_.db_, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            db_.fail("PersistencySqlite::insert", "can't prepare insert statement table " + table_);
    }
    ~SqliteStatement() override { sqlite3_finalize(statement_); }
    void run(const std::vector<SqlParameter>& parameters, const std::string& missingTag) override {
        if (sqlite3_reset(statement_) != SQLITE_OK) db_.fail("PersistencySqlite::insert", "can't reset statement for table " + table_);
        for (int i = 0; i < static_cast<int>(parameters.size()); ++i) {
            const SqlParameter& p = parameters[i];
            int rc;
            switch (p.kind) {
            case SqlParameter::real:
                // SQLite would store NaN as NULL, which reads back as 0; as text it stays NaN.
                rc = std::isnan(p.d) ? sqlite3_bind_text(statement_, i + 1, "NaN", -1, SQLITE_STATIC)
                                     : sqlite3_bind_double(statement_, i + 1, PersistencySql::safeNumber(p.d));
                break;
            case SqlParameter::text:
                rc = sqlite3_bind_text(statement_, i + 1, p.s.c_str(), -1, SQLITE_TRANSIENT);
                break;
            default:
                rc = sqlite3_bind_int(statement_, i + 1, static_cast<int>(p.i));
            }
            if (rc != SQLITE_OK)
                db_.fail("PersistencySqlite::insert", "can't bind parameter " + std::to_string(i + 1) + " for table " + table_);
        }
        ++db_.statements_;
        if (sqlite3_step(statement_) != SQLITE_DONE)
            db_.fail("PersistencySqlite::insert", "can't execute statement for table " + table_);
        if (!missingTag.empty() && sqlite3_changes(db_.db_) == 0)
            db_.fail("PersistencySqlite::update", PersistencySql::missingRecord(missingTag));
    }
    void runVector(const std::vector<SqlParameter>& parameters, SqlStatement& values,
                   const std::vector<SqlParameter>& elements) override {
        run(parameters, std::string());
        const SqlParameter vid = SqlParameter::of(static_cast<int>(sqlite3_last_insert_rowid(db_.db_)));
        for (const SqlParameter& element : elements) values.run({vid, element});
    }

private:
    PersistencySqlite& db_;
    std::string table_;
    sqlite3_stmt* statement_ = nullptr;
};

PersistencySqlite::PersistencySqlite(const std::string& file) : PersistencySql(sqlite) {
    if (FILE* probe = std::fopen(file.c_str(), "r"))
        std::fclose(probe);
    else
        throw ErrorSqlite(__PRETTY_FUNCTION__, "can't open db file " + file);
    const int rc = sqlite3_open(file.c_str(), &db_);
    if (rc != SQLITE_OK) {
        sqlite3_close(db_);
        throw ErrorSqlite(__PRETTY_FUNCTION__, "can't open db file " + file, rc);
    }
    char* message = nullptr;
    if (sqlite3_exec(db_, "PRAGMA synchronous = OFF", nullptr, nullptr, &message) != SQLITE_OK) {
        sqlite3_close(db_);
        throw ErrorSqlite(__PRETTY_FUNCTION__, "can't set PRAGMA synchronous", message);
    }
}

PersistencySqlite::~PersistencySqlite() { sqlite3_close(db_); }

void PersistencySqlite::initialize() { execute(schema, "PersistencySqlite::initialize"); }

void PersistencySqlite::fail(const std::string& context, const std::string& text) {
    if (depth_ > 0) {
        sqlite3_exec(db_, "rollback transaction", nullptr, nullptr, nullptr);
        depth_ = 0;
    }
    throw ErrorSqlite(context, text);
}

void PersistencySqlite::execute(const std::string& sql, const std::string& context) {
    ++statements_;
    char* message = nullptr;
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        const std::string text = message ? message : "";
        sqlite3_free(message);
        fail(context, "error, SQLite error message: " + text);
    }
}

// Rows through a prepared statement rather than sqlite3_exec, whose text of a double keeps only 15 digits.
SqlRows PersistencySqlite::query(const std::string& sql, const std::string& context) {
    ++statements_;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        fail(context, std::string("error, SQLite error message: ") + sqlite3_errmsg(db_));
    SqlRows rows;
    int rc;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
        SqlRow& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            switch (sqlite3_column_type(statement, i)) {
            case SQLITE_NULL:
                row.push_back(std::nullopt);
                break;
            case SQLITE_FLOAT:
                row.push_back(PersistencySql::numberText(sqlite3_column_double(statement, i)));
                break;
            default:
                row.push_back(std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, i))));
            }
        }
    }
    sqlite3_finalize(statement);
    if (rc != SQLITE_DONE) fail(context, std::string("error, SQLite error message: ") + sqlite3_errmsg(db_));
    return rows;
}

std::unique_ptr<SqlStatement> PersistencySqlite::prepare(const std::string& sql, const std::string& context) {
    return std::make_unique<SqliteStatement>(*this, sql, context.substr(context.rfind(' ') + 1));
}

void PersistencySqlite::begin() { execute("begin exclusive transaction", "can't begin transaction"); }

void PersistencySqlite::commit() { execute("commit transaction", "can't commit transaction"); }

void PersistencySqlite::purge(const std::string& table, int id) {
    forgetBlocks();
    std::string sql = "delete from " + table;
    if (id != -1) sql += (table == "N" ? " where ID = " : " where NID = ") + std::to_string(id);
    execute(sql, "can't purge table " + table);
}

int PersistencySqlite::countRows(const std::string& table, int id) {
    std::string sql = "select count(*) from " + table;
    if (id >= 0) sql += " where ID=" + std::to_string(id);
    return integerOf(query(sql, "can't get count for table " + table)[0][0]);
}

int PersistencySqlite::countCID(int id, const std::string& table) {
    std::string sql = "select count(*) from " + table;
    if (id >= 0) sql += " where NID=" + std::to_string(id);
    return integerOf(query(sql, "can't get count for table " + table)[0][0]);
}

void PersistencySqlite::remove(int id, const std::string& table) {
    forgetBlocks();
    execute("delete from " + table + " where ID=" + std::to_string(id), "can't remove from table " + table);
}

int PersistencySqlite::insertObject(Node& node, int offset) {
    const int id = static_cast<int>(node.id()) - offset;
    SqliteStatement statement(*this,
                              "insert into N(ID, UUID, TAG, DESCRIPTION, TYPE, FULLTAG, CREATED_AT, UPDATED_AT, PARENT, "
                              "ROOT, RANGE) values(?, ?, ?, ?, ?, ?, 'now', 'now', ?, ?, ?)",
                              "N");
    statement.run({SqlParameter::of(id), SqlParameter::of(node.uuid()), SqlParameter::of(node.tag()),
                   SqlParameter::of(node.description()), SqlParameter::of(node.type()), SqlParameter::of(node.fullTag()),
                   SqlParameter::of(static_cast<int>(node.parentNode()->id()) - offset),
                   SqlParameter::of(static_cast<int>(node.rootId()) - offset),
                   SqlParameter::of(static_cast<int>(node.range()))},
                  std::string());
    return id;
}

void PersistencySqlite::retrieveObject(const std::string& uuid, int& id, std::string& tag, std::string& description,
                                       std::string& type, int& parent, int& root, double& created, double& updated) {
    const SqlRows rows = query(sqlFormat("select ID, TAG, DESCRIPTION, TYPE, PARENT, ROOT, strftime('%%s', CREATED_AT), "
                                         "strftime('%%s', UPDATED_AT) from N where UUID='%s'",
                                         uuid.c_str()),
                               "can't find in N");
    if (rows.empty()) fail("PersistencySqlite::retrieveObject", "can't find in N");
    id = integerOf(rows.front()[0]);
    nodeFields(rows.front(), 1, tag, description, type, parent, root, created, updated);
}

void PersistencySqlite::update(int id) {
    push_transaction();
    execute(sqlFormat("UPDATE N SET UPDATED_AT='now' WHERE ID=%d", id), "can't update table N");
    pop_transaction();
}

std::vector<std::string> PersistencySqlite::holders(const std::string& sql) {
    std::vector<std::string> names;
    for (const SqlRow& row : query(sql, "PersistencySqlite::lock"))
        if (row[0]) names.push_back(*row[0]);
    return names;
}

int PersistencySqlite::try_lock(int id, std::string& who, int seconds) {
    if (!validHolder(id, who) || seconds < 1 || seconds > 3599) return 0;
    const long i = id;
    push_transaction();
    const auto others = holders(sqlFormat((std::string("SELECT distinct locked_by FROM Catalog WHERE ") + related +
                                           " AND locked_by <> '%s' AND locked_until > CURRENT_TIMESTAMP")
                                              .c_str(),
                                          i, i, i, who.c_str()));
    if (!others.empty()) {
        who = others.front();
        pop_transaction();
        return 0;
    }
    execute(sqlFormat((std::string("UPDATE Catalog SET locked_until = datetime('now', '%d seconds'), locked_by = '%s' "
                                   "WHERE ") +
                       related)
                          .c_str(),
                      seconds, who.c_str(), i, i, i),
            "PersistencySqlite::try_lock");
    pop_transaction();
    return 1;
}

int PersistencySqlite::check_lock(int id, std::string& who) {
    if (!validHolder(id, who)) return 0;
    const long i = id;
    const auto names = holders(sqlFormat(
        (std::string("SELECT distinct locked_by FROM Catalog WHERE ") + related + " AND locked_until > CURRENT_TIMESTAMP")
            .c_str(),
        i, i, i));
    if (names.empty()) return 0;
    if (names.front() == who) return 1;
    who = names.front();
    return 0;
}

int PersistencySqlite::release_lock(int id, std::string& who) {
    if (!validHolder(id, who)) return 0;
    const long i = id;
    push_transaction();
    if (!holders(sqlFormat("SELECT distinct locked_by FROM Catalog WHERE ID IN (SELECT start FROM TC WHERE (finish = %ld) ) "
                           "AND locked_until > CURRENT_TIMESTAMP",
                           i))
             .empty())
        fail("PersistencySqlite::release_lock", "somebody holds a lock on a parent object");
    execute(sqlFormat((std::string("UPDATE Catalog SET locked_until = null, locked_by = null WHERE ") + related +
                       " AND ( locked_by = '%s' OR (locked_by <> '%s' AND locked_until < CURRENT_TIMESTAMP) )")
                          .c_str(),
                      i, i, i, who.c_str(), who.c_str()),
            "PersistencySqlite::release_lock");
    if (sqlite3_changes(db_) == 0) fail("PersistencySqlite::release_lock", "cannot release lock");
    pop_transaction();
    return 1;
}
