#include "engine/opened_catalogue.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <array>

#include "engine/sql_dialect.h"

namespace veldrin::engine {

namespace {

// The query's whole text, for snapshots.
QString SqlOf(const QueryDef& query, const QStringList& columns) {
  QStringList shown;
  for (const QString& column : columns) shown << query.RowsOf + QLatin1Char('.') + column;
  return QStringLiteral("SELECT DISTINCT %1 FROM (%2 INNER JOIN %3 ON %2.%4 = %3.%4) INNER JOIN %5 ON %6")
      .arg(shown.join(QStringLiteral(", ")), query.RowsOf, query.Links, query.Key, query.Parameter,
           query.Match);
}

void TellOf(Session& session, const QueryDef& query) {
  const QString sql = SqlOf(query, session.ColumnsOf(query.RowsOf).Names);
  session.CreateView(query.Name, TranslateStatement(sql, session.Sql()).Sql);
}

QString SelectKeys(const QString& table, const QString& key) {
  return QStringLiteral("SELECT %1.%2 FROM %1").arg(table, key);
}

// The table of "T", "SELECT * FROM T" and "SELECT T.* FROM T"; empty for another shape.
QString TableOf(const QString& head) {
  const SqlTokens tokens = TokenizeSql(head);
  if (tokens.empty()) return {};
  const QString table = tokens.back().Content;
  const auto is = [&](std::initializer_list<const char*> shape) {
    return std::equal(tokens.begin(), tokens.end() - 1, shape.begin(), shape.end(),
                      [&](const SqlToken& token, const char* word) {
                        return *word == 'T' ? token.Content.compare(table, Qt::CaseInsensitive) == 0
                                            : token.Is(word);
                      });
  };
  const bool shown = is({}) || is({"SELECT", "*", "FROM"}) || is({"SELECT", "T", ".", "*", "FROM"});
  return shown && tokens.back().Kind != SqlToken::Symbol ? table : QString();
}

// Keys that follow each other without a gap are counted in the table's key index in one go; the others are
// looked up together.
std::vector<int> KeysWithRow(Session& session, const KeySource& source, std::vector<int> keys) {
  constexpr std::ptrdiff_t longRun = 32;
  const QString count =
      QStringLiteral("SELECT count(*) FROM %1 WHERE %2 BETWEEN ? AND ?").arg(source.Table, source.Key);
  std::vector<int> kept;
  std::vector<int> doubtful;
  kept.reserve(keys.size());
  for (auto first = keys.begin(); first != keys.end();) {
    auto last = first + 1;
    while (last != keys.end() && *last == *(last - 1) + 1) ++last;
    const bool counted =
        last - first >= longRun &&
        session.Keys(count, std::array<Value, 2>{*first, *(last - 1)}).front() == last - first;
    (counted ? kept : doubtful).insert((counted ? kept : doubtful).end(), first, last);
    first = last;
  }
  if (doubtful.empty()) return kept;
  const QString look = QStringLiteral("SELECT %1 FROM %2 WHERE ").arg(source.Key, source.Table) +
                       session.Sql().IsOneOf(source.Key);
  const std::vector<int> found = session.Keys(look, std::array<Value, 1>{session.Sql().ListOf(doubtful)});
  kept.insert(kept.end(), found.begin(), found.end());
  std::sort(kept.begin(), kept.end());
  return kept;
}

KeyList ReadAnew(Session& session, const KeySource& source) {
  std::vector<int> keys = session.Keys(source.KeySql);
  if (!std::is_sorted(keys.begin(), keys.end())) std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  if (source.MayLackRows) keys = KeysWithRow(session, source, std::move(keys));
  keys.shrink_to_fit();
  return std::make_shared<const std::vector<int>>(std::move(keys));
}

}  // namespace

OpenedCatalogue::OpenedCatalogue(const QString& file, int lockTimeout)
    : TheFile(file), Current(OpenSession(file, lockTimeout)) {}

void OpenedCatalogue::Append(const TableDef& table) {
  if (table.LinkedFile().isEmpty()) return Current->Create(table);
  Current->Link(table);
  Links.push_back(table);
}

void OpenedCatalogue::CreateQueryDef(const QueryDef& query) {
  TellOf(*Current, query);
  Queries.push_back(query);
}

void OpenedCatalogue::MakeCurrent(int lockTimeout) {
  // Refused while another thread writes, whose group must end in the session in which it began.
  Current->SetLockTimeout(lockTimeout);
  if (!Current->IsCurrent()) {
    std::shared_ptr<Session> fresh = OpenSession(TheFile, lockTimeout);
    for (const TableDef& table : Links) fresh->Link(table);
    for (const QueryDef& query : Queries) TellOf(*fresh, query);
    Current = std::move(fresh);
    Reader.reset();
    Kept = {};
  }
}

const QueryDef* OpenedCatalogue::FindQuery(const QString& name) const {
  const auto found = std::ranges::find_if(
      Queries, [&](const QueryDef& query) { return query.Name.compare(name, Qt::CaseInsensitive) == 0; });
  return found == Queries.end() ? nullptr : &*found;
}

std::optional<KeySource> OpenedCatalogue::FindKeySource(const QString& sql) const {
  const QString word = QStringLiteral(" WHERE ");
  const qsizetype head = sql.indexOf(word, 0, Qt::CaseInsensitive);
  const QString table = TableOf(sql.left(head));
  if (table.isEmpty()) return std::nullopt;
  const QString condition =
      head < 0 ? QString() : TranslateCondition(sql.mid(head + word.size()), Current->Sql());
  if (const QueryDef* query = FindQuery(table)) return LinkedKeys(*query, condition);
  const TableColumns& columns = Current->ColumnsOf(table);
  if (columns.Names.isEmpty()) RaiseNoSuchTable(table);
  KeySource source;
  source.Table = table;
  source.Key = columns.Key;
  source.KeySql = SelectKeys(table, columns.Key);
  if (!condition.isEmpty()) source.KeySql += word + condition;
  return source;
}

// The query's condition with the values of the one-row table in the place of its names: what is left is a
// condition on the links alone. Nothing when the table hasn't one row.
std::optional<QString> OpenedCatalogue::MatchOfLinks(const QueryDef& query) const {
  const RowSet parameter = Current->Rows(QStringLiteral("SELECT * FROM ") + query.Parameter);
  if (parameter.Rows.size() != 1) return std::nullopt;
  SqlTokens match = TokenizeSql(query.Match);
  for (size_t at = 0; at + 2 < match.size(); ++at) {
    if (match[at].Content.compare(query.Parameter, Qt::CaseInsensitive) != 0 || !match[at + 1].Is("."))
      continue;
    const qsizetype column = ColumnAt(parameter.Names, match[at + 2].Content);
    if (column < 0 || IsNull(parameter.Rows[0][column])) return std::nullopt;
    const Value& value = parameter.Rows[0][column];
    match[at] = value.userType() == QMetaType::Int ? SqlNumber(value.toInt()) : SqlText(value.toString());
    match.erase(match.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                match.begin() + static_cast<std::ptrdiff_t>(at) + 3);
  }
  return TranslateCondition(JoinTokens(match), Current->Sql());
}

// Being distinct is a matter of keys alone, and without a condition the keys are read from the links, without
// a look at the rows they lead to.
KeySource OpenedCatalogue::LinkedKeys(const QueryDef& query, const QString& condition) const {
  const std::optional<QString> match = MatchOfLinks(query);
  const QString from = match ? query.Links : query.Parameter + QStringLiteral(" CROSS JOIN ") + query.Links;
  const QString linked = QStringLiteral("SELECT %1.%2 FROM %3 WHERE ").arg(query.Links, query.Key, from) +
                         (match ? *match : TranslateCondition(query.Match, Current->Sql()));
  KeySource source{query.RowsOf, query.Key, linked, condition.isEmpty(), match.has_value()};
  // The links stand in a query of their own, so that a criterion's field names mean the table's alone.
  if (!condition.isEmpty()) {
    source.KeySql = SelectKeys(query.RowsOf, query.Key) +
                    QStringLiteral(" WHERE %1.%2 IN (%3) AND ").arg(query.RowsOf, query.Key, linked) +
                    condition;
  }
  return source;
}

bool OpenedCatalogue::IsLinked(const QString& table) const {
  return std::ranges::any_of(Links, [&](const TableDef& link) {
    return link.SourceTableName.compare(table, Qt::CaseInsensitive) == 0;
  });
}

// The version is one of the linked tables; short lists of the machine's own need none. It is taken before the
// keys are read: keys that are newer are read again.
KeyList OpenedCatalogue::ReadKeys(const KeySource& source) {
  KeyList keys;
  const auto version = source.MayBeKept && IsLinked(source.Table) ? Current->Version() : std::nullopt;
  if (!version) {
    Current->ReadTogether([&] { keys = ReadAnew(*Current, source); });
    return keys;
  }
  if (KeyList kept = Kept.Find(source.KeySql, *version)) return kept;
  const auto before = Current;
  ReadBeside([&](Session& session) { keys = ReadAnew(session, source); });
  if (Current == before) Kept.Keep(source.KeySql, *version, keys);
  return keys;
}

// What comes up meanwhile in the caller's thread is read there.
void OpenedCatalogue::ReadBeside(const std::function<void(Session&)>& read) {
  const bool aside = Beside && !IsReading && Current->Version();
  if (aside && !Reader) Reader = Current->Another();
  const auto session = aside && Reader ? Reader : Current;
  const auto together = [&] { session->ReadTogether([&] { read(*session); }); };
  if (session == Current) return together();
  const QScopedValueRollback<bool> reading(IsReading, true);
  Beside(together, [&] { session->Interrupt(); });
}

}  // namespace veldrin::engine
