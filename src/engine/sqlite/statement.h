// A prepared statement in use: its parameters, its rows, and its end.
#pragma once

#include <memory>
#include <span>

#include "engine/dao/value.h"

struct sqlite3_stmt;

namespace veldrin::engine {

/// Ends with the block that uses it, so that no lock outlives it; the prepared statement is kept by its
/// cache, or goes with its last user.
class StatementUse {
 public:
  StatementUse(std::shared_ptr<sqlite3_stmt> statement, std::span<const Value> parameters);
  ~StatementUse();
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;

  /// True while there is a row.
  bool Step();

  int Columns() const;
  QString Name(int column) const;
  /// Whether the column is a table's and declared as a date.
  bool IsDate(int column) const;
  int Number(int column) const;
  /// A date of a date's column, otherwise a number or a text.
  Value Read(int column, bool isDate) const;

 private:
  void Bind(int index, const Value& value);

  std::shared_ptr<sqlite3_stmt> Statement;
};

}  // namespace veldrin::engine
