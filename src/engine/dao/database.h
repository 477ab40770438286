// A catalogue as a command sees it: its tables, its stored queries, and what is done with them.
#pragma once

#include <QString>
#include <memory>

#include "engine/dao/recordset.h"
#include "engine/dao/table_def.h"
#include "engine/session.h"

namespace veldrin::engine {

class OpenedCatalogue;

enum ExecuteOption {
  dbResumeNext = 0,     ///< rows that an INSERT adds and that clash with a key are left out, the others go in
  dbFailOnError = 128,  ///< a clash is error 3022, and the statement changes nothing
};

/// All operations raise RuntimeError with the numbers of base/runtime_error.h.
class Database {
 public:
  explicit Database(std::shared_ptr<OpenedCatalogue> catalogue);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Makes the table, or checks and opens the link: a file or a table that is missing is an error here.
  void Append(const TableDef& table);

  /// Stores a query under a name by which later statements can read it.
  void CreateQueryDef(const QueryDef& query);

  void Execute(const QString& sql, ExecuteOption option = dbResumeNext);
  /// The same for the columns of a new row, or of several, one after the other in `values`: for many rows
  /// that differ in their values alone. Several belong into a group, or an error leaves those before it.
  void Insert(const QString& table, const QStringList& columns, std::span<const Value> values,
              ExecuteOption option = dbResumeNext);

  /// The rows that the last Execute or Insert changed.
  int RecordsAffected() const { return Affected; }

  std::unique_ptr<Recordset> OpenRecordset(const QString& sql, RecordsetType type = dbOpenDynaset);

  /// Afterwards a machine that goes down can't take back what was committed.
  void Settle() { TheSession()->Settle(); }

  /// Runs a group of writes in another thread, where the engine was told how: a flush may take long. The work
  /// answers whether the group is to be stored, and leaves what windows show alone. Returns its answer.
  bool WriteGroup(const std::function<bool()>& work);

  /// Ends the use. Recordsets opened by it stay, and a group of somebody else goes on. The destructor does
  /// the same.
  void Close() { Catalogue.reset(); }

  /// Runs what reads or writes with the engine's patience.
  void Patiently(const std::function<void()>& action) const;

  /// For the engine's own classes. Raises 91 after Close.
  const std::shared_ptr<Session>& TheSession() const;

 private:
  OpenedCatalogue& Open() const;
  QString Translate(const QString& sql, Clashes clashes) const;

  std::shared_ptr<OpenedCatalogue> Catalogue;
  int Affected = 0;

  // One row after the other is added with the same columns.
  struct {
    QString Table;
    QStringList Columns;
    ExecuteOption Option = dbResumeNext;
    QString Sql;
  } LastInsert;
};

}  // namespace veldrin::engine
