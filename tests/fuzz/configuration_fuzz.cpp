// SPDX-License-Identifier: MIT
// Any text as each configuration file and as a limit file of the functional tests.
#include "core/configuration.h"
#include "core/conversion.h"
#include "functest/short_test_ranges.h"
#include "fuzz_support.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = fuzz::memory_file(data, size);
  fuzz::expect_only_runtime_errors([&] { read_base_path(path); });
  fuzz::expect_only_runtime_errors([&] { read_sensor_table(path); });
  fuzz::expect_only_runtime_errors([&] { read_pressure_table(path); });
  fuzz::expect_only_runtime_errors([&] { read_test_ranges(path, std::string(reinterpret_cast<const char*>(data), size)); });
  fuzz::expect_only_runtime_errors([&] {
    Configuration config;
    config.NType.set_points(read_ntype_points(path));
    for (double x : {-1e9, -5000.0, 0.0, 1234.5, 60000.0, 1e300}) {
      config.NType.NType_Lookup(x);
      config.NType.NType_Reverse_Lookup(x);
    }
  });
  return 0;
}
