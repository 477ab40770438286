#include "engine/dao/connection.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include "engine/dao/errors.h"
#include "engine/like.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

namespace {

// Existing files only: an engine that makes a missing catalogue would hide its loss.
std::string UriOf(const QString& file) {
  return (QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toEncoded(QUrl::FullyEncoded) + "?mode=rw")
      .toStdString();
}

void RequireFile(const QString& file) {
  const QFileInfo info(file);
  if (info.exists()) return;
  if (info.dir().exists())
    throw base::RuntimeError(base::errNoSuchFile, QStringLiteral("Could not find file '%1'.").arg(file));
  throw base::RuntimeError(base::errBadPath, QStringLiteral("'%1' is not a valid path.").arg(file));
}

SQLite::Database OpenFile(const QString& file) {
  RequireFile(file);
  return WithSqliteErrors(
      [&] { return SQLite::Database(UriOf(file), SQLite::OPEN_READWRITE | SQLite::OPEN_URI); });
}

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr ? std::string_view() : std::string_view(text, sqlite3_value_bytes(value));
}

// The pattern is read once for all rows: SQLite keeps it as long as the argument is the same.
const LikePattern* PatternOf(sqlite3_context* context, sqlite3_value* argument) {
  if (const void* kept = sqlite3_get_auxdata(context, 0)) return static_cast<const LikePattern*>(kept);
  sqlite3_set_auxdata(context, 0, new LikePattern(TextOf(argument)),
                      [](void* pattern) { delete static_cast<LikePattern*>(pattern); });
  return static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
}

void CallMatchesLike(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[1]) == SQLITE_NULL) return sqlite3_result_null(context);
  const LikePattern* pattern = PatternOf(context, arguments[0]);
  if (pattern == nullptr) return sqlite3_result_error_nomem(context);
  sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])) ? 1 : 0);
}

int CallCompareFolded(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareFolded({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                       {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

}  // namespace

Connection::Connection(const QString& file, int busyTimeout) : TheFile(file), Db(OpenFile(file)) {
  Files.insert(file, IdentityOf(file));
  WithSqliteErrors([&] {
    SetUp(busyTimeout);
    LoadDefinitions();
  });
}

Connection::Identity Connection::IdentityOf(const QString& file) {
  struct stat status {};
  if (::stat(QFile::encodeName(file).constData(), &status) != 0) return {};
  return {status.st_dev, status.st_ino};
}

bool Connection::IsCurrent() const {
  for (auto file = Files.begin(); file != Files.end(); ++file) {
    if (IdentityOf(file.key()) != file.value()) return false;
  }
  return true;
}

// The header names the program and the number of pages: a file of another program and one that was cut short
// are refused here, before a statement comes upon the damage.
void Connection::CheckFormat(const std::string& schema, const QString& file) {
  const qint64 bytes = Db.execAndGet("PRAGMA " + schema + ".page_count").getInt64() *
                       Db.execAndGet("PRAGMA " + schema + ".page_size").getInt64();
  const int id = Db.execAndGet("PRAGMA " + schema + ".application_id").getInt();
  if (id != ApplicationId || QFileInfo(file).size() < bytes) {
    throw base::RuntimeError(base::errUnrecognizedFormat,
                             QStringLiteral("Unrecognized database format '%1'.").arg(file));
  }
}

void Connection::SetUp(int busyTimeout) {
  Db.setBusyTimeout(busyTimeout);
  CheckFormat("main", TheFile);
  // The opened file itself is the working copy, which is made anew at each start: it needs no durability.
  Db.exec("PRAGMA main.synchronous=OFF; PRAGMA main.journal_mode=MEMORY; PRAGMA temp_store=MEMORY");
  sqlite3_create_function(Db.getHandle(), "MatchesLike", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                          CallMatchesLike, nullptr, nullptr);
  sqlite3_create_collation(Db.getHandle(), "Folded", SQLITE_UTF8, nullptr, CallCompareFolded);
}

void Connection::LoadDefinitions() {
  if (!Db.tableExists("Definitions")) return;
  SQLite::Statement definitions(Db, "SELECT Kind, Name, Definition FROM Definitions ORDER BY rowid");
  while (definitions.executeStep()) {
    const QString name = QString::fromStdString(definitions.getColumn(1).getString());
    const QString definition = QString::fromStdString(definitions.getColumn(2).getString());
    if (definitions.getColumn(0).getString() == "Link") {
      Attach(definition);
    } else {
      OpenQuery(name, definition);
    }
  }
}

void Connection::Attach(const QString& file) {
  if (Files.contains(file)) return;
  RequireFile(file);
  const std::string alias = "linked" + std::to_string(Files.size());
  SQLite::Statement attach(Db, "ATTACH ? AS " + alias);
  attach.bind(1, UriOf(file));
  attach.executeStep();
  CheckFormat(alias, file);
  // The linked file is the permanent one, perhaps on a network: a rollback journal, and every write flushed.
  Db.exec("PRAGMA " + alias + ".synchronous=FULL; PRAGMA " + alias + ".journal_mode=DELETE");
  Files.insert(file, IdentityOf(file));
}

void Connection::AddLink(const QString& table, const QString& file) {
  WithSqliteErrors([&] {
    Attach(file);
    // Reading one row finds a missing table and a file that was cut short.
    SQLite::Statement(Db, "SELECT * FROM " + QuoteName(table).toStdString() + " LIMIT 1").executeStep();
    Remember("Link", table, file);
  });
}

void Connection::AddQuery(const QString& name, const QString& sql) {
  WithSqliteErrors([&] {
    OpenQuery(name, sql);
    Remember("Query", name, sql);
  });
}

// SQLite's views read one file only, so a query over linked tables is a temporary view of each connection.
void Connection::OpenQuery(const QString& name, const QString& sql) {
  Db.exec(("CREATE TEMP VIEW " + QuoteName(name) + " AS " + ToSqlite(sql)).toStdString());
  Queries.insert(name.toLower(), sql);
}

void Connection::Remember(const char* kind, const QString& name, const QString& definition) {
  Db.exec("CREATE TABLE IF NOT EXISTS main.Definitions (Kind TEXT, Name TEXT, Definition TEXT)");
  SQLite::Statement insert(Db, "INSERT INTO main.Definitions VALUES (?, ?, ?)");
  insert.bind(1, kind);
  insert.bind(2, name.toStdString());
  insert.bind(3, definition.toStdString());
  insert.exec();
}

SQLite::Statement& Connection::Prepared(const QString& sqliteSql) {
  auto& statement = Statements[sqliteSql];
  if (!statement) statement = std::make_unique<SQLite::Statement>(Db, sqliteSql.toStdString());
  return *statement;
}

void StatementEnd::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

sqlite3_stmt* Connection::PreparedRaw(const QString& sqliteSql) {
  // Statements that name a photo's number differ from each other; a few are kept, and never one that is in
  // use.
  constexpr size_t MostKept = 32;
  if (RawStatements.size() >= MostKept && !RawStatements.contains(sqliteSql)) {
    std::erase_if(RawStatements, [](const auto& kept) { return sqlite3_stmt_busy(kept.second.get()) == 0; });
  }
  auto& statement = RawStatements[sqliteSql];
  if (!statement) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(Db.getHandle(), sqliteSql.toUtf8().constData(), -1, &raw, nullptr) != SQLITE_OK) {
      throw FromSqlite(SQLite::Exception(Db.getHandle()));
    }
    statement.reset(raw);
  }
  return statement.get();
}

const TableColumns& Connection::ColumnsOf(const QString& table) {
  static const QRegularExpression textSize(QStringLiteral(R"(^TEXT\((\d+)\)$)"));
  TableColumns& known = Tables[table.toLower()];
  if (!known.Names.isEmpty()) return known;
  SQLite::Statement columns(Db, "SELECT name, type, pk FROM pragma_table_info(?)");
  columns.bind(1, table.toStdString());
  int keyColumns = 0;
  while (columns.executeStep()) {
    const QString type = QString::fromStdString(columns.getColumn(1).getString());
    known.Names << QString::fromStdString(columns.getColumn(0).getString());
    known.IsDate.push_back(type == QLatin1String("DATETIME"));
    known.Sizes.push_back(textSize.match(type).captured(1).toInt());
    if (columns.getColumn(2).getInt() == 0) continue;
    ++keyColumns;
    if (type == QLatin1String("INTEGER")) known.Key = known.Names.last();
  }
  if (keyColumns != 1) known.Key.clear();
  return known;
}

ReadTransaction::ReadTransaction(Connection& connection) {
  SQLite::Database& db = connection.Sqlite();
  if (sqlite3_get_autocommit(db.getHandle()) == 0) return;
  db.exec("BEGIN");
  Db = &db;
}

ReadTransaction::~ReadTransaction() {
  if (Db != nullptr) Db->tryExec("COMMIT");
}

Value ReadColumn(SQLite::Statement& statement, int column, bool isDate) {
  const SQLite::Column value = statement.getColumn(column);
  if (value.isNull()) return {};
  if (value.isInteger()) return value.getInt();
  const QString text = QString::fromUtf8(value.getText(), value.getBytes());
  return isDate ? Value(DateFromStore(text)) : Value(text);
}

void BindValue(SQLite::Statement& statement, int index, const Value& value) {
  if (IsNull(value)) return statement.bind(index);
  if (value.userType() == QMetaType::Int) return statement.bind(index, value.toInt());
  const bool isDate = value.userType() == QMetaType::QDateTime;
  statement.bind(index, (isDate ? DateToStore(value.toDateTime()) : value.toString()).toStdString());
}

QString QuoteName(const QString& name) {
  QString quoted = name;
  return QLatin1Char('"') + quoted.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

}  // namespace veldrin::engine
