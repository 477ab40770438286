// Descriptions of tables, to be appended to a database.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace veldrin::engine {

enum FieldType { dbInteger = 3, dbLong = 4, dbDate = 8, dbText = 10 };

struct Field {
  QString Name;
  FieldType Type = dbText;
  int Size = 0;  ///< characters, for dbText only
};

struct Index {
  QString Name;
  QStringList Fields;
  bool Primary = false;
  bool Unique = false;
};

/// Either a table of its own, with Fields and Indexes, or a link: Connect is ";DATABASE=" and the file that
/// holds the table SourceTableName, which is also the link's name.
struct TableDef {
  QString Name;
  QString Connect;
  QString SourceTableName;
  QVector<Field> Fields;
  QVector<Index> Indexes;
};

}  // namespace veldrin::engine
