// SPDX-License-Identifier: MIT
#pragma once

namespace morvane {

// A shared library opened when first needed rather than linked, and never closed: its functions
// are used until the program ends. The programs load their heavier libraries this way (the
// database client, the workbook writer, the cryptography library), so that a run that does not
// use one does not pay for loading it.
class SharedLibrary {
 public:
  // A library that cannot be opened is a RuntimeError (device I/O error): "the <purpose> library
  // <file> cannot be loaded: <the loader's reason>".
  SharedLibrary(const char* file, const char* purpose);

  // Sets pointer to the library's function name; a missing one fails as opening does.
  template <typename Function>
  void resolve(Function*& pointer, const char* name) const {
    pointer = reinterpret_cast<Function*>(symbol(name));
  }

 private:
  void* symbol(const char* name) const;
  [[noreturn]] void cannot_load(const char* reason) const;

  const char* file_;
  const char* purpose_;
  void* handle_ = nullptr;
};

// The functions of a library, loaded the first time they are asked for: resolve_all(library,
// functions) fills them, usually one MORVANE_RESOLVE_FUNCTION a function. A failed load throws
// out of the initialisation, which the next call then tries again.
template <typename Functions, typename ResolveAll>
const Functions& functions_loaded_once(const char* file, const char* purpose, ResolveAll resolve_all) {
  static const Functions functions = [&] {
    const SharedLibrary library(file, purpose);
    Functions loaded;
    resolve_all(library, loaded);
    return loaded;
  }();
  return functions;
}

// Inside a resolve_all whose parameters are named library and loaded.
#define MORVANE_RESOLVE_FUNCTION(name) library.resolve(loaded.name, #name);

}  // namespace morvane
