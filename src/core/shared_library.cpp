// SPDX-License-Identifier: MIT
#include "core/shared_library.h"

#include <dlfcn.h>

#include <string>

#include "core/error.h"

namespace morvane {

SharedLibrary::SharedLibrary(const char* file, const char* purpose) : file_(file), purpose_(purpose) {
  handle_ = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) cannot_load(dlerror());
}

void* SharedLibrary::symbol(const char* name) const {
  void* found = dlsym(handle_, name);
  if (found == nullptr) cannot_load(dlerror());
  return found;
}

void SharedLibrary::cannot_load(const char* reason) const {
  raise(ErrorNumber::DeviceIoError, std::string("the ") + purpose_ + " library " + file_ +
                                        " cannot be loaded: " + (reason ? reason : "unknown reason"));
}

}  // namespace morvane
