// What people can type into the fields of query and search, all the way to the statement that SQLite runs.
// The bytes are the texts of the fields, one a line. Ends the process where a statement writes, is more than
// one, or says more than its condition; where a quoted text is refused, and where `Like` errs.
#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "base/runtime_error.h"
#include "catalogue/record_source.h"
#include "engine/like.h"
#include "engine/sql_dialect.h"
#include "engine/sqlite/session.h"
#include "find/find_record.h"
#include "find/query_dialog.h"

using namespace veldrin;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

[[noreturn]] void Fail(const char* what, const QString& sql) {
  std::fprintf(stderr, "%s: %s\n", what, qPrintable(sql));
  std::abort();
}

// A catalogue with a few rows, by which a condition that escapes shows.
sqlite3* OpenCatalogue() {
  static const QTemporaryDir directory;
  const QString file = directory.filePath("Photos.mdb");
  if (!QFile::copy(QStringLiteral(READY_MADE_DIR "/Photos.mdb"), file)) Fail("no catalogue", file);
  static engine::SqliteSession session(file, 0);
  session.Sqlite().exec(
      "INSERT INTO tblPhotos (PhotoID, ImageType, Title, CreateDate, MadeBy, Description) VALUES "
      "(1, 'jpg', 'x', '2001-07-04 00:00:00', 'x', 'x'), (2, 'y', 'Übung', '2001-07-05 00:00:00', 'y', 'y')");
  sqlite3* db = session.Sqlite().getHandle();
  // What runs too long is no mistake.
  sqlite3_limit(db, SQLITE_LIMIT_LENGTH, 1'000'000);
  sqlite3_progress_handler(
      db, 100'000, [](void*) { return 1; }, nullptr);
  return db;
}

// Whether SQLite takes the condition. With a condition that no row meets beside it no row may come.
bool Holds(const QString& condition) {
  static sqlite3* db = OpenCatalogue();
  const QString closed = engine::TranslateCondition(condition, engine::SqliteDialect());
  for (const char* form :
       {"SELECT PhotoID FROM tblPhotos WHERE 0 AND %1", "SELECT PhotoID FROM tblPhotos WHERE %1 AND 0"}) {
    const QString sql = QString::fromLatin1(form).arg(closed);
    const std::string text = sql.toStdString();
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int result = sqlite3_prepare_v2(db, text.data(), static_cast<int>(text.size()), &raw, &tail);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(raw, sqlite3_finalize);
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
  } catch (const base::RuntimeError& error) {
    if (error.Number() != base::errSyntax) Fail("another error", error.Description());
  }
  if (mustHold) Fail("a text that is refused", text);
}

void CheckQuery(const catalogue::Criteria& criteria, bool mustHold) {
  const QString clause = BuildQueryClause(criteria);
  if (!clause.isEmpty()) Check(mustHold, [&] { return clause.mid(QStringLiteral(" WHERE ").size()); });
}

void CheckSearch(const char* field, engine::FieldType type, const QString& value) {
  Check(type == engine::dbText, [&] { return find::SearchCriterion(QLatin1String(field), type, value); });
}

// `Like` by its definition, one character after the other.
bool MatchesPlainly(std::u32string_view pattern, std::u32string_view text) {
  if (pattern.empty()) return text.empty();
  const auto rest = [&](size_t count) { return MatchesPlainly(pattern.substr(count), text.substr(1)); };
  if (pattern[0] == '*' && MatchesPlainly(pattern.substr(1), text)) return true;
  if (text.empty()) return false;
  const char32_t c = text[0];
  if (pattern[0] == '*') return rest(0);
  const size_t close = pattern[0] == '[' ? pattern.find(']', 1) : pattern.npos;
  if (close == pattern.npos || close == 1)
    return (pattern[0] == '?' || (pattern[0] == '#' ? QChar::isDigit(c) : pattern[0] == c)) && rest(1);
  bool found = false;
  const bool none = pattern[1] == '!';
  for (size_t i = none ? 2 : 1; i < close; ++i) {
    const bool range = i + 2 < close && pattern[i + 1] == '-';
    found |= pattern[i] <= c && c <= pattern[range ? i + 2 : i];
    if (range) i += 2;
  }
  return found != none && rest(close + 1);
}

void CheckLike(const QString& pattern, const QString& text) {
  // The plain way tries all ways.
  if (pattern.size() > 24 || text.size() > 24 || pattern.count(u'*') > 4) return;
  const bool matches = engine::LikePattern(pattern.toStdString()).Matches(text.toStdString());
  const auto folded = [](const QString& typed) {
    return QString::fromUtf8(typed.toUtf8()).toCaseFolded().toStdU32String();
  };
  if (matches != MatchesPlainly(folded(pattern), folded(text))) Fail("Like errs", pattern + " : " + text);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Each unit of a field's text, also halves of characters, can be written: \x followed by four digits.
  QString typed = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (qsizetype at = 0; (at = typed.indexOf("\\x", at)) >= 0; ++at) {
    bool isUnit = false;
    const ushort unit = typed.mid(at + 2, 4).toUShort(&isUnit, 16);
    if (isUnit) typed.replace(at, 6, QChar(unit));
  }
  QStringList fields = typed.split(u'\n');
  while (fields.size() < 6) fields << QString();
  // The dialog lets no such character through, and no date that isn't one.
  catalogue::Criteria criteria;
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
    CheckSearch("Title", engine::dbText, value);
    CheckSearch("CreateDate", engine::dbDate, value);
    CheckSearch("PhotoID", engine::dbLong, value);
  }
  CheckLike(fields[0], fields[1]);
  CheckLike(u'*' + fields[2] + u'*', fields[3]);
  return 0;
}
