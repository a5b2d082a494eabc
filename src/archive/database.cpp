// SPDX-License-Identifier: MIT
#include "archive/database.h"

namespace morvane::archive {

bool is_postgres_url(std::string_view path_or_url) {
  return path_or_url.starts_with("postgresql://") || path_or_url.starts_with("postgres://");
}

std::unique_ptr<Database> open_database(const std::string& path_or_url) {
  if (is_postgres_url(path_or_url)) {
    return open_postgres_database(path_or_url);
  }
  return open_sqlite_database(path_or_url);
}

}  // namespace morvane::archive
