// SPDX-License-Identifier: MIT
#pragma once

namespace morvane {

// What the programs say of themselves, defined in a source CMake writes (cmake/Version.cmake)
// and linked from the morvane::version library: the project's version ("0.1.0"), and the build
// (the commit the tree was configured at, the build type and the compiler).
extern const char* const kProgramVersion;
extern const char* const kProgramBuild;

}  // namespace morvane
