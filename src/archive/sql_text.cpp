// SPDX-License-Identifier: MIT
#include "sql_text.h"

#include "core/error.h"

namespace morvane::archive {

std::string insert_sql(const Dialect& dialect, const std::string& table, const std::vector<std::string>& columns,
                       const std::string& returning) {
  std::string names, values;
  for (size_t i = 0; i < columns.size(); ++i) {
    names += (i ? ", " : "") + columns[i];
    values += (i ? ", " : "") + dialect.placeholder(static_cast<int>(i + 1));
  }
  std::string sql = "INSERT INTO " + table + " (" + names + ") VALUES (" + values + ")";
  if (!returning.empty()) sql += " RETURNING " + returning;
  return sql;
}

int64_t integer_of(const Value& value) {
  if (const auto* integer = std::get_if<int64_t>(&value)) return *integer;
  if (const auto* real = std::get_if<double>(&value)) return static_cast<int64_t>(*real);
  if (std::holds_alternative<std::monostate>(value)) return 0;
  raise(ErrorNumber::TypeMismatch, "archive: an integer column holds something else");
}

double real_of(const Value& value) {
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int64_t>(&value)) return static_cast<double>(*integer);
  if (std::holds_alternative<std::monostate>(value)) return 0;
  raise(ErrorNumber::TypeMismatch, "archive: a real column holds something else");
}

std::string text_of(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (std::holds_alternative<std::monostate>(value)) return {};
  raise(ErrorNumber::TypeMismatch, "archive: a text column holds something else");
}

const Blob& blob_of(const Value& value) {
  static const Blob empty;
  if (const auto* blob = std::get_if<Blob>(&value)) return *blob;
  if (std::holds_alternative<std::monostate>(value)) return empty;
  raise(ErrorNumber::TypeMismatch, "archive: a BLOB column holds something else");
}

}  // namespace morvane::archive
