#include "PostgresClient.h"

#include <tarvo/persistency/PersistencyPostgres.h>

#include <dlfcn.h>

#include <string>

namespace {

// The library of the client's interface version 5, which every PostgreSQL client package since 8.3 provides.
constexpr const char* libraryName = "libpq.so.5";
constexpr const char* where = "PostgresClient::library";

template <typename Function> void find(void* handle, Function& function, const char* name) {
    function = reinterpret_cast<Function>(dlsym(handle, name));
    if (!function) throw ErrorPostgres(where, std::string(name) + " not found in " + libraryName);
}

PostgresClient load() {
    // Lazy: the functions of its dependencies that are not built to bind at once (the Kerberos libraries) are
    // bound when first called, if ever; binding them all at the load cost 2.3 million instructions, 7 % of a
    // `new`. The functions of the client itself are checked below, one by one.
    void* handle = dlopen(libraryName, RTLD_LAZY | RTLD_LOCAL);
    if (!handle) throw ErrorPostgres(where, dlerror());
    PostgresClient client;
    find(handle, client.connectdb, "PQconnectdb");
    find(handle, client.status, "PQstatus");
    find(handle, client.errorMessage, "PQerrorMessage");
    find(handle, client.finish, "PQfinish");
    find(handle, client.exec, "PQexec");
    find(handle, client.sendQueryParams, "PQsendQueryParams");
    find(handle, client.enterPipelineMode, "PQenterPipelineMode");
    find(handle, client.exitPipelineMode, "PQexitPipelineMode");
    find(handle, client.pipelineSync, "PQpipelineSync");
    find(handle, client.flush, "PQflush");
    find(handle, client.getResult, "PQgetResult");
    find(handle, client.resultStatus, "PQresultStatus");
    find(handle, client.resultErrorMessage, "PQresultErrorMessage");
    find(handle, client.resultErrorField, "PQresultErrorField");
    find(handle, client.ntuples, "PQntuples");
    find(handle, client.nfields, "PQnfields");
    find(handle, client.ftype, "PQftype");
    find(handle, client.getisnull, "PQgetisnull");
    find(handle, client.getvalue, "PQgetvalue");
    find(handle, client.getlength, "PQgetlength");
    find(handle, client.clear, "PQclear");
    find(handle, client.escapeStringConn, "PQescapeStringConn");
    return client;
}

} // namespace

const PostgresClient& PostgresClient::library() {
    static const PostgresClient client = load();
    return client;
}
