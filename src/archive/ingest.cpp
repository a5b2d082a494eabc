// SPDX-License-Identifier: MIT
// Ingest: each file is hashed, loaded into a session of its own, and written in one write
// transaction, so that a failed, cancelled or killed ingest leaves the archive as it was.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <limits>

#include "archive/archive.h"
#include "core/error.h"
#include "core/file_digest.h"
#include "core/session.h"
#include "functest/short_message_load.h"
#include "functest/short_test_evaluation.h"
#include "functest/short_test_data.h"
#include "functest/short_test_ranges.h"
#include "archive/series_blob.h"
#include "sql_text.h"
#include "stored_items.h"
#include "decoders/hk_decode.h"
#include "decoders/information_translation.h"
#include "decoders/information_words.h"
#include "decoders/integrity.h"

namespace morvane::archive {
namespace {

namespace fs = std::filesystem;

// Catalogue entries and housekeeping values go in chunks of this many entries: small enough to
// keep an ingest's memory flat, large enough that a file of a gibibyte is a few thousand rows.
constexpr int32_t kChunkEntries = 65536;

class CancelCheck {
 public:
  explicit CancelCheck(const std::atomic<bool>* flag) : flag_(flag) {}
  void operator()() const {
    if (flag_ && flag_->load()) raise(ErrorNumber::Cancelled, "the ingest was cancelled");
  }

 private:
  const std::atomic<bool>* flag_;
};

std::string utc_now() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

// The paths to ingest: files as given, folders walked when recursive (in name order), anything
// else a failure.
struct Candidate {
  std::string path;
  std::string error;
};
std::vector<Candidate> expand_paths(const std::vector<std::string>& paths, bool recursive) {
  std::vector<Candidate> candidates;
  for (const std::string& given : paths) {
    std::error_code error;
    const fs::path path = fs::absolute(fs::path(given), error).lexically_normal();
    if (fs::is_directory(path, error)) {
      if (!recursive) {
        candidates.push_back({given, "is a folder (give --recursive to walk it)"});
        continue;
      }
      std::vector<std::string> found;
      for (auto it = fs::recursive_directory_iterator(path, fs::directory_options::skip_permission_denied, error);
           it != fs::recursive_directory_iterator(); it.increment(error)) {
        if (error) break;
        if (it->is_regular_file(error)) found.push_back(it->path().string());
      }
      std::sort(found.begin(), found.end());
      for (auto& file : found) candidates.push_back({std::move(file), {}});
      if (error) candidates.push_back({path.string(), "cannot walk the folder: " + error.message()});
    } else {
      candidates.push_back({path.string(), {}});
    }
  }
  return candidates;
}

std::string error_text(const std::exception& error) {
  if (const auto* runtime = dynamic_cast<const RuntimeError*>(&error)) return runtime->message();
  return error.what();
}

struct TestResult {
  std::string mode;
  int32_t number = 0;
  int32_t science_index = 0;
  const Packet_Entry* entry = nullptr;
  std::optional<ShortTestEvaluation> evaluation;
  std::string limit_file;
  std::string error;
};

// The information entries whose lander time lies in a window, in list order, found through an
// index by time built once per file.
class InformationByTime {
 public:
  explicit InformationByTime(const EntryList& list) {
    by_time_.reserve(static_cast<size_t>(list.size()));
    for (int32_t i = 1; i <= list.size(); ++i) by_time_.emplace_back(list[i].Lander_Time, i);
    std::sort(by_time_.begin(), by_time_.end());
  }
  // Entries of list with from < time < to, in list order, into out.
  void between(const EntryList& list, int32_t from, int32_t to, EntryList& out) const {
    std::vector<int32_t> indices;
    for (auto it = std::upper_bound(by_time_.begin(), by_time_.end(), std::pair{from, std::numeric_limits<int32_t>::max()});
         it != by_time_.end() && it->first < to; ++it) {
      indices.push_back(it->second);
    }
    std::sort(indices.begin(), indices.end());
    out.clear();
    for (int32_t i : indices) out.push_back(list[i]);
  }

 private:
  std::vector<std::pair<int32_t, int32_t>> by_time_;
};

// Every short form test of both modes, each evaluated as functest --test evaluates it and
// handed to take one at a time (an evaluation is tens of kilobytes; a long file has thousands).
void evaluate_tests(Session& session, const CancelCheck& cancel, const std::function<void(const TestResult&)>& take) {
  // The evaluation looks for its RF frequency event among the information entries of the test's
  // window, walking the whole list for each test: over a long file that is quadratic. It is
  // given the list narrowed to the entries of that window (in list order, so it finds the same
  // event); the full list is put back afterwards.
  EntryList information;
  std::swap(information, session.catalogue.Information_List);
  struct Restore {
    EntryList& full;
    EntryList& in_session;
    ~Restore() { std::swap(full, in_session); }
  } restore{information, session.catalogue.Information_List};
  const InformationByTime by_time(information);
  for (const TestMode mode : {TestMode::CruisePhase, TestMode::EAFT}) {
    session.Test_Mode = std::string(test_mode_text(mode));
    const ShortTestList list = find_short_tests(session, mode);
    if (list.Test_Count() == 0) continue;
    // One limit file serves every test of the mode: read once.
    const std::string limit_file = test_ranges_path(session.config.Egse_Path, session.File_Type, mode);
    std::optional<TestRanges> ranges;
    std::string ranges_error;
    try {
      ranges = read_test_ranges(limit_file);
    } catch (const RuntimeError& error) {
      ranges_error = error.message();
    }
    for (int32_t line = 1; line <= list.Test_Count(); ++line) {
      cancel();
      TestResult result;
      result.mode = mode == TestMode::EAFT ? "eaft" : "cruise";
      result.number = line;
      result.science_index = science_index_of_line(list, line);
      result.entry = &session.catalogue.Science_List.at(result.science_index);
      result.limit_file = limit_file;
      result.error = ranges_error;
      if (ranges) {
        try {
          const TestPackets packets = collect_test_packets(session.catalogue, result.science_index);
          by_time.between(information, packets.Start_Time,
                          static_cast<int32_t>(std::min<int64_t>(int64_t{packets.Start_Time} + kTestWindowSeconds,
                                                                 std::numeric_limits<int32_t>::max())),
                          session.catalogue.Information_List);
          const TestReadings readings = Load_Test_Data(session, packets);
          result.evaluation = evaluate_short_test(session.config, mode, packets, readings, *ranges);
        } catch (const RuntimeError& error) {
          result.error = error.message();
        }
      }
      take(result);
    }
  }
}

// Writes one loaded file's rows under file_id; the caller holds the write transaction.
class FileWriter {
 public:
  FileWriter(Database& database, int64_t file_id, Session& session, const CancelCheck& cancel)
      : db_(database), file_id_(file_id), session_(session), cancel_(cancel) {}

  void configuration() {
    const Configuration& config = session_.config;
    std::vector<Row> rows;
    for (int s = 1; s <= config.Sensor_Count(); ++s) {
      const SensorRecord& record = config.sensor(s);
      rows.push_back({file_id_, int64_t{s}, record.Sensor_Name, record.Sensor_Unit, int64_t{record.Byte_Offset},
                      int64_t{record.Channel_ID}, int64_t{record.Scale_Exponent}});
    }
    db_.append("sensors", {"file_id", "number", "name", "unit", "byte_offset", "channel_id", "scale_exponent"}, rows);
    rows.clear();
    for (int k = 1; k <= config.Pressure_Count(); ++k) {
      const PressureRecord& record = config.pressure(k);
      rows.push_back({file_id_, int64_t{k}, int64_t{record.Sensor_Number}, record.C1, record.C2});
    }
    db_.append("pressure_sensors", {"file_id", "number", "sensor_number", "c1", "c2"}, rows);
    rows.clear();
    for (int i = 1; i <= config.NType.count(); ++i) {
      rows.push_back({file_id_, int64_t{i}, config.NType.x(i), config.NType.y(i)});
    }
    db_.append("ntype_points", {"file_id", "number", "microvolts", "celsius"}, rows);
  }

  void catalogue_list(const char* name, const EntryList& list) {
    for (int32_t first = 1; first <= list.size(); first += kChunkEntries) {
      cancel_();
      const int32_t last = std::min(list.size(), first + kChunkEntries - 1);
      std::vector<int32_t> frames, lengths, positions, sequences, times;
      std::vector<int16_t> flags;
      std::vector<uint8_t> labels;
      Value low, high;
      for (int32_t k = first; k <= last; ++k) {
        const Packet_Entry& e = list[k];
        frames.push_back(e.Packet_Frame);
        lengths.push_back(e.Packet_Length);
        positions.push_back(e.Packet_Position);
        sequences.push_back(e.Sequence_Count);
        times.push_back(e.Lander_Time);
        flags.push_back(e.Segment_Flags);
        labels.push_back(static_cast<uint8_t>(e.Label));
        if (e.Sequence_Count != -1) {  // slots carry no time
          low = std::holds_alternative<int64_t>(low) ? std::min(std::get<int64_t>(low), int64_t{e.Lander_Time})
                                                      : int64_t{e.Lander_Time};
          high = std::holds_alternative<int64_t>(high) ? std::max(std::get<int64_t>(high), int64_t{e.Lander_Time})
                                                        : int64_t{e.Lander_Time};
        }
      }
      db_.append("catalogue_chunks",
                 {"file_id", "list", "first_index", "entry_count", "min_lander_time", "max_lander_time", "frames",
                  "lengths", "positions", "sequence_counts", "lander_times", "segment_flags", "labels"},
                 {{file_id_, std::string(name), int64_t{first}, int64_t{last - first + 1}, low, high, pack_int32(frames),
                   pack_int32(lengths), pack_int32(positions), pack_int32(sequences), pack_int32(times),
                   pack_int16(flags), pack_uint8(labels)}});
    }
  }

  // The calibrated value of every sensor in every housekeeping packet, with and (where it
  // differs) without the cold-junction term. A value depends only on the sensor, its byte and
  // the board temperature byte, so each is computed once by the housekeeping page's own
  // conversion and looked up after.
  void housekeeping_values() {
    const Configuration& config = session_.config;
    const HKSensorTable& bytes = session_.HK_Sensor_Data;
    const EntryList& list = session_.catalogue.HK_List;
    const int sensors = config.Sensor_Count();
    if (sensors == 0 || list.empty()) return;
    // The bytes are read a row at a time below; these raise what at() would for a short table.
    bytes.at(std::max(sensors, 28), list.size());
    std::vector<double> board_term(256);
    std::vector<uint8_t> board_known(256);
    std::vector<double> with_term(static_cast<size_t>(sensors) * 65536);
    std::vector<uint8_t> with_known(with_term.size());
    std::vector<double> without_term(static_cast<size_t>(sensors) * 256);
    std::vector<uint8_t> without_known(without_term.size());
    std::vector<std::vector<double>> on(static_cast<size_t>(sensors)), off(static_cast<size_t>(sensors));
    std::vector<const uint8_t*> rows_of_chunk;
    for (int32_t first = 1; first <= list.size(); first += kChunkEntries) {
      cancel_();
      const int32_t last = std::min(list.size(), first + kChunkEntries - 1);
      rows_of_chunk.clear();
      for (int32_t k = first; k <= last; ++k) {
        const uint8_t* row = bytes.row(k);
        rows_of_chunk.push_back(row);
        const uint8_t board = row[27];
        if (!board_known[board]) {
          board_term[board] = board_cold_junction_term(config, board);
          board_known[board] = 1;
        }
      }
      // Sensor by sensor, so that one sensor's table of values stays in the cache.
      for (int s = 1; s <= sensors; ++s) {
        const size_t column = static_cast<size_t>(s - 1);
        double* with_values = &with_term[column << 16];
        uint8_t* with_flags = &with_known[column << 16];
        double* without_values = &without_term[column * 256];
        uint8_t* without_flags = &without_known[column * 256];
        auto& with = on[column];
        auto& without = off[column];
        with.clear();
        without.clear();
        for (const uint8_t* row : rows_of_chunk) {
          const uint8_t board = row[27];
          const uint8_t byte = row[column];
          const size_t slot = (static_cast<size_t>(board) << 8) | byte;
          if (!with_flags[slot]) {
            with_values[slot] = hk_byte_value(config, s, byte, board_term[board]).value;
            with_flags[slot] = 1;
          }
          if (!without_flags[byte]) {
            without_values[byte] = hk_byte_value(config, s, byte, 0).value;
            without_flags[byte] = 1;
          }
          with.push_back(with_values[slot]);
          without.push_back(without_values[byte]);
        }
      }
      std::vector<Row> rows;
      for (int s = 1; s <= sensors; ++s) {
        const auto& with = on[static_cast<size_t>(s - 1)];
        const auto& without = off[static_cast<size_t>(s - 1)];
        rows.push_back(values_row(s, 1, first, with));
        if (!std::equal(with.begin(), with.end(), without.begin(), without.end(),
                        [](double a, double b) { return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b); })) {
          rows.push_back(values_row(s, 0, first, without));
        }
      }
      db_.append("hk_values",
                 {"file_id", "sensor", "cold_junction", "first_index", "entry_count", "encoding", "palette", "data"},
                 rows);
    }
    // The unit a sensor's conversion gives (the trend shows the last packet's).
    const DecodedHousekeeping last = decode_housekeeping(config, bytes, list.size());
    for (int s = 1; s <= sensors; ++s) {
      const std::string& unit = last.sensor(s).unit;
      db_.query("UPDATE sensors SET unit = " + db_.dialect().placeholder(1) + " WHERE file_id = " +
                    db_.dialect().placeholder(2) + " AND number = " + db_.dialect().placeholder(3),
                {unit, file_id_, int64_t{s}});
    }
  }

  int64_t tests() {
    const Dialect& dialect = db_.dialect();
    const std::string insert_test =
        insert_sql(dialect, "tests",
                   {"file_id", "mode", "number", "science_index", "sequence_count", "lander_time", "overall",
                    "packet_message", "rf_frequency_text", "limit_file", "error"},
                   "test_id");
    const std::vector<std::string> item_columns = {"test_id",  "position", "item_table",    "name",
                                                   "value",    "result",   "failed",        "rise_28v",
                                                   "rise_5v",  "initial_value", "final_value", "increase"};
    std::vector<Row> item_rows;
    int64_t count = 0;
    evaluate_tests(session_, cancel_, [&](const TestResult& result) {
      ++count;
      const ShortTestEvaluation* test = result.evaluation ? &*result.evaluation : nullptr;
      const auto ids = db_.query(
          insert_test,
          {file_id_, result.mode, int64_t{result.number}, int64_t{result.science_index},
           int64_t{result.entry->Sequence_Count}, int64_t{result.entry->Lander_Time},
           test ? Value(test->overall.text) : Value(), test ? test->packet_message.text : std::string(),
           test ? test->rf_frequency_text() : std::string(), result.limit_file, result.error});
      if (!test) return;
      const int64_t test_id = integer_of(ids.at(0).at(0));
      const auto items = evaluation_items(*test);
      for (size_t i = 0; i < items.size(); ++i) {
        const StoredItem& item = items[i];
        const auto optional = [](const std::optional<std::string>& text) { return text ? Value(*text) : Value(); };
        item_rows.push_back({test_id, static_cast<int64_t>(i + 1), item.table, item.name, item.value, item.result,
                             int64_t{item.failed}, optional(item.rise_28v), optional(item.rise_5v),
                             optional(item.initial), optional(item.final), optional(item.increase)});
      }
      if (item_rows.size() >= static_cast<size_t>(kChunkEntries)) {
        db_.append("test_items", item_columns, item_rows);
        item_rows.clear();
      }
    });
    db_.append("test_items", item_columns, item_rows);
    return count;
  }

  // The five translation lines of every information entry, as morvane-cli info gives them: the
  // information window's own steps (its words, then the translation) without the drawing of
  // the raw words, which the archive does not keep. ZEB records are never translated.
  void events() {
    const EntryList& list = session_.catalogue.Information_List;
    const bool translated = session_.File_Type != FileFormat::ZEB;
    const TelemetryFile& file = session_.telemetry();
    InformationWords words;
    Drawing memory;
    std::vector<Row> rows;
    const auto flush = [&] {
      db_.append("events",
                 {"file_id", "information_index", "frame", "sequence_count", "lander_time", "label", "line1", "line2",
                  "line3", "line4", "line5", "error"},
                 rows);
      rows.clear();
    };
    for (int32_t i = 1; i <= list.size(); ++i) {
      if (i % kChunkEntries == 0) {
        cancel_();
        flush();
      }
      const Packet_Entry& entry = list[i];
      Translation lines{};
      std::string error;
      if (translated) {
        try {
          Load_Information(file, entry, session_.Byte_Reverse, words);
          memory.clear();
          lines = Translate_Information(session_.config, entry.Label, words, memory);
        } catch (const RuntimeError& failure) {
          error = failure.message();
        }
      }
      rows.push_back({file_id_, int64_t{i}, int64_t{entry.Packet_Frame}, int64_t{entry.Sequence_Count},
                      int64_t{entry.Lander_Time}, std::string(label_text(entry.Label)), lines[0].text, lines[1].text,
                      lines[2].text, lines[3].text, lines[4].text, error});
    }
    flush();
  }

  int64_t findings() {
    const IntegrityReport report = check_integrity(session_);
    std::vector<Row> rows;
    for (size_t i = 0; i < report.findings.size(); ++i) {
      const Finding& finding = report.findings[i];
      rows.push_back({file_id_, static_cast<int64_t>(i + 1), std::string(finding_kind_name(finding.kind)),
                      std::string(catalogue_list_name(finding.list)), int64_t{finding.index}, finding.text});
    }
    db_.append("findings", {"file_id", "position", "kind", "list", "entry_index", "text"}, rows);
    return static_cast<int64_t>(report.findings.size());
  }

 private:
  Row values_row(int sensor, int cold_junction, int32_t first, const std::vector<double>& values) const {
    EncodedValues encoded = encode_values(values);
    return {file_id_,
            int64_t{sensor},
            int64_t{cold_junction},
            int64_t{first},
            static_cast<int64_t>(values.size()),
            std::move(encoded.encoding),
            std::move(encoded.palette),
            std::move(encoded.data)};
  }

  Database& db_;
  int64_t file_id_;
  Session& session_;
  const CancelCheck& cancel_;
};

// First and last lander time over the packets of the three lists (slots have none).
std::pair<Value, Value> time_span(const Catalogue& catalogue) {
  int64_t low = std::numeric_limits<int64_t>::max(), high = std::numeric_limits<int64_t>::min();
  for (const EntryList* list : {&catalogue.HK_List, &catalogue.Science_List, &catalogue.Information_List}) {
    for (int32_t k = 1; k <= list->size(); ++k) {
      const Packet_Entry& entry = (*list)[k];
      if (entry.Sequence_Count == -1) continue;
      low = std::min(low, int64_t{entry.Lander_Time});
      high = std::max(high, int64_t{entry.Lander_Time});
    }
  }
  if (low > high) return {Value(), Value()};
  return {low, high};
}

const std::vector<std::string> kFileColumns = {
    "path", "name", "type", "byte_reverse", "sha256", "size", "frames", "first_lander_time", "last_lander_time",
    "hk_count", "science_count", "information_count", "tests", "findings", "complete_count", "concise_count",
    "auxiliary_count", "gc_spectrum_count", "isotope_packet_count", "isotope_spectrum_count",
    "progress_event_count", "warning_event_count", "memory_checksum_count", "memory_dump_count",
    "acceptance_success_count", "acceptance_failure_count", "unknown_count", "empty_count", "egse_path", "ad590_emf",
    "ingested_at"};

Row file_row(const Session& session, const std::string& path, const std::string& sha256, int64_t size) {
  const Catalogue& c = session.catalogue;
  const CatalogueCounters& n = c.counters;
  const auto [first, last] = time_span(c);
  return {path, fs::path(path).filename().string(), std::string(format_tag(session.File_Type)),
          int64_t{session.Byte_Reverse}, sha256, size, int64_t{session.Packet_Count}, first, last,
          int64_t{c.HK_Count()}, int64_t{c.Science_Count()}, int64_t{c.Information_Count()}, int64_t{0}, int64_t{0},
          int64_t{n.Complete_Count()}, int64_t{n.Concise_Count()}, int64_t{n.Auxiliary_Count()},
          int64_t{n.GC_Spectrum_Count()}, int64_t{n.Isotope_Packet_Count()}, int64_t{n.Isotope_Spectrum_Count()},
          int64_t{n.Progress_Event_Count()}, int64_t{n.Warning_Event_Count()}, int64_t{n.Memory_Checksum_Count()},
          int64_t{n.Memory_Dump_Count()}, int64_t{n.Acceptance_Success_Count()}, int64_t{n.Acceptance_Failure_Count()},
          int64_t{n.Unknown_Count()}, int64_t{n.Empty_Count()}, session.config.Egse_Path, session.config.AD590_EMF,
          utc_now()};
}

// Removes every row of an archived file (a changed log that is replaced).
void delete_file_rows(Database& db, int64_t file_id) {
  const std::string p = db.dialect().placeholder(1);
  db.query("DELETE FROM test_items WHERE test_id IN (SELECT test_id FROM tests WHERE file_id = " + p + ")", {file_id});
  for (const char* table : {"tests", "events", "findings", "hk_values", "catalogue_chunks", "sensors",
                            "pressure_sensors", "ntype_points", "files"}) {
    db.query(std::string("DELETE FROM ") + table + " WHERE file_id = " + p, {file_id});
  }
}

}  // namespace

IngestReport Archive::ingest(const std::vector<std::string>& paths, const Configuration& config,
                              const IngestOptions& options, const IngestProgress& progress,
                              const std::atomic<bool>* cancel_flag) {
  IngestReport report;
  const CancelCheck cancel(cancel_flag);
  const std::vector<Candidate> candidates = expand_paths(paths, options.recursive);
  Database& db = *database_;
  const Dialect& dialect = db.dialect();
  const std::string p1 = dialect.placeholder(1), p2 = dialect.placeholder(2), p3 = dialect.placeholder(3);
  const int count = static_cast<int>(candidates.size());
  for (int number = 1; number <= count; ++number) {
    const Candidate& candidate = candidates[static_cast<size_t>(number - 1)];
    if (!candidate.error.empty()) {
      report.failed.push_back({candidate.path, candidate.error});
      continue;
    }
    const std::string& path = candidate.path;
    try {
      cancel();
      std::error_code error;
      const auto size = static_cast<int64_t>(fs::file_size(path, error));
      if (error) raise(ErrorNumber::FileNotFound, path);
      // Progress: hashing is the first fifth of a file, loading the next two, writing the rest.
      const auto report_progress = [&](double fraction) {
        if (progress) progress(number, count, path, static_cast<int64_t>(fraction * static_cast<double>(size)), size);
      };
      const std::string sha256 = file_sha256(path, [&](int64_t done) {
        cancel();
        report_progress(0.2 * static_cast<double>(done) / static_cast<double>(std::max<int64_t>(size, 1)));
      });
      const std::string type(format_tag(options.type));
      const int64_t byte_reverse = options.byte_reverse;
      // A quick look before the load: the same content read the same way is already in.
      const auto same = [&] {
        return db.query("SELECT path FROM files WHERE sha256 = " + p1 + " AND type = " + p2 +
                            " AND byte_reverse = " + p3,
                        {sha256, type, byte_reverse});
      };
      if (auto rows = same(); !rows.empty()) {
        report.skipped.push_back({path, "same content already archived as " + text_of(rows[0][0])});
        continue;
      }

      Session session;
      session.config = config;  // a copy: decoding fills the records' working fields
      session.Byte_Reverse = options.byte_reverse;
      load_telemetry(session, path, options.type, [&](int64_t done, int64_t total) {
        cancel();
        report_progress(0.2 + 0.4 * static_cast<double>(done) / static_cast<double>(std::max<int64_t>(total, 1)));
      });

      Transaction transaction(db, Transaction::Kind::write);
      // Again under the write lock: another ingest may have put it in meanwhile.
      if (auto rows = same(); !rows.empty()) {
        report.skipped.push_back({path, "same content already archived as " + text_of(rows[0][0])});
        continue;
      }
      const auto previous = db.query("SELECT file_id FROM files WHERE path = " + p1 + " AND type = " + p2 +
                                         " AND byte_reverse = " + p3,
                                     {path, type, byte_reverse});
      std::vector<std::string> columns = kFileColumns;
      Row row = file_row(session, path, sha256, size);
      if (!previous.empty()) {
        // The log changed since it was archived: its rows are replaced, its number kept.
        const int64_t old_id = integer_of(previous[0][0]);
        delete_file_rows(db, old_id);
        columns.insert(columns.begin(), "file_id");
        row.insert(row.begin(), old_id);
      }
      const int64_t file_id = integer_of(db.query(insert_sql(dialect, "files", columns, "file_id"), row).at(0).at(0));

      FileWriter writer(db, file_id, session, cancel);
      writer.configuration();
      writer.catalogue_list("hk", session.catalogue.HK_List);
      writer.catalogue_list("science", session.catalogue.Science_List);
      writer.catalogue_list("information", session.catalogue.Information_List);
      report_progress(0.65);
      writer.housekeeping_values();
      report_progress(0.85);
      const int64_t tests = writer.tests();
      writer.events();
      const int64_t findings = writer.findings();
      db.query("UPDATE files SET tests = " + p1 + ", findings = " + p2 + " WHERE file_id = " + p3,
               {tests, findings, file_id});
      cancel();
      transaction.commit();
      report_progress(1.0);
      report.added.push_back({path, file_id, session.Packet_Count, session.catalogue.HK_Count(),
                              session.catalogue.Science_Count(), session.catalogue.Information_Count(), tests,
                              !previous.empty()});
    } catch (const RuntimeError& error) {
      if (error.number() == static_cast<int>(ErrorNumber::Cancelled)) {
        report.cancelled = true;
        break;
      }
      report.failed.push_back({path, error.message()});
    } catch (const std::exception& error) {
      report.failed.push_back({path, error_text(error)});
    }
  }
  return report;
}

}  // namespace morvane::archive
