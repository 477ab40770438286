#include "engine/dao/database.h"

#include <sqlite3.h>

#include "engine/dao/connection.h"
#include "engine/dao/db_engine.h"
#include "engine/dao/dynaset.h"
#include "engine/dao/errors.h"
#include "engine/dao/snapshot.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

namespace {

QString ColumnSql(const Field& field) {
  const QString name = QuoteName(field.Name);
  switch (field.Type) {
    case dbText:
      return QStringLiteral("%1 TEXT(%2) CHECK (length(%1) <= %2)").arg(name).arg(field.Size);
    case dbDate:
      return name + QStringLiteral(" DATETIME");
    case dbInteger:
      return QStringLiteral("%1 INTEGER CHECK (%1 BETWEEN -32768 AND 32767)").arg(name);
    case dbLong:
      break;
  }
  return QStringLiteral("%1 INTEGER CHECK (%1 BETWEEN -2147483648 AND 2147483647)").arg(name);
}

QString TableSql(const TableDef& table) {
  QStringList parts;
  for (const Field& field : table.Fields) parts << ColumnSql(field);
  for (const Index& index : table.Indexes) {
    QStringList names;
    for (const QString& field : index.Fields) names << QuoteName(field);
    parts << QStringLiteral("CONSTRAINT %1 %2 (%3)")
                 .arg(QuoteName(index.Name),
                      index.Primary ? QStringLiteral("PRIMARY KEY") : QStringLiteral("UNIQUE"),
                      names.join(QLatin1Char(',')));
  }
  return QStringLiteral("CREATE TABLE main.%1 (%2)").arg(QuoteName(table.Name), parts.join(QLatin1Char(',')));
}

}  // namespace

Database::Database(DBEngine& engine, std::shared_ptr<Connection> connection)
    : Engine(engine), TheConnection(std::move(connection)) {}

Database::~Database() { Close(); }

Connection& Database::Open() const {
  if (!TheConnection)
    throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
  return *TheConnection;
}

void Database::Close() {
  if (!TheConnection) return;
  SQLite::Database& db = TheConnection->Sqlite();
  if (sqlite3_get_autocommit(db.getHandle()) == 0) db.tryExec("ROLLBACK");
  Engine.Release(std::move(TheConnection));
}

void Database::Append(const TableDef& table) {
  static const QString prefix = QStringLiteral(";DATABASE=");
  if (table.Connect.startsWith(prefix)) {
    Open().AddLink(table.SourceTableName, table.Connect.mid(prefix.size()));
  } else {
    WithSqliteErrors([&] { Open().Sqlite().exec(TableSql(table).toStdString()); });
  }
}

void Database::CreateQueryDef(const QString& name, const QString& sql) { Open().AddQuery(name, sql); }

void Database::Execute(const QString& sql, ExecuteOption option) {
  const QString statement = ToSqlite(sql, option == dbResumeNext);
  WithSqliteErrors([&] { SQLite::Statement(Open().Sqlite(), statement.toStdString()).exec(); });
}

int Database::RecordsAffected() const { return Open().Sqlite().getChanges(); }

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& sql, RecordsetType type) {
  return WithSqliteErrors([&]() -> std::unique_ptr<Recordset> {
    if (type == dbOpenDynaset) {
      if (auto source = FindKeySource(Open(), sql)) return std::make_unique<Dynaset>(TheConnection, *source);
    }
    return std::make_unique<Snapshot>(Open(), sql);
  });
}

void Database::BeginTrans(bool writesLinkedTables) {
  WithSqliteErrors([&] { Open().Sqlite().exec(writesLinkedTables ? "BEGIN IMMEDIATE" : "BEGIN"); });
}

void Database::CommitTrans() {
  WithSqliteErrors([&] { Open().Sqlite().exec("COMMIT"); });
}

void Database::Rollback() { Open().Sqlite().tryExec("ROLLBACK"); }

}  // namespace veldrin::engine
