// SPDX-License-Identifier: MIT
#include "postgres_client.h"

#include <dlfcn.h>

#include <mutex>

#include "core/error.h"

namespace morvane::archive {

namespace {

constexpr const char* kLibrary = "libpq.so.5";

[[noreturn]] void cannot_load(const char* what) {
  raise(ErrorNumber::DeviceIoError, std::string("the PostgreSQL client library ") + kLibrary +
                                        " cannot be loaded: " + (what ? what : "unknown reason"));
}

PostgresClient load() {
  // Never closed: the functions are used until the program ends.
  void* library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) cannot_load(dlerror());
  PostgresClient client;
#define MORVANE_POSTGRES_RESOLVE(name)                                          \
  client.name = reinterpret_cast<decltype(client.name)>(dlsym(library, #name)); \
  if (client.name == nullptr) cannot_load(dlerror());
  MORVANE_POSTGRES_FUNCTIONS(MORVANE_POSTGRES_RESOLVE)
#undef MORVANE_POSTGRES_RESOLVE
  return client;
}

}  // namespace

const PostgresClient& postgres_client() {
  static std::once_flag once;
  static PostgresClient client;
  // A failed load throws out of call_once, which leaves the flag unset: the next call tries again.
  std::call_once(once, [] { client = load(); });
  return client;
}

}  // namespace morvane::archive
