#include "engine/sqlite/statement.h"

#include <sqlite3.h>

#include <utility>

#include "engine/sqlite/errors.h"

namespace veldrin::engine {

StatementUse::StatementUse(std::shared_ptr<sqlite3_stmt> statement, std::span<const Value> parameters)
    : Statement(std::move(statement)) {
  int index = 0;
  for (const Value& value : parameters) Bind(++index, value);
}

StatementUse::~StatementUse() {
  sqlite3_reset(Statement.get());
  sqlite3_clear_bindings(Statement.get());
}

void StatementUse::Bind(int index, const Value& value) {
  if (IsNull(value)) return;
  if (value.userType() == QMetaType::Int) {
    sqlite3_bind_int(Statement.get(), index, value.toInt());
    return;
  }
  const bool isDate = value.userType() == QMetaType::QDateTime;
  const QByteArray text = (isDate ? DateToStore(value.toDateTime()) : value.toString()).toUtf8();
  sqlite3_bind_text(Statement.get(), index, text.constData(), static_cast<int>(text.size()),
                    SQLITE_TRANSIENT);
}

bool StatementUse::Step() {
  const int result = sqlite3_step(Statement.get());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) throw FromSqlite(SQLite::Exception(sqlite3_db_handle(Statement.get()), result));
  return false;
}

int StatementUse::Columns() const { return sqlite3_column_count(Statement.get()); }

QString StatementUse::Name(int column) const {
  return QString::fromUtf8(sqlite3_column_name(Statement.get(), column));
}

bool StatementUse::IsDate(int column) const {
  return qstrcmp(sqlite3_column_decltype(Statement.get(), column), "DATETIME") == 0;
}

int StatementUse::Number(int column) const { return sqlite3_column_int(Statement.get(), column); }

Value StatementUse::Read(int column, bool isDate) const {
  const int type = sqlite3_column_type(Statement.get(), column);
  if (type == SQLITE_NULL) return {};
  if (type == SQLITE_INTEGER) return Number(column);
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(Statement.get(), column));
  const QString text = QString::fromUtf8(bytes, sqlite3_column_bytes(Statement.get(), column));
  return isDate ? Value(DateFromStore(text)) : Value(text);
}

}  // namespace veldrin::engine
