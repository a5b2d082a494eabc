// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "core/error.h"

namespace morvane {

// The classic "Disk full" (61): a write that found no room, or the file-size limit.
inline constexpr ErrorNumber kDiskFull = static_cast<ErrorNumber>(61);

// A failed system call as a run-time error: a permission problem (EACCES, EPERM, EROFS) is
// "Permission denied", a full disk or file-size limit (ENOSPC, EDQUOT, EFBIG) "Disk full", a
// missing folder or a loop of symbolic links "Path not found", a folder where a file belongs
// "Bad file name or number"; anything else is `otherwise`. The detail gets the system's own
// words in brackets.
RuntimeError system_error(int error, const std::string& detail, ErrorNumber otherwise = ErrorNumber::DeviceIoError);
[[noreturn]] void raise_system_error(int error, const std::string& detail,
                                     ErrorNumber otherwise = ErrorNumber::DeviceIoError);

// A file-system library error as the run-time error of its system error, naming its path, so
// that no raw library message reaches the user.
RuntimeError from_filesystem_error(const std::filesystem::filesystem_error& error);

// The error as met while reading the file at path: its detail starts with the path unless it
// already names it.
RuntimeError naming_file(const RuntimeError& error, const std::string& path);

}  // namespace morvane
