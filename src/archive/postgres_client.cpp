// SPDX-License-Identifier: MIT
#include "postgres_client.h"

#include "core/shared_library.h"

namespace morvane::archive {

const PostgresClient& postgres_client() {
  return functions_loaded_once<PostgresClient>(
      "libpq.so.5", "PostgreSQL client",
      [](const SharedLibrary& library, PostgresClient& loaded) { MORVANE_POSTGRES_FUNCTIONS(MORVANE_RESOLVE_FUNCTION) });
}

}  // namespace morvane::archive
