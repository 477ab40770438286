// What the data engine asks of the store behind it.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "engine/dao/table_def.h"
#include "engine/dao/value.h"
#include "engine/dialect.h"

namespace veldrin::engine {

/// What the engine needs to know of a table.
struct TableColumns {
  QStringList Names;  ///< none for a table that isn't there
  std::vector<bool> IsDate;
  std::vector<int> Sizes;  ///< of text columns in characters, 0 for the others
  QString Key;  ///< the numeric primary key; empty when there is none or it has more than one column
};

struct RowSet {
  QStringList Names;
  std::vector<std::vector<Value>> Rows;
};

/// Runs an action, and again while another machine's lock refuses it (3260), as long as it has patience.
using Patience = std::function<void(const std::function<void()>&)>;

/// Runs an action in another thread and returns when it has ended, raising what it raises; the other one is
/// to be called to stop it.
using Aside = std::function<void(const std::function<void()>&, const std::function<void()>&)>;

/// What a group of writes touches.
enum class Writes {
  Catalogue,      ///< the permanent tables: others who write wait until the group ends
  WorkingTables,  ///< the machine's own: nobody waits for them
};

/// One connection to a catalogue, shared by all that use it. Statements are the store's own SQL (see Sql),
/// with a "?" for each parameter. Each call raises RuntimeError, and leaves no lock behind outside of a
/// group. One thread uses it at a time, a group of writes from its begin to its end: who comes meanwhile is
/// refused (3260), as by another machine.
class Session {
 public:
  virtual ~Session() = default;

  /// The first column of each row.
  virtual std::vector<int> Keys(const QString& sql, std::span<const Value> parameters = {}) = 0;
  virtual RowSet Rows(const QString& sql, std::span<const Value> parameters = {}) = 0;
  /// Returns how many rows were changed.
  virtual int Execute(const QString& sql, std::span<const Value> parameters = {}) = 0;
  /// The same again for each `width` of the parameters: at least once, also without any.
  virtual int ExecuteRows(const QString& sql, qsizetype width, std::span<const Value> parameters) = 0;

  /// Kept: a table doesn't change once it is read.
  virtual const TableColumns& ColumnsOf(const QString& table) = 0;

  /// A group of writes; see Transaction.
  virtual void Begin(Writes writes) = 0;
  virtual void Commit() = 0;
  virtual void Rollback() noexcept = 0;
  /// Afterwards a machine that goes down can't take back what was committed. Raises 57 where the disk
  /// doesn't do it; says nothing where the file system has no such thing.
  virtual void Settle() = 0;

  /// Reads of several statements as one: others' locks are looked at once and not for each of them. Not to be
  /// nested.
  virtual void ReadTogether(const std::function<void()>& reads) = 0;

  virtual void Create(const TableDef& table) = 0;
  /// A file or a table that is missing is an error here.
  virtual void Link(const TableDef& table) = 0;
  /// A query by whose name later statements read; `sql` is the store's own.
  virtual void CreateView(const QString& name, const QString& sql) = 0;

  virtual const Dialect& Sql() const = 0;

  /// False when a file that was opened or linked has been deleted or replaced since.
  virtual bool IsCurrent() const = 0;
  /// A number that changes with every change of the linked tables, whoever makes it. Nothing within a group
  /// of writes, whose changes nobody has counted yet.
  virtual std::optional<quint64> Version() = 0;
  /// Another connection to the same files, for reads in one other thread. It has the tables and no views.
  /// Null where the files aren't those any more.
  virtual std::unique_ptr<Session> Another() const = 0;
  /// Ends the statement that runs, which raises 3059. For any thread.
  virtual void Interrupt() = 0;
  /// How many milliseconds a statement waits for another machine before it raises 3260.
  virtual void SetLockTimeout(int milliseconds) = 0;
};

/// Opens an existing database file. Raises 3024, 3044, 3260 or 3343.
std::unique_ptr<Session> OpenSession(const QString& file, int lockTimeout);

/// 3078, "no such table: ...".
[[noreturn]] void RaiseNoSuchTable(const QString& table);

/// The files that a store may leave beside a database file when a machine goes down in a change.
QStringList FilesBeside(const QString& file);

}  // namespace veldrin::engine
