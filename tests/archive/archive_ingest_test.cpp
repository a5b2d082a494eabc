// SPDX-License-Identifier: MIT
// The ingest rules: same content skipped, changed content replaced, bad files reported while the
// others go in, folders walked, cancel keeps what was committed.
#include <gtest/gtest.h>

#include <filesystem>

#include "archive_fixture.h"
#include "core/error.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using testing::ArchiveTest;
using testing::campaign;

class ArchiveIngest : public ArchiveTest {
 protected:
  std::string copy_of(FileFormat format, const std::string& name) const {
    const std::string path = dir.path(name);
    fs::copy_file(campaign().files.at(format), path);
    return path;
  }
  int64_t points_of_file(int64_t file_id) const {
    archive::TrendQuery query;
    query.sensors = {1};
    const auto points = open()->trend(query).at(0).points;
    return std::count_if(points.begin(), points.end(), [&](const auto& p) { return p.file_id == file_id; });
  }
};

// A file is known by its content, type and byte order: a copy under another path is skipped and
// never doubled; the same bytes read as another type or in the other byte order are another
// reading; the content's digest is the one the standard tool gives.
TEST_P(ArchiveIngest, AFileIsKnownByItsContentTypeAndByteOrder) {
  const std::string& css = campaign().files.at(FileFormat::CSS);
  ingest({css}, FileFormat::CSS);
  const auto copy = ingest({copy_of(FileFormat::CSS, "again.css")}, FileFormat::CSS);
  EXPECT_TRUE(copy.added.empty());
  ASSERT_EQ(copy.skipped.size(), 1u);
  EXPECT_NE(copy.skipped[0].reason.find(css), std::string::npos);
  EXPECT_EQ(open()->tests().size(), 4u);
  EXPECT_EQ(ingest({css}, FileFormat::QM).added.size(), 1u);
  EXPECT_EQ(ingest({css}, FileFormat::CSS, false).added.size(), 1u);
  const auto files = open()->files();
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[1].type, "QM");
  EXPECT_FALSE(files[2].byte_reverse);
  const std::string out = dir.path("digest");
  ASSERT_EQ(std::system(("sha256sum '" + css + "' > '" + out + "'").c_str()), 0);
  for (const auto& file : files) EXPECT_EQ(file.sha256, testing::read_file(out).substr(0, 64));
}

TEST_P(ArchiveIngest, AGrownLogReplacesItsRowsAndKeepsItsNumber) {
  const std::string log = dir.path("grows.css");
  sim::write_telemetry(log, {.frames = 200});
  ingest({campaign().files.at(FileFormat::QM)}, FileFormat::QM);
  ingest({log}, FileFormat::CSS);
  const int64_t before = points_of_file(2);
  sim::write_telemetry(log, {.frames = 593});
  const auto report = ingest({log}, FileFormat::CSS);
  ASSERT_EQ(report.added.size(), 1u);
  EXPECT_TRUE(report.added[0].replaced);
  EXPECT_EQ(report.added[0].file_id, 2);
  const auto files = open()->files();
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].frames, 593);
  EXPECT_EQ(points_of_file(2), files[1].hk_count);
  EXPECT_GT(points_of_file(2), before);
  archive::TestQuery of_log;
  of_log.file_id = 2;
  EXPECT_EQ(open()->tests(of_log).size(), static_cast<size_t>(files[1].tests));
}

TEST_P(ArchiveIngest, ADamagedFileIsReportedAndTheOthersStillGoIn) {
  // A ZEB file cut inside its last record, and a path that is not there.
  const std::string text = testing::read_file(campaign().files.at(FileFormat::ZEB));
  const std::string damaged = dir.path("damaged.zeb");
  testing::write_file(damaged, text.substr(0, text.size() / 2 + 7));
  const std::string missing = dir.path("missing.zeb");
  const auto report =
      ingest({damaged, campaign().files.at(FileFormat::ZEB), missing, copy_of(FileFormat::ZEB, "copy.zeb")},
             FileFormat::ZEB);
  ASSERT_EQ(report.failed.size(), 2u);
  EXPECT_EQ(report.failed[0].file, damaged);
  EXPECT_FALSE(report.failed[0].error.empty());
  EXPECT_EQ(report.failed[1].file, missing);
  EXPECT_EQ(report.skipped.size(), 1u);
  const auto files = open()->files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].path, campaign().files.at(FileFormat::ZEB));
}

TEST_P(ArchiveIngest, AFolderIsWalkedOnlyWhenRecursive) {
  fs::create_directories(dir.path("cycles/deeper"));
  fs::copy_file(campaign().files.at(FileFormat::GRM), dir.path("cycles/a.grm"));
  sim::write_telemetry(dir.path("cycles/deeper/b.grm"), {.format = FileFormat::GRM, .frames = 150, .seed = 7});
  const auto flat = ingest({dir.path("cycles")}, FileFormat::GRM);
  ASSERT_EQ(flat.failed.size(), 1u);
  EXPECT_NE(flat.failed[0].error.find("--recursive"), std::string::npos);
  const auto report =
      open()->ingest({dir.path("cycles")}, campaign().config, {.type = FileFormat::GRM, .recursive = true});
  ASSERT_EQ(report.added.size(), 2u);
  EXPECT_EQ(fs::path(report.added[0].file).filename(), "a.grm");
  EXPECT_EQ(fs::path(report.added[1].file).filename(), "b.grm");
}

// The ingest also leaves the caller's configuration as it was (the conversions write into theirs).
TEST_P(ArchiveIngest, ATestWithoutLimitFileIsListedUnevaluated) {
  Configuration config = campaign().config;
  config.Egse_Path = sim::write_configuration(dir.path("base"));
  fs::remove(fs::path(config.Egse_Path) / "EGSE_info" / "Test Ranges" / "FM EAFT Mode.txt");
  config.sensor(1).Value = 123.5;
  const Configuration before = config;
  ASSERT_EQ(open()->ingest({campaign().files.at(FileFormat::FM)}, config, {.type = FileFormat::FM}).added.size(), 1u);
  EXPECT_EQ(config.sensor(1).Value, 123.5);
  for (int s = 1; s <= config.Sensor_Count(); ++s) {
    EXPECT_EQ(config.sensor(s).Voltage, before.sensor(s).Voltage);
    EXPECT_EQ(config.sensor(s).Sensor_Unit, before.sensor(s).Sensor_Unit);
  }
  const auto tests = open()->tests();
  ASSERT_FALSE(tests.empty());
  for (const auto& test : tests) {
    if (test.mode == "eaft") {
      EXPECT_FALSE(test.overall);
      EXPECT_NE(test.error.find("FM EAFT Mode.txt"), std::string::npos) << test.error;
      EXPECT_TRUE(test.items.empty());
    } else {
      EXPECT_TRUE(test.overall);
    }
  }
}

TEST_P(ArchiveIngest, CancelKeepsTheFilesCommittedAndLeavesNothingOfTheCurrentOne) {
  std::atomic<bool> cancel{false};
  const auto stop_in_second_file = [&](int number, int, const std::string&, int64_t done, int64_t total) {
    if (number == 2 && done > total / 2) cancel = true;
  };
  sim::write_telemetry(dir.path("other.qm"), {.format = FileFormat::QM, .seed = 3});
  const auto report = open()->ingest({campaign().files.at(FileFormat::QM), dir.path("other.qm"),
                                      campaign().files.at(FileFormat::GRM)},
                                     campaign().config, {.type = FileFormat::QM}, stop_in_second_file, &cancel);
  EXPECT_TRUE(report.cancelled);
  EXPECT_EQ(report.added.size(), 1u);
  EXPECT_TRUE(report.failed.empty());
  EXPECT_EQ(open()->files().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Backends, ArchiveIngest, ::testing::ValuesIn(testing::archive_backends()),
                         testing::backend_name);

}  // namespace
}  // namespace morvane
