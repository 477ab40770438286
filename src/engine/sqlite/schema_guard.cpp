#include "engine/sqlite/schema_guard.h"

#include <sqlite3.h>

#include "base/runtime_error.h"
#include "engine/session.h"

namespace veldrin::engine {

namespace {

// Bytes of a row. The longest that the columns allow is some two thousand.
constexpr int MostBytes = 1'000'000;

[[noreturn]] void Refuse(const QString& file, const QString& what) {
  throw base::RuntimeError(base::errUnrecognizedFormat,
                           QStringLiteral("Unrecognized database format '%1': %2.").arg(file, what));
}

QString DeclaredType(const Field& field) {
  if (field.Type == dbText) return QStringLiteral("TEXT(%1)").arg(field.Size);
  return field.Type == dbDate ? QStringLiteral("DATETIME") : QStringLiteral("INTEGER");
}

// As it stands in the table's definition without blanks, in small letters.
QStringList ChecksOf(const Field& field) {
  const QString name = field.Name.toLower();
  switch (field.Type) {
    case dbText:
      return {QStringLiteral("length(%1)<=%2").arg(name).arg(field.Size),
              QStringLiteral("length(%1)=%2").arg(name).arg(field.Size)};
    case dbDate:
      return {QStringLiteral("typeof(%1)='text'").arg(name)};
    default:
      return {name + QStringLiteral("between-2147483648and2147483647")};
  }
}

QString DefinitionOf(SQLite::Database& db, const std::string& alias, const QString& table) {
  SQLite::Statement rows(db, "SELECT sql FROM " + alias + ".sqlite_schema WHERE type = 'table' AND name = ?");
  rows.bind(1, table.toStdString());
  if (!rows.executeStep()) RaiseNoSuchTable(table);
  QString sql = QString::fromStdString(rows.getColumn(0).getString()).toLower();
  sql.removeIf([](QChar sign) { return sign.isSpace() || sign == QLatin1Char('"'); });
  return sql;
}

}  // namespace

void GuardConnection(sqlite3* handle) {
  sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, MostBytes);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

void RequireWhole(SQLite::Database& db, const std::string& alias, const QString& file) {
  // The indexes too: numbers are given by one.
  SQLite::Statement findings(db, "PRAGMA " + alias + ".integrity_check(1000000)");
  while (findings.executeStep()) {
    const std::string found = findings.getColumn(0).getString();
    // A value that a column wouldn't take any more is no damage.
    if (found != "ok" && !found.starts_with("CHECK constraint"))
      Refuse(file, QStringLiteral("it is damaged, ") + QString::fromStdString(found).simplified());
  }
}

void RequireTablesAlone(SQLite::Database& db, const std::string& alias, const QString& file) {
  SQLite::Statement rows(db, "SELECT type, name FROM " + alias +
                                 ".sqlite_schema WHERE type NOT IN ('table', 'index') OR "
                                 "sql LIKE 'CREATE VIRTUAL%'");
  if (rows.executeStep())
    Refuse(file, QStringLiteral("it holds the %1 '%2'")
                     .arg(QString::fromStdString(rows.getColumn(0).getString()),
                          QString::fromStdString(rows.getColumn(1).getString())));
}

void RequireFields(SQLite::Database& db, const std::string& alias, const TableDef& link) {
  const QString definition = DefinitionOf(db, alias, link.SourceTableName);
  SQLite::Statement columns(db, "SELECT name, type FROM pragma_table_xinfo(?, ?)");
  columns.bind(1, link.SourceTableName.toStdString());
  columns.bind(2, alias);
  const auto refuse = [&] {
    Refuse(link.LinkedFile(), QStringLiteral("the table '%1' is another one").arg(link.SourceTableName));
  };
  for (const Field& field : link.Fields) {
    if (!columns.executeStep() || QString::fromStdString(columns.getColumn(0).getString()) != field.Name ||
        QString::fromStdString(columns.getColumn(1).getString()) != DeclaredType(field))
      refuse();
    const QStringList checks = ChecksOf(field);
    if (std::none_of(checks.begin(), checks.end(),
                     [&](const QString& check) { return definition.contains(check); }))
      refuse();
  }
  if (columns.executeStep()) refuse();
}

}  // namespace veldrin::engine
