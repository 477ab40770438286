// A linked file is opened only where its schema is what the program made: a file from elsewhere may hold a
// trigger that empties tables, a view in the place of one, or columns that take anything.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include "engine/dao/table_def.h"

namespace veldrin::engine {

/// Limits what statements may do with what a strange file holds; once for a connection.
void GuardConnection(sqlite3* handle);

/// Raises 3343 for a file, opened or attached under `alias`, whose pages don't fit together, and says what is
/// wrong. Reads all of it.
void RequireWhole(SQLite::Database& db, const std::string& alias, const QString& file);

/// Raises 3343 for a file, attached under `alias`, that holds more than tables and their indexes.
void RequireTablesAlone(SQLite::Database& db, const std::string& alias, const QString& file);

/// Raises 3078 for a table that isn't there, and 3343 for one that hasn't exactly the link's fields with the
/// checks that keep them within their sizes.
void RequireFields(SQLite::Database& db, const std::string& alias, const TableDef& link);

}  // namespace veldrin::engine
