// SPDX-License-Identifier: MIT
// Two engineers give the archive the same file at the same moment, each with the batch tool.
#include <gtest/gtest.h>

#include <future>
#include <nlohmann/json.hpp>

#include "archive_fixture.h"

namespace morvane {
namespace {

using testing::ArchiveTest;
using testing::campaign;

class ArchiveRace : public ArchiveTest {};

TEST_P(ArchiveRace, TheSameFileAddedByTwoProcessesAtOnceGoesInOnceAndIsSkippedOnce) {
  open();  // the schema exists before either starts
  const auto add = [&] {
    return testing::run_program("src/cli/morvane-cli",
                                {"archive", "add", campaign().files.at(FileFormat::FM), "-t", "FM", "--base",
                                 campaign().base, "--archive", location, "--json"});
  };
  auto first = std::async(std::launch::async, add);
  auto second = std::async(std::launch::async, add);
  std::size_t added = 0;
  std::size_t skipped = 0;
  for (const auto& run : {first.get(), second.get()}) {
    ASSERT_EQ(run.status, 0) << run.err;
    const auto report = nlohmann::json::parse(run.out);
    added += report["added"].size();
    skipped += report["skipped"].size();
  }
  EXPECT_EQ(added, 1u);
  EXPECT_EQ(skipped, 1u);
  const auto files = open()->files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].type, "FM");
}

INSTANTIATE_TEST_SUITE_P(Backends, ArchiveRace, ::testing::ValuesIn(testing::archive_backends()),
                         testing::backend_name);

}  // namespace
}  // namespace morvane
