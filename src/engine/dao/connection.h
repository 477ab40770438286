// An open SQLite database with the program's functions, its linked files and its stored queries. Private to
// the data engine.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/dao/value.h"

struct sqlite3_stmt;

namespace veldrin::engine {

/// Written into the header of every database file of the program.
constexpr int ApplicationId = 0x56454C44;

/// What the engine layer needs to know of a table.
struct TableColumns {
  QStringList Names;
  std::vector<bool> IsDate;
  std::vector<int> Sizes;  ///< of text columns in characters, 0 for the others
  QString Key;  ///< the numeric primary key; empty when there is none or it has more than one column
};

struct StatementEnd {
  void operator()(sqlite3_stmt* statement) const;
};

class Connection {
 public:
  /// Raises 3024, 3044, 3260 or 3343.
  Connection(const QString& file, int busyTimeout);

  SQLite::Database& Sqlite() { return Db; }
  const QString& File() const { return TheFile; }
  /// False when the file or one that it links was deleted or replaced since it was opened.
  bool IsCurrent() const;

  void AddLink(const QString& table, const QString& file);
  void AddQuery(const QString& name, const QString& sql);
  /// The SQL of a stored query in the program's dialect; empty when there is none of that name.
  QString QuerySql(const QString& name) const { return Queries.value(name.toLower()); }

  /// A table's columns; none for a table that isn't there. Kept: a table doesn't change once it is read.
  const TableColumns& ColumnsOf(const QString& table);

  /// A statement of SQLite's own interface that is kept for the next call with the same text. Raises the
  /// engine's errors.
  sqlite3_stmt* PreparedRaw(const QString& sqliteSql);

  /// Prepares a statement that is kept for the next call with the same text: for texts without values in
  /// them.
  SQLite::Statement& Prepared(const QString& sqliteSql);

 private:
  /// Which file stands behind a name.
  struct Identity {
    quint64 Device = 0;
    quint64 Inode = 0;
    bool operator==(const Identity&) const = default;
  };
  static Identity IdentityOf(const QString& file);

  void SetUp(int busyTimeout);
  void CheckFormat(const std::string& schema, const QString& file);
  void LoadDefinitions();
  void Attach(const QString& file);
  void OpenQuery(const QString& name, const QString& sql);
  void Remember(const char* kind, const QString& name, const QString& definition);

  QString TheFile;
  SQLite::Database Db;
  QMap<QString, Identity> Files;  ///< the opened file and those attached to it
  QMap<QString, QString> Queries;
  std::map<QString, std::unique_ptr<SQLite::Statement>> Statements;
  std::map<QString, std::unique_ptr<sqlite3_stmt, StatementEnd>> RawStatements;
  std::map<QString, TableColumns> Tables;
};

/// Makes a kept statement ready, and at the end of the block ends it, so that it holds no lock between
/// events.
class StatementUse {
 public:
  explicit StatementUse(SQLite::Statement& statement) : TheStatement(statement) { TheStatement.tryReset(); }
  ~StatementUse() { TheStatement.tryReset(); }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;
  SQLite::Statement* operator->() const { return &TheStatement; }
  SQLite::Statement& operator*() const { return TheStatement; }

 private:
  SQLite::Statement& TheStatement;
};

/// Reads of several statements as one: the files are locked once and not for each of them. Within a group of
/// writes it does nothing.
class ReadTransaction {
 public:
  explicit ReadTransaction(Connection& connection);
  ~ReadTransaction();
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  SQLite::Database* Db = nullptr;
};

/// A column's value by its declared type: "Date" makes a QDateTime.
Value ReadColumn(SQLite::Statement& statement, int column, bool isDate);
void BindValue(SQLite::Statement& statement, int index, const Value& value);
/// "name" with quotes, for table and column names.
QString QuoteName(const QString& name);

}  // namespace veldrin::engine
