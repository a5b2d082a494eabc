// SPDX-License-Identifier: MIT
#include "archive/archive.h"

#include "schema.h"

namespace morvane::archive {

Archive::Archive(std::unique_ptr<Database> database) : database_(std::move(database)) { ensure_schema(*database_); }

Archive::~Archive() = default;

std::unique_ptr<Archive> open_archive(const std::string& path_or_url) {
  return std::make_unique<Archive>(open_database(path_or_url));
}

}  // namespace morvane::archive
