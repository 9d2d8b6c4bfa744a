#ifndef TARVO_PERSISTENCY_PERSISTENCYPOSTGRES_H
#define TARVO_PERSISTENCY_PERSISTENCYPOSTGRES_H

#include <tarvo/persistency/PersistencySql.h>
#include <tarvo/utility/Error.h>

#include <deque>
#include <functional>

struct pg_conn;
struct pg_result;
class Configuration;

class ErrorPostgres : public Error {
public:
    // "Postgres database driver Error: " and the server's message.
    ErrorPostgres(const std::string& function, const std::string& text);
};

// The working store of the kernel: a PostgreSQL database reached through libpq. An object lives for one
// operation. Those made from the kernel's configuration share one connection, opened by the first and kept
// to the end of the process, so that a command pays for one connection however many operations it runs;
// one made from a connection string of its own connects and disconnects with it. Inside a transaction the rows
// written through one statement of the dialect are gathered and sent as one statement whose parameters are
// arrays, before anything else is sent and at the latest at commit; statements are pipelined, sent without
// waiting for each reply, which are read at the next query and at commit. So writing a case costs a few
// statements per table and a few round trips instead of one per item.
class PersistencyPostgres : public PersistencySql {
public:
    // Works on the process's connection to the server named in the kernel's configuration file, made now
    // if there is none yet or the one there was has been lost.
    PersistencyPostgres();
    explicit PersistencyPostgres(const std::string& connection);
    ~PersistencyPostgres() override;
    PersistencyPostgres(const PersistencyPostgres&) = delete;
    PersistencyPostgres& operator=(const PersistencyPostgres&) = delete;

    // "dbname=persistency user=tarvo", the bounded waits, then " host=", " port=" and " passfile=" where
    // the configuration has DatabaseHost, DatabasePort and DatabasePasswordFile. No password is built in.
    static std::string connectionString(const Configuration& configuration);
    // Empties every table of the store in one statement.
    void purgeAll();
    // Sends what the open transaction has gathered, without waiting for the replies, which its commit reads: the
    // server runs the statements while the process goes on with something else.
    void send();

    void purge(const std::string& table, int id) override;
    int countRows(const std::string& table, int id) override;
    void remove(int id, const std::string& table) override;
    int countCID(int id, const std::string& table) override;
    int insertObject(Node& node, int offset) override;
    using PersistencySql::retrieveObject; // by id, through the block
    void retrieveObject(const std::string& uuid, int& id, std::string& tag, std::string& description,
                        std::string& type, int& parent, int& root, double& created, double& updated) override;
    void update(int id) override;
    using PersistencySql::update;
    // A multi-user store supplies its own locks; this one has none.
    int try_lock(int id, std::string& who, int seconds) override;
    int check_lock(int id, std::string& who) override;
    int release_lock(int id, std::string& who) override;

protected:
    void execute(const std::string& sql, const std::string& context) override;
    SqlRows query(const std::string& sql, const std::string& context) override;
    std::vector<SqlRows> queries(const std::vector<std::string>& sql, const std::string& context) override;
    std::unique_ptr<SqlStatement> prepare(const std::string& sql, const std::string& context) override;
    void begin() override;
    void commit() override;
    void lockAllocation() override;
    [[noreturn]] void fail(const std::string& context, const std::string& text) override;

private:
    friend class PostgresStatement;
    // A statement sent and not yet answered, with what to do with its reply: a failure text, or empty.
    struct Pending {
        std::string context;
        std::string sql;
        std::function<std::string(pg_result*)> onResult;
    };
    struct Batch;
    // What the reply to a batch settles, row by row.
    struct BatchFollowUp {
        // Where not empty, the row must change one, or the update fails naming this tag: the statement returns
        // the ordinals of the rows that changed nothing.
        std::vector<std::string> missingTags;
        // Of an insert into a table of vectors, which returns the new IDs: the batch of each row's values and
        // the elements, gathered there once the IDs are known.
        std::vector<std::pair<Batch*, std::vector<SqlParameter>>> vectorValues;
        // Of an insert into N, which returns the update time: the nodes that take it.
        std::vector<Node*> stamped;
    };
    // The rows of one statement gathered in a transaction: each parameter an array of one element per row.
    struct Batch {
        std::string sql, context;
        std::vector<SqlParameter::Kind> kinds;
        std::vector<std::string> arrays; // array literals without their closing brace
        std::size_t rows = 0;
        BatchFollowUp followUp;
    };
    using Sender = std::function<int()>; // sends one statement; libpq's status of the send

    static pg_conn* connect_(const char* connection);
    // Ends what a failure outside the driver left open: the pipeline, the transaction, its statements.
    void abandonTransaction();
    // Sends a statement: at once outside a transaction, into the pipeline inside one.
    void submit(const Sender& send, Pending pending);
    // Reads every pending reply; the first failure among them fails the transaction.
    void synchronize();
    // A result whose status is no success: the message with the server's detail and position.
    std::string failureText(pg_result* result, const std::string& sql) const;
    void leavePipeline();
    // Reads and drops the results up to the pipeline's next synchronisation point.
    void awaitSync();
    // The batch of `sql` in this transaction, made on first use; a batch of rows of N goes before all others,
    // for every other row refers to its node.
    Batch& batch(const std::string& sql, const std::string& context, bool ofNodes = false);
    // Adds a row to the batch: sent with the others before the next statement, or now outside a transaction.
    void gather(Batch& batch, const std::vector<SqlParameter>& parameters, const std::string& missingTag = std::string());
    void append(Batch& batch, const std::vector<SqlParameter>& parameters, const std::string& missingTag);
    // Sends every batch that holds rows, and then those that the replies fill.
    void sendBatches();
    void send(Batch& batch);
    std::string followUp(pg_result* result, const BatchFollowUp& followUp);
    std::string escape(const std::string& text);

    pg_conn* connection_ = nullptr;
    bool shared_ = false;
    std::string lastError_;
    bool allocationLocked_ = false;
    bool pipeline_ = false;
    std::vector<Pending> pending_;
    std::deque<Batch> batches_; // in the order in which they are sent
};

#endif
