#include "engine/sqlite/statement.h"

#include <sqlite3.h>

#include <limits>
#include <utility>

#include "base/runtime_error.h"

#include "engine/sqlite/errors.h"

namespace veldrin::engine {

PreparedStatement::~PreparedStatement() { sqlite3_finalize(Statement); }

void PreparedStatement::ReadColumns() {
  const int count = sqlite3_column_count(Statement);
  if (Names.size() == count) return;
  for (int i = 0; i < count; ++i) {
    Names << QString::fromUtf8(sqlite3_column_name(Statement, i));
    IsDate.push_back(qstrcmp(sqlite3_column_decltype(Statement, i), "DATETIME") == 0);
  }
}

StatementUse::StatementUse(std::shared_ptr<PreparedStatement> statement, std::span<const Value> parameters)
    : Prepared(std::move(statement)), Statement(Prepared->Statement) {
  Bind(parameters);
}

StatementUse::~StatementUse() {
  sqlite3_reset(Statement);
  sqlite3_clear_bindings(Statement);
}

void StatementUse::Restart(std::span<const Value> parameters) {
  sqlite3_reset(Statement);
  sqlite3_clear_bindings(Statement);
  Bind(parameters);
}

void StatementUse::Bind(std::span<const Value> parameters) {
  int index = 0;
  for (const Value& value : parameters) Bind(++index, value);
}

void StatementUse::Bind(int index, const Value& value) {
  if (IsNull(value)) return;
  if (value.userType() == QMetaType::Int) {
    sqlite3_bind_int(Statement, index, value.toInt());
    return;
  }
  const bool isDate = value.userType() == QMetaType::QDateTime;
  const QByteArray text = (isDate ? DateToStore(value.toDateTime()) : value.toString()).toUtf8();
  sqlite3_bind_text(Statement, index, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

bool StatementUse::Step() {
  const int result = sqlite3_step(Statement);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) throw FromSqlite(SQLite::Exception(sqlite3_db_handle(Statement), result));
  return false;
}

const PreparedStatement& StatementUse::Columns() const {
  Prepared->ReadColumns();
  return *Prepared;
}

// Cut to fewer bits a number would be another photo's.
int StatementUse::Number(int column) const {
  const sqlite3_int64 number = sqlite3_column_int64(Statement, column);
  if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
    throw base::RuntimeError(base::errOverflow, QStringLiteral("Overflow"));
  return static_cast<int>(number);
}

Value StatementUse::Read(int column, bool isDate) const {
  const int type = sqlite3_column_type(Statement, column);
  if (type == SQLITE_NULL) return {};
  if (type == SQLITE_INTEGER) return Number(column);
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(Statement, column));
  const QString text = QString::fromUtf8(bytes, sqlite3_column_bytes(Statement, column));
  return isDate ? Value(DateFromStore(text)) : Value(text);
}

}  // namespace veldrin::engine
