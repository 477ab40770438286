#include "engine/sqlite/session.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cerrno>

#include "engine/sqlite/errors.h"
#include "engine/sqlite/functions.h"
#include "engine/sqlite/schema_guard.h"
#include "engine/sqlite/statement.h"
#include "engine/sqlite/table_sql.h"

namespace veldrin::engine {

using base::RuntimeError;

namespace {

// Statements that name a photo's number differ from each other; what was used last is kept.
constexpr int KeptStatements = 64;

// Bytes of a file that is read through when it is opened, in a fraction of a second. In a larger one damage
// is found by the statement that comes upon it.
constexpr qint64 CheckedWhole = 16 << 20;

// Existing files only: an engine that makes a missing catalogue would hide its loss.
std::string UriOf(const QString& file, const char* mode = "rw") {
  return (QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toEncoded(QUrl::FullyEncoded) +
          "?mode=" + mode)
      .toStdString();
}

void RequireFile(const QString& file) {
  const QFileInfo info(file);
  if (info.exists()) return;
  if (info.dir().exists())
    throw RuntimeError(base::errNoSuchFile, QStringLiteral("Could not find file '%1'.").arg(file));
  throw RuntimeError(base::errBadPath, QStringLiteral("'%1' is not a valid path.").arg(file));
}

// One thread at a time uses it.
SQLite::Database OpenFile(const QString& file) {
  RequireFile(file);
  return WithSqliteErrors([&] {
    return SQLite::Database(UriOf(file), SQLite::OPEN_READWRITE | SQLite::OPEN_URI | SQLite::OPEN_NOMUTEX);
  });
}

}  // namespace

void RaiseNoSuchTable(const QString& table) {
  throw RuntimeError(base::errNoSuchTable, QStringLiteral("no such table: %1").arg(table));
}

std::unique_ptr<Session> OpenSession(const QString& file, int lockTimeout) {
  return std::make_unique<SqliteSession>(file, lockTimeout);
}

QStringList FilesBeside(const QString& file) { return {file + QStringLiteral("-journal")}; }

SqliteSession::SqliteSession(const QString& file, int lockTimeout, Unchecked)
    : Db(OpenFile(file)), LockTimeout(lockTimeout), Statements(KeptStatements) {
  Files.insert(file, {"main", base::IdentityOf(file)});
  WithSqliteErrors([&] {
    Db.setBusyTimeout(lockTimeout);
    GuardConnection(Db.getHandle());
    AddFunctions(Db.getHandle());
    Db.exec("PRAGMA temp_store=MEMORY");
  });
}

SqliteSession::SqliteSession(const QString& file, int lockTimeout)
    : SqliteSession(file, lockTimeout, Unchecked()) {
  WithSqliteErrors([&] {
    CheckFormat("main", file);
    RequireTablesAlone(Db, "main", file);
    // The opened file itself is the working copy, which is made anew at each start: it needs no durability.
    Db.exec("PRAGMA main.synchronous=OFF; PRAGMA main.journal_mode=MEMORY");
  });
}

SqliteSession::Turn SqliteSession::TakeTurn() const {
  Turn turn(InUse, std::try_to_lock);
  if (!turn.owns_lock())
    throw RuntimeError(base::errLocked, QStringLiteral("Another machine is using the catalogue."));
  return turn;
}

// This connection has checked the files.
std::unique_ptr<Session> SqliteSession::Another() const {
  const Turn turn = TakeTurn();
  const auto opened =
      std::find_if(Files.begin(), Files.end(), [](const auto& at) { return at.Alias == "main"; });
  std::unique_ptr<SqliteSession> another(new SqliteSession(opened.key(), LockTimeout, Unchecked()));
  WithSqliteErrors([&] {
    for (auto file = Files.begin(); file != Files.end(); ++file) {
      if (file == opened) continue;
      const bool readOnly = sqlite3_db_readonly(Db.getHandle(), file->Alias.c_str()) == 1;
      const std::string alias = another->AttachFile(file.key(), readOnly);
      another->Files.insert(file.key(), {alias, base::IdentityOf(file.key())});
    }
  });
  const bool isSame = std::all_of(Files.keyBegin(), Files.keyEnd(), [&](const QString& file) {
    return another->Files[file].Is == Files[file].Is;
  });
  return isSame ? std::move(another) : nullptr;
}

void SqliteSession::Interrupt() {
  const std::scoped_lock lock(Stopping);
  if (MayStop) sqlite3_interrupt(Db.getHandle());
}

void SqliteSession::SetMayStop(bool may) {
  const std::scoped_lock lock(Stopping);
  MayStop = may;
}

// --- files ------------------------------------------------------------------------------------------------

bool SqliteSession::IsCurrent() const {
  for (auto file = Files.begin(); file != Files.end(); ++file) {
    if (base::IdentityOf(file.key()) != file->Is) return false;
  }
  return true;
}

// The header names the program and the number of pages: a file of another program and one that was cut short
// are refused here, before a statement comes upon the damage.
void SqliteSession::CheckFormat(const std::string& alias, const QString& file) {
  const qint64 bytes = Db.execAndGet("PRAGMA " + alias + ".page_count").getInt64() *
                       Db.execAndGet("PRAGMA " + alias + ".page_size").getInt64();
  const int id = Db.execAndGet("PRAGMA " + alias + ".application_id").getInt();
  if (id != ApplicationId || QFileInfo(file).size() < bytes) {
    throw RuntimeError(base::errUnrecognizedFormat,
                       QStringLiteral("Unrecognized database format '%1'.").arg(file));
  }
  if (bytes <= CheckedWhole) RequireWhole(Db, alias, file);
}

void SqliteSession::Attach(const QString& file, bool readOnly) {
  if (Files.contains(file)) return;
  const std::string alias = AttachFile(file, readOnly);
  CheckFormat(alias, file);
  RequireTablesAlone(Db, alias, file);
  // The linked file is the permanent one, perhaps on a network: a rollback journal, and every write flushed.
  Db.exec("PRAGMA " + alias + ".synchronous=FULL; PRAGMA " + alias + ".journal_mode=DELETE");
  // A kept BEGIN IMMEDIATE would lock the files that were there when it was prepared.
  Statements.clear();
  Files.insert(file, {alias, base::IdentityOf(file)});
}

std::string SqliteSession::AttachFile(const QString& file, bool readOnly) {
  RequireFile(file);
  std::string alias = "linked" + std::to_string(Files.size());
  SQLite::Statement attach(Db, "ATTACH ? AS " + alias);
  attach.bind(1, UriOf(file, readOnly ? "ro" : "rw"));
  attach.executeStep();
  return alias;
}

std::optional<quint64> SqliteSession::Version() {
  const Turn turn = TakeTurn();
  if (Writing) return std::nullopt;
  quint64 version = 0;
  for (const OpenedFile& file : std::as_const(Files)) {
    if (file.Alias == "main") continue;
    // The pragma looks at the file; its own number leaves out what this session wrote, the pager's counts
    // that too.
    StatementUse(Prepare(QStringLiteral("PRAGMA %1.data_version").arg(QString::fromStdString(file.Alias))),
                 {})
        .Step();
    unsigned count = 0;
    sqlite3_file_control(Db.getHandle(), file.Alias.c_str(), SQLITE_FCNTL_DATA_VERSION, &count);
    version = (version << 32) ^ count;
  }
  return version;
}

void SqliteSession::SetLockTimeout(int milliseconds) {
  const Turn turn = TakeTurn();
  Db.setBusyTimeout(milliseconds);
  LockTimeout = milliseconds;
}

// --- statements -------------------------------------------------------------------------------------------

// What the program hands on is known to be a statement of tables that are there: what SQLite can't prepare of
// it names a column that isn't.
std::shared_ptr<PreparedStatement> SqliteSession::Prepare(const QString& sql) {
  const auto* kept = Statements.object(sql);
  if (kept != nullptr && sqlite3_stmt_busy((*kept)->Statement) == 0) return *kept;
  sqlite3_stmt* raw = nullptr;
  const QByteArray text = sql.toUtf8();
  const int result = sqlite3_prepare_v3(Db.getHandle(), text.constData(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
  if (result == SQLITE_ERROR)
    throw RuntimeError(base::errTooFewParameters, QString::fromUtf8(sqlite3_errmsg(Db.getHandle())));
  if (result != SQLITE_OK) throw FromSqlite(SQLite::Exception(Db.getHandle(), result));
  auto statement = std::make_shared<PreparedStatement>(raw);
  Statements.insert(sql, new std::shared_ptr(statement));
  return statement;
}

std::vector<int> SqliteSession::Keys(const QString& sql, std::span<const Value> parameters) {
  const Turn turn = TakeTurn();
  StatementUse statement(Prepare(sql), parameters);
  std::vector<int> keys;
  while (statement.Step()) keys.push_back(statement.Number(0));
  return keys;
}

RowSet SqliteSession::Rows(const QString& sql, std::span<const Value> parameters) {
  const Turn turn = TakeTurn();
  StatementUse statement(Prepare(sql), parameters);
  const PreparedStatement& columns = statement.Columns();
  RowSet set{columns.Names, {}};
  while (statement.Step()) {
    auto& row = set.Rows.emplace_back();
    row.reserve(columns.Names.size());
    for (int i = 0; i < columns.Names.size(); ++i) row.push_back(statement.Read(i, columns.IsDate[i]));
  }
  return set;
}

int SqliteSession::Execute(const QString& sql, std::span<const Value> parameters) {
  return ExecuteRows(sql, static_cast<qsizetype>(parameters.size()), parameters);
}

int SqliteSession::ExecuteRows(const QString& sql, qsizetype width, std::span<const Value> parameters) {
  const Turn turn = TakeTurn();
  StatementUse statement(Prepare(sql), parameters.first(width));
  int changed = 0;
  for (;;) {
    while (statement.Step()) {
    }
    changed += sqlite3_changes(Db.getHandle());
    parameters = parameters.subspan(width);
    if (parameters.empty()) return changed;
    statement.Restart(parameters.first(width));
  }
}

// Of a file that is opened for reading alone SQLite takes no lock, and says so at the first write only: too
// late for what relies on the group.
void SqliteSession::Begin(Writes writes) {
  Turn turn = TakeTurn();
  for (const OpenedFile& file : std::as_const(Files)) {
    if (writes == Writes::Catalogue && sqlite3_db_readonly(Db.getHandle(), file.Alias.c_str()) == 1)
      throw FromSqlite(SQLite::Exception(Db.getHandle(), SQLITE_READONLY));
  }
  Execute(writes == Writes::Catalogue ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"), {});
  Writing = true;
  Group = std::move(turn);
  SetMayStop(true);
}

// The end of the journal is gone from its directory. Some network file systems can't flush one and need not.
void SqliteSession::Settle() {
  for (auto file = Files.begin(); file != Files.end(); ++file) {
    if (file->Alias == "main") continue;
    const int directory =
        ::open(QFile::encodeName(QFileInfo(file.key()).path()).constData(), O_RDONLY | O_CLOEXEC);
    const bool settled = directory >= 0 && (::fsync(directory) == 0 || errno == EINVAL);
    if (directory >= 0) ::close(directory);
    if (!settled)
      throw base::RuntimeError(base::errDeviceIO,
                               QStringLiteral("Device I/O error: %1").arg(QFileInfo(file.key()).path()));
  }
}

void SqliteSession::Commit() {
  SetMayStop(false);
  Execute(QStringLiteral("COMMIT"), {});
  Writing = false;
  Group.unlock();
}

void SqliteSession::Rollback() noexcept {
  SetMayStop(false);
  Db.tryExec("ROLLBACK");
  Writing = false;
  Group.unlock();
}

void SqliteSession::ReadTogether(const std::function<void()>& reads) {
  const Turn turn = TakeTurn();
  if (Writing) return reads();
  const struct ReadGroup {
    explicit ReadGroup(SqliteSession& session) : Reader(session) {
      Reader.Execute(QStringLiteral("BEGIN"), {});
      Reader.SetMayStop(true);
    }
    ~ReadGroup() {
      Reader.SetMayStop(false);
      Reader.Db.tryExec("COMMIT");
    }
    ReadGroup(const ReadGroup&) = delete;
    ReadGroup& operator=(const ReadGroup&) = delete;
    SqliteSession& Reader;
  } group(*this);
  reads();
}

// --- definitions ------------------------------------------------------------------------------------------

const TableColumns& SqliteSession::ColumnsOf(const QString& table) {
  const Turn turn = TakeTurn();
  TableColumns& known = Tables[table.toLower()];
  if (known.Names.isEmpty()) known = ReadColumns(table);
  return known;
}

TableColumns SqliteSession::ReadColumns(const QString& table) {
  static const QRegularExpression textSize(QStringLiteral(R"(^TEXT\((\d+)\)$)"));
  StatementUse rows(Prepare(QStringLiteral("SELECT name, type, pk FROM pragma_table_info(?)")),
                    std::array<Value, 1>{table});
  TableColumns columns;
  int keyColumns = 0;
  while (rows.Step()) {
    const QString type = rows.Read(1, false).toString();
    columns.Names << rows.Read(0, false).toString();
    columns.IsDate.push_back(type == QLatin1String("DATETIME"));
    columns.Sizes.push_back(textSize.match(type).captured(1).toInt());
    if (rows.Number(2) == 0) continue;
    ++keyColumns;
    if (type == QLatin1String("INTEGER")) columns.Key = columns.Names.last();
  }
  if (keyColumns != 1) columns.Key.clear();
  return columns;
}

void SqliteSession::Create(const TableDef& table) {
  WithSqliteErrors([&] { Db.exec(TableSql(table).toStdString()); });
}

void SqliteSession::Link(const TableDef& table) {
  WithSqliteErrors([&] {
    Attach(table.LinkedFile(), table.ReadOnly);
    RequireFields(Db, Files[table.LinkedFile()].Alias, table);
    // A table of that name in the opened file would stand before the linked one, and be lost with the file.
    SQLite::Statement same(Db, "SELECT 1 FROM main.sqlite_schema WHERE name = ? COLLATE NOCASE");
    same.bind(1, table.SourceTableName.toStdString());
    if (same.executeStep())
      throw RuntimeError(
          base::errUnrecognizedFormat,
          QStringLiteral("Unrecognized database format '%1': it holds a table '%2' of its own.")
              .arg(QString::fromUtf8(sqlite3_db_filename(Db.getHandle(), "main")), table.SourceTableName));
    // Reading one row finds a file that was cut short.
    Rows(QStringLiteral("SELECT * FROM %1 LIMIT 1").arg(QuoteName(table.SourceTableName)), {});
  });
}

// A view of SQLite's reads one file only, so a query over linked tables is a temporary view of the session.
void SqliteSession::CreateView(const QString& name, const QString& sql) {
  WithSqliteErrors([&] { Db.exec(("CREATE TEMP VIEW " + QuoteName(name) + " AS " + sql).toStdString()); });
}

}  // namespace veldrin::engine
