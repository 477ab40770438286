// A prepared statement in use: its parameters, its rows, and its end.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "engine/dao/value.h"

struct sqlite3_stmt;

namespace veldrin::engine {

/// A statement that its cache keeps, with what its rows are made of.
struct PreparedStatement {
  explicit PreparedStatement(sqlite3_stmt* statement) : Statement(statement) {}
  ~PreparedStatement();
  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;

  /// Asks for the columns at the first call.
  void ReadColumns();

  sqlite3_stmt* Statement;
  QStringList Names;
  std::vector<bool> IsDate;  ///< whether the column is a table's and declared as a date
};

/// Ends with the block that uses it, so that no lock outlives it; the prepared statement is kept by its
/// cache, or goes with its last user.
class StatementUse {
 public:
  StatementUse(std::shared_ptr<PreparedStatement> statement, std::span<const Value> parameters);
  ~StatementUse();
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;

  /// True while there is a row.
  bool Step();
  /// From the beginning, with other parameters.
  void Restart(std::span<const Value> parameters);

  const PreparedStatement& Columns() const;
  int Number(int column) const;
  /// A date of a date's column, otherwise a number or a text.
  Value Read(int column, bool isDate) const;

 private:
  void Bind(std::span<const Value> parameters);
  void Bind(int index, const Value& value);

  std::shared_ptr<PreparedStatement> Prepared;
  sqlite3_stmt* Statement;
};

}  // namespace veldrin::engine
