// SPDX-License-Identifier: MIT
// Ingests in other processes: one killed while it writes, several at the same time.
#include <gtest/gtest.h>

#include <csignal>
#include <future>
#include <nlohmann/json.hpp>
#include <set>

#include "archive_fixture.h"
#include "child_process.h"

namespace morvane {
namespace {

using testing::ArchiveTest;
using testing::campaign;

class ArchiveProcesses : public ArchiveTest {};

TEST_P(ArchiveProcesses, AnIngestKilledWhileWritingLeavesTheArchiveAsItWas) {
  ingest({campaign().files.at(FileFormat::QM)}, FileFormat::QM);
  const auto files_before = open()->files();
  const auto tests_before = open()->tests();
  // Nothing of this process's archive connections is used in the child.
  const testing::ChildEnd end = testing::in_child([&] {
    // Deep inside the write transaction (values written, tests not yet).
    const auto kill_while_writing = [](int, int, const std::string&, int64_t done, int64_t total) {
      if (done * 100 >= total * 80 && done < total) ::raise(SIGKILL);
    };
    archive::open_archive(location)->ingest({campaign().files.at(FileFormat::CSS)}, campaign().config,
                                            {.type = FileFormat::CSS}, kill_while_writing);
  });
  EXPECT_EQ(end.signal, SIGKILL);

  const auto archive = open();
  const auto files = archive->files();
  ASSERT_EQ(files.size(), files_before.size());
  EXPECT_EQ(files[0].sha256, files_before[0].sha256);
  EXPECT_EQ(archive->tests().size(), tests_before.size());
  for (const char* table : {"hk_values", "catalogue_chunks", "sensors", "events", "findings", "tests"}) {
    const auto rows = archive->database().query(std::string("SELECT COUNT(*) FROM ") + table + " WHERE file_id <> " +
                                                std::to_string(files[0].file_id));
    EXPECT_EQ(std::get<int64_t>(rows.at(0).at(0)), 0) << table;
  }
  // The file goes in afterwards as if nothing happened.
  EXPECT_EQ(ingest({campaign().files.at(FileFormat::CSS)}, FileFormat::CSS).added.size(), 1u);
}

// Engineers give the archive files at the same moment with the batch tool, two of them the same
// file: every file goes in, the same one once, and its second copy is skipped.
TEST_P(ArchiveProcesses, IngestsAtTheSameTimeAllLandAndTheSameFileOnlyOnce) {
  open();  // the schema exists before any starts
  const auto add = [&](FileFormat format) {
    return testing::run_program("src/cli/morvane-cli",
                                {"archive", "add", campaign().files.at(format), "-t", std::string(format_tag(format)),
                                 "--base", campaign().base, "--archive", location, "--json"});
  };
  std::vector<std::future<testing::ProgramRun>> runs;
  for (const FileFormat format : {FileFormat::FM, FileFormat::FM, FileFormat::ZEB}) {
    runs.push_back(std::async(std::launch::async, add, format));
  }
  std::size_t added = 0;
  std::size_t skipped = 0;
  for (auto& run : runs) {
    const testing::ProgramRun done = run.get();
    ASSERT_EQ(done.status, 0) << done.err;
    const auto report = nlohmann::json::parse(done.out);
    added += report["added"].size();
    skipped += report["skipped"].size();
  }
  EXPECT_EQ(added, 2u);
  EXPECT_EQ(skipped, 1u);
  std::multiset<std::string> types;
  for (const auto& file : open()->files()) types.insert(file.type);
  EXPECT_EQ(types, (std::multiset<std::string>{"FM", "ZEB"}));
}

INSTANTIATE_TEST_SUITE_P(Backends, ArchiveProcesses, ::testing::ValuesIn(testing::archive_backends()),
                         testing::backend_name);

}  // namespace
}  // namespace morvane
