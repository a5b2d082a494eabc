// SPDX-License-Identifier: MIT
#include "workbook_library.h"

#include <dlfcn.h>

#include <mutex>
#include <string>

#include "core/error.h"

namespace morvane {

namespace {

constexpr const char* kLibrary = "libxlsxwriter.so.4";

[[noreturn]] void cannot_load(const char* what) {
  raise(ErrorNumber::DeviceIoError,
        std::string("the workbook library ") + kLibrary + " cannot be loaded: " + (what ? what : "unknown reason"));
}

WorkbookLibrary load() {
  // Never closed: the functions are used until the program ends.
  void* library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) cannot_load(dlerror());
  WorkbookLibrary functions;
#define MORVANE_WORKBOOK_RESOLVE(name)                                                \
  functions.name = reinterpret_cast<decltype(functions.name)>(dlsym(library, #name)); \
  if (functions.name == nullptr) cannot_load(dlerror());
  MORVANE_WORKBOOK_FUNCTIONS(MORVANE_WORKBOOK_RESOLVE)
#undef MORVANE_WORKBOOK_RESOLVE
  return functions;
}

}  // namespace

const WorkbookLibrary& workbook_library() {
  static std::once_flag once;
  static WorkbookLibrary functions;
  // A failed load throws out of call_once, which leaves the flag unset: the next call tries again.
  std::call_once(once, [] { functions = load(); });
  return functions;
}

}  // namespace morvane
