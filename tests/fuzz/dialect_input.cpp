#include "fuzz/dialect_input.h"

#include <sqlite3.h>

#include <QString>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "catalogue/record_source.h"
#include "find/find_record.h"
#include "find/query_dialog.h"
#include "platform/like.h"
#include "platform/runtime_error.h"
#include "platform/sql_dialect.h"

namespace veldrin::fuzz {

namespace {

using catalogue::Criteria;

[[noreturn]] void Fail(const char* what, const QString& sql) {
  std::fprintf(stderr, "%s: %s\n", what, qPrintable(sql));
  std::abort();
}

void Matches(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto text = [&](int i) {
    return std::string_view(reinterpret_cast<const char*>(sqlite3_value_text(arguments[i])),
                            static_cast<size_t>(sqlite3_value_bytes(arguments[i])));
  };
  sqlite3_result_int(context, platform::LikePattern(text(0)).Matches(text(1)) ? 1 : 0);
}

int Compare(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return platform::CompareFolded({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                                 {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

// A table with a few rows, by which a condition that escapes shows.
sqlite3* OpenTable() {
  sqlite3* db = nullptr;
  sqlite3_open(":memory:", &db);
  sqlite3_create_function(db, "MatchesLike", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, Matches, nullptr,
                          nullptr);
  sqlite3_create_collation(db, "Folded", SQLITE_UTF8, nullptr, Compare);
  const char* rows =
      "CREATE TABLE tblPhotos (PhotoID INTEGER PRIMARY KEY, ImageType, Title, CreateDate, MadeBy, "
      "Description,"
      " LastModifyDate);"
      "INSERT INTO tblPhotos VALUES (1, 'jpg', 'x', '2001-07-04 00:00:00', 'x', 'x', '2001-07-04 00:00:00'),"
      " (2, 'y', 'Übung', '2001-07-05 00:00:00', 'y', 'y', '2001-07-05 00:00:00');";
  if (sqlite3_exec(db, rows, nullptr, nullptr, nullptr) != SQLITE_OK) Fail("no table", {});
  // What runs too long is no mistake.
  sqlite3_limit(db, SQLITE_LIMIT_LENGTH, 1'000'000);
  sqlite3_progress_handler(
      db, 100'000, [](void*) { return 1; }, nullptr);
  return db;
}

struct StatementDeleter {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

// Whether SQLite takes the condition. With a condition that no row meets beside it no row may come.
bool Holds(const QString& condition) {
  static sqlite3* db = OpenTable();
  const QString closed = platform::ToSqliteCondition(condition);
  for (const char* form :
       {"SELECT PhotoID FROM tblPhotos WHERE 0 AND %1", "SELECT PhotoID FROM tblPhotos WHERE %1 AND 0"}) {
    const QString sql = QString::fromLatin1(form).arg(closed);
    const std::string text = sql.toStdString();
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int result = sqlite3_prepare_v2(db, text.data(), static_cast<int>(text.size()), &raw, &tail);
    const std::unique_ptr<sqlite3_stmt, StatementDeleter> statement(raw);
    if (result != SQLITE_OK) return false;
    if (raw == nullptr || tail != text.data() + text.size()) Fail("not one statement", sql);
    if (sqlite3_stmt_readonly(raw) == 0) Fail("a statement that writes", sql);
    if (sqlite3_bind_parameter_count(raw) > 0) Fail("a place for a value", sql);
    if (sqlite3_step(raw) == SQLITE_ROW) Fail("a condition that isn't closed", sql);
  }
  return true;
}

// `mustHold`: whatever the text, it is a condition that SQLite can read.
template <class Condition>
void Check(bool mustHold, Condition&& condition) {
  QString text;
  try {
    text = condition();
    if (Holds(text)) return;
  } catch (const platform::RuntimeError& error) {
    if (error.Number() != platform::errSyntax) Fail("another error", error.Description());
  }
  if (mustHold) Fail("a text that is refused", text);
}

void CheckQuery(const Criteria& criteria, bool mustHold) {
  const QString where = QStringLiteral(" WHERE ");
  const QString clause = BuildQueryClause(criteria);
  if (!clause.isEmpty()) Check(mustHold, [&] { return clause.mid(where.size()); });
}

void CheckSearch(const char* field, platform::FieldType type, const QString& value) {
  Check(type == platform::dbText, [&] { return find::SearchCriterion(QLatin1String(field), type, value); });
}

// `Like` by its definition, one character after the other.
bool MatchesPlainly(const QList<uint>& pattern, qsizetype p, const QList<uint>& text, qsizetype t) {
  if (p == pattern.size()) return t == text.size();
  if (pattern[p] == '*') {
    for (qsizetype i = t; i <= text.size(); ++i) {
      if (MatchesPlainly(pattern, p + 1, text, i)) return true;
    }
    return false;
  }
  if (t == text.size()) return false;
  const qsizetype close = pattern[p] == '[' ? pattern.indexOf(']', p + 1) : -1;
  if (close <= p + 1) {
    const bool fits =
        pattern[p] == '?' || (pattern[p] == '#' ? QChar::isDigit(text[t]) : pattern[p] == text[t]);
    return fits && MatchesPlainly(pattern, p + 1, text, t + 1);
  }
  bool found = false;
  const bool none = pattern[p + 1] == '!';
  for (qsizetype i = none ? p + 2 : p + 1; i < close; ++i) {
    const bool range = i + 2 < close && pattern[i + 1] == '-';
    found |= pattern[i] <= text[t] && text[t] <= pattern[range ? i + 2 : i];
    if (range) i += 2;
  }
  return found != none && MatchesPlainly(pattern, close + 1, text, t + 1);
}

void CheckLike(const QString& pattern, const QString& text) {
  // The plain way tries all ways.
  if (pattern.size() > 24 || text.size() > 24 || pattern.count(QLatin1Char('*')) > 4) return;
  const std::string like = pattern.toStdString();
  const std::string value = text.toStdString();
  const auto folded = [](const std::string& utf8) {
    return QString::fromStdString(utf8).toCaseFolded().toUcs4();
  };
  if (platform::LikePattern(like).Matches(value) != MatchesPlainly(folded(like), 0, folded(value), 0)) {
    Fail("Like errs", pattern + QLatin1String(" : ") + text);
  }
}

}  // namespace

void TypeInto(const uint8_t* data, size_t size) {
  // Each unit of a field's text, also halves of characters, can be written: \x followed by four digits.
  QString typed = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (qsizetype at = 0; (at = typed.indexOf(QLatin1String("\\x"), at)) >= 0; ++at) {
    bool isUnit = false;
    const ushort unit = typed.mid(at + 2, 4).toUShort(&isUnit, 16);
    if (isUnit) typed.replace(at, 6, QChar(unit));
  }
  QStringList fields = typed.split(QLatin1Char('\n'));
  while (fields.size() < 6) fields << QString();
  // The dialog lets no such character through, and no date that isn't one.
  Criteria criteria;
  criteria.QryTitle = QString(fields[1]).remove(QChar::Null);
  criteria.QryDescription = QString(fields[2]).remove(QChar::Null);
  criteria.QryMadeBy = QString(fields[3]).remove(QChar::Null);
  if (find::IsValidDate(fields[4])) criteria.QryDate1 = fields[4];
  if (find::IsValidDate(fields[5])) criteria.QryDate2 = fields[5];
  criteria.QryOp1 = static_cast<int>(size % 5);
  criteria.QryOp2 = static_cast<int>(size / 5 % 5);
  CheckQuery(criteria, true);
  criteria.QryImageType = fields[0];
  CheckQuery(criteria, false);
  for (const QString& value : fields) {
    if (value.isEmpty() || value.contains(QChar::Null)) continue;
    CheckSearch("Title", platform::dbText, value);
    CheckSearch("CreateDate", platform::dbDate, value);
    CheckSearch("PhotoID", platform::dbLong, value);
  }
  CheckLike(fields[0], fields[1]);
  CheckLike(QLatin1Char('*') + fields[2] + QLatin1Char('*'), fields[3]);
}

}  // namespace veldrin::fuzz
