// SPDX-License-Identifier: MIT
#include "workbook_library.h"

#include "core/shared_library.h"

namespace morvane {

const WorkbookLibrary& workbook_library() {
  // A failed load throws out of the initialisation, which the next call then tries again.
  static const WorkbookLibrary functions = [] {
    const SharedLibrary library("libxlsxwriter.so.4", "workbook");
    WorkbookLibrary loaded;
#define MORVANE_WORKBOOK_RESOLVE(name) library.resolve(loaded.name, #name);
    MORVANE_WORKBOOK_FUNCTIONS(MORVANE_WORKBOOK_RESOLVE)
#undef MORVANE_WORKBOOK_RESOLVE
    return loaded;
  }();
  return functions;
}

}  // namespace morvane
