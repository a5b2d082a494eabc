# SPDX-License-Identifier: MIT
if(MORVANE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
if(MORVANE_FUZZ)
  # The library code is instrumented for coverage; the fuzz targets add the libFuzzer driver.
  # Every sanitizer report ends the run, so that undefined behaviour is a finding like a crash.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()
