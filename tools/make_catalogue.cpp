// Makes a ready-made database file from a text of SQL statements: make_catalogue <statements.sql> <file>.
// The file comes into being whole, by renaming. A file of that name that holds rows of its own is kept:
// people may have photos in it.

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("can't read " + path.string());
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> TablesOf(SQLite::Database& db) {
  std::vector<std::string> names;
  SQLite::Statement tables(
      db, "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite_%'");
  while (tables.executeStep()) names.push_back(tables.getColumn(0).getString());
  return names;
}

int RowsOf(SQLite::Database& db, const std::string& table) {
  if (!db.tableExists(table)) return 0;
  return db.execAndGet("SELECT count(*) FROM \"" + table + "\"").getInt();
}

// Whether a table of the file holds more rows than the file that is to take its place.
bool HoldsRows(const fs::path& file, SQLite::Database& fresh) {
  SQLite::Database old(file.string(), SQLite::OPEN_READONLY);
  for (const std::string& table : TablesOf(old)) {
    if (RowsOf(old, table) > RowsOf(fresh, table)) return true;
  }
  return false;
}

int Make(const fs::path& statements, const fs::path& target) {
  const fs::path part = target.string() + ".part";
  if (target.has_parent_path()) fs::create_directories(target.parent_path());
  fs::remove(part);
  {
    SQLite::Database fresh(part.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    fresh.exec(ReadText(statements));
    // A file that can't be read ends in the error below, and is kept too.
    if (fs::exists(target) && HoldsRows(target, fresh)) {
      std::cout << target.string() << " holds rows and is kept as it is.\n";
      fs::remove(part);
      return 0;
    }
  }
  fs::rename(part, target);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_catalogue <statements.sql> <file>\n";
    return 2;
  }
  try {
    return Make(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "make_catalogue: " << argv[2] << ": " << error.what() << '\n';
    return 1;
  }
}
