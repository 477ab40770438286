#include "engine/sqlite/table_sql.h"

#include <QStringList>

namespace veldrin::engine {

QString QuoteName(const QString& name) {
  QString quoted = name;
  return QLatin1Char('"') + quoted.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

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

}  // namespace

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

}  // namespace veldrin::engine
