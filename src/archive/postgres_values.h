// SPDX-License-Identifier: MIT
// How archive values travel to and from a PostgreSQL server: parameters and result cells in the
// binary wire format, rows of a bulk load in COPY's text format.
#pragma once

#include <libpq-fe.h>

#include <string>
#include <string_view>
#include <vector>

#include "archive/database.h"

namespace morvane::archive::postgres {

// Parameters ready for PQexecParams; the pointers point into this object.
class Parameters {
 public:
  explicit Parameters(const std::vector<Value>& values);
  Parameters(const Parameters&) = delete;
  Parameters& operator=(const Parameters&) = delete;

  int count() const { return static_cast<int>(values_.size()); }
  const Oid* types() const { return types_.data(); }
  const char* const* values() const { return values_.data(); }
  const int* lengths() const { return lengths_.data(); }
  const int* formats() const { return formats_.data(); }

 private:
  std::vector<std::string> storage_;
  std::vector<Oid> types_;
  std::vector<const char*> values_;
  std::vector<int> lengths_;
  std::vector<int> formats_;
};

// The cell of a binary-format result as the seam promises it: integers and booleans as
// std::int64_t, floating point as double (a whole NUMERIC that fits as std::int64_t, like
// SQLite's integer sums), texts as std::string, BYTEA as Blob. Returns false for a type the
// archive does not use.
bool decode_cell(Oid type, std::string_view bytes, Value& cell);

// Appends one row in COPY's text format (tab-separated, \N for NULL, a newline at the end).
void append_copy_row(const Row& row, std::string& out);

}  // namespace morvane::archive::postgres
