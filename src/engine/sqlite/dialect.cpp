#include "engine/sqlite/dialect.h"

#include <initializer_list>

namespace veldrin::engine {

namespace {

SqlTokens Concat(std::initializer_list<SqlTokens> parts) {
  SqlTokens all;
  for (const SqlTokens& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

SqlTokens Substring(const SqlTokens& text, const SqlTokens& count) {
  return Concat({{SqlWord("substr"), SqlSign("(")},
                 text,
                 {SqlSign(","), SqlNumber(1), SqlSign(",")},
                 count,
                 {SqlSign(")")}});
}

}  // namespace

SqlTokens SqliteDialect::PrefixEnd(const SqlTokens& prefix) const {
  return Concat(
      {prefix,
       {SqlSign("|"), SqlSign("|"), SqlWord("char"), SqlSign("("), SqlNumber(0x10FFFF), SqlSign(")")}});
}

SqlTokens SqliteDialect::Left(const SqlTokens& text, const SqlTokens& count) const {
  return Substring(text, count);
}

SqlTokens SqliteDialect::DateValue(const SqlTokens& date) const {
  return Concat({{SqlSign("(")},
                 Substring(date, {SqlNumber(10)}),
                 {SqlSign("|"), SqlSign("|"), SqlText(QStringLiteral(" 00:00:00")), SqlSign(")")}});
}

SqlTokens SqliteDialect::Like(const SqlTokens& text, const SqlToken& pattern) const {
  return Concat({{SqlWord("MatchesLike"), SqlSign("("), pattern, SqlSign(",")}, text, {SqlSign(")")}});
}

SqlTokens SqliteDialect::Folded() const { return {SqlWord("COLLATE"), SqlWord("Folded")}; }

// OR IGNORE would leave out rows whose texts are too long as well.
SqlTokens SqliteDialect::LeaveOutClashes() const {
  return {SqlWord("ON"), SqlWord("CONFLICT"), SqlWord("DO"), SqlWord("NOTHING")};
}

QString SqliteDialect::IsOneOf(const QString& column) const {
  return QStringLiteral("%1 IN (SELECT value FROM json_each(?))").arg(column);
}

QString SqliteDialect::ListOf(std::span<const int> numbers) const {
  QString list = QStringLiteral("[");
  for (const int number : numbers) {
    if (list.size() > 1) list += QLatin1Char(',');
    list += QString::number(number);
  }
  return list + QLatin1Char(']');
}

}  // namespace veldrin::engine
