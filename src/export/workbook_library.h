// SPDX-License-Identifier: MIT
#pragma once

#include <xlsxwriter.h>

namespace morvane {

// The functions of the workbook library the .xlsx output calls.
#define MORVANE_WORKBOOK_FUNCTIONS(X)                                                                   \
  X(workbook_new_opt) X(workbook_add_worksheet) X(workbook_add_format) X(workbook_close) X(lxw_workbook_free) \
  X(format_set_num_format) X(worksheet_write_string) X(worksheet_write_number) X(lxw_strerror)

// The workbook library, loaded the first time a workbook is written rather than linked: it brings
// the zip, compression and cryptography libraries, whose loading was half the start of every run
// of the programs, and most runs write no workbook.
struct WorkbookLibrary {
#define MORVANE_WORKBOOK_POINTER(name) decltype(&::name) name = nullptr;
  MORVANE_WORKBOOK_FUNCTIONS(MORVANE_WORKBOOK_POINTER)
#undef MORVANE_WORKBOOK_POINTER
};

// The loaded library's functions. A library that cannot be loaded, or lacks one of them, is a
// RuntimeError (device I/O error) naming the library and what the loader said.
const WorkbookLibrary& workbook_library();

}  // namespace morvane
