#ifndef TARVO_PERSISTENCY_PERSISTENCYSQLITE_H
#define TARVO_PERSISTENCY_PERSISTENCYSQLITE_H

#include <tarvo/persistency/PersistencySql.h>
#include <tarvo/utility/Error.h>


struct sqlite3;

class ErrorSqlite : public Error {
public:
    // "Sqlite database driver Error: " and the text.
    ErrorSqlite(const std::string& function, const std::string& text);
    // ... then ", SQLite error code: " with the number and SQLite's text for it.
    ErrorSqlite(const std::string& function, const std::string& text, int code);
    // ... then ", SQLite error message: " with a message of sqlite3_exec, which it releases.
    ErrorSqlite(const std::string& function, const std::string& text, char* message);
};

// A case in a file of its own: the store written by exportDataBase, to be carried away and read
// without a server.
class PersistencySqlite : public PersistencySql {
public:
    // The file must exist; an empty file is a new database.
    explicit PersistencySqlite(const std::string& file);
    ~PersistencySqlite() override;
    PersistencySqlite(const PersistencySqlite&) = delete;
    PersistencySqlite& operator=(const PersistencySqlite&) = delete;

    // Creates the tables of the store, once, in a new file.
    void initialize();

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
    // Locks over the tables Catalog and TC, which a store that wants them supplies.
    int try_lock(int id, std::string& who, int seconds) override;
    int check_lock(int id, std::string& who) override;
    int release_lock(int id, std::string& who) override;

protected:
    void execute(const std::string& sql, const std::string& context) override;
    SqlRows query(const std::string& sql, const std::string& context) override;
    std::unique_ptr<SqlStatement> prepare(const std::string& sql, const std::string& context) override;
    void begin() override;
    void commit() override;
    [[noreturn]] void fail(const std::string& context, const std::string& text) override;

private:
    friend class SqliteStatement;
    // The names holding a lock on the objects related to `id`.
    std::vector<std::string> holders(const std::string& sql);

    sqlite3* db_ = nullptr;
};

#endif
