#ifndef TARVO_PERSISTENCY_PERSISTENCYSQL_H
#define TARVO_PERSISTENCY_PERSISTENCYSQL_H

#include <tarvo/persistency/Persistency.h>
#include <tarvo/persistency/StoreBlock.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// One parameter of a prepared statement: every driver sends its own form of it.
struct SqlParameter {
    enum Kind { integer, real, text, boolean } kind;
    long long i = 0;
    double d = 0;
    std::string s;
    static SqlParameter of(int v) { return {integer, v, 0, {}}; }
    static SqlParameter of(double v) { return {real, 0, v, {}}; }
    static SqlParameter of(const std::string& v) { return {text, 0, 0, v}; }
    static SqlParameter flag(bool v) { return {boolean, v, 0, {}}; }
};

// A statement prepared once and run for every item of a map. A driver may send it on without waiting
// for the reply, or gather the runs of a transaction and send them together as one statement: failures
// then surface at the next point where the driver reads from the database, at the latest when the
// transaction commits. Gathered statements go out before any read: the rows of new nodes first, the others
// in the order in which their statements were first prepared in the transaction.
class SqlStatement {
public:
    virtual ~SqlStatement() = default;
    // Runs the statement; when `missingTag` is not empty, a statement that changes no row fails with the text
    // of PersistencySql::missingRecord. The text is made only then: an update runs this for each of its values.
    virtual void run(const std::vector<SqlParameter>& parameters, const std::string& missingTag = std::string()) = 0;
    // Runs an insert into a table of vectors, then `values` once for each element with the new row's ID and
    // the element, so that the values of one vector get rising IDs in element order.
    virtual void runVector(const std::vector<SqlParameter>& parameters, SqlStatement& values,
                           const std::vector<SqlParameter>& elements) = 0;
};

// The statements in which the two stores' SQL differs.
struct SqlDialect {
    // Each statement with parameters is run once per row: one item, or one element of a vector.
    std::string insertI, insertQ, insertS; // parameters NID, TAG, DESCRIPTION, VALUE [, UNIT, INPUT, OUTPUT]
    std::string insertVector;              // "%s": table; parameters NID, TAG, DESCRIPTION
    std::string insertQuantityVector;      // "%s": table; parameters NID, TAG, DESCRIPTION, UNIT, INPUT, OUTPUT
    std::string insertVectorValue;         // "%s" "%s": table, link column; parameters link, VALUE
    std::string updateScalar;              // the table as "%s" or, named twice, "%1$s"; parameters VALUE, TAG, NID
    std::string updateById;                // the table as "%s" or, named twice, "%1$s"; parameters VALUE, ID
    // The same for rows that the transaction holds locked, which cannot have gone: without the search for rows
    // that changed nothing.
    std::string updateLockedById;
    std::string selectBlock; // "%d" thrice: the block's rows of N; ID, UUID, TAG, DESCRIPTION, TYPE, PARENT, ROOT,
                             // CREATED_AT and UPDATED_AT in seconds, RANGE, and where the store keeps one, the
                             // version of the row, which every write of it changes
    std::string readI, readQ, readS; // "%d" "%d": NID from, NID below; columns NID, TAG, VALUE [, UNIT, INPUT,
                                     // OUTPUT], ID; S's VALUE twice, as the kernel reads it and as the store
                                     // holds it
    std::string selectVectors; // "%s" "%s" "%s" "%s" "%d" "%d": more columns, table, table, link, NID from, NID below;
                               // columns NID, ID, TAG, value ID, VALUE and the more, by ID then value ID, a vector
                               // without values once
    std::string deleteVectorValues;        // "%s" "%s": table, link column; parameter link
    // "%1$s" "%2$s": table, link column; parameters link, VALUE: the rows of a link replace the values that it
    // had. Empty where the old values are deleted first.
    std::string replaceVectorValues;
    std::string lockVector;                // "%s": table; parameter ID; empty where a writer holds the whole store
    std::vector<std::string> removeBlock;  // each with "%d" three times
    std::string getId;
    // "%d" thrice, as selectBlock, in a transaction that writes the block: ID, RANGE and the version of its rows
    // of N, which stay locked to the end of the transaction. Empty where a writer holds the whole store.
    std::string lockBlock;
};

// The storage interface over a relational database: the algorithms that both stores share (items,
// vectors, blocks, safe numbers), on top of a few primitives that each driver supplies.
class PersistencySql : public Persistency {
public:
    // Subnormals become ±4.450147717014403e-308, which every database takes back. NaN and the infinities
    // stay what they are: an undefined result must not read back as a plausible number.
    static double safeNumber(double x);
    // The safe number as text that reads back to the same double; NaN, Infinity and -Infinity as the
    // server writes them.
    static std::string numberText(double x);
    // A parameter as the server takes it in text: numbers as numberText, flags as "t" or "f", text as it is.
    static std::string parameterText(const SqlParameter& p);
    // The failure of an update whose row for `tag` is gone.
    static std::string missingRecord(const std::string& tag) { return "Record " + tag + " not found!"; }

    void push_transaction() override;
    void pop_transaction() override;
    int getId() override;
    void removeObject(int id) override;
    void retrieveObject(int id, std::string& uuid, std::string& tag, std::string& description, std::string& type,
                        int& parent, int& root, double& created, double& updated) override;
    void retrieveChildren(int id, std::vector<std::pair<int, std::string>>& children) override;

    void insert(const IntegerMap& items, int offset) override;
    void read(int id, const IntegerMap& items) override;
    void update(int id, const IntegerMap& items) override;
    void insert(const QuantityMap& items, int offset) override;
    void read(int id, const QuantityMap& items) override;
    void update(int id, const QuantityMap& items) override;
    void insert(const StringMap& items, int offset) override;
    void read(int id, const StringMap& items) override;
    void update(int id, const StringMap& items) override;
    void insert(const IntegerVectorMap& items, int offset) override;
    void read(int id, const IntegerVectorMap& items) override;
    void update(int id, const IntegerVectorMap& items) override;
    void insert(const QuantityVectorMap& items, int offset) override;
    void read(int id, const QuantityVectorMap& items) override;
    void update(int id, const QuantityVectorMap& items) override;
    void insert(const QuantityMatrixMap& items, int offset) override;
    void read(int id, const QuantityMatrixMap& items) override;
    void update(int id, const QuantityMatrixMap& items) override;
    void insert(const StringVectorMap& items, int offset) override;
    void read(int id, const StringVectorMap& items) override;
    void update(int id, const StringVectorMap& items) override;

    // The number of statements sent to the database since construction.
    long statements() const { return statements_; }

    // Hands what this driver read of the store outside any transaction to the next driver of the process on the
    // same store, which the rows of the vectors then spare a read (see updateBlock).
    ~PersistencySql() override;

protected:
    // `store` names the store for the rows handed between drivers; empty, nothing is handed.
    explicit PersistencySql(const SqlDialect& dialect, std::string store = std::string())
        : dialect_(dialect), store_(std::move(store)) {}

    // Primitives of a driver. `context` names the operation for error messages.
    virtual void execute(const std::string& sql, const std::string& context) = 0;
    virtual SqlRows query(const std::string& sql, const std::string& context) = 0;
    // The rows of each statement, in their order. A driver may send them all before it reads the first reply.
    virtual std::vector<SqlRows> queries(const std::vector<std::string>& sql, const std::string& context);
    virtual std::unique_ptr<SqlStatement> prepare(const std::string& sql, const std::string& context) = 0;
    virtual void begin() = 0;
    virtual void commit() = 0;
    // Called inside the transaction before identifiers are allocated, so that a driver can serialise
    // allocations between concurrent kernels.
    virtual void lockAllocation() {}
    // Throws the driver's error class.
    [[noreturn]] virtual void fail(const std::string& context, const std::string& text) = 0;
    // The fields of a row of N from column `tagColumn` on: TAG, DESCRIPTION, TYPE, PARENT, ROOT, and
    // CREATED_AT and UPDATED_AT in seconds.
    static void nodeFields(const SqlRow& row, std::size_t tagColumn, std::string& tag, std::string& description,
                           std::string& type, int& parent, int& root, double& created, double& updated);
    // Drops what was read of the store, for a driver's own writes.
    void forgetBlocks();

    long statements_ = 0;
    int depth_ = 0;
    const SqlDialect& dialect_;

private:
    // The block of node id read for retrieval, loaded when no block holds id; dropped by every write.
    StoreBlock& readBlock(int id);
    // The same block with the rows of all its tables.
    StoreBlock& readTables(int id);
    // The block of node id whose vectors the current transaction updates. It outlives the updates, which
    // leave the rows it lists in place, and is dropped when vectors are written anew or inserted. Its rows of
    // vectors are those that the last driver read, where it read this block and the versions of its rows of N
    // are the same now, in this transaction: every write of a node's items writes its row of N too. The
    // transaction holds those rows of N locked, so that no other writer changes the block before it commits.
    StoreBlock& updateBlock(int id);
    std::unique_ptr<StoreBlock> loadBlock(int id);
    const SqlRows& scalarRows(int id, const char* table, const std::string& sql);
    // With `flags`, the vector's INPUT and OUTPUT follow in every row.
    const SqlRows& vectorRows(StoreBlock& block, int id, const char* table, const char* link, bool flags);
    std::string vectorsSql(const char* table, const char* link, bool flags, int first, int last) const;
    template <typename Map, typename Parameter>
    void insertVectors(const Map& items, int offset, const char* table, const char* link, Parameter parameter);
    template <typename Map, typename Assign>
    void readVectors(int id, const Map& items, const char* table, const char* link, Assign assign);
    template <typename Map, typename Parameter>
    void updateVectors(int id, const Map& items, const char* table, const char* link, Parameter parameter);
    // `stored`: the column of the rows of `table` that holds the value as the store keeps it.
    template <typename Map, typename Parameter>
    void updateScalars(int id, const Map& items, const char* table, std::size_t stored, Parameter parameter);
    template <typename Item> int ownerId(const Item& item, int offset, const char* table);

    const std::string store_;
    std::unique_ptr<StoreBlock> readBlock_, updateBlock_;
    // The rows of I, Q and S by table and node, where the current transaction took them with the rows of vectors
    // (see updateBlock): their items are updated by row ID, and only where their values differ from the rows',
    // which hold each value that the transaction has written since.
    std::map<std::string, std::map<int, SqlRows>> storedScalars_;
    // Whether the update block's rows are those that the last driver read, under the lock of its rows of N.
    bool vouched_ = false;
    bool readBlockCommitted_ = false; // the read block was read outside any transaction
};

// sprintf into a std::string.
std::string sqlFormat(const char* format, ...) __attribute__((format(printf, 1, 2)));

#endif
