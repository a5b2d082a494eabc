// SPDX-License-Identifier: MIT
#pragma once

#include "archive/database.h"

namespace morvane::archive {

// The version of the schema this program writes; an archive of another version is refused.
inline constexpr int kSchemaVersion = 1;

// Creates the tables and indexes that are missing (in a write transaction of its own) and checks
// the schema version of an existing archive.
void ensure_schema(Database& database);

}  // namespace morvane::archive
