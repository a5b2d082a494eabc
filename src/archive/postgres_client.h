// SPDX-License-Identifier: MIT
#pragma once

#include <libpq-fe.h>

#include <string>

namespace morvane::archive {

// The functions of the PostgreSQL client library the archive calls.
#define MORVANE_POSTGRES_FUNCTIONS(X)                                                                \
  X(PQclear) X(PQconnectPoll) X(PQconnectStartParams) X(PQconninfo) X(PQconninfoFree) X(PQerrorMessage) \
  X(PQexec) X(PQexecParams) X(PQfinish) X(PQfname) X(PQftype) X(PQgetisnull) X(PQgetlength)           \
  X(PQgetResult) X(PQgetvalue) X(PQnfields) X(PQntuples) X(PQputCopyData) X(PQputCopyEnd)             \
  X(PQresultErrorField) X(PQresultStatus) X(PQsetNoticeProcessor) X(PQsocket) X(PQstatus)             \
  X(PQtransactionStatus)

// The client library, loaded the first time a server archive is opened rather than linked: it
// brings Kerberos, LDAP and TLS libraries whose loading and start-up cost every run of the
// programs a few milliseconds, and most runs never open a server archive.
struct PostgresClient {
#define MORVANE_POSTGRES_POINTER(name) decltype(&::name) name = nullptr;
  MORVANE_POSTGRES_FUNCTIONS(MORVANE_POSTGRES_POINTER)
#undef MORVANE_POSTGRES_POINTER
};

// The loaded library's functions. A library that cannot be loaded, or lacks one of them, is a
// RuntimeError (device I/O error) naming the library and what the loader said.
const PostgresClient& postgres_client();

}  // namespace morvane::archive
