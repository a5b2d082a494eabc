// SPDX-License-Identifier: MIT
// The workstation's command line, run as a program where no display is available.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

#include "core/program_version.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

// Removes the variables that lead Qt to a display for as long as it lives.
class NoDisplay {
 public:
  NoDisplay() {
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
      if (const char* value = std::getenv(name)) saved_[name] = value;
      unsetenv(name);
    }
  }
  ~NoDisplay() {
    for (const auto& [name, value] : saved_) setenv(name.c_str(), value.c_str(), 1);
  }
  NoDisplay(const NoDisplay&) = delete;
  NoDisplay& operator=(const NoDisplay&) = delete;

 private:
  std::map<std::string, std::string> saved_;
};

constexpr const char* kWorkstation = "src/app/morvane-egse";

TEST(WorkstationCommandLine, HelpAndVersionPrintAndEndWithoutADisplay) {
  const NoDisplay no_display;
  const auto help = testing::run_program(kWorkstation, {"--help"});
  EXPECT_EQ(help.status, 0) << help.err;
  EXPECT_PRED2(testing::contains, help.out, "--type <T>");
  EXPECT_PRED2(testing::contains, help.out, "--screenshots <DIR>");
  const auto version = testing::run_program(kWorkstation, {"--version"});
  EXPECT_EQ(version.status, 0) << version.err;
  EXPECT_EQ(version.out, std::string("Morvane EGSE ") + kProgramVersion + "\n");
}

}  // namespace
}  // namespace morvane
