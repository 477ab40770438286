#include "engine/dao/dynaset.h"

#include <sqlite3.h>

#include <QRegularExpression>
#include <algorithm>

#include "base/runtime_error.h"
#include "engine/dao/errors.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

namespace {

using Option = QRegularExpression;

// What another command or another machine deleted can't be written any more.
void RequireRow(int changedRows) {
  if (changedRows == 0)
    throw base::RuntimeError(base::errRecordDeleted, QStringLiteral("Record is deleted."));
}

QString SelectKeys(const QString& table, const QString& key, const QString& from) {
  return QStringLiteral("SELECT %1.%2 FROM %3").arg(table, key, from);
}

// "SELECT DISTINCT ... FROM (T INNER JOIN L ON T.k = L.k) INNER JOIN P ON <condition>", with k the key of T:
// the rows of T that a row of L leads to. Being distinct is a matter of keys alone then, and without a
// condition on T the keys can be read from L without looking at T.
std::optional<KeySource> FromStoredJoin(Connection& connection, const QString& query, const QString& where) {
  static const QRegularExpression shape(
      QStringLiteral(
          R"(^SELECT DISTINCT .+ FROM \((\w+) INNER JOIN (\w+) ON \1\.(\w+) = \2\.\3\) INNER JOIN (\w+) ON (.+)$)"),
      Option::CaseInsensitiveOption);
  const auto match = shape.match(query.simplified());
  if (!match.hasMatch()) return std::nullopt;
  const QString table = match.captured(1);
  const QString links = match.captured(2);
  const QString key = match.captured(3);
  const QString parameter = match.captured(4);
  if (connection.ColumnsOf(table).Key.compare(key, Qt::CaseInsensitive) != 0) return std::nullopt;

  // The one-row table comes first: CROSS JOIN makes SQLite keep the order, and the range on the links follows
  // it.
  const QString join = QStringLiteral("%1 CROSS JOIN %2").arg(parameter, links);
  const QString linkedKeys =
      SelectKeys(links, key, join + QStringLiteral(" WHERE ") + ToSqlite(match.captured(5)));
  KeySource source;
  source.Table = table;
  source.Key = key;
  source.Unchecked = where.isEmpty();
  source.KeySql = linkedKeys;
  if (where.isEmpty()) return source;
  // The links stand in a query of their own, so that a criterion's field names mean the table's alone.
  source.KeySql = SelectKeys(table, key, table) +
                  QStringLiteral(" WHERE %1.%2 IN (%3) AND ").arg(table, key, linkedKeys) +
                  ToSqliteCondition(where);
  return source;
}

// A statement that gives keys: the hot path of a click on a folder, straight through SQLite's own interface.
class KeyStatement {
 public:
  KeyStatement(Connection& connection, const QString& sql)
      : Db(connection.Sqlite().getHandle()), Statement(connection.PreparedRaw(sql)) {}
  ~KeyStatement() { sqlite3_reset(Statement); }
  KeyStatement(const KeyStatement&) = delete;
  KeyStatement& operator=(const KeyStatement&) = delete;

  void SetRange(int first, int last) {
    sqlite3_reset(Statement);
    sqlite3_bind_int(Statement, 1, first);
    sqlite3_bind_int(Statement, 2, last);
  }

  bool Step() {
    const int result = sqlite3_step(Statement);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) throw FromSqlite(SQLite::Exception(Db, result));
    return false;
  }

  int Key() const { return sqlite3_column_int(Statement, 0); }

 private:
  sqlite3* Db;
  sqlite3_stmt* Statement;
};

}  // namespace

std::optional<KeySource> FindKeySource(Connection& connection, const QString& sql) {
  static const QRegularExpression shape(QStringLiteral(R"(^(?:SELECT (?:(\w+)\.)?\* FROM )?(\w+)$)"),
                                        Option::CaseInsensitiveOption);
  // The condition may hold whatever people type, also what is no text for a regular expression.
  const QString condition = QStringLiteral(" WHERE ");
  const qsizetype head = sql.indexOf(condition, 0, Qt::CaseInsensitive);
  const QString where = head < 0 ? QString() : sql.mid(head + condition.size());
  const auto match = shape.match(sql.left(head).trimmed());
  if (!match.hasMatch()) return std::nullopt;
  const QString table = match.captured(2);
  const QString named = match.captured(1);
  if (!named.isEmpty() && named.compare(table, Qt::CaseInsensitive) != 0) return std::nullopt;

  const QString query = connection.QuerySql(table);
  if (!query.isEmpty()) return FromStoredJoin(connection, query, where);
  KeySource source;
  source.Table = table;
  source.Key = connection.ColumnsOf(table).Key;
  source.Unchecked = false;
  source.KeySql = SelectKeys(table, source.Key, table);
  if (!where.isEmpty()) source.KeySql += condition + ToSqliteCondition(where);
  return source;
}

Dynaset::Dynaset(std::shared_ptr<Connection> connection, KeySource source)
    : TheConnection(std::move(connection)), Source(std::move(source)) {
  WithSqliteErrors([&] { LoadColumns(); });
}

void Dynaset::LoadColumns() {
  const TableColumns& columns = TheConnection->ColumnsOf(Source.Table);
  if (columns.Names.isEmpty()) {
    throw base::RuntimeError(base::errNoSuchTable, QStringLiteral("no such table: %1").arg(Source.Table));
  }
  Names = columns.Names;
  IsDate = columns.IsDate;
  Sizes = columns.Sizes;
}

std::vector<int> Dynaset::ReadKeys(const QString& sqliteSql) const {
  KeyStatement statement(*TheConnection, sqliteSql);
  std::vector<int> keys;
  while (statement.Step()) keys.push_back(statement.Key());
  return keys;
}

const std::vector<int>& Dynaset::Keys() const {
  if (TheKeys) return *TheKeys;
  if (Source.Key.isEmpty()) {
    throw base::RuntimeError(base::errReadOnly,
                             QStringLiteral("Rows of %1 can only be added.").arg(Source.Table));
  }
  std::vector<int> keys = ReadKeys(Source.KeySql);
  if (!std::is_sorted(keys.begin(), keys.end())) std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  if (Source.Unchecked) RemoveKeysWithoutRow(keys);
  keys.shrink_to_fit();
  TheKeys = std::move(keys);
  return *TheKeys;
}

// Keys that follow each other without a gap are counted in the table's key index in one go; only where the
// count tells that one of them has no row are they looked up one by one.
void Dynaset::RemoveKeysWithoutRow(std::vector<int>& keys) const {
  const ReadTransaction transaction(*TheConnection);
  KeyStatement count(
      *TheConnection,
      QStringLiteral("SELECT count(*) FROM %1 WHERE %2 BETWEEN ? AND ?").arg(Source.Table, Source.Key));
  const auto rowsBetween = [&count](int first, int last) {
    count.SetRange(first, last);
    return count.Step() ? count.Key() : 0;
  };
  auto kept = keys.begin();
  for (auto first = keys.begin(); first != keys.end();) {
    auto last = first + 1;
    while (last != keys.end() && *last == *(last - 1) + 1) ++last;
    const bool all = rowsBetween(*first, *(last - 1)) == last - first;
    for (; first != last; ++first) {
      if (all || rowsBetween(*first, *first) == 1) *kept++ = *first;
    }
  }
  keys.erase(kept, keys.end());
}

std::vector<std::vector<Value>> Dynaset::ReadRows(int first, int count) const {
  const std::vector<int>& keys = Keys();
  return WithSqliteErrors([&] {
    const ReadTransaction transaction(*TheConnection);
    SQLite::Statement& find = TheConnection->Prepared(
        QStringLiteral("SELECT * FROM %1 WHERE %2 = ?").arg(Source.Table, Source.Key));
    std::vector<std::vector<Value>> rows(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
      const StatementUse row(find);
      row->bind(1, keys[static_cast<size_t>(first) + static_cast<size_t>(i)]);
      if (!row->executeStep()) continue;
      for (int column = 0; column < Names.size(); ++column) {
        rows[static_cast<size_t>(i)].push_back(ReadColumn(*row, column, IsDate[static_cast<size_t>(column)]));
      }
    }
    return rows;
  });
}

int Dynaset::PositionOf(int bookmark) const {
  const auto at = std::lower_bound(Keys().begin(), Keys().end(), bookmark);
  return at != Keys().end() && *at == bookmark ? static_cast<int>(at - Keys().begin()) : -1;
}

// Rows whose keys lie close together are looked through in one go: in the whole catalogue that is one scan,
// in a folder whose photos are far apart a look at each of them. The first match ends it. A row that came
// after the list was read has a key, but no place in the list.
int Dynaset::FindPosition(const QString& criteria, int from) const {
  constexpr qint64 near = 8;  // A row that is passed over costs so much less than one that is sought.
  const ReadTransaction transaction(*TheConnection);
  KeyStatement rows(*TheConnection,
                    QStringLiteral("SELECT %1.%2 FROM %1 WHERE %1.%2 BETWEEN ? AND ? AND %3 ORDER BY %1.%2")
                        .arg(Source.Table, Source.Key, ToSqliteCondition(criteria)));
  const std::vector<int>& keys = Keys();
  for (auto first = keys.begin() + std::min(from, RecordCount()); first != keys.end();) {
    auto last = first + 1;
    while (last != keys.end() && qint64(*last) - *(last - 1) <= near) ++last;
    rows.SetRange(*first, *(last - 1));
    while (rows.Step()) {
      if (const int position = PositionOf(rows.Key()); position >= 0) return position;
    }
    first = last;
  }
  return -1;
}

FieldType Dynaset::TypeOf(const QString& name) const {
  const auto column = static_cast<size_t>(ColumnOf(name));
  if (IsDate[column]) return dbDate;
  return Sizes[column] > 0 ? dbText : dbLong;
}

void Dynaset::AddNew() {
  State = Writing::Added;
  Changes.clear();
}

void Dynaset::Edit() {
  RequireCurrent();
  State = Writing::Edited;
  Changes.clear();
}

void Dynaset::SetField(const QString& name, const Value& value) {
  if (State == Writing::None)
    throw base::RuntimeError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
  const qsizetype column = ColumnOf(name);
  const int size = Sizes[static_cast<size_t>(column)];
  const QString text = size > 0 ? value.toString() : QString();
  // A character beyond the first 65,536 counts twice in the text itself.
  if (text.size() > size && text.toUcs4().size() > size) {
    throw base::RuntimeError(
        base::errFieldTooSmall,
        QStringLiteral("The field is too small to accept the amount of data you attempted to add."));
  }
  Changes[static_cast<int>(column)] = value;
}

void Dynaset::Update() {
  WithSqliteErrors([&] {
    if (State == Writing::Added) Insert();
    if (State == Writing::Edited && !Changes.empty()) Write();
  });
  State = Writing::None;
  Moved();
}

// The values of a statement that writes. A field that was set twice has its last value.
void Dynaset::BindChanges(SQLite::Statement& statement) const {
  int index = 0;
  for (const auto& [column, value] : Changes) BindValue(statement, ++index, value);
}

void Dynaset::Insert() {
  std::vector<int> columns;
  columns.reserve(Changes.size());
  for (const auto& [column, value] : Changes) columns.push_back(column);
  if (InsertSql.isEmpty() || columns != InsertedColumns) {
    InsertSql = BuildInsert();
    InsertedColumns = std::move(columns);
  }
  const StatementUse insert(TheConnection->Prepared(InsertSql));
  BindChanges(*insert);
  insert->exec();
}

QString Dynaset::BuildInsert() const {
  QStringList names;
  QStringList marks;
  for (const auto& [column, value] : Changes) {
    names << QuoteName(Names[column]);
    marks << QStringLiteral("?");
  }
  const QString values = names.isEmpty()
                             ? QStringLiteral("DEFAULT VALUES")
                             : QStringLiteral("(%1) VALUES (%2)")
                                   .arg(names.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
  return QStringLiteral("INSERT INTO %1 %2").arg(Source.Table, values);
}

void Dynaset::Write() {
  QStringList sets;
  for (const auto& [column, value] : Changes) sets << QuoteName(Names[column]) + QStringLiteral(" = ?");
  const StatementUse update(
      TheConnection->Prepared(QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?")
                                  .arg(Source.Table, sets.join(QLatin1Char(',')), Source.Key)));
  BindChanges(*update);
  update->bind(static_cast<int>(Changes.size()) + 1, Bookmark());
  RequireRow(update->exec());
}

void Dynaset::Delete() {
  RequireCurrent();
  WithSqliteErrors([&] {
    const StatementUse remove(
        TheConnection->Prepared(QStringLiteral("DELETE FROM %1 WHERE %2 = ?").arg(Source.Table, Source.Key)));
    remove->bind(1, Bookmark());
    RequireRow(remove->exec());
  });
  Moved();
}

}  // namespace veldrin::engine
