#include "TemporaryDatabase.h"

#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/PersistencyPostgres.h>

#include <libpq-fe.h>

#include <atomic>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace {

std::string withDatabase(const std::string& connection, const std::string& database) {
    std::string text = connection;
    const std::string from = "dbname=persistency";
    text.replace(text.find(from), from.size(), "dbname=" + database);
    return text;
}

// The first column of each row that `sql` gives, in order.
std::vector<std::string> run(const std::string& connection, const std::string& sql) {
    PGconn* c = PQconnectdb(connection.c_str());
    if (PQstatus(c) != CONNECTION_OK) {
        const std::string message = PQerrorMessage(c);
        PQfinish(c);
        throw std::runtime_error("test database: " + message);
    }
    PQsetNoticeProcessor(c, [](void*, const char*) {}, nullptr); // "does not exist, skipping" is expected
    PGresult* r = PQexec(c, sql.c_str());
    const bool ok = PQresultStatus(r) == PGRES_COMMAND_OK || PQresultStatus(r) == PGRES_TUPLES_OK;
    const std::string message = PQresultErrorMessage(r);
    std::vector<std::string> column;
    for (int row = 0; ok && PQnfields(r) > 0 && row < PQntuples(r); ++row) column.emplace_back(PQgetvalue(r, row, 0));
    PQclear(r);
    PQfinish(c);
    if (!ok) throw std::runtime_error("test database: " + message);
    return column;
}

} // namespace

TemporaryDatabase::TemporaryDatabase() {
    static std::atomic<int> counter{0};
    name_ = "tarvo_test_" + std::to_string(getpid()) + "_" + std::to_string(counter++);
    const std::string server = PersistencyPostgres::connectionString(Configuration(Configuration::kernelFile));
    run(withDatabase(server, "postgres"), "DROP DATABASE IF EXISTS " + name_);
    run(withDatabase(server, "postgres"), "CREATE DATABASE " + name_);
    connection_ = withDatabase(server, name_);
    std::ifstream schema(TARVO_SCHEMA_FILE);
    std::stringstream text;
    text << schema.rdbuf();
    run(connection_, "SET client_min_messages = warning; " + text.str());
}

TemporaryDatabase::~TemporaryDatabase() {
    try {
        const std::string postgres =
            withDatabase(PersistencyPostgres::connectionString(Configuration(Configuration::kernelFile)), "postgres");
        // Not WITH (FORCE): that fails on a session that the role may not end, as the autovacuum worker's
        // that a busy test database draws. The role's own sessions, such as the connection that the kernel
        // keeps for the whole process, are ended here; a plain drop makes an autovacuum worker stop.
        run(postgres, "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = '" + name_ +
                          "' AND usename = current_user AND pid <> pg_backend_pid()");
        run(postgres, "DROP DATABASE IF EXISTS " + name_);
    } catch (const std::exception& e) {
        // A database left behind is dropped by the next run of the same process id, or by hand.
        std::cerr << "left behind " << name_ << ": " << e.what() << std::endl;
    }
}

void TemporaryDatabase::writeConfiguration(const std::string& file) const {
    const Configuration kernel(Configuration::kernelFile);
    std::ofstream(file) << "[1.1]\nDatabaseHost=" << kernel.setting("DatabaseHost").value_or("127.0.0.1")
                        << "\nDatabasePort=" << kernel.setting("DatabasePort").value_or("5432") << " dbname=" << name_
                        << "\n";
    if (const auto secret = kernel.setting("DatabasePasswordFile"))
        std::ofstream(file, std::ios::app) << "DatabasePasswordFile=" << *secret << "\n";
}

void TemporaryDatabase::execute(const std::string& sql) const { run(connection_, sql); }

std::vector<std::string> TemporaryDatabase::column(const std::string& sql) const { return run(connection_, sql); }
