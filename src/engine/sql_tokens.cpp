#include "engine/sql_tokens.h"

#include <QStringList>

#include "base/runtime_error.h"

namespace veldrin::engine {

namespace {

bool IsDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }
bool IsWordStart(QChar c) { return c.isLetter() || c == QLatin1Char('_'); }
bool IsWordPart(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

// Reads a text up to its closing quote; a doubled quote stands for one.
QString ReadQuoted(const QString& sql, qsizetype& at, QChar quote) {
  QString content;
  for (qsizetype i = at + 1; i < sql.size(); ++i) {
    if (sql[i] != quote) {
      content += sql[i];
    } else if (i + 1 < sql.size() && sql[i + 1] == quote) {
      content += quote;
      ++i;
    } else {
      at = i + 1;
      return content;
    }
  }
  RaiseSyntaxError(sql);
}

// Half of a character of two units would become a question mark in the store's texts, and a pattern by that.
QString WholeCharacters(QString text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!text[i].isSurrogate()) continue;
    const bool whole = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (whole) {
      ++i;
    } else {
      text[i] = QChar::ReplacementCharacter;
    }
  }
  return text;
}

template <class Test>
QString ReadWhile(const QString& sql, qsizetype& at, Test test) {
  const qsizetype start = at;
  while (at < sql.size() && test(sql[at])) ++at;
  return sql.mid(start, at - start);
}

// A name in brackets. Nothing doubles in it.
QString ReadName(const QString& sql, qsizetype& at) {
  const qsizetype close = sql.indexOf(QLatin1Char(']'), at);
  if (close <= at + 1) RaiseSyntaxError(sql);
  QString name = sql.mid(at + 1, close - at - 1);
  at = close + 1;
  return name;
}

QString ReadNumber(const QString& sql, qsizetype& at) {
  QString number = ReadWhile(sql, at, [](QChar c) { return IsDigit(c) || c == QLatin1Char('.'); });
  if (number.count(QLatin1Char('.')) > 1 || (at < sql.size() && IsWordPart(sql[at]))) RaiseSyntaxError(sql);
  return number;
}

// Any other sign is none of the dialect's, and the store might take it for a quote or a place for a value.
SqlToken ReadSymbol(const QString& sql, qsizetype& at) {
  static const QStringList twoSigns = {QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("<>")};
  static const QString oneSign = QStringLiteral("(),.=<>+-*/|");
  const QString two = sql.mid(at, 2);
  const QString symbol = twoSigns.contains(two) ? two : sql.mid(at, 1);
  if (!twoSigns.contains(two) && !oneSign.contains(sql[at])) RaiseSyntaxError(sql);
  at += symbol.size();
  return {SqlToken::Symbol, symbol};
}

SqlToken ReadToken(const QString& sql, qsizetype& at) {
  const QChar c = sql[at];
  if (c == QLatin1Char('\'') || c == QLatin1Char('"')) return {SqlToken::Text, ReadQuoted(sql, at, c)};
  if (c == QLatin1Char('#')) return {SqlToken::Date, ReadQuoted(sql, at, c)};
  if (c == QLatin1Char('[')) return {SqlToken::Name, ReadName(sql, at)};
  if (IsWordStart(c)) return {SqlToken::Word, ReadWhile(sql, at, IsWordPart)};
  if (IsDigit(c)) return {SqlToken::Number, ReadNumber(sql, at)};
  return ReadSymbol(sql, at);
}

}  // namespace

void RaiseSyntaxError(const QString& sql) {
  throw base::RuntimeError(base::errSyntax,
                           QStringLiteral("Syntax error in query expression '%1'.").arg(sql));
}

bool SqlToken::Is(const char* word) const {
  return (Kind == Word || Kind == Symbol) && Content.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

SqlToken SqlWord(const char* word) { return {SqlToken::Word, QString::fromLatin1(word)}; }
SqlToken SqlSign(const char* sign) { return {SqlToken::Symbol, QString::fromLatin1(sign)}; }
SqlToken SqlNumber(int value) { return {SqlToken::Number, QString::number(value)}; }
SqlToken SqlText(const QString& text) { return {SqlToken::Text, text}; }

SqlTokens TokenizeSql(const QString& sql) {
  // A statement ends at such a character.
  if (sql.contains(QChar::Null)) RaiseSyntaxError(sql);
  SqlTokens tokens;
  for (qsizetype at = 0; at < sql.size();) {
    if (sql[at].isSpace()) {
      ++at;
      continue;
    }
    tokens.push_back(ReadToken(sql, at));
  }
  return tokens;
}

QString JoinTokens(const SqlTokens& tokens) {
  QString sql;
  for (const SqlToken& token : tokens) {
    // Two bars are one operator; a blank between any other two tokens keeps them from becoming a third.
    const bool glue = sql.endsWith(QLatin1String(" |")) && token.Is("|");
    if (!sql.isEmpty() && !glue) sql += QLatin1Char(' ');
    if (token.Kind == SqlToken::Text) {
      sql += QLatin1Char('\'') + QuoteSql(WholeCharacters(token.Content)) + QLatin1Char('\'');
    } else if (token.Kind == SqlToken::Name) {
      sql += QLatin1Char('[') + token.Content + QLatin1Char(']');
    } else {
      sql += token.Content;
    }
  }
  return sql;
}

QString QuoteSql(const QString& text) {
  QString quoted = text;
  return quoted.replace(QLatin1Char('\''), QLatin1String("''"));
}

}  // namespace veldrin::engine
