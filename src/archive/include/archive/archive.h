// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archive/database.h"
#include "core/configuration.h"
#include "core/file_format.h"

namespace morvane::archive {

// The archive a command or window names when it names none.
inline constexpr const char* kDefaultArchive = "campaign.sqlite";

// One archived file, as `archive files` lists it.
struct FileRecord {
  int64_t file_id = 0;
  std::string path;  // absolute, as given when archived
  std::string name;  // the file name without its folder
  std::string type;  // "CSS", "QM", "GRM", "FM", "ZEB"
  bool byte_reverse = true;
  std::string sha256;  // of the content, lower-case hex
  int64_t size = 0;
  int64_t frames = 0;  // Packet_Count: frames (ZEB: records)
  std::optional<int32_t> first_lander_time;  // over every catalogue entry that has one
  std::optional<int32_t> last_lander_time;
  int64_t hk_count = 0;
  int64_t science_count = 0;
  int64_t information_count = 0;
  int64_t tests = 0;     // short form tests of both modes
  int64_t findings = 0;  // integrity findings
};

// A file that went in.
struct AddedFile {
  std::string file;
  int64_t file_id = 0;
  int64_t frames = 0;
  int64_t hk_count = 0;
  int64_t science_count = 0;
  int64_t information_count = 0;
  int64_t tests = 0;
  bool replaced = false;  // it replaced the rows of the same path archived with other content
};
struct SkippedFile {
  std::string file;
  std::string reason;
};
struct FailedFile {
  std::string file;
  std::string error;
};
struct IngestReport {
  std::vector<AddedFile> added;
  std::vector<SkippedFile> skipped;
  std::vector<FailedFile> failed;
  bool cancelled = false;  // the cancel flag stopped the ingest; what was committed stays
};

// How files are read for an ingest: the type is given, never guessed.
struct IngestOptions {
  FileFormat type = FileFormat::CSS;
  bool byte_reverse = true;
  bool recursive = false;  // walk folders among the paths (otherwise a folder is a failure)
};

// Progress of an ingest: the file being read (1-based of files), its name, and the bytes of it
// done of its size. Called from the ingesting thread.
using IngestProgress = std::function<void(int file_number, int file_count, const std::string& file,
                                           int64_t bytes_done, int64_t bytes_total)>;

// One short form test item: the row of the evaluation's table (functest --test JSON key:
// "sensors", "valves", "injector_valves", "heaters", "large_reactors", "small_reactors",
// "l_valves", "rails", "subsystems"), its main display text and its verdict text.
struct TestItem {
  std::string table;
  std::string name;
  std::string value;
  std::string result;
  bool failed = false;  // the verdict is painted red
};

struct TestRecord {
  int64_t test_id = 0;
  int64_t file_id = 0;
  std::string mode;  // "cruise" or "eaft"
  int32_t number = 0;  // line of the test in that file's list for that mode
  int32_t science_index = 0;
  int32_t sequence_count = 0;
  int32_t lander_time = 0;
  std::optional<std::string> overall;  // "Passed" / "Fail"; none when it could not be evaluated
  std::string packet_message;
  std::string rf_frequency_text;
  std::string error;  // why it could not be evaluated
  std::vector<TestItem> items;
};

struct TestQuery {
  std::string mode;  // "cruise", "eaft" or empty for both
  bool failed_only = false;  // tests whose overall verdict is not "Passed" (also those not evaluated)
  std::optional<int64_t> file_id;
};

struct TrendPoint {
  int32_t lander_time = 0;
  double value = 0;
  int64_t file_id = 0;
};
struct SensorTrend {
  int number = 0;
  std::string name;
  std::string unit;
  std::vector<TrendPoint> points;  // file (ingest) order, then catalogue order
};
struct TrendQuery {
  std::vector<int> sensors;  // empty: every sensor
  std::optional<int32_t> from;  // lander time bounds, inclusive
  std::optional<int32_t> to;
  bool cold_junction = true;
};

struct EventRecord {
  int64_t file_id = 0;
  int32_t index = 0;  // entry of the information list, from 1
  int32_t lander_time = 0;
  std::string label;
  std::vector<std::string> lines;  // the five translation lines
};
struct EventQuery {
  std::string contains;  // in any line or the label; empty: every event
  std::optional<int32_t> from;
  std::optional<int32_t> to;
};

// One item in one test: the item-history row.
struct ItemHistoryRow {
  int64_t file_id = 0;
  int32_t test_number = 0;
  int32_t lander_time = 0;
  std::optional<std::string> overall;
  TestItem item;
};

// A campaign archive: every file ingested into one database, and the queries over it. Opening
// creates the schema when it is missing. Every failure is a RuntimeError.
class Archive {
 public:
  explicit Archive(std::unique_ptr<Database> database);
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  Database& database() { return *database_; }

  // Ingests the files (and, with recursive, the files below the folders) one transaction each,
  // decoding with its own session on a copy of config. A file that cannot be read is reported
  // and the others still go in. cancel is polled between files and while a file is read; a
  // cancelled file leaves nothing.
  IngestReport ingest(const std::vector<std::string>& paths, const Configuration& config,
                       const IngestOptions& options, const IngestProgress& progress = {},
                       const std::atomic<bool>* cancel = nullptr);

  std::vector<FileRecord> files();
  std::vector<TestRecord> tests(const TestQuery& query = {});
  std::vector<SensorTrend> trend(const TrendQuery& query = {});
  std::vector<EventRecord> events(const EventQuery& query = {});
  // Item name in every test of mode ("cruise" or "eaft") across the campaign, in ingest order.
  std::vector<ItemHistoryRow> item_history(const std::string& mode, const std::string& item);

 private:
  std::unique_ptr<Database> database_;
};

// Opens the archive of path_or_url: a PostgreSQL server for "postgresql://" or "postgres://",
// else a SQLite file (created when missing).
std::unique_ptr<Archive> open_archive(const std::string& path_or_url);

}  // namespace morvane::archive
