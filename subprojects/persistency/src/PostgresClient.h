#ifndef TARVO_PERSISTENCY_POSTGRESCLIENT_H
#define TARVO_PERSISTENCY_POSTGRESCLIENT_H

#include <libpq-fe.h>

// The functions of the PostgreSQL client library that the store calls, found when a process first reaches
// the store. Loading the library and the two dozen that it needs takes some 6 ms, most of a process's
// start: a command that never reaches the store (the catalogue of types, a report from a file) does not
// pay it. Each member is named as the library's function without its prefix.
struct PostgresClient {
    decltype(&PQconnectdb) connectdb;
    decltype(&PQstatus) status;
    decltype(&PQerrorMessage) errorMessage;
    decltype(&PQfinish) finish;
    decltype(&PQexec) exec;
    decltype(&PQsendQueryParams) sendQueryParams;
    decltype(&PQenterPipelineMode) enterPipelineMode;
    decltype(&PQexitPipelineMode) exitPipelineMode;
    decltype(&PQpipelineSync) pipelineSync;
    decltype(&PQflush) flush;
    decltype(&PQgetResult) getResult;
    decltype(&PQresultStatus) resultStatus;
    decltype(&PQresultErrorMessage) resultErrorMessage;
    decltype(&PQresultErrorField) resultErrorField;
    decltype(&PQntuples) ntuples;
    decltype(&PQnfields) nfields;
    decltype(&PQftype) ftype;
    decltype(&PQgetisnull) getisnull;
    decltype(&PQgetvalue) getvalue;
    decltype(&PQgetlength) getlength;
    decltype(&PQclear) clear;
    decltype(&PQescapeStringConn) escapeStringConn;

    // The library, loaded at the first call; ErrorPostgres if it, or one of these functions, is missing.
    static const PostgresClient& library();
};

#endif
