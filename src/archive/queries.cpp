// SPDX-License-Identifier: MIT
// The archive's questions, each a few SQL statements in one read transaction.
#include <algorithm>
#include <cctype>
#include <map>

#include "archive/archive.h"
#include "core/error.h"
#include "archive/series_blob.h"
#include "sql_text.h"

namespace morvane::archive {
namespace {

// Builds a WHERE clause and its parameters in the dialect's placeholders.
class Conditions {
 public:
  explicit Conditions(const Dialect& dialect) : dialect_(dialect) {}
  // condition holds "{}" where the parameter goes.
  void add(const std::string& condition, Value value) {
    params_.push_back(std::move(value));
    std::string text = condition;
    text.replace(text.find("{}"), 2, dialect_.placeholder(static_cast<int>(params_.size())));
    add(text);
  }
  void add(const std::string& condition) { where_ += (where_.empty() ? " WHERE " : " AND ") + condition; }
  const std::string& where() const { return where_; }
  const std::vector<Value>& params() const { return params_; }

 private:
  const Dialect& dialect_;
  std::string where_;
  std::vector<Value> params_;
};

std::optional<std::string> optional_text(const Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return std::nullopt;
  return text_of(value);
}

std::optional<int32_t> optional_time(const Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return std::nullopt;
  return static_cast<int32_t>(integer_of(value));
}

// A LIKE pattern that finds text anywhere, its wildcards taken literally.
std::string contains_pattern(const std::string& text) {
  std::string pattern = "%";
  for (char c : text) {
    if (c == '%' || c == '_' || c == '\\') pattern += '\\';
    pattern += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return pattern + "%";
}

void check_mode(const std::string& mode) {
  if (!mode.empty() && mode != "cruise" && mode != "eaft") {
    raise(ErrorNumber::InvalidProcedureCall, "test mode \"" + mode + "\" is neither cruise nor eaft");
  }
}

}  // namespace

std::vector<FileRecord> Archive::files() {
  Transaction read(*database_, Transaction::Kind::read);
  const auto rows = database_->query(
      "SELECT file_id, path, name, type, byte_reverse, sha256, size, frames, first_lander_time, last_lander_time,"
      " hk_count, science_count, information_count, tests, findings FROM files ORDER BY file_id");
  read.commit();
  std::vector<FileRecord> files;
  for (const Row& r : rows) {
    files.push_back({integer_of(r[0]), text_of(r[1]), text_of(r[2]), text_of(r[3]), integer_of(r[4]) != 0,
                     text_of(r[5]), integer_of(r[6]), integer_of(r[7]), optional_time(r[8]), optional_time(r[9]),
                     integer_of(r[10]), integer_of(r[11]), integer_of(r[12]), integer_of(r[13]), integer_of(r[14])});
  }
  return files;
}

std::vector<TestRecord> Archive::tests(const TestQuery& query) {
  check_mode(query.mode);
  Conditions conditions(database_->dialect());
  if (!query.mode.empty()) conditions.add("t.mode = {}", query.mode);
  if (query.failed_only) conditions.add("(t.overall IS NULL OR t.overall <> 'Passed')");
  if (query.file_id) conditions.add("t.file_id = {}", *query.file_id);
  Transaction read(*database_, Transaction::Kind::read);
  const auto rows = database_->query(
      "SELECT t.test_id, t.file_id, t.mode, t.number, t.science_index, t.sequence_count, t.lander_time, t.overall,"
      " t.packet_message, t.rf_frequency_text, t.error FROM tests t" +
          conditions.where() + " ORDER BY t.file_id, t.mode, t.number",
      conditions.params());
  const auto items = database_->query(
      "SELECT i.test_id, i.item_table, i.name, i.value, i.result, i.failed FROM test_items i"
      " JOIN tests t ON t.test_id = i.test_id" +
          conditions.where() + " ORDER BY i.test_id, i.position",
      conditions.params());
  read.commit();
  std::vector<TestRecord> tests;
  std::map<int64_t, size_t> by_id;
  for (const Row& r : rows) {
    TestRecord test;
    test.test_id = integer_of(r[0]);
    test.file_id = integer_of(r[1]);
    test.mode = text_of(r[2]);
    test.number = static_cast<int32_t>(integer_of(r[3]));
    test.science_index = static_cast<int32_t>(integer_of(r[4]));
    test.sequence_count = static_cast<int32_t>(integer_of(r[5]));
    test.lander_time = static_cast<int32_t>(integer_of(r[6]));
    test.overall = optional_text(r[7]);
    test.packet_message = text_of(r[8]);
    test.rf_frequency_text = text_of(r[9]);
    test.error = text_of(r[10]);
    by_id[test.test_id] = tests.size();
    tests.push_back(std::move(test));
  }
  for (const Row& r : items) {
    const auto found = by_id.find(integer_of(r[0]));
    if (found == by_id.end()) continue;
    tests[found->second].items.push_back(
        {text_of(r[1]), text_of(r[2]), text_of(r[3]), text_of(r[4]), integer_of(r[5]) != 0});
  }
  return tests;
}

std::vector<SensorTrend> Archive::trend(const TrendQuery& query) {
  Database& db = *database_;
  const Dialect& dialect = db.dialect();
  Transaction read(db, Transaction::Kind::read);
  // Each sensor is named as the most recently archived file's configuration names it.
  std::map<int, SensorTrend> known;
  for (const Row& r : db.query("SELECT number, name, unit FROM sensors ORDER BY file_id")) {
    SensorTrend& sensor = known[static_cast<int>(integer_of(r[0]))];
    sensor.number = static_cast<int>(integer_of(r[0]));
    sensor.name = text_of(r[1]);
    sensor.unit = text_of(r[2]);
  }
  std::vector<int> numbers = query.sensors;
  if (numbers.empty()) {
    for (const auto& [number, sensor] : known) numbers.push_back(number);
  }
  std::vector<SensorTrend> trends;
  std::vector<double> values;
  for (int number : numbers) {
    const auto found = known.find(number);
    if (found == known.end()) {
      raise(ErrorNumber::SubscriptOutOfRange, "sensor " + std::to_string(number) + " is in no archived file");
    }
    SensorTrend trend = found->second;
    Conditions conditions(dialect);
    conditions.add("v.sensor = {}", int64_t{number});
    conditions.add("v.cold_junction >= {}", int64_t{query.cold_junction ? 1 : 0});
    if (query.from) conditions.add("c.max_lander_time >= {}", int64_t{*query.from});
    if (query.to) conditions.add("c.min_lander_time <= {}", int64_t{*query.to});
    const auto rows = db.query(
        "SELECT v.file_id, v.first_index, v.encoding, v.palette, v.data, c.lander_times FROM hk_values v"
        " JOIN catalogue_chunks c ON c.file_id = v.file_id AND c.list = 'hk' AND c.first_index = v.first_index" +
            conditions.where() + " ORDER BY v.file_id, v.first_index, v.cold_junction",
        conditions.params());
    std::pair<int64_t, int64_t> previous{-1, -1};
    for (const Row& r : rows) {
      const std::pair<int64_t, int64_t> chunk{integer_of(r[0]), integer_of(r[1])};
      if (chunk == previous) continue;  // the row without the term came first; this one has it
      previous = chunk;
      values.clear();
      decode_values(text_of(r[2]), blob_of(r[3]), blob_of(r[4]), values);
      const std::vector<int32_t> times = unpack_int32(blob_of(r[5]));
      if (times.size() != values.size()) {
        raise(ErrorNumber::SubscriptOutOfRange, "archive: a housekeeping chunk of file " +
                                                    std::to_string(chunk.first) + " has " +
                                                    std::to_string(values.size()) + " values for " +
                                                    std::to_string(times.size()) + " packets");
      }
      for (size_t i = 0; i < times.size(); ++i) {
        if ((query.from && times[i] < *query.from) || (query.to && times[i] > *query.to)) continue;
        trend.points.push_back({times[i], values[i], chunk.first});
      }
    }
    trends.push_back(std::move(trend));
  }
  read.commit();
  return trends;
}

std::vector<EventRecord> Archive::events(const EventQuery& query) {
  Conditions conditions(database_->dialect());
  if (query.from) conditions.add("lander_time >= {}", int64_t{*query.from});
  if (query.to) conditions.add("lander_time <= {}", int64_t{*query.to});
  if (!query.contains.empty()) {
    conditions.add("lower(label || ' ' || line1 || ' ' || line2 || ' ' || line3 || ' ' || line4 || ' ' || line5)"
                   " LIKE {} ESCAPE '\\'",
                   contains_pattern(query.contains));
  }
  Transaction read(*database_, Transaction::Kind::read);
  const auto rows = database_->query(
      "SELECT file_id, information_index, lander_time, label, line1, line2, line3, line4, line5 FROM events" +
          conditions.where() + " ORDER BY file_id, information_index",
      conditions.params());
  read.commit();
  std::vector<EventRecord> events;
  events.reserve(rows.size());
  for (const Row& r : rows) {
    events.push_back({integer_of(r[0]), static_cast<int32_t>(integer_of(r[1])), static_cast<int32_t>(integer_of(r[2])),
                      text_of(r[3]),
                      {text_of(r[4]), text_of(r[5]), text_of(r[6]), text_of(r[7]), text_of(r[8])}});
  }
  return events;
}

std::vector<ItemHistoryRow> Archive::item_history(const std::string& mode, const std::string& item) {
  check_mode(mode);
  if (mode.empty()) raise(ErrorNumber::InvalidProcedureCall, "an item's history needs a test mode");
  const Dialect& dialect = database_->dialect();
  Transaction read(*database_, Transaction::Kind::read);
  const auto rows = database_->query(
      "SELECT t.file_id, t.number, t.lander_time, t.overall, i.item_table, i.name, i.value, i.result, i.failed"
      " FROM test_items i JOIN tests t ON t.test_id = i.test_id WHERE t.mode = " +
          dialect.placeholder(1) + " AND i.name = " + dialect.placeholder(2) +
          " ORDER BY t.file_id, t.number, i.position",
      {mode, item});
  read.commit();
  std::vector<ItemHistoryRow> history;
  for (const Row& r : rows) {
    history.push_back({integer_of(r[0]), static_cast<int32_t>(integer_of(r[1])),
                       static_cast<int32_t>(integer_of(r[2])), optional_text(r[3]),
                       {text_of(r[4]), text_of(r[5]), text_of(r[6]), text_of(r[7]), integer_of(r[8]) != 0}});
  }
  return history;
}

}  // namespace morvane::archive
