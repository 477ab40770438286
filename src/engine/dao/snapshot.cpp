#include "engine/dao/snapshot.h"

#include "base/runtime_error.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

namespace {

bool IsDateColumn(const SQLite::Statement& statement, int column) {
  try {
    return std::string(statement.getColumnDeclaredType(column)) == "DATETIME";
  } catch (const SQLite::Exception&) {
    return false;  // An expression has no declared type.
  }
}

}  // namespace

Snapshot::Snapshot(Connection& connection, const QString& sql) {
  SQLite::Statement statement(connection.Sqlite(), ToSqlite(sql).toStdString());
  const int columns = statement.getColumnCount();
  std::vector<bool> isDate;
  for (int i = 0; i < columns; ++i) {
    Names << QString::fromUtf8(statement.getColumnName(i));
    isDate.push_back(IsDateColumn(statement, i));
  }
  while (statement.executeStep()) {
    auto& row = Rows.emplace_back();
    for (int i = 0; i < columns; ++i) row.push_back(ReadColumn(statement, i, isDate[static_cast<size_t>(i)]));
  }
}

std::vector<std::vector<Value>> Snapshot::ReadRows(int first, int count) const {
  return {Rows.begin() + first, Rows.begin() + first + count};
}

int Snapshot::FindPosition(const QString&, int) const {
  throw base::RuntimeError(base::errReadOnly,
                           QStringLiteral("Operation is not supported for this type of object."));
}

}  // namespace veldrin::engine
