// A catalogue in SQLite files: the opened one, which is the machine's own, and those that it links.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QCache>
#include <QMap>
#include <map>
#include <mutex>

#include "base/file_identity.h"
#include "engine/session.h"
#include "engine/sqlite/dialect.h"
#include "engine/sqlite/statement.h"

namespace veldrin::engine {

/// Written into the header of every database file of the program.
constexpr int ApplicationId = 0x56454C44;

class SqliteSession : public Session {
 public:
  SqliteSession(const QString& file, int lockTimeout);

  std::vector<int> Keys(const QString& sql, std::span<const Value> parameters) override;
  RowSet Rows(const QString& sql, std::span<const Value> parameters) override;
  int Execute(const QString& sql, std::span<const Value> parameters) override;
  int ExecuteRows(const QString& sql, qsizetype width, std::span<const Value> parameters) override;
  const TableColumns& ColumnsOf(const QString& table) override;
  void Begin(Writes writes) override;
  void Commit() override;
  void Rollback() noexcept override;
  void Settle() override;
  void ReadTogether(const std::function<void()>& reads) override;
  void Create(const TableDef& table) override;
  void Link(const TableDef& table) override;
  void CreateView(const QString& name, const QString& sql) override;
  const Dialect& Sql() const override { return TheDialect; }
  bool IsCurrent() const override;
  std::optional<quint64> Version() override;
  std::unique_ptr<Session> Another() const override;
  void Interrupt() override;
  void SetLockTimeout(int milliseconds) override;

  /// For tests of what reaches SQLite.
  SQLite::Database& Sqlite() { return Db; }

 private:
  /// A file under the name by which statements know it.
  struct OpenedFile {
    std::string Alias;
    std::optional<base::FileIdentity> Is;
  };

  using Turn = std::unique_lock<std::recursive_mutex>;
  Turn TakeTurn() const;

  struct Unchecked {};
  SqliteSession(const QString& file, int lockTimeout, Unchecked);

  void CheckFormat(const std::string& alias, const QString& file);
  void Attach(const QString& file, bool readOnly);
  std::string AttachFile(const QString& file, bool readOnly);
  TableColumns ReadColumns(const QString& table);
  std::shared_ptr<PreparedStatement> Prepare(const QString& sql);

  const SqliteDialect TheDialect;
  SQLite::Database Db;
  void SetMayStop(bool may);

  mutable std::recursive_mutex InUse;
  std::mutex Stopping;
  bool MayStop = false;  ///< not at the end of a group, which would stay open
  Turn Group;            ///< of the thread that writes
  int LockTimeout;
  bool Writing = false;                    ///< within a group of writes
  QMap<QString, OpenedFile> Files;         ///< by path
  std::map<QString, TableColumns> Tables;  ///< by name in small letters
  QCache<QString, std::shared_ptr<PreparedStatement>> Statements;
};

}  // namespace veldrin::engine
