#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/Node.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/utility/WholeInteger.h>

#include "PostgresClient.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <memory>

namespace {

const PostgresClient& pq() { return PostgresClient::library(); }

// Each statement that writes rows is run once for a whole batch of them: its parameters are arrays of one
// element per row, typed by the driver. Rows of vectors and values are inserted in the order of the rows, so
// that the IDs that the sequences give rise in that order. An update returns the ordinals of the rows that
// found nothing to change; of rows that change the same row, the last one wins, as if run one by one.
const SqlDialect postgres{
    "INSERT INTO I(NID,TAG,DESCRIPTION,VALUE) SELECT * FROM unnest($1,$2,$3,$4)",
    "INSERT INTO Q(NID,TAG,DESCRIPTION,VALUE,UNIT,INPUT,OUTPUT) SELECT * FROM unnest($1,$2,$3,$4,$5,$6,$7)",
    "INSERT INTO S(NID,TAG,DESCRIPTION,VALUE) SELECT * FROM unnest($1,$2,$3,$4)",
    "INSERT INTO %s(NID,TAG,DESCRIPTION) SELECT nid,tag,description FROM unnest($1,$2,$3) WITH ORDINALITY "
    "AS r(nid,tag,description,n) ORDER BY n RETURNING ID",
    "INSERT INTO %s(NID,TAG,DESCRIPTION,UNIT,INPUT,OUTPUT) SELECT nid,tag,description,unit,input,output "
    "FROM unnest($1,$2,$3,$4,$5,$6) WITH ORDINALITY AS r(nid,tag,description,unit,input,output,n) ORDER BY n "
    "RETURNING ID",
    "INSERT INTO %sV (%s,VALUE) SELECT link,value FROM unnest($1,$2) WITH ORDINALITY AS r(link,value,n) ORDER BY n",
    // Only the values that differ are written: an unchanged row would cost a new row version and its
    // journal all the same. The rows returned are those missing from the table, which the caller inserts;
    // only the rows left unwritten are looked for, as a first calculation writes nearly all. Each is looked
    // up by the index, one at a time: the server cannot tell how few they are, and for a join it read the
    // whole table, which grows with every case in the store.
    "WITH r AS (SELECT * FROM unnest($1,$2,$3) WITH ORDINALITY AS r(value,tag,nid,n)), "
    "changed AS (UPDATE %1$s T SET VALUE=l.value FROM (SELECT DISTINCT ON (nid,tag) * FROM r ORDER BY nid,tag,n DESC) l "
    "WHERE T.NID=l.nid AND T.TAG=l.tag::bpchar AND T.VALUE IS DISTINCT FROM l.value RETURNING l.nid,l.tag), "
    "unwritten AS MATERIALIZED (SELECT r.* FROM r LEFT JOIN changed USING (nid,tag) WHERE changed.nid IS NULL) "
    "SELECT n FROM unwritten u "
    "WHERE (SELECT 1 FROM %1$s T WHERE T.NID=u.nid AND T.TAG=u.tag::bpchar LIMIT 1) IS NULL ORDER BY n",
    "WITH r AS (SELECT * FROM unnest($1,$2) WITH ORDINALITY AS r(value,id,n)), "
    "changed AS (UPDATE %1$s T SET VALUE=l.value FROM (SELECT DISTINCT ON (id) * FROM r ORDER BY id,n DESC) l "
    "WHERE T.ID=l.id AND T.VALUE IS DISTINCT FROM l.value RETURNING l.id), "
    "unwritten AS MATERIALIZED (SELECT r.* FROM r LEFT JOIN changed USING (id) WHERE changed.id IS NULL) "
    "SELECT n FROM unwritten u WHERE (SELECT 1 FROM %1$s T WHERE T.ID=u.id LIMIT 1) IS NULL ORDER BY n",
    // Rows that the transaction holds under the lock of their nodes' rows of N are there: nothing to look for.
    "UPDATE %1$s T SET VALUE=l.value FROM (SELECT DISTINCT ON (id) * FROM unnest($1,$2) WITH ORDINALITY AS "
    "r(value,id,n) ORDER BY id,n DESC) l WHERE T.ID=l.id AND T.VALUE IS DISTINCT FROM l.value",
    // Text is read as stored: `query` strips the blanks that pad a fixed-width column, which costs the server a
    // conversion of every value when done in the statement. A string value also loses its leading blanks, as
    // it always has; no tag, unit or description can begin with one.
    "SELECT ID, UUID, TAG, DESCRIPTION, TYPE, PARENT, ROOT, extract(epoch from CREATED_AT), "
    "extract(epoch from UPDATED_AT), RANGE, xmin FROM N "
    "WHERE ID >= %d AND ID < %d + (SELECT RANGE FROM N WHERE ID = %d) ORDER BY ID",
    "SELECT NID,TAG,VALUE,ID FROM I WHERE NID >= %d AND NID < %d",
    "SELECT NID,TAG,VALUE,UNIT,INPUT,OUTPUT,ID FROM Q WHERE NID >= %d AND NID < %d",
    "SELECT NID,TAG,TRIM(VALUE),VALUE,ID FROM S WHERE NID >= %d AND NID < %d",
    "SELECT V.NID, V.ID, V.TAG, W.ID, W.VALUE%s FROM %s V LEFT JOIN %sV W ON W.%s = V.ID "
    "WHERE V.NID >= %d AND V.NID < %d ORDER BY V.ID, W.ID",
    "DELETE FROM %sV WHERE %s = ANY($1)",
    // One statement sees the table as it was before it, so the old values go and the new ones stay.
    "WITH gone AS (DELETE FROM %1$sV T WHERE T.%2$s IN (SELECT link FROM unnest($1) AS r(link))) "
    "INSERT INTO %1$sV (%2$s,VALUE) SELECT link,value FROM unnest($1,$2) WITH ORDINALITY AS r(link,value,n) ORDER BY n",
    // In one order in every kernel, so that two that rewrite the same vectors cannot wait on each other.
    "SELECT ID FROM %s WHERE ID = ANY($1) ORDER BY ID FOR UPDATE",
    {"delete from ivv using iv where ivv.vid = iv.id and iv.nid >= %d and iv.nid < %d + (select range from n where id = %d)",
     "delete from svv using sv where svv.vid = sv.id and sv.nid >= %d and sv.nid < %d + (select range from n where id = %d)",
     "delete from qvv using qv where qvv.vid = qv.id and qv.nid >= %d and qv.nid < %d + (select range from n where id = %d)",
     "delete from qmv using qm where qmv.mid = qm.id and qm.nid >= %d and qm.nid < %d + (select range from n where id = %d)",
     "delete from i where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from iv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from s where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from sv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from q where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from qv where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from qm where nid >= %d and nid < %d + (select range from n where id = %d)",
     "delete from n where id >= %d and id < %d + (select range from n where id = %d)"},
    "SELECT COALESCE(MAX(id+range),0) from N",
    "SELECT ID, RANGE, xmin FROM N WHERE ID >= %d AND ID < %d + (SELECT RANGE FROM N WHERE ID = %d) ORDER BY ID "
    "FOR UPDATE",
};

// Any number identifies the lock that serialises block allocation between kernels; this one spells "tarv".
constexpr long long allocationLock = 0x74617276;

// Appends an element to an array literal; text in quotes, so that blanks, commas and braces stay in it. Written
// into the literal in runs between the characters to escape: a batch takes every value of a tree this way.
void appendElement(std::string& array, const SqlParameter& p) {
    if (p.kind != SqlParameter::text) {
        array += PersistencySql::parameterText(p);
        return;
    }
    array += '"';
    std::size_t from = 0;
    for (std::size_t at; (at = p.s.find_first_of("\"\\", from)) != std::string::npos; from = at + 1)
        (array.append(p.s, from, at - from) += '\\') += p.s[at];
    array.append(p.s, from, std::string::npos) += '"';
}

// The server's array type of each kind of parameter, from its catalogue pg_type: int4[], float8[], text[], bool[].
Oid arrayType(SqlParameter::Kind kind) {
    switch (kind) {
    case SqlParameter::integer:
        return 1007;
    case SqlParameter::real:
        return 1022;
    case SqlParameter::text:
        return 1009;
    case SqlParameter::boolean:
        break;
    }
    return 1000;
}

// The server's type character(n), whose values come back padded with blanks.
constexpr Oid fixedWidthText = 1042;

int integerOf(const std::optional<std::string>& text) { return text ? std::atoi(text->c_str()) : 0; }

} // namespace

ErrorPostgres::ErrorPostgres(const std::string& function, const std::string& text) : Error(function) {
    addSection("Postgres database driver Error: " + text);
}

// A statement of the dialect whose runs go into the transaction's batch of that statement.
class PostgresStatement : public SqlStatement {
public:
    PostgresStatement(PersistencyPostgres& db, PersistencyPostgres::Batch& batch) : db_(db), batch_(batch) {}
    void run(const std::vector<SqlParameter>& parameters, const std::string& missingTag) override {
        db_.gather(batch_, parameters, missingTag);
    }
    void runVector(const std::vector<SqlParameter>& parameters, SqlStatement& values,
                   const std::vector<SqlParameter>& elements) override {
        batch_.followUp.vectorValues.emplace_back(&static_cast<PostgresStatement&>(values).batch_, elements);
        db_.gather(batch_, parameters);
    }

private:
    PersistencyPostgres& db_;
    PersistencyPostgres::Batch& batch_;
};

namespace {
// The process's connection to the kernel's store, closed when the process ends; a process that never
// reached the store has not loaded the client library, and does not load it to close nothing.
struct SharedConnection {
    pg_conn* connection = nullptr;
    ~SharedConnection() {
        if (connection) pq().finish(connection);
    }
};
SharedConnection shared;
} // namespace

PersistencyPostgres::PersistencyPostgres() : PersistencySql(postgres, "the kernel's store"), shared_(true) {
    if (!shared.connection || pq().status(shared.connection) != CONNECTION_OK) {
        pq().finish(shared.connection);
        shared.connection = nullptr;
        shared.connection = connect_(connectionString(Configuration::kernel()).c_str());
    }
    connection_ = shared.connection;
}

PersistencyPostgres::PersistencyPostgres(const std::string& connection)
    : PersistencySql(postgres, connection), connection_(connect_(connection.c_str())) {}

PersistencyPostgres::~PersistencyPostgres() {
    if (!shared_) {
        pq().finish(connection_);
        return;
    }
    // The connection outlives this operation: nothing of it may stay open for the next one.
    abandonTransaction();
}

void PersistencyPostgres::abandonTransaction() {
    batches_.clear();
    if (pipeline_) leavePipeline();
    if (depth_ == 0) return;
    pq().clear(pq().exec(connection_, "ROLLBACK"));
    depth_ = 0;
    allocationLocked_ = false;
}

namespace {
// A whole number of seconds above 0 from the setting `key`, or `fallback` without one.
std::string seconds(const Configuration& configuration, const std::string& key, int fallback) {
    const auto text = configuration.setting(key);
    const std::optional<int> n = text ? Tarvo::Utility::wholeInteger(*text) : fallback;
    if (!n || *n < 1) throw ErrorPostgres("PersistencyPostgres::connectionString", key + " takes whole seconds above 0");
    return std::to_string(*n);
}

// A value of a connection string that may hold blanks, quotes or backslashes.
std::string quoted(const std::string& value) {
    std::string text = "'";
    for (const char c : value) {
        if (c == '\'' || c == '\\') text += '\\';
        text += c;
    }
    return text + "'";
}
} // namespace

std::string PersistencyPostgres::connectionString(const Configuration& configuration) {
    // Every wait is bounded: a server that accepts and never answers, a kernel stopped while it holds the
    // allocation lock, a statement that does not end. Each then fails with the server's reason.
    std::string text = "dbname=persistency user=tarvo connect_timeout=" +
                       seconds(configuration, "DatabaseConnectTimeout", 10) + " options='-c lock_timeout=" +
                       seconds(configuration, "DatabaseLockTimeout", 10) + "s -c statement_timeout=" +
                       seconds(configuration, "DatabaseStatementTimeout", 60) + "s'";
    if (const auto host = configuration.setting("DatabaseHost")) text += " host=" + *host;
    if (const auto port = configuration.setting("DatabasePort")) text += " port=" + *port;
    // The password stays in a file that only its owner can read; without the setting libpq looks in
    // the user's own password file.
    if (const auto file = configuration.setting("DatabasePasswordFile")) text += " passfile=" + quoted(*file);
    return text;
}

pg_conn* PersistencyPostgres::connect_(const char* connection) {
    pg_conn* made = pq().connectdb(connection);
    if (pq().status(made) != CONNECTION_OK) {
        const std::string text = pq().errorMessage(made);
        pq().finish(made);
        throw ErrorPostgres(__PRETTY_FUNCTION__, text);
    }
    return made;
}

// A pipeline holds at most this many unanswered statements, so that neither side's buffers fill up.
constexpr std::size_t pipelineDepth = 256;

// A failed statement ends the transaction at once, so that the store never holds half of a tree.
void PersistencyPostgres::fail(const std::string& context, const std::string& text) {
    lastError_ = text;
    abandonTransaction();
    throw ErrorPostgres(context, lastError_);
}

void PersistencyPostgres::leavePipeline() {
    // Whatever is still unanswered is read and dropped, for libpq leaves the mode only when idle.
    if (!pending_.empty()) {
        pq().pipelineSync(connection_);
        for (std::size_t i = 0; i < pending_.size(); ++i)
            while (pg_result* r = pq().getResult(connection_)) pq().clear(r);
        pending_.clear();
        awaitSync();
    }
    pq().exitPipelineMode(connection_);
    pipeline_ = false;
}

std::string PersistencyPostgres::failureText(pg_result* result, const std::string& sql) const {
    std::string message = result ? pq().resultErrorMessage(result) : pq().errorMessage(connection_);
    if (!result) return message;
    if (const char* detail = pq().resultErrorField(result, PG_DIAG_MESSAGE_DETAIL)) message += detail;
    if (const char* position = pq().resultErrorField(result, PG_DIAG_STATEMENT_POSITION))
        message += std::string(" at position ") + position + " of query: " + sql;
    return message;
}

void PersistencyPostgres::submit(const Sender& send, Pending pending) {
    ++statements_;
    if (!send()) fail(pending.context, pq().errorMessage(connection_));
    if (!pipeline_) {
        pending_.push_back(std::move(pending));
        synchronize();
        return;
    }
    pending_.push_back(std::move(pending));
    if (pending_.size() >= pipelineDepth) synchronize();
}

void PersistencyPostgres::synchronize() {
    if (pipeline_ && !pending_.empty() && !pq().pipelineSync(connection_))
        fail("PersistencyPostgres::synchronize", pq().errorMessage(connection_));
    std::string context, failure;
    for (Pending& p : pending_) {
        pg_result* result = pq().getResult(connection_);
        while (pg_result* extra = pq().getResult(connection_)) pq().clear(extra);
        const ExecStatusType status = pq().resultStatus(result);
        if (failure.empty()) {
            if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
                context = p.context;
                failure = failureText(result, p.sql);
            } else if (p.onResult) {
                failure = p.onResult(result);
                if (!failure.empty()) context = p.context;
            }
        }
        pq().clear(result);
    }
    pending_.clear();
    if (pipeline_) awaitSync();
    if (!failure.empty()) fail(context, failure);
}

void PersistencyPostgres::awaitSync() {
    while (pg_result* r = pq().getResult(connection_)) {
        const bool sync = pq().resultStatus(r) == PGRES_PIPELINE_SYNC;
        pq().clear(r);
        if (sync) break;
    }
}

void PersistencyPostgres::execute(const std::string& sql, const std::string& context) {
    sendBatches();
    submit([&] { return pq().sendQueryParams(connection_, sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0); },
           {context, sql, {}});
}

namespace {
// The rows of a reply as text, without the blanks that pad fixed-width columns.
SqlRows rowsOf(pg_result* result) {
    SqlRows rows(pq().ntuples(result));
    const int columns = pq().nfields(result);
    std::vector<bool> padded(columns);
    for (int c = 0; c < columns; ++c) padded[c] = pq().ftype(result, c) == fixedWidthText;
    for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
        rows[r].reserve(columns); // a read of a large plant fills some ten thousand rows
        for (int c = 0; c < columns; ++c) {
            if (pq().getisnull(result, r, c)) {
                rows[r].emplace_back();
                continue;
            }
            const char* text = pq().getvalue(result, r, c);
            const char* end = text + pq().getlength(result, r, c);
            if (padded[c])
                while (end > text && end[-1] == ' ') --end;
            rows[r].emplace_back(std::in_place, text, end);
        }
    }
    return rows;
}
} // namespace

SqlRows PersistencyPostgres::query(const std::string& sql, const std::string& context) {
    return std::move(queries({sql}, context).front());
}

// All statements go out before the first reply is read: the server runs each while the rows of the one before
// are taken apart here.
std::vector<SqlRows> PersistencyPostgres::queries(const std::vector<std::string>& sql, const std::string& context) {
    sendBatches();
    const bool enter = !pipeline_ && sql.size() > 1;
    if (enter) {
        if (!pq().enterPipelineMode(connection_)) fail(__PRETTY_FUNCTION__, pq().errorMessage(connection_));
        pipeline_ = true;
    }
    std::vector<SqlRows> rows(sql.size());
    for (std::size_t i = 0; i < sql.size(); ++i) {
        const auto send = [&] {
            return pq().sendQueryParams(connection_, sql[i].c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0);
        };
        submit(send, {context, sql[i], [&rows, i](pg_result* result) {
                          rows[i] = rowsOf(result);
                          return std::string();
                      }});
    }
    if (pipeline_) synchronize(); // the rows are wanted now
    if (enter) leavePipeline();
    return rows;
}

std::unique_ptr<SqlStatement> PersistencyPostgres::prepare(const std::string& sql, const std::string& context) {
    return std::make_unique<PostgresStatement>(*this, batch(sql, "PersistencyPostgres::" + context));
}

PersistencyPostgres::Batch& PersistencyPostgres::batch(const std::string& sql, const std::string& context, bool ofNodes) {
    for (Batch& b : batches_)
        if (b.sql == sql) return b;
    Batch& made = ofNodes ? batches_.emplace_front() : batches_.emplace_back();
    made.sql = sql;
    made.context = context;
    return made;
}

void PersistencyPostgres::gather(Batch& batch, const std::vector<SqlParameter>& parameters, const std::string& missingTag) {
    append(batch, parameters, missingTag);
    if (!pipeline_) sendBatches();
}

void PersistencyPostgres::append(Batch& batch, const std::vector<SqlParameter>& parameters, const std::string& missingTag) {
    if (batch.rows == 0) {
        batch.kinds.clear();
        batch.arrays.clear();
        for (const SqlParameter& p : parameters) {
            batch.kinds.push_back(p.kind);
            appendElement(batch.arrays.emplace_back("{"), p);
        }
    } else {
        for (std::size_t i = 0; i < parameters.size(); ++i) appendElement(batch.arrays[i] += ',', parameters[i]);
    }
    // The tags of the rows are kept from the first row that has one on, the earlier ones empty.
    std::vector<std::string>& tags = batch.followUp.missingTags;
    if (!missingTag.empty() || !tags.empty()) {
        tags.resize(batch.rows);
        tags.push_back(missingTag);
    }
    ++batch.rows;
}

void PersistencyPostgres::sendBatches() {
    for (bool awaitingIds = true; awaitingIds;) {
        awaitingIds = false;
        for (Batch& b : batches_) {
            if (b.rows == 0) continue;
            awaitingIds = awaitingIds || !b.followUp.vectorValues.empty();
            send(b);
        }
        // The values of new vectors are gathered from the reply that gives the vectors' IDs.
        if (awaitingIds) synchronize();
    }
}

void PersistencyPostgres::send(Batch& batch) {
    std::vector<const char*> values;
    std::vector<Oid> types;
    for (std::size_t i = 0; i < batch.arrays.size(); ++i) {
        batch.arrays[i] += '}';
        values.push_back(batch.arrays[i].c_str());
        types.push_back(arrayType(batch.kinds[i]));
    }
    auto followUp = std::make_shared<BatchFollowUp>(std::move(batch.followUp));
    batch.followUp = BatchFollowUp();
    batch.rows = 0;
    submit(
        [&] {
            return pq().sendQueryParams(connection_, batch.sql.c_str(), static_cast<int>(values.size()), types.data(),
                                     values.data(), nullptr, nullptr, 0);
        },
        {batch.context, batch.sql, [this, followUp](pg_result* result) { return this->followUp(result, *followUp); }});
}

std::string PersistencyPostgres::followUp(pg_result* result, const BatchFollowUp& followUp) {
    const int rows = pq().ntuples(result);
    if (!followUp.missingTags.empty()) {
        for (int r = 0; r < rows; ++r) { // the ordinals, ascending, of rows that changed nothing
            const std::string& tag = followUp.missingTags.at(std::atoi(pq().getvalue(result, r, 0)) - 1);
            if (!tag.empty()) return PersistencySql::missingRecord(tag);
        }
    }
    if (!followUp.vectorValues.empty()) {
        std::vector<int> ids;
        for (int r = 0; r < rows; ++r) ids.push_back(std::atoi(pq().getvalue(result, r, 0)));
        std::sort(ids.begin(), ids.end()); // the k-th smallest is the k-th row's, as they were inserted in order
        assert(ids.size() == followUp.vectorValues.size());
        for (std::size_t k = 0; k < ids.size(); ++k)
            for (const SqlParameter& element : followUp.vectorValues[k].second)
                append(*followUp.vectorValues[k].first, {SqlParameter::of(ids[k]), element}, std::string());
    }
    // now() is the start of the transaction, the same in every row.
    if (rows > 0)
        for (Node* node : followUp.stamped) node->setUpdatedAt(std::strtod(pq().getvalue(result, 0, 0), nullptr));
    return std::string();
}

void PersistencyPostgres::begin() {
    if (!pq().enterPipelineMode(connection_)) fail(__PRETTY_FUNCTION__, pq().errorMessage(connection_));
    pipeline_ = true;
    allocationLocked_ = false;
    batches_.clear();
    execute("BEGIN", __PRETTY_FUNCTION__);
}

void PersistencyPostgres::commit() {
    // A reply can fail the transaction without the server's knowing (a row to update that is missing), so
    // every reply is read before COMMIT goes out.
    sendBatches();
    // The next transaction reads its rows anew: those of this one are freed while the server runs its statements,
    // which for the largest plant takes a millisecond of the process's time.
    forgetBlocks();
    if (!pending_.empty()) synchronize();
    execute("COMMIT", __PRETTY_FUNCTION__);
    synchronize();
    leavePipeline();
    allocationLocked_ = false;
}

// Two kernels that insert at once would otherwise read the same first free identifier; the lock lasts
// to the end of the transaction that writes the block.
void PersistencyPostgres::lockAllocation() {
    if (allocationLocked_ || depth_ == 0) return;
    execute(sqlFormat("SELECT pg_advisory_xact_lock(%lld)", allocationLock), __PRETTY_FUNCTION__);
    allocationLocked_ = true;
}

std::string PersistencyPostgres::escape(const std::string& text) {
    std::string escaped(2 * text.size() + 1, '\0');
    int error = 0;
    escaped.resize(pq().escapeStringConn(connection_, escaped.data(), text.c_str(), text.size(), &error));
    return escaped;
}

// The server runs each statement of the pipeline as it arrives, so what the client library still holds goes out too.
void PersistencyPostgres::send() {
    sendBatches();
    if (pipeline_ && pq().flush(connection_) != 0) fail(__PRETTY_FUNCTION__, pq().errorMessage(connection_));
}

void PersistencyPostgres::purgeAll() {
    forgetBlocks();
    execute("truncate table I, IVV, IV, Q, QVV, QV, QMV, QM, S, SVV, SV, N;", __PRETTY_FUNCTION__);
}

void PersistencyPostgres::purge(const std::string& table, int id) {
    forgetBlocks();
    const char* t = table.c_str();
    if (id == -1)
        execute(sqlFormat("DELETE FROM %s", t), __PRETTY_FUNCTION__);
    else if (table == "N")
        execute(sqlFormat("DELETE FROM %s WHERE ID=%d", t, id), __PRETTY_FUNCTION__);
    else
        execute(sqlFormat("DELETE FROM %s WHERE NID=%d", t, id), __PRETTY_FUNCTION__);
}

int PersistencyPostgres::countRows(const std::string& table, int id) {
    const std::string sql = id < 0 ? sqlFormat("SELECT count(*) FROM %s", table.c_str())
                                   : sqlFormat("SELECT count(*) FROM %s WHERE id = %d", table.c_str(), id);
    return integerOf(query(sql, __PRETTY_FUNCTION__)[0][0]);
}

int PersistencyPostgres::countCID(int id, const std::string& table) {
    const std::string sql = id < 0 ? sqlFormat("SELECT COUNT(*) FROM %s", table.c_str())
                                   : sqlFormat("SELECT COUNT(*) FROM %s WHERE NID=%d", table.c_str(), id);
    return integerOf(query(sql, __PRETTY_FUNCTION__)[0][0]);
}

void PersistencyPostgres::remove(int id, const std::string& table) {
    forgetBlocks();
    execute(sqlFormat("DELETE FROM %s WHERE id = %d", table.c_str(), id), __PRETTY_FUNCTION__);
}

int PersistencyPostgres::insertObject(Node& node, int offset) {
    const int id = static_cast<int>(node.id()) - offset;
    Batch& nodes = batch("INSERT INTO N (ID, TAG, DESCRIPTION, TYPE, FULLTAG, UUID, CREATED_AT, UPDATED_AT, PARENT, "
                         "ROOT, RANGE) SELECT id, tag, description, type, fulltag, uuid, to_timestamp(created), now(), "
                         "parent, root, range FROM unnest($1,$2,$3,$4,$5,$6,$7,$8,$9,$10) "
                         "AS r(id, tag, description, type, fulltag, uuid, created, parent, root, range) "
                         "RETURNING extract(epoch from UPDATED_AT)",
                         __PRETTY_FUNCTION__, true);
    nodes.followUp.stamped.push_back(&node);
    gather(nodes, {SqlParameter::of(id), SqlParameter::of(node.tag()), SqlParameter::of(node.description()),
                   SqlParameter::of(node.type()), SqlParameter::of(node.fullTag()), SqlParameter::of(node.uuid()),
                   SqlParameter::of(node.createdAt()), SqlParameter::of(static_cast<int>(node.parentNode()->id()) - offset),
                   SqlParameter::of(static_cast<int>(node.rootId()) - offset),
                   SqlParameter::of(static_cast<int>(node.range()))});
    return id;
}

void PersistencyPostgres::retrieveObject(const std::string& uuid, int& id, std::string& tag, std::string& description,
                                         std::string& type, int& parent, int& root, double& created, double& updated) {
    const SqlRows rows = query(sqlFormat("SELECT ID, TAG, DESCRIPTION, TYPE, PARENT, ROOT, extract(epoch "
                                         "from CREATED_AT), extract(epoch from UPDATED_AT) FROM N WHERE UUID='%s'",
                                         escape(uuid).c_str()),
                               __PRETTY_FUNCTION__);
    if (rows.empty()) fail(__PRETTY_FUNCTION__, "can't find in N");
    id = integerOf(rows.front()[0]);
    nodeFields(rows.front(), 1, tag, description, type, parent, root, created, updated);
}

void PersistencyPostgres::update(int id) {
    push_transaction();
    gather(batch("UPDATE N SET UPDATED_AT=now() WHERE ID = ANY($1)", __PRETTY_FUNCTION__), {SqlParameter::of(id)});
    pop_transaction();
}

int PersistencyPostgres::try_lock(int, std::string&, int) { return 0; }
int PersistencyPostgres::check_lock(int, std::string&) { return 0; }
int PersistencyPostgres::release_lock(int, std::string&) { return 0; }
