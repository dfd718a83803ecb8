#pragma once

#include <libpq-fe.h>

namespace bw {

// The functions of the client library of PostgreSQL that are called, under their own names. They
// are loaded when the first address is read: linked, the library and the twenty that it needs would
// cost every start megabytes, also in an office that works on a file. Null until then.
// clang-format off
#define BW_LIBPQ_FUNCTIONS(each)                                                                   \
  each(PQbackendPID) each(PQcancel) each(PQclear) each(PQcmdStatus) each(PQcmdTuples)              \
  each(PQconnectdbParams) each(PQconninfoFree) each(PQconninfoParse) each(PQconsumeInput)          \
  each(PQenterPipelineMode) each(PQerrorMessage) each(PQescapeLiteral) each(PQexec)                \
  each(PQexitPipelineMode) each(PQfinish) each(PQfname) each(PQfreeCancel) each(PQfreemem)         \
  each(PQftable) each(PQftablecol) each(PQftype) each(PQgetCancel) each(PQgetResult)               \
  each(PQgetisnull) each(PQgetlength) each(PQgetvalue) each(PQisBusy) each(PQnfields)              \
  each(PQnotifies) each(PQntuples) each(PQpipelineSync) each(PQresultErrorField)                   \
  each(PQresultStatus) each(PQsendPrepare) each(PQsendQueryParams) each(PQsendQueryPrepared)       \
  each(PQsetNoticeReceiver) each(PQsetSingleRowMode) each(PQsocket) each(PQstatus)                 \
  each(PQtransactionStatus)
// clang-format on

#define BW_DECLARE(function) extern decltype(&::function) function;
BW_LIBPQ_FUNCTIONS(BW_DECLARE)
#undef BW_DECLARE

// Loads them, once. Raises DatabaseRefusal (notConnected) where the library is not installed.
void loadLibpq();

}  // namespace bw
