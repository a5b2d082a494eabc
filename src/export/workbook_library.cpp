// SPDX-License-Identifier: MIT
#include "workbook_library.h"

#include "core/shared_library.h"

namespace morvane {

const WorkbookLibrary& workbook_library() {
  return functions_loaded_once<WorkbookLibrary>(
      "libxlsxwriter.so.4", "workbook",
      [](const SharedLibrary& library, WorkbookLibrary& loaded) { MORVANE_WORKBOOK_FUNCTIONS(MORVANE_RESOLVE_FUNCTION) });
}

}  // namespace morvane
