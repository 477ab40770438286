#include "engine/sql_condition.h"

#include "base/dates.h"
#include "base/runtime_error.h"
#include "engine/dao/value.h"

namespace veldrin::engine {

namespace {

// Nobody writes a condition that deep; one that is would not fit into the program's own stack.
constexpr int DeepestNesting = 100;

bool IsDigits(const QString& text) {
  return std::all_of(text.begin(), text.end(),
                     [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

bool IsReserved(const SqlToken& token) {
  static constexpr const char* reserved[] = {"SELECT", "FROM", "WHERE",   "ORDER", "AND", "OR",  "NOT",
                                             "LIKE",   "IN",   "BETWEEN", "IS",    "ON",  "SET", "VALUES",
                                             "INNER",  "JOIN", "INTO",    "BY",    "AS",  "NULL"};
  return std::any_of(std::begin(reserved), std::end(reserved),
                     [&](const char* word) { return token.Is(word); });
}

}  // namespace

QString SqlCondition::Translate() {
  Write(SqlSign("("));
  Disjunction();
  Write(SqlSign(")"));
  return Finish();
}

QString SqlCondition::Finish() const {
  if (!AtEnd()) Refuse();
  return JoinTokens(Out);
}

const SqlToken& SqlCondition::Take() {
  if (AtEnd()) Refuse();
  return In[At++];
}

void SqlCondition::Take(const char* word) {
  if (!Take().Is(word)) Refuse();
}

void SqlCondition::Copy(const char* word) {
  if (!CopyIf(word)) Refuse();
}

bool SqlCondition::CopyIf(const char* word) {
  if (!Next(word)) return false;
  Copy();
  return true;
}

bool SqlCondition::CopyIfAny(std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(), [this](const char* word) { return CopyIf(word); });
}

SqlToken SqlCondition::TakePart() {
  const SqlToken& token = Take();
  const bool name = token.Kind == SqlToken::Name || (token.Kind == SqlToken::Word && !IsReserved(token));
  if (!name) Refuse();
  return token;
}

SqlTokens SqlCondition::TakeName() {
  SqlTokens name = {TakePart()};
  while (Next(".") && !Next("*", 1)) {
    name.push_back(Take());
    name.push_back(TakePart());
  }
  return name;
}

// --- conditions -------------------------------------------------------------------------------------------

void SqlCondition::Disjunction() {
  do Conjunction();
  while (CopyIf("OR"));
}

void SqlCondition::Conjunction() {
  do Negation();
  while (CopyIf("AND"));
}

void SqlCondition::Negation() {
  while (CopyIf("NOT")) {
  }
  Predicate();
}

void SqlCondition::Predicate() {
  const size_t start = Out.size();
  const bool isName = NextIs(SqlToken::Name) || (NextIs(SqlToken::Word) && !NextIsCall());
  if (NextIsCall() && Next("Left") && PrefixMatch()) return;
  Operand();
  if (Next("LIKE") || (Next("NOT") && Next("LIKE", 1))) return Like(start, isName);
  if (CopyIf("IS")) {
    CopyIf("NOT");
    return Copy("NULL");
  }
  const bool negated = CopyIf("NOT");
  if (CopyIf("IN")) return ListInParentheses([this] { Operand(); });
  if (CopyIf("BETWEEN")) {
    Operand();
    Copy("AND");
    return Operand();
  }
  if (negated) Refuse();
  const bool equality = Next("=") || Next("<>");
  if (!CopyIfAny({"=", "<>", "<", ">", "<=", ">="})) return;
  // Texts are compared without regard to case; for a key, which is of digits, that would only cost it its
  // index.
  const bool fold = equality && NextIs(SqlToken::Text) && !IsDigits(In[At].Content);
  Operand();
  if (fold) Write(Engine.Folded());
}

// name Like 'pattern', translated as a whole: the name goes into it.
void SqlCondition::Like(size_t start, bool isName) {
  const bool negated = Next("NOT");
  if (negated) Take();
  Take();
  if (!isName || !NextIs(SqlToken::Text)) Refuse();
  const SqlTokens name(Out.begin() + static_cast<std::ptrdiff_t>(start), Out.end());
  Out.resize(start);
  if (negated) Write(SqlWord("NOT"));
  const SqlToken pattern = Take();
  const QString prefix = pattern.Content.chopped(std::min<qsizetype>(1, pattern.Content.size()));
  // A key is a text of digits, and those that begin alike stand side by side in its index.
  const bool ofKeys = name.back().Content.compare(QLatin1String("IDNo"), Qt::CaseInsensitive) == 0;
  if (ofKeys && pattern.Content.endsWith(QLatin1Char('*')) && IsDigits(prefix)) {
    Write(SqlSign("("));
    PrefixRange(name, {SqlText(prefix)});
    Write(SqlSign(")"));
  } else {
    Write(Engine.Like(name, pattern));
  }
}

// name >= prefix AND name < <end of the prefix>: the same rows as a match of the prefix, from an index.
void SqlCondition::PrefixRange(const SqlTokens& name, const SqlTokens& prefix) {
  Write(name);
  Write(SqlSign(">="));
  Write(prefix);
  Write(SqlWord("AND"));
  Write(name);
  Write(SqlSign("<"));
  Write(Engine.PrefixEnd(prefix));
}

// Left(x, n) = y, with y a name or a text, gets the range on x in front, by which an index serves; where y is
// n characters long the range alone decides. False, and nothing read, for another shape.
bool SqlCondition::PrefixMatch() {
  const size_t start = At;
  SqlTokens x;
  SqlTokens n;
  ReadLeft(x, n);
  const bool fits = Next("=") && At + 1 < In.size() && !Next("(", 2) &&
                    (In[At + 1].Kind == SqlToken::Name || In[At + 1].Kind == SqlToken::Word ||
                     (In[At + 1].Kind == SqlToken::Text && IsDigits(In[At + 1].Content)));
  if (!fits) {
    At = start;
    return false;
  }
  Take();
  const bool isText = NextIs(SqlToken::Text);
  const SqlTokens y = isText ? SqlTokens{Take()} : TakeName();
  Write(SqlSign("("));
  PrefixRange(x, y);
  if (!isText || n.size() != 1 || n[0].Content != QString::number(y[0].Content.size())) {
    Write({SqlWord("AND"), SqlSign("("), SqlWord("length"), SqlSign("(")});
    Write(y);
    Write({SqlSign(")"), SqlSign("=")});
    Write(n);
    Write(SqlWord("OR"));
    Write(Engine.Left(x, n));
    Write(SqlSign("="));
    Write(y);
    Write(SqlSign(")"));
  }
  Write(SqlSign(")"));
  return true;
}

// --- values -----------------------------------------------------------------------------------------------

void SqlCondition::Operand() {
  if (++Depth > DeepestNesting) Refuse();
  do Term();
  while (CopyIfAny({"+", "-", "*", "/"}));
  --Depth;
}

void SqlCondition::Term() {
  while (CopyIfAny({"+", "-"})) {
  }
  if (CopyIf("(")) {
    Disjunction();
    return Copy(")");
  }
  if (NextIs(SqlToken::Date)) return Date();
  if (NextIs(SqlToken::Number) || NextIs(SqlToken::Text) || Next("NULL")) return Copy();
  if (!NextIsCall()) return Name();
  if (Next("Left")) {
    SqlTokens x;
    SqlTokens n;
    ReadLeft(x, n);
    return Write(Engine.Left(x, n));
  }
  if (!Next("DateValue")) Refuse();
  At += 2;
  const SqlTokens date = Apart([this] { Operand(); });
  Take(")");
  Write(Engine.DateValue(date));
}

// Left(x, n), with x a name.
void SqlCondition::ReadLeft(SqlTokens& x, SqlTokens& n) {
  At += 2;
  x = TakeName();
  Take(",");
  n = Apart([this] { Operand(); });
  Take(")");
}

void SqlCondition::Date() {
  const auto date = base::ParseDate(Take().Content);
  if (!date) {
    throw base::RuntimeError(base::errSyntax,
                             QStringLiteral("Syntax error in date in query expression '%1'.").arg(Sql));
  }
  Write(SqlText(DateToStore(*date)));
}

}  // namespace veldrin::engine
