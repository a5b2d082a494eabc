// SPDX-License-Identifier: MIT
#include <sqlite3.h>

#include "archive/database.h"
#include "core/error.h"

namespace morvane::archive {
namespace {

// How long a writer waits for another writer of the same archive file before giving up.
constexpr int busy_timeout_ms = 10 * 60 * 1000;

class Statement {
 public:
  Statement(sqlite3* db, std::string_view sql) : db_(db) {
    if (sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr) != SQLITE_OK) {
      raise(ErrorNumber::DeviceIoError, std::string("archive: ") + sqlite3_errmsg(db));
    }
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void bind(int index, const Value& value) {
    int status = SQLITE_OK;
    if (std::holds_alternative<std::monostate>(value)) {
      status = sqlite3_bind_null(statement_, index);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      status = sqlite3_bind_int64(statement_, index, *integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
      status = sqlite3_bind_double(statement_, index, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      status = sqlite3_bind_text64(statement_, index, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    } else {
      const auto& blob = std::get<Blob>(value);
      // An empty vector may have no data pointer, which SQLite would bind as NULL.
      status = blob.empty() ? sqlite3_bind_zeroblob(statement_, index, 0)
                            : sqlite3_bind_blob64(statement_, index, blob.data(), blob.size(), SQLITE_STATIC);
    }
    check(status);
  }

  // True while there is a row to read.
  bool step() {
    const int status = sqlite3_step(statement_);
    if (status == SQLITE_ROW) {
      return true;
    }
    if (status != SQLITE_DONE) {
      check(status);
    }
    return false;
  }

  Row row() const {
    const int columns = sqlite3_column_count(statement_);
    Row row;
    row.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
      switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
          row.emplace_back(static_cast<std::int64_t>(sqlite3_column_int64(statement_, column)));
          break;
        case SQLITE_FLOAT:
          row.emplace_back(sqlite3_column_double(statement_, column));
          break;
        case SQLITE_TEXT:
          row.emplace_back(std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement_, column)),
                                       static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))));
          break;
        case SQLITE_BLOB: {
          const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
          row.emplace_back(Blob(bytes, bytes + sqlite3_column_bytes(statement_, column)));
          break;
        }
        default:
          row.emplace_back(std::monostate{});
      }
    }
    return row;
  }

  void reset() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }

 private:
  void check(int status) const {
    if (status != SQLITE_OK) {
      raise(ErrorNumber::DeviceIoError, std::string("archive: ") + sqlite3_errmsg(db_));
    }
  }

  sqlite3* db_;
  sqlite3_stmt* statement_ = nullptr;
};

class SqliteDatabase final : public Database {
 public:
  explicit SqliteDatabase(const std::string& path) : path_(path) {
    if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK) {
      const std::string message = db_ ? sqlite3_errmsg(db_) : "out of memory";
      sqlite3_close(db_);
      raise(ErrorNumber::PathNotFound, path + ": " + message);
    }
    sqlite3_busy_timeout(db_, busy_timeout_ms);
    try {
      // WAL lets a window read while an ingest writes; NORMAL synchronous is still durable at
      // each checkpoint and never corrupts, which is what a killed ingest needs.
      execute("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA foreign_keys=ON");
      // A larger page cache than the default 2 MB: an ingest writes hundreds of MB of pages.
      execute("PRAGMA cache_size=-65536");
    } catch (...) {
      sqlite3_close(db_);
      throw;
    }
    dialect_ = Dialect{"sqlite", "INTEGER", "REAL", "BLOB", "INTEGER PRIMARY KEY", true};
  }
  ~SqliteDatabase() override { sqlite3_close(db_); }

  const Dialect& dialect() const override { return dialect_; }
  std::string location() const override { return path_; }

  void execute(std::string_view sql) override {
    char* error = nullptr;
    const std::string text(sql);
    if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
      const std::string message = error ? error : sqlite3_errmsg(db_);
      sqlite3_free(error);
      raise(ErrorNumber::DeviceIoError, path_ + ": " + message);
    }
  }

  std::vector<Row> query(std::string_view sql, const std::vector<Value>& params) override {
    Statement statement(db_, sql);
    for (std::size_t i = 0; i < params.size(); ++i) {
      statement.bind(static_cast<int>(i + 1), params[i]);
    }
    std::vector<Row> rows;
    while (statement.step()) {
      rows.push_back(statement.row());
    }
    return rows;
  }

  void append(std::string_view table, const std::vector<std::string>& columns,
              const std::vector<Row>& rows) override {
    if (rows.empty()) {
      return;
    }
    std::string sql = "INSERT INTO " + std::string(table) + " (";
    std::string values;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      sql += (i ? "," : "") + columns[i];
      values += (i ? "," : "") + dialect_.placeholder(static_cast<int>(i + 1));
    }
    sql += ") VALUES (" + values + ")";
    Statement statement(db_, sql);
    for (const Row& row : rows) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        statement.bind(static_cast<int>(i + 1), row[i]);
      }
      statement.step();
      statement.reset();
    }
  }

  void begin_write() override { execute("BEGIN IMMEDIATE"); }
  void begin_read() override { execute("BEGIN DEFERRED"); }
  void commit() override { execute("COMMIT"); }
  void rollback() override {
    if (!sqlite3_get_autocommit(db_)) {
      execute("ROLLBACK");
    }
  }

 private:
  std::string path_;
  sqlite3* db_ = nullptr;
  Dialect dialect_;
};

}  // namespace

std::unique_ptr<Database> open_sqlite_database(const std::string& path) {
  return std::make_unique<SqliteDatabase>(path);
}

}  // namespace morvane::archive
