// SPDX-License-Identifier: MIT
#include "schema.h"

#include <optional>
#include <string>
#include <vector>

#include "core/error.h"
#include "core/packet_entry.h"

namespace morvane::archive {
namespace {

// The schema, with {int}, {real}, {blob} and {id} standing for the dialect's types. Documented
// column by column in docs/archive.md; keep the two together.
constexpr const char* kSchema[] = {
    "CREATE TABLE IF NOT EXISTS archive_info (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS labels (code {int} PRIMARY KEY, text TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS files ("
    " file_id {id}, path TEXT NOT NULL, name TEXT NOT NULL, type TEXT NOT NULL, byte_reverse {int} NOT NULL,"
    " sha256 TEXT NOT NULL, size {int} NOT NULL, frames {int} NOT NULL,"
    " first_lander_time {int}, last_lander_time {int},"
    " hk_count {int} NOT NULL, science_count {int} NOT NULL, information_count {int} NOT NULL,"
    " tests {int} NOT NULL, findings {int} NOT NULL,"
    " complete_count {int} NOT NULL, concise_count {int} NOT NULL, auxiliary_count {int} NOT NULL,"
    " gc_spectrum_count {int} NOT NULL, isotope_packet_count {int} NOT NULL, isotope_spectrum_count {int} NOT NULL,"
    " progress_event_count {int} NOT NULL, warning_event_count {int} NOT NULL, memory_checksum_count {int} NOT NULL,"
    " memory_dump_count {int} NOT NULL, acceptance_success_count {int} NOT NULL,"
    " acceptance_failure_count {int} NOT NULL, unknown_count {int} NOT NULL, empty_count {int} NOT NULL,"
    " egse_path TEXT NOT NULL, ad590_emf {real} NOT NULL, ingested_at TEXT NOT NULL,"
    " UNIQUE (sha256, type, byte_reverse))",
    "CREATE INDEX IF NOT EXISTS files_by_path ON files (path, type, byte_reverse)",
    "CREATE TABLE IF NOT EXISTS sensors ("
    " file_id {int} NOT NULL REFERENCES files (file_id), number {int} NOT NULL, name TEXT NOT NULL,"
    " unit TEXT NOT NULL, byte_offset {int} NOT NULL, channel_id {int} NOT NULL, scale_exponent {int} NOT NULL,"
    " PRIMARY KEY (file_id, number))",
    "CREATE TABLE IF NOT EXISTS pressure_sensors ("
    " file_id {int} NOT NULL REFERENCES files (file_id), number {int} NOT NULL, sensor_number {int} NOT NULL,"
    " c1 {real} NOT NULL, c2 {real} NOT NULL, PRIMARY KEY (file_id, number))",
    "CREATE TABLE IF NOT EXISTS ntype_points ("
    " file_id {int} NOT NULL REFERENCES files (file_id), number {int} NOT NULL,"
    " microvolts {real} NOT NULL, celsius {real} NOT NULL, PRIMARY KEY (file_id, number))",
    "CREATE TABLE IF NOT EXISTS catalogue_chunks ("
    " file_id {int} NOT NULL REFERENCES files (file_id), list TEXT NOT NULL, first_index {int} NOT NULL,"
    " entry_count {int} NOT NULL, min_lander_time {int}, max_lander_time {int},"
    " frames {blob} NOT NULL, lengths {blob} NOT NULL, positions {blob} NOT NULL, sequence_counts {blob} NOT NULL,"
    " lander_times {blob} NOT NULL, segment_flags {blob} NOT NULL, labels {blob} NOT NULL,"
    " PRIMARY KEY (file_id, list, first_index))",
    "CREATE TABLE IF NOT EXISTS hk_values ("
    " file_id {int} NOT NULL REFERENCES files (file_id), sensor {int} NOT NULL, cold_junction {int} NOT NULL,"
    " first_index {int} NOT NULL, entry_count {int} NOT NULL, encoding TEXT NOT NULL, palette {blob} NOT NULL,"
    " data {blob} NOT NULL, PRIMARY KEY (sensor, cold_junction, file_id, first_index))",
    "CREATE INDEX IF NOT EXISTS hk_values_by_file ON hk_values (file_id)",
    "CREATE TABLE IF NOT EXISTS tests ("
    " test_id {id}, file_id {int} NOT NULL REFERENCES files (file_id), mode TEXT NOT NULL, number {int} NOT NULL,"
    " science_index {int} NOT NULL, sequence_count {int} NOT NULL, lander_time {int} NOT NULL, overall TEXT,"
    " packet_message TEXT NOT NULL, rf_frequency_text TEXT NOT NULL, limit_file TEXT NOT NULL, error TEXT NOT NULL,"
    " UNIQUE (file_id, mode, number))",
    "CREATE INDEX IF NOT EXISTS tests_by_mode ON tests (mode, file_id, number)",
    "CREATE TABLE IF NOT EXISTS test_items ("
    " test_id {int} NOT NULL REFERENCES tests (test_id), position {int} NOT NULL, item_table TEXT NOT NULL,"
    " name TEXT NOT NULL, value TEXT NOT NULL, result TEXT NOT NULL, failed {int} NOT NULL,"
    " rise_28v TEXT, rise_5v TEXT, initial_value TEXT, final_value TEXT, increase TEXT,"
    " PRIMARY KEY (test_id, position))",
    "CREATE INDEX IF NOT EXISTS test_items_by_name ON test_items (name)",
    "CREATE TABLE IF NOT EXISTS events ("
    " file_id {int} NOT NULL REFERENCES files (file_id), information_index {int} NOT NULL,"
    " frame {int} NOT NULL, sequence_count {int} NOT NULL, lander_time {int} NOT NULL, label TEXT NOT NULL,"
    " line1 TEXT NOT NULL, line2 TEXT NOT NULL, line3 TEXT NOT NULL, line4 TEXT NOT NULL, line5 TEXT NOT NULL,"
    " error TEXT NOT NULL, PRIMARY KEY (file_id, information_index))",
    "CREATE INDEX IF NOT EXISTS events_by_time ON events (lander_time)",
    "CREATE TABLE IF NOT EXISTS findings ("
    " file_id {int} NOT NULL REFERENCES files (file_id), position {int} NOT NULL, kind TEXT NOT NULL,"
    " list TEXT NOT NULL, entry_index {int} NOT NULL, text TEXT NOT NULL, PRIMARY KEY (file_id, position))",
};

std::string with_types(std::string sql, const Dialect& dialect) {
  const std::pair<const char*, const std::string*> types[] = {{"{int}", &dialect.integer_type},
                                                              {"{real}", &dialect.real_type},
                                                              {"{blob}", &dialect.blob_type},
                                                              {"{id}", &dialect.identity_key}};
  for (const auto& [name, type] : types) {
    for (size_t at = sql.find(name); at != std::string::npos; at = sql.find(name, at + type->size())) {
      sql.replace(at, std::string(name).size(), *type);
    }
  }
  return sql;
}

std::optional<int> stored_version(Database& database) {
  const auto rows = database.query("SELECT value FROM archive_info WHERE key = 'schema_version'");
  if (rows.empty()) return std::nullopt;
  return std::stoi(std::get<std::string>(rows.front().front()));
}

}  // namespace

void ensure_schema(Database& database) {
  // An archive in use is only read here, so that opening it never waits for an ingest.
  std::optional<int> current;
  try {
    current = stored_version(database);
  } catch (const RuntimeError&) {  // no archive_info table yet
  }
  if (current == kSchemaVersion) return;
  const Dialect& dialect = database.dialect();
  Transaction transaction(database, Transaction::Kind::write);
  for (const char* statement : kSchema) database.execute(with_types(statement, dialect));
  const auto version = stored_version(database);
  if (version && *version != kSchemaVersion) {
    raise(ErrorNumber::TypeMismatch, database.location() + " is an archive of schema version " +
                                         std::to_string(*version) + "; this program reads version " +
                                         std::to_string(kSchemaVersion));
  }
  if (!version) {
    database.query("INSERT INTO archive_info (key, value) VALUES (" + dialect.placeholder(1) + ", " +
                       dialect.placeholder(2) + ")",
                   {std::string("schema_version"), std::to_string(kSchemaVersion)});
    std::vector<Row> labels;
    for (int code = 0; code < kLabelCount; ++code) {
      labels.push_back({int64_t{code}, std::string(label_text(static_cast<LabelCode>(code)))});
    }
    database.append("labels", {"code", "text"}, labels);
  }
  transaction.commit();
}

}  // namespace morvane::archive
