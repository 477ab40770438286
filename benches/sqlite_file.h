// SQLite's C interface, with no more around it than its own rules ask for.
#pragma once

#include <sqlite3.h>

#include <QString>
#include <stdexcept>
#include <string>

namespace veldrin::benches {

class SqliteStatement {
 public:
  SqliteStatement(sqlite3* file, const std::string& sql) : File(file) {
    Check(sqlite3_prepare_v2(file, sql.c_str(), -1, &Statement, nullptr) == SQLITE_OK);
  }
  ~SqliteStatement() { sqlite3_finalize(Statement); }
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  void Bind(int number, int value) { Check(sqlite3_bind_int(Statement, number, value) == SQLITE_OK); }
  void Bind(int number, const std::string& value) {
    Check(sqlite3_bind_text(Statement, number, value.data(), static_cast<int>(value.size()),
                            SQLITE_TRANSIENT) == SQLITE_OK);
  }

  /// True while there is a row.
  bool Step() {
    const int result = sqlite3_step(Statement);
    Check(result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
  }
  /// Ready for the next values.
  void Reset() { sqlite3_reset(Statement); }
  /// A statement without rows.
  void Run() {
    Step();
    Reset();
  }

  int Integer(int column) { return sqlite3_column_int(Statement, column); }
  std::string Text(int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(Statement, column));
    return text == nullptr ? std::string() : std::string(text);
  }

 private:
  void Check(bool success) {
    if (!success) throw std::runtime_error(sqlite3_errmsg(File));
  }

  sqlite3* File;
  sqlite3_stmt* Statement = nullptr;
};

class SqliteFile {
 public:
  explicit SqliteFile(const QString& path) {
    if (sqlite3_open_v2(path.toUtf8().constData(), &File, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
      sqlite3_close(File);
      throw std::runtime_error("can't open " + path.toStdString());
    }
  }
  ~SqliteFile() { sqlite3_close(File); }
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  SqliteStatement Prepare(const std::string& sql) { return {File, sql}; }
  void Run(const std::string& sql) {
    if (sqlite3_exec(File, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(File));
    }
  }

 private:
  sqlite3* File = nullptr;
};

}  // namespace veldrin::benches
