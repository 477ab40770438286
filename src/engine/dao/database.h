// One connection to a database file, with the tables that it links from other files and its stored queries.
#pragma once

#include <QString>
#include <memory>

#include "engine/dao/recordset.h"
#include "engine/dao/table_def.h"

namespace veldrin::engine {

class Connection;
class DBEngine;

enum ExecuteOption {
  dbResumeNext = 0,     ///< rows that clash with a key are dropped, the others go in
  dbFailOnError = 128,  ///< a clash is error 3022, and the statement changes nothing
};

/// All operations raise RuntimeError with the numbers of base/runtime_error.h.
class Database {
 public:
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Makes the table, or checks and opens the link: a file or a table that is missing is an error here.
  void Append(const TableDef& table);

  /// Stores a query under a name by which later statements can read it.
  void CreateQueryDef(const QString& name, const QString& sql);

  void Execute(const QString& sql, ExecuteOption option = dbResumeNext);

  /// The rows that the last Execute changed.
  int RecordsAffected() const;

  std::unique_ptr<Recordset> OpenRecordset(const QString& sql, RecordsetType type = dbOpenDynaset);

  /// Rows written between the two are flushed once, at the end. Raises the error of the flush; nothing of the
  /// group is stored then. A group that is neither committed nor rolled back is rolled back by Close. A group
  /// that writes to this file's own tables alone does not wait for who else writes to the linked ones.
  void BeginTrans(bool writesLinkedTables = true);
  void CommitTrans();
  void Rollback();

  /// Ends the connection. Recordsets opened on it must be gone. The destructor does the same.
  void Close();

 private:
  friend class DBEngine;
  Database(DBEngine& engine, std::shared_ptr<Connection> connection);
  Connection& Open() const;

  DBEngine& Engine;
  std::shared_ptr<Connection> TheConnection;
};

}  // namespace veldrin::engine
