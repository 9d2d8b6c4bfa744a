#ifndef TARVO_PERSISTENCY_TESTS_TEMPORARYDATABASE_H
#define TARVO_PERSISTENCY_TESTS_TEMPORARYDATABASE_H

#include <string>
#include <vector>

// A database of its own on the local store, with the kernel's schema, dropped when the object goes:
// tests that run at the same time never see each other's rows.
class TemporaryDatabase {
public:
    TemporaryDatabase();
    ~TemporaryDatabase();
    TemporaryDatabase(const TemporaryDatabase&) = delete;
    TemporaryDatabase& operator=(const TemporaryDatabase&) = delete;

    // The connection string of the new database, for PersistencyPostgres.
    const std::string& connection() const { return connection_; }
    const std::string& name() const { return name_; }
    // Writes a configuration file for the kernel that names this database on the server of the kernel's own.
    void writeConfiguration(const std::string& file) const;
    // Runs SQL as the administrator of this database's server connection (for tests that corrupt rows).
    void execute(const std::string& sql) const;
    // The first column of each row of a query, as text.
    std::vector<std::string> column(const std::string& sql) const;

private:
    std::string name_;
    std::string connection_;
};

#endif
