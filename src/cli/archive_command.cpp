// SPDX-License-Identifier: MIT
// archive: the campaign archive. `add` ingests files; `files`, `trend`, `tests`, `events` and
// `item-history` print what the archive answers across every file in it.
#include <unistd.h>

#include <bit>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <memory>

#include "archive/archive.h"
#include "cli_common.h"
#include "commands.h"
#include "core/number_text.h"
#include "decoders/trend_series.h"

namespace morvane::cli {

namespace {

using archive::Archive;

struct ArchiveOptions {
  std::string archive = archive::kDefaultArchive;
  bool json = false;
  // add
  std::vector<std::string> paths;
  std::string type;
  std::string base;
  std::string byte_reverse = "on";
  bool recursive = false;
  // trend, events
  std::string sensors;
  std::optional<int32_t> from;
  std::optional<int32_t> to;
  std::string cold_junction = "on";
  std::string contains;
  // tests, item-history
  std::string mode;
  bool failed = false;
  std::string item;
};

Json optional_json(const std::optional<int32_t>& value) { return value ? Json(*value) : Json(nullptr); }
Json optional_json(const std::optional<std::string>& value) { return value ? Json(*value) : Json(nullptr); }

void add_archive_option(CLI::App* command, ArchiveOptions& options) {
  command->add_option("--archive", options.archive,
                      "Archive: a SQLite file, or postgresql://... for a server (default: campaign.sqlite)");
  command->add_flag("--json", options.json, "Print JSON for scripts");
}

void add_time_options(CLI::App* command, ArchiveOptions& options) {
  command->add_option("--from", options.from, "From this lander time (seconds), inclusive");
  command->add_option("--to", options.to, "Up to this lander time (seconds), inclusive");
}

// Progress on standard error: one line per file, or a counting line on a terminal.
class ProgressPrinter {
 public:
  ProgressPrinter() : terminal_(isatty(STDERR_FILENO) != 0) {}
  ~ProgressPrinter() {
    if (terminal_ && shown_) std::cerr << '\n';
  }
  void operator()(int number, int count, const std::string& file, int64_t done, int64_t total) {
    const int percent = total > 0 ? static_cast<int>(done * 100 / total) : 100;
    if (number != number_) {
      number_ = number;
      percent_ = -1;
      if (!terminal_) std::cerr << "archiving [" << number << '/' << count << "] " << file << '\n';
    }
    if (terminal_ && percent != percent_) {
      percent_ = percent;
      shown_ = true;
      std::cerr << "\rarchiving [" << number << '/' << count << "] " << file << "  " << percent << "%   " << std::flush;
    }
  }

 private:
  bool terminal_;
  bool shown_ = false;
  int number_ = 0;
  int percent_ = -1;
};

// Ctrl+C during an ingest stops it after the file being written is rolled back; what was
// committed before stays.
std::atomic<bool> interrupted{false};
void on_interrupt(int) { interrupted = true; }

void run_add(const ArchiveOptions& options) {
  const Configuration config = load_cli_configuration(options.base, true);
  const std::unique_ptr<Archive> archive = archive::open_archive(options.archive);
  archive::IngestOptions ingest;
  ingest.type = *parse_format_tag(options.type);
  ingest.byte_reverse = options.byte_reverse == "on";
  ingest.recursive = options.recursive;
  archive::IngestReport report;
  {
    ProgressPrinter printer;
    const auto previous = std::signal(SIGINT, on_interrupt);
    report = archive->ingest(options.paths, config, ingest, std::ref(printer), &interrupted);
    std::signal(SIGINT, previous);
  }
  if (options.json) {
    Json added = Json::array(), skipped = Json::array(), failed = Json::array();
    for (const auto& a : report.added) {
      added.push_back(Json{{"file", a.file},
                           {"file_id", a.file_id},
                           {"frames", a.frames},
                           {"hk_count", a.hk_count},
                           {"science_count", a.science_count},
                           {"information_count", a.information_count},
                           {"tests", a.tests},
                           {"replaced", a.replaced}});
    }
    for (const auto& s : report.skipped) skipped.push_back(Json{{"file", s.file}, {"reason", s.reason}});
    for (const auto& f : report.failed) failed.push_back(Json{{"file", f.file}, {"error", f.error}});
    print_json(Json{{"added", added}, {"skipped", skipped}, {"failed", failed}, {"cancelled", report.cancelled}});
  } else {
    for (const auto& a : report.added) {
      std::cout << (a.replaced ? "replaced " : "added ") << a.file << " as file " << a.file_id << ": " << a.frames
                << " frames, " << a.hk_count << " housekeeping, " << a.science_count << " science, "
                << a.information_count << " information, " << a.tests << " tests\n";
    }
    for (const auto& s : report.skipped) std::cout << "skipped " << s.file << ": " << s.reason << '\n';
    for (const auto& f : report.failed) std::cout << "failed " << f.file << ": " << f.error << '\n';
    if (report.cancelled) std::cout << "cancelled: the files added before stay in the archive\n";
  }
  if (!report.failed.empty()) {
    throw CommandError(std::to_string(report.failed.size()) + (report.failed.size() == 1 ? " file" : " files") +
                       " could not be archived");
  }
  if (report.cancelled) throw CommandError("the ingest was cancelled");
}

void run_files(const ArchiveOptions& options) {
  const auto files = archive::open_archive(options.archive)->files();
  if (options.json) {
    Json list = Json::array();
    for (const auto& f : files) {
      list.push_back(Json{{"file_id", f.file_id},
                          {"path", f.path},
                          {"name", f.name},
                          {"type", f.type},
                          {"byte_reverse", f.byte_reverse},
                          {"sha256", f.sha256},
                          {"size", f.size},
                          {"frames", f.frames},
                          {"first_lander_time", optional_json(f.first_lander_time)},
                          {"last_lander_time", optional_json(f.last_lander_time)},
                          {"hk_count", f.hk_count},
                          {"science_count", f.science_count},
                          {"information_count", f.information_count},
                          {"tests", f.tests},
                          {"findings", f.findings}});
    }
    print_json(Json{{"files", list}});
    return;
  }
  std::cout << "File\tName\tType\tByte reverse\tFrames\tFirst lander time\tLast lander time\tTests\tFindings\tPath\n";
  for (const auto& f : files) {
    const auto time = [](const std::optional<int32_t>& t) { return t ? std::to_string(*t) : std::string("-"); };
    std::cout << f.file_id << '\t' << f.name << '\t' << f.type << '\t' << (f.byte_reverse ? "on" : "off") << '\t'
              << f.frames << '\t' << time(f.first_lander_time) << '\t' << time(f.last_lander_time) << '\t' << f.tests
              << '\t' << f.findings << '\t' << f.path << '\n';
  }
}

void run_trend(const ArchiveOptions& options) {
  const std::unique_ptr<Archive> archive = archive::open_archive(options.archive);
  archive::TrendQuery query;
  if (options.sensors != "all") {
    // Numbers as the single-file command takes them; the archive says which it does not hold.
    query.sensors = parse_sensor_list(options.sensors, std::numeric_limits<int16_t>::max());
  }
  query.from = options.from;
  query.to = options.to;
  query.cold_junction = options.cold_junction == "on";
  const auto trends = archive->trend(query);
  if (options.json) {
    // Streamed: a campaign holds millions of points a sensor. Telemetry repeats its values, so
    // the text of the previous value is reused when the next one is the same.
    std::string out = "{\n  \"sensors\": [";
    double previous = 0;
    std::string previous_text = Json(previous).dump();
    for (size_t s = 0; s < trends.size(); ++s) {
      const auto& one = trends[s];
      out += std::string(s ? "," : "") + "\n    {\"number\": " + std::to_string(one.number) +
             ", \"name\": " + Json(one.name).dump() + ", \"unit\": " + Json(one.unit).dump() + ", \"points\": [";
      for (size_t p = 0; p < one.points.size(); ++p) {
        const auto& point = one.points[p];
        if (std::bit_cast<uint64_t>(point.value) != std::bit_cast<uint64_t>(previous)) {
          previous = point.value;
          previous_text = Json(previous).dump();
        }
        out += p ? ", [" : "[";
        out += std::to_string(point.lander_time);
        out += ", ";
        out += previous_text;
        out += ", ";
        out += std::to_string(point.file_id);
        out += ']';
        if (out.size() > (1 << 20)) {
          std::cout << out;
          out.clear();
        }
      }
      out += "]}";
    }
    out += trends.empty() ? "]\n}\n" : "\n  ]\n}\n";
    std::cout << out;
    return;
  }
  std::cout << "Sensor\tName\tUnit\tFile\tLander time\tValue\n";
  for (const auto& one : trends) {
    for (const auto& point : one.points) {
      std::cout << one.number << '\t' << one.name << '\t' << one.unit << '\t' << point.file_id << '\t'
                << point.lander_time << '\t' << general_text(point.value) << '\n';
    }
  }
}

void run_tests(const ArchiveOptions& options) {
  archive::TestQuery query;
  query.mode = options.mode;
  query.failed_only = options.failed;
  const auto tests = archive::open_archive(options.archive)->tests(query);
  if (options.json) {
    // One test at a time: a campaign's tests hold hundreds of thousands of items.
    std::cout << "{\n  \"tests\": [";
    for (size_t n = 0; n < tests.size(); ++n) {
      const auto& t = tests[n];
      Json items = Json::array();
      for (const auto& i : t.items) {
        items.push_back(Json{{"table", i.table}, {"name", i.name}, {"value", i.value}, {"result", i.result}});
      }
      Json test{{"file_id", t.file_id},
                {"mode", t.mode},
                {"number", t.number},
                {"sequence_count", t.sequence_count},
                {"lander_time", t.lander_time},
                {"overall", optional_json(t.overall)},
                {"packet_message", t.packet_message},
                {"rf_frequency_text", t.rf_frequency_text},
                {"items", std::move(items)}};
      if (!t.overall) test["error"] = t.error;
      std::cout << (n ? ",\n    " : "\n    ") << test.dump();
    }
    std::cout << (tests.empty() ? "]\n}\n" : "\n  ]\n}\n");
    return;
  }
  std::cout << "File\tMode\tTest\tSeq. Count\tLander time\tResult\tFailed items\n";
  for (const auto& t : tests) {
    std::string failed;
    for (const auto& i : t.items) {
      if (i.failed && i.table != "subsystems") failed += (failed.empty() ? "" : ", ") + i.name;
    }
    std::cout << t.file_id << '\t' << t.mode << '\t' << t.number << '\t' << t.sequence_count << '\t' << t.lander_time
              << '\t' << (t.overall ? *t.overall : "not evaluated: " + t.error) << '\t' << failed << '\n';
  }
}

void run_events(const ArchiveOptions& options) {
  archive::EventQuery query;
  query.contains = options.contains;
  query.from = options.from;
  query.to = options.to;
  const auto events = archive::open_archive(options.archive)->events(query);
  if (options.json) {
    Json list = Json::array();
    for (const auto& e : events) {
      list.push_back(Json{{"file_id", e.file_id},
                          {"index", e.index},
                          {"lander_time", e.lander_time},
                          {"label", e.label},
                          {"lines", e.lines}});
    }
    print_json(Json{{"events", list}});
    return;
  }
  for (const auto& e : events) {
    std::cout << "file " << e.file_id << "  information " << e.index << "  lander time " << e.lander_time << "  "
              << e.label << '\n';
    for (const auto& line : e.lines) {
      if (!line.empty()) std::cout << "    " << line << '\n';
    }
  }
}

void run_item_history(const ArchiveOptions& options) {
  const auto history = archive::open_archive(options.archive)->item_history(options.mode, options.item);
  if (options.json) {
    Json list = Json::array();
    for (const auto& h : history) {
      list.push_back(Json{{"file_id", h.file_id},
                          {"test", h.test_number},
                          {"lander_time", h.lander_time},
                          {"overall", optional_json(h.overall)},
                          {"table", h.item.table},
                          {"name", h.item.name},
                          {"value", h.item.value},
                          {"result", h.item.result}});
    }
    print_json(Json{{"mode", options.mode}, {"item", options.item}, {"history", list}});
    return;
  }
  std::cout << "File\tTest\tLander time\tTable\tValue\tResult\n";
  for (const auto& h : history) {
    std::cout << h.file_id << '\t' << h.test_number << '\t' << h.lander_time << '\t' << h.item.table << '\t'
              << h.item.value << '\t' << h.item.result << '\n';
  }
}

}  // namespace

void add_archive_command(CLI::App& app) {
  auto options = std::make_shared<ArchiveOptions>();
  CLI::App* archive = app.add_subcommand("archive", "The campaign archive: every file of a campaign in one history");
  archive->require_subcommand(1);

  CLI::App* add = archive->add_subcommand("add", "Archive telemetry files (folders with --recursive)");
  add->add_option("PATH", options->paths, "Telemetry files or folders")->required();
  add->add_option("-t,--type", options->type, "File format: CSS, QM, GRM, FM or ZEB")
      ->required()
      ->check(CLI::IsMember({"CSS", "QM", "GRM", "FM", "ZEB"}, CLI::ignore_case));
  add->add_flag("--recursive", options->recursive, "Walk folders among the paths");
  add_base_option(add, options->base);
  add->add_option("--byte-reverse", options->byte_reverse, "Byte order: on (first byte low) or off")
      ->check(CLI::IsMember({"on", "off"}));
  add_archive_option(add, *options);
  add->callback([options] { run_add(*options); });

  CLI::App* files = archive->add_subcommand("files", "The archived files in ingest order");
  add_archive_option(files, *options);
  files->callback([options] { run_files(*options); });

  CLI::App* trend = archive->add_subcommand("trend", "Calibrated housekeeping values of sensors across the files");
  trend->add_option("--sensors", options->sensors, "Sensor numbers, comma-separated, or all")->required();
  add_time_options(trend, *options);
  trend->add_option("--cold-junction", options->cold_junction, "Add the cold-junction term to thermocouples")
      ->check(CLI::IsMember({"on", "off"}));
  add_archive_option(trend, *options);
  trend->callback([options] { run_trend(*options); });

  CLI::App* tests = archive->add_subcommand("tests", "Every short form test of the archived files, evaluated");
  tests->add_option("--mode", options->mode, "Test mode: cruise or eaft (default: both)")
      ->transform(CLI::IsMember({"cruise", "eaft"}, CLI::ignore_case));
  tests->add_flag("--failed", options->failed, "Only the tests that did not pass");
  add_archive_option(tests, *options);
  tests->callback([options] { run_tests(*options); });

  CLI::App* events = archive->add_subcommand("events", "The information packets' translations across the files");
  events->add_option("--contains", options->contains, "Only events whose label or lines hold this text");
  add_time_options(events, *options);
  add_archive_option(events, *options);
  events->callback([options] { run_events(*options); });

  CLI::App* history = archive->add_subcommand("item-history", "One test item's value and verdict in every test");
  history->add_option("--mode", options->mode, "Test mode: cruise or eaft")
      ->required()
      ->transform(CLI::IsMember({"cruise", "eaft"}, CLI::ignore_case));
  history->add_option("--item", options->item, "Item name as the evaluation shows it (\"V 7\")")->required();
  add_archive_option(history, *options);
  history->callback([options] { run_item_history(*options); });
}

}  // namespace morvane::cli
