# SPDX-License-Identifier: MIT
# Every target of the project gets the same warning set; CI turns them into errors.
function(morvane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(MORVANE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
    # GCC 12's flow-based bounds checks misfire inside inlined std::string code, and whether they
    # fire depends on the length of the checkout path: keep them as warnings, never as errors.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -Wno-error=array-bounds -Wno-error=stringop-overflow
                                               -Wno-error=restrict)
    endif()
  endif()
endfunction()

# A plain C++ library of one layer: sources beside the CMakeLists, public headers under include/.
function(morvane_layer_library name alias)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} STATIC ${sources})
  add_library(${alias} ALIAS ${name})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include)
  morvane_warnings(${name})
endfunction()
