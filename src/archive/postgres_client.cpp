// SPDX-License-Identifier: MIT
#include "postgres_client.h"

#include "core/shared_library.h"

namespace morvane::archive {

const PostgresClient& postgres_client() {
  // A failed load throws out of the initialisation, which the next call then tries again.
  static const PostgresClient client = [] {
    const SharedLibrary library("libpq.so.5", "PostgreSQL client");
    PostgresClient loaded;
#define MORVANE_POSTGRES_RESOLVE(name) library.resolve(loaded.name, #name);
    MORVANE_POSTGRES_FUNCTIONS(MORVANE_POSTGRES_RESOLVE)
#undef MORVANE_POSTGRES_RESOLVE
    return loaded;
  }();
  return client;
}

}  // namespace morvane::archive
