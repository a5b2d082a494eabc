// SPDX-License-Identifier: MIT
// morvane-cli archive: its JSON keys and exit codes, and an answer of each command equal to the
// single-file command's on that file.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "archive_fixture.h"

namespace morvane {
namespace {

using json = nlohmann::ordered_json;
using testing::campaign;
using testing::ProgramRun;

class ArchiveCommand : public testing::ArchiveTest {
 protected:
  ProgramRun cli(std::vector<std::string> arguments) const {
    return testing::run_program("src/cli/morvane-cli", arguments);
  }
  // `archive <arguments> --archive A --json`, which must succeed.
  json archive_json(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "archive");
    arguments.insert(arguments.end(), {"--archive", location, "--json"});
    const ProgramRun run = cli(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
  // A single-file command on the campaign's file of a format.
  json file_json(const std::string& command, FileFormat format, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {command, campaign().files.at(format), "-t", std::string(format_tag(format)),
                                         "--base", campaign().base, "--json"});
    const ProgramRun run = cli(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
  ProgramRun add(const std::vector<std::string>& paths, FileFormat format) const {
    std::vector<std::string> arguments = {"archive", "add"};
    arguments.insert(arguments.end(), paths.begin(), paths.end());
    arguments.insert(arguments.end(), {"-t", std::string(format_tag(format)), "--base", campaign().base,
                                       "--archive", location, "--json"});
    return cli(arguments);
  }
};

std::vector<std::string> keys_of(const json& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : object.items()) keys.push_back(key);
  return keys;
}

TEST_P(ArchiveCommand, AddReportsAddedSkippedAndFailedFilesAndExitsOneWhenAnyFailed) {
  const std::string missing = dir.path("missing.qm");
  const ProgramRun first = add({campaign().files.at(FileFormat::QM), missing}, FileFormat::QM);
  EXPECT_EQ(first.status, 1);
  EXPECT_NE(first.err.find("error: "), std::string::npos) << first.err;
  const json report = json::parse(first.out);
  ASSERT_EQ(report["added"].size(), 1u);
  EXPECT_EQ(keys_of(report["added"][0]), (std::vector<std::string>{"file", "file_id", "frames", "hk_count",
                                                                    "science_count", "information_count", "tests",
                                                                    "replaced"}));
  EXPECT_EQ(report["added"][0]["file_id"], 1);
  EXPECT_EQ(report["added"][0]["tests"], 4);
  ASSERT_EQ(report["failed"].size(), 1u);
  EXPECT_EQ(report["failed"][0]["file"], missing);
  EXPECT_TRUE(report["failed"][0].contains("error"));

  const ProgramRun again = add({campaign().files.at(FileFormat::QM)}, FileFormat::QM);
  EXPECT_EQ(again.status, 0) << again.err;
  const json skipped = json::parse(again.out);
  EXPECT_TRUE(skipped["added"].empty());
  ASSERT_EQ(skipped["skipped"].size(), 1u);
  EXPECT_EQ(keys_of(skipped["skipped"][0]), (std::vector<std::string>{"file", "reason"}));
}

TEST_P(ArchiveCommand, UsageErrorsExitTwo) {
  EXPECT_EQ(cli({"archive", "add", campaign().files.at(FileFormat::QM), "--archive", location}).status, 2);
  EXPECT_EQ(cli({"archive", "tests", "--mode", "sometimes", "--archive", location}).status, 2);
  EXPECT_EQ(cli({"archive", "trend", "--archive", location}).status, 2);
  EXPECT_EQ(cli({"archive"}).status, 2);
}

// The archive's values themselves are compared with the decoders' in archive_values_test.
TEST_P(ArchiveCommand, FilesListEveryKeyInIngestOrderAndTrendPointsAreTheTrendCommandsWithTheFilesNumber) {
  ingest_each({FileFormat::CSS, FileFormat::FM});
  const json files = archive_json({"files"})["files"];
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(keys_of(files[0]),
            (std::vector<std::string>{"file_id", "path", "name", "type", "byte_reverse", "sha256", "size", "frames",
                                      "first_lander_time", "last_lander_time", "hk_count", "science_count",
                                      "information_count", "tests", "findings"}));
  EXPECT_EQ(files[0]["type"], "CSS");
  EXPECT_EQ(files[1]["name"], "cycle.FM");
  EXPECT_EQ(files[1]["hk_count"], campaign().session(FileFormat::FM).catalogue.HK_Count());

  const json archived = archive_json({"trend", "--sensors", "3,28", "--cold-junction", "off"})["sensors"];
  const json single = file_json("trend", FileFormat::FM, {"--sensors", "3,28", "--cold-junction", "off"})["sensors"];
  ASSERT_EQ(archived.size(), 2u);
  EXPECT_EQ(archived[1]["number"], 28);
  EXPECT_EQ(archived[1]["name"], single[1]["name"]);
  json points = json::array();
  for (const auto& point : archived[1]["points"]) {
    if (point[2] == 2) points.push_back(json::array({point[0], point[1]}));
  }
  EXPECT_EQ(points, single[1]["points"]);
}

TEST_P(ArchiveCommand, ATestsNumberOpensTheSameEvaluationInFunctestAndItemHistoryFollowsAnItemThroughTheTests) {
  ingest_each({FileFormat::GRM, FileFormat::ZEB});
  const json tests = archive_json({"tests"})["tests"];
  ASSERT_EQ(tests.size(), 8u);
  EXPECT_EQ(keys_of(tests[0]), (std::vector<std::string>{"file_id", "mode", "number", "sequence_count", "lander_time",
                                                         "overall", "packet_message", "rf_frequency_text", "items"}));
  EXPECT_EQ(keys_of(tests[0]["items"][0]), (std::vector<std::string>{"table", "name", "value", "result"}));
  const json& last = tests[3];
  const std::string number = std::to_string(last["number"].get<int>());
  const json single = file_json("functest", FileFormat::GRM, {"--mode", last["mode"], "--test", number});
  EXPECT_EQ(last["overall"], single["overall"]);
  EXPECT_EQ(last["rf_frequency_text"], single["rf_frequency_text"]);
  const json failed = archive_json({"tests", "--failed", "--mode", "eaft"})["tests"];
  for (const auto& test : failed) {
    EXPECT_EQ(test["mode"], "eaft");
    EXPECT_NE(test["overall"], "Passed");
  }

  const json history = archive_json({"item-history", "--mode", "eaft", "--item", "Reactor 9"})["history"];
  ASSERT_EQ(history.size(), archive_json({"tests", "--mode", "eaft"})["tests"].size());
  EXPECT_EQ(keys_of(history[0]), (std::vector<std::string>{"file_id", "test", "lander_time", "overall", "table", "name",
                                                           "value", "result"}));
  for (const auto& row : history) EXPECT_EQ(row["name"], "Reactor 9");
}

TEST_P(ArchiveCommand, EventsGiveTheInfoCommandsTranslationLines) {
  ingest_each({FileFormat::QM});
  const json events = archive_json({"events"})["events"];
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(keys_of(events[0]), (std::vector<std::string>{"file_id", "index", "lander_time", "label", "lines"}));
  const json& event = events[events.size() / 2];
  const json info = file_json("info", FileFormat::QM, {"--index", std::to_string(event["index"].get<int>())});
  json lines = json::array();
  for (const auto& line : info["translation"]) lines.push_back(line["text"]);
  EXPECT_EQ(event["lines"], lines);
  const json later = archive_json({"events", "--from", std::to_string(sim::kFirstLanderTime + 5000)})["events"];
  EXPECT_LT(later.size(), events.size());
  for (const auto& e : later) EXPECT_GE(e["lander_time"], sim::kFirstLanderTime + 5000);
}

INSTANTIATE_TEST_SUITE_P(Backends, ArchiveCommand, ::testing::ValuesIn(testing::archive_backends()),
                         testing::backend_name);

// The documented schema read from outside: the sqlite3 shell and Python's standard library.
class ArchiveOutsideQuery : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const FileFormat format : {FileFormat::CSS, FileFormat::QM}) {
      archive::open_archive(path)->ingest({campaign().files.at(format)}, campaign().config, {.type = format});
    }
  }
  std::string shell(const std::string& command) const {
    const std::string out = dir.path("out");
    EXPECT_EQ(std::system((command + " > '" + out + "'").c_str()), 0) << command;
    return testing::read_file(out);
  }
  testing::TempDir dir;
  std::string path = dir.path("campaign.sqlite");
};

TEST_F(ArchiveOutsideQuery, TheSqliteShellFindsTheFirstCheckoutThatFailedAValve) {
  const std::string sql =
      "SELECT f.name, t.mode, t.number, t.lander_time FROM test_items i JOIN tests t ON t.test_id = i.test_id"
      " JOIN files f ON f.file_id = t.file_id WHERE i.name = 'V 7' AND i.failed = 1"
      " ORDER BY t.lander_time, f.file_id LIMIT 1;";
  const std::string out = shell("sqlite3 -separator '|' '" + path + "' \"" + sql + "\"");
  const auto history = archive::open_archive(path)->item_history("cruise", "V 7");
  const auto failed = std::find_if(history.begin(), history.end(), [](const auto& row) { return row.item.failed; });
  ASSERT_NE(failed, history.end());
  EXPECT_EQ(out, "cycle.CSS|cruise|" + std::to_string(failed->test_number) + "|" +
                     std::to_string(failed->lander_time) + "\n");
}

TEST_F(ArchiveOutsideQuery, PythonUnpacksASensorsValuesAsTheTrendGivesThem) {
  if (std::system("python3 -c 'import sqlite3, struct' 2>/dev/null") != 0) GTEST_SKIP() << "no python3";
  const std::string script = dir.path("trend.py");
  testing::write_file(script, R"(import sqlite3, struct, sys
db = sqlite3.connect(sys.argv[1])
rows = db.execute("""
  SELECT v.file_id, v.encoding, v.palette, v.data, c.lander_times
  FROM hk_values v JOIN catalogue_chunks c
    ON c.file_id = v.file_id AND c.list = 'hk' AND c.first_index = v.first_index
  WHERE v.sensor = 28 AND v.cold_junction = 1
  ORDER BY v.file_id, v.first_index""")
for file_id, encoding, palette, data, times in rows:
    times = struct.unpack('<%di' % (len(times) // 4), times)
    if encoding == 'palette':
        colours = struct.unpack('<%dd' % (len(palette) // 8), palette)
        values = [colours[code] for code in data]
    else:
        values = struct.unpack('<%dd' % (len(data) // 8), data)
    for t, v in zip(times, values):
        print(file_id, t, repr(v))
)");
  const std::string out = shell("python3 '" + script + "' '" + path + "'");
  archive::TrendQuery query;
  query.sensors = {28};
  const auto trend = archive::open_archive(path)->trend(query).at(0).points;
  // Python prints each value in its shortest round-trip form, as the JSON writer does.
  std::string expected;
  for (const auto& point : trend) {
    expected += std::to_string(point.file_id) + " " + std::to_string(point.lander_time) + " " +
                nlohmann::json(point.value).dump() + "\n";
  }
  EXPECT_EQ(out, expected);
}

}  // namespace
}  // namespace morvane
