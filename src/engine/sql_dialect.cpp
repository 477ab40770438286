#include "engine/sql_dialect.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "base/runtime_error.h"
#include "engine/dao/value.h"

namespace veldrin::engine {

namespace {

using Tokens = std::vector<SqlToken>;
using Kind = SqlToken;

[[noreturn]] void RaiseSyntaxError(const QString& sql) {
  throw base::RuntimeError(base::errSyntax,
                           QStringLiteral("Syntax error in query expression '%1'.").arg(sql));
}

SqlToken Word(const char* text) { return {Kind::Word, QString::fromLatin1(text)}; }
SqlToken Sign(const char* text) { return {Kind::Symbol, QString::fromLatin1(text)}; }
SqlToken Number(int value) { return {Kind::Number, QString::number(value)}; }

void Add(Tokens& to, const Tokens& tokens) { to.insert(to.end(), tokens.begin(), tokens.end()); }

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

// Half of a character of two units would become a question mark in SQLite's texts, and a pattern by that.
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

// A name in brackets. Nothing doubles in it, and SQLite reads it the same way.
QString ReadName(const QString& sql, qsizetype& at) {
  const qsizetype close = sql.indexOf(QLatin1Char(']'), at);
  if (close <= at + 1) RaiseSyntaxError(sql);
  QString name = sql.mid(at + 1, close - at - 1);
  at = close + 1;
  return name;
}

// Any other sign is none of the dialect's, and SQLite might take it for a quote or a place for a value.
SqlToken ReadSymbol(const QString& sql, qsizetype& at) {
  static const QStringList twoSigns = {QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("<>")};
  static const QString oneSign = QStringLiteral("(),.=<>+-*/|");
  const QString two = sql.mid(at, 2);
  const QString symbol = twoSigns.contains(two) ? two : sql.mid(at, 1);
  if (!twoSigns.contains(two) && !oneSign.contains(sql[at])) RaiseSyntaxError(sql);
  at += symbol.size();
  return {Kind::Symbol, symbol};
}

SqlToken ReadToken(const QString& sql, qsizetype& at) {
  const QChar c = sql[at];
  if (c == QLatin1Char('\'') || c == QLatin1Char('"')) return {Kind::Text, ReadQuoted(sql, at, c)};
  if (c == QLatin1Char('#')) return {Kind::Date, ReadQuoted(sql, at, c)};
  if (c == QLatin1Char('[')) return {Kind::Word, ReadName(sql, at)};
  if (IsWordStart(c)) return {Kind::Word, ReadWhile(sql, at, IsWordPart)};
  if (c.isDigit()) {
    return {Kind::Number, ReadWhile(sql, at, [](QChar d) { return d.isDigit() || d == QLatin1Char('.'); })};
  }
  return ReadSymbol(sql, at);
}

// --- pieces of a statement --------------------------------------------------------------------------------

// The end of the name that begins at `at`: a word, or words joined by points.
size_t NameEnd(const Tokens& tokens, size_t at) {
  if (at >= tokens.size() || tokens[at].Kind != Kind::Word) return at;
  size_t end = at + 1;
  while (end + 1 < tokens.size() && tokens[end].Is(".") && tokens[end + 1].Kind == Kind::Word) end += 2;
  return end;
}

// The name that the tokens end with.
Tokens NameBefore(const Tokens& tokens) {
  size_t start = tokens.size();
  while (start > 0 && tokens[start - 1].Kind == Kind::Word) {
    --start;
    if (start == 0 || !tokens[start - 1].Is(".")) break;
    --start;
  }
  return {tokens.begin() + static_cast<std::ptrdiff_t>(start), tokens.end()};
}

// The index of the parenthesis that closes the one at `open`.
size_t ClosingParenthesis(const Tokens& tokens, size_t open, const QString& sql) {
  int depth = 0;
  for (size_t i = open; i < tokens.size(); ++i) {
    if (tokens[i].Is("(")) ++depth;
    if (tokens[i].Is(")") && --depth == 0) return i;
  }
  RaiseSyntaxError(sql);
}

Tokens Slice(const Tokens& tokens, size_t from, size_t to) {
  return {tokens.begin() + static_cast<std::ptrdiff_t>(from),
          tokens.begin() + static_cast<std::ptrdiff_t>(to)};
}

size_t FindWord(const Tokens& tokens, const char* word, size_t from = 0) {
  for (size_t i = from; i < tokens.size(); ++i) {
    if (tokens[i].Is(word)) return i;
  }
  return tokens.size();
}

// name >= prefix AND name < prefix || <highest character>: the same rows as a match of the prefix, from an
// index.
Tokens PrefixRange(const Tokens& name, const Tokens& prefix) {
  Tokens range = name;
  Add(range, {Sign(">=")});
  Add(range, prefix);
  Add(range, {Word("AND")});
  Add(range, name);
  Add(range, {Sign("<")});
  Add(range, prefix);
  Add(range, {Sign("|"), Sign("|"), Word("char"), Sign("("), Number(0x10FFFF), Sign(")")});
  return range;
}

bool IsDigits(const QString& text) {
  return std::all_of(text.begin(), text.end(),
                     [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

// --- translations -----------------------------------------------------------------------------------------

class Translator {
 public:
  explicit Translator(const QString& sql) : Sql(sql), In(TokenizeSql(sql)) {}

  Tokens Translate(bool dropClashes) {
    if (In.empty()) RaiseSyntaxError(Sql);
    RewriteJoinDelete();
    for (At = 0; At < In.size();) TranslateNext();
    if (dropClashes) DropClashes();
    return std::move(Out);
  }

 private:
  // SQLite's OR IGNORE drops rows whose texts are too long as well, so an INSERT takes the clause that is
  // about keys alone. Behind a SELECT without a condition the clause would be read as a join's.
  void DropClashes() {
    if (Out[0].Is("UPDATE")) Out.insert(Out.begin() + 1, {Word("OR"), Word("IGNORE")});
    if (!Out[0].Is("INSERT")) return;
    if (FindWord(Out, "SELECT") < Out.size() && FindWord(Out, "WHERE") == Out.size()) {
      Add(Out, {Word("WHERE"), Number(1)});
    }
    Add(Out, {Word("ON"), Word("CONFLICT"), Word("DO"), Word("NOTHING")});
  }

  void TranslateNext() {
    const SqlToken& token = In[At];
    const bool call = At + 1 < In.size() && In[At + 1].Is("(");
    if (token.Kind == Kind::Date) {
      TranslateDate();
    } else if (token.Is("Left") && call) {
      TranslateLeft();
    } else if (token.Is("DateValue") && call) {
      TranslateDateValue();
    } else if (token.Is("Like")) {
      TranslateLike();
    } else if ((token.Is("=") || token.Is("<>")) && At + 1 < In.size() && In[At + 1].Kind == Kind::Text) {
      TranslateTextComparison();
    } else if (token.Is("ORDER") && At + 2 < In.size() && In[At + 1].Is("BY")) {
      TranslateOrder();
    } else {
      Out.push_back(token);
      ++At;
    }
  }

  void TranslateDate() {
    const auto date = base::ParseDate(In[At].Content);
    if (!date) {
      throw base::RuntimeError(base::errSyntax,
                               QStringLiteral("Syntax error in date in query expression '%1'.").arg(Sql));
    }
    Out.push_back({Kind::Text, DateToStore(*date)});
    ++At;
  }

  // Left(x, n) becomes substr(x, 1, n). Left(x, n) = y, with y a name, gets the range on x in front, by which
  // an index serves; where y is n characters long the range alone decides.
  void TranslateLeft() {
    const size_t close = ClosingParenthesis(In, At + 1, Sql);
    const size_t xEnd = NameEnd(In, At + 2);
    if (xEnd >= close || !In[xEnd].Is(",")) RaiseSyntaxError(Sql);
    const Tokens x = Slice(In, At + 2, xEnd);
    const Tokens n = Slice(In, xEnd + 1, close);
    Tokens left = {Word("substr"), Sign("(")};
    Add(left, x);
    Add(left, {Sign(","), Number(1), Sign(",")});
    Add(left, n);
    Add(left, {Sign(")")});
    At = close + 1;

    const size_t yEnd = At < In.size() && In[At].Is("=") ? NameEnd(In, At + 1) : At;
    if (yEnd <= At + 1 || (yEnd < In.size() && In[yEnd].Is("("))) {
      Add(Out, left);
      return;
    }
    const Tokens y = Slice(In, At + 1, yEnd);
    Add(Out, {Sign("(")});
    Add(Out, PrefixRange(x, y));
    Add(Out, {Word("AND"), Sign("("), Word("length"), Sign("(")});
    Add(Out, y);
    Add(Out, {Sign(")"), Sign("=")});
    Add(Out, n);
    Add(Out, {Word("OR")});
    Add(Out, left);
    Add(Out, {Sign("=")});
    Add(Out, y);
    Add(Out, {Sign(")"), Sign(")")});
    At = yEnd;
  }

  // The day of a date, as a date at midnight.
  void TranslateDateValue() {
    const size_t close = ClosingParenthesis(In, At + 1, Sql);
    Add(Out, {Sign("("), Word("substr"), Sign("(")});
    Add(Out, Slice(In, At + 2, close));
    Add(Out, {Sign(","), Number(1), Sign(","), Number(10), Sign(")"), Sign("|"), Sign("|"),
              SqlToken{Kind::Text, QStringLiteral(" 00:00:00")}, Sign(")")});
    At = close + 1;
  }

  void TranslateLike() {
    const Tokens name = NameBefore(Out);
    if (name.empty() || At + 1 >= In.size() || In[At + 1].Kind != Kind::Text) RaiseSyntaxError(Sql);
    const SqlToken pattern = In[At + 1];
    At += 2;
    Out.resize(Out.size() - name.size());
    const QString prefix = pattern.Content.chopped(std::min<qsizetype>(1, pattern.Content.size()));
    if (pattern.Content.endsWith(QLatin1Char('*')) && IsDigits(prefix)) {
      Add(Out, {Sign("(")});
      Add(Out, PrefixRange(name, {SqlToken{Kind::Text, prefix}}));
      Add(Out, {Sign(")")});
      return;
    }
    Add(Out, {Word("MatchesLike"), Sign("("), pattern, Sign(",")});
    Add(Out, name);
    Add(Out, {Sign(")")});
  }

  // Texts are compared without regard to case; for a key, which is of digits, that would only cost it its
  // index.
  void TranslateTextComparison() {
    Add(Out, Slice(In, At, At + 2));
    if (!IsDigits(In[At + 1].Content)) Add(Out, {Word("COLLATE"), Word("Folded")});
    At += 2;
  }

  // Texts sort without regard to case.
  void TranslateOrder() {
    Add(Out, {In[At], In[At + 1]});
    At += 2;
    while (At < In.size()) {
      const size_t end = NameEnd(In, At);
      if (end == At) RaiseSyntaxError(Sql);
      Add(Out, Slice(In, At, end));
      Add(Out, {Word("COLLATE"), Word("Folded")});
      At = end;
      if (At < In.size() && (In[At].Is("ASC") || In[At].Is("DESC"))) Out.push_back(In[At++]);
      if (At >= In.size() || !In[At].Is(",")) return;
      Out.push_back(In[At++]);
    }
  }

  // DELETE t.* FROM t INNER JOIN u ON t.a = u.b AND t.c = u.d [WHERE w] becomes DELETE FROM t WHERE (t.a,
  // t.c) IN (SELECT u.b, u.d FROM u) [AND (w)]: the rows of t are looked up in its index, one by one.
  void RewriteJoinDelete() {
    if (!In[0].Is("DELETE") || FindWord(In, "JOIN") == In.size()) return;
    const size_t from = FindWord(In, "FROM");
    const size_t inner = FindWord(In, "INNER");
    const size_t on = FindWord(In, "ON");
    const size_t where = FindWord(In, "WHERE");
    if (inner != from + 2 || on != inner + 3 || on + 1 >= where) RaiseSyntaxError(Sql);
    Tokens columns;
    Tokens matches;
    SplitJoinCondition(Slice(In, on + 1, where), columns, matches);
    Tokens rewritten = {Word("DELETE"), Word("FROM"), In[from + 1], Word("WHERE"), Sign("(")};
    Add(rewritten, columns);
    Add(rewritten, {Sign(")"), Word("IN"), Sign("("), Word("SELECT")});
    Add(rewritten, matches);
    Add(rewritten, {Word("FROM"), In[inner + 2], Sign(")")});
    if (where < In.size()) {
      Add(rewritten, {Word("AND"), Sign("(")});
      Add(rewritten, Slice(In, where + 1, In.size()));
      Add(rewritten, {Sign(")")});
    }
    In = std::move(rewritten);
  }

  // t.a = u.b AND t.c = u.d as the two lists "t.a, t.c" and "u.b, u.d".
  void SplitJoinCondition(const Tokens& condition, Tokens& columns, Tokens& matches) const {
    for (size_t at = 0;; ++at) {
      const size_t columnEnd = NameEnd(condition, at);
      if (columnEnd == at || columnEnd >= condition.size() || !condition[columnEnd].Is("="))
        RaiseSyntaxError(Sql);
      const size_t matchEnd = NameEnd(condition, columnEnd + 1);
      if (matchEnd == columnEnd + 1) RaiseSyntaxError(Sql);
      Add(columns, Slice(condition, at, columnEnd));
      Add(matches, Slice(condition, columnEnd + 1, matchEnd));
      if (matchEnd == condition.size()) return;
      if (!condition[matchEnd].Is("AND")) RaiseSyntaxError(Sql);
      columns.push_back(Sign(","));
      matches.push_back(Sign(","));
      at = matchEnd;
    }
  }

  QString Sql;
  Tokens In;
  Tokens Out;
  size_t At = 0;
};

}  // namespace

bool SqlToken::Is(const char* word) const {
  return (Kind == Word || Kind == Symbol) && Content.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

std::vector<SqlToken> TokenizeSql(const QString& sql) {
  // SQLite ends a statement at such a character.
  if (sql.contains(QChar::Null)) RaiseSyntaxError(sql);
  Tokens tokens;
  for (qsizetype at = 0; at < sql.size();) {
    if (sql[at].isSpace()) {
      ++at;
      continue;
    }
    tokens.push_back(ReadToken(sql, at));
  }
  return tokens;
}

QString JoinTokens(const std::vector<SqlToken>& tokens) {
  QString sql;
  for (const SqlToken& token : tokens) {
    // Two bars are one operator; a blank between any other two tokens keeps them from becoming a third.
    const bool glue = sql.endsWith(QLatin1String(" |")) && token.Is("|");
    if (!sql.isEmpty() && !glue) sql += QLatin1Char(' ');
    if (token.Kind == SqlToken::Text) {
      sql += QLatin1Char('\'') + QuoteSql(WholeCharacters(token.Content)) + QLatin1Char('\'');
    } else if (token.Kind == SqlToken::Word &&
               !std::all_of(token.Content.begin(), token.Content.end(), IsWordPart)) {
      sql += QLatin1Char('[') + token.Content + QLatin1Char(']');
    } else {
      sql += token.Content;
    }
  }
  return sql;
}

QString ToSqlite(const QString& sql, bool dropClashes) {
  return JoinTokens(Translator(sql).Translate(dropClashes));
}

QString ToSqliteCondition(const QString& condition) {
  const Tokens tokens = Translator(condition).Translate(false);
  int depth = 0;
  for (const SqlToken& token : tokens) {
    if (token.Is("(")) ++depth;
    if (token.Is(")") && --depth < 0) break;
  }
  if (depth != 0) RaiseSyntaxError(condition);
  return QStringLiteral("( %1 )").arg(JoinTokens(tokens));
}

QString QuoteSql(const QString& text) {
  QString quoted = text;
  return quoted.replace(QLatin1Char('\''), QLatin1String("''"));
}

}  // namespace veldrin::engine
