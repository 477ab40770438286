// Reads the program's SQL texts and writes them in an engine's own dialect. The program writes the dialect of
// the engine its catalogues come from: #dates#, DateValue, Left, Like with * ? # [...], [names], DELETE over
// a join, texts compared without regard to case.
//
//   SELECT [DISTINCT] values FROM tables [WHERE condition] [ORDER BY names]
//   INSERT INTO table [(names)] VALUES (values) | INSERT INTO table [(names)] SELECT ...
//   UPDATE table SET name = value, ... [WHERE condition]
//   DELETE FROM table [WHERE condition] | DELETE t.* FROM t INNER JOIN u ON t.a = u.b AND ... [WHERE
//   condition]
//
// What is none of these, and what is no condition of AND, OR, NOT, comparisons, Like, In, Between and Is
// Null, raises 3075 here: nothing that people type reaches the engine unread, and no condition holds a query
// of its own.
#pragma once

#include <QString>
#include <QStringList>

#include "engine/dialect.h"

namespace veldrin::engine {

struct Translation {
  QString Sql;
  QStringList Tables;  ///< whose rows the statement names
};

/// A whole statement.
Translation TranslateStatement(const QString& sql, const Dialect& dialect, Clashes clashes = Clashes::Fail);

/// A condition, whoever wrote it, in parentheses that are its own: what stands around it in a statement holds
/// whatever the condition says.
QString TranslateCondition(const QString& condition, const Dialect& dialect);

/// The engine's own text of a statement that adds one row, with a parameter for each column.
QString InsertSql(const Dialect& dialect, const QString& table, const QStringList& columns, Clashes clashes);

}  // namespace veldrin::engine
