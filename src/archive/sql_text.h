// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "archive/database.h"

namespace morvane::archive {

// "INSERT INTO table (a, b) VALUES (?1, ?2)" in the dialect's placeholders, with a RETURNING
// clause when returning is not empty.
std::string insert_sql(const Dialect& dialect, const std::string& table, const std::vector<std::string>& columns,
                       const std::string& returning = {});

// Typed reads of a result cell; NULL reads as 0 or "".
int64_t integer_of(const Value& value);
double real_of(const Value& value);
std::string text_of(const Value& value);
const Blob& blob_of(const Value& value);

}  // namespace morvane::archive
