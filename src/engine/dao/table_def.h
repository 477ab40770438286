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
/// holds the table SourceTableName, which is also the link's name; Fields are those that it must have.
struct TableDef {
  QString Name;
  QString Connect;
  QString SourceTableName;
  QVector<Field> Fields;
  QVector<Index> Indexes;
  bool ReadOnly = false;  ///< of a link: its file is opened for reading alone, and a write raises 3027

  /// Empty for a table of its own.
  QString LinkedFile() const {
    static const QString database = QStringLiteral(";DATABASE=");
    return Connect.startsWith(database) ? Connect.mid(database.size()) : QString();
  }
};

/// A stored query: the rows of a table that a row of another table leads to, each once, where that other row
/// meets the values of a one-row table.
struct QueryDef {
  QString Name;
  QString RowsOf;     ///< the table whose rows it shows
  QString Key;        ///< its numeric primary key, by which the links name its rows
  QString Links;      ///< the table that leads to them, with a column of the same name
  QString Parameter;  ///< the one-row table
  QString Match;      ///< a condition on a row of Links and the row of Parameter
};

}  // namespace veldrin::engine
