// SPDX-License-Identifier: MIT
// Stands in for the PostgreSQL backend in builds without it, so that a server URL is a clear
// error rather than a link failure.
#include "archive/database.h"

#include "core/error.h"

namespace morvane::archive {

std::unique_ptr<Database> open_postgres_database(const std::string& url) {
  (void)url;
  raise(ErrorNumber::InvalidProcedureCall, "PostgreSQL support is not built");
}

}  // namespace morvane::archive
