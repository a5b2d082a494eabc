# SPDX-License-Identifier: MIT
# The programs' version and build identity (core/program_version.h): the project's version, and
# the commit the tree was configured at with the build type and the compiler.
find_package(Git QUIET)
set(MORVANE_COMMIT "unknown")
if(GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --short=12 HEAD
                  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                  OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE git_status)
  if(git_status EQUAL 0 AND commit)
    set(MORVANE_COMMIT ${commit})
  endif()
endif()
set(MORVANE_BUILD_ID
    "${MORVANE_COMMIT} ${CMAKE_BUILD_TYPE} ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
# A source of its own, so that no other file is compiled again when the commit changes.
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.cpp.in ${CMAKE_BINARY_DIR}/generated/program_version.cpp @ONLY)
add_library(morvane_version STATIC ${CMAKE_BINARY_DIR}/generated/program_version.cpp)
add_library(morvane::version ALIAS morvane_version)
target_include_directories(morvane_version PRIVATE ${CMAKE_SOURCE_DIR}/src/core/include)
