// Reads conditions and what they are made of, for the statements of engine/sql_dialect.
#pragma once

#include <QString>
#include <QStringList>
#include <algorithm>
#include <initializer_list>
#include <utility>

#include "engine/dialect.h"

namespace veldrin::engine {

/// Reads tokens from left to right and writes the translated ones. What doesn't fit raises 3075.
class SqlCondition {
 public:
  SqlCondition(const QString& sql, const Dialect& dialect)
      : Engine(dialect), Sql(sql), In(TokenizeSql(sql)) {}

  /// The whole text as a condition in parentheses.
  QString Translate();

 protected:
  [[noreturn]] void Refuse() const { RaiseSyntaxError(Sql); }
  bool AtEnd() const { return At == In.size(); }
  bool Next(const char* word, size_t offset = 0) const {
    return At + offset < In.size() && In[At + offset].Is(word);
  }
  bool NextIs(SqlToken::TokenKind kind) const { return !AtEnd() && In[At].Kind == kind; }
  bool NextIsCall() const { return NextIs(SqlToken::Word) && Next("(", 1); }

  const SqlToken& Take();
  /// Takes a word or sign that has to stand here.
  void Take(const char* word);
  SqlToken TakePart();   ///< a name without points
  SqlTokens TakeName();  ///< a name, or one of a table's: t.a

  void Write(const SqlToken& token) { Out.push_back(token); }
  void Write(const SqlTokens& tokens) { Out.insert(Out.end(), tokens.begin(), tokens.end()); }
  void Copy() { Write(Take()); }
  void Copy(const char* word);
  bool CopyIf(const char* word);
  bool CopyIfAny(std::initializer_list<const char*> words);

  void Name() { Write(TakeName()); }
  void Disjunction();
  void Operand();

  template <class Item>
  void List(Item&& item) {
    do item();
    while (CopyIf(","));
  }
  template <class Item>
  void ListInParentheses(Item&& item) {
    Copy("(");
    List(item);
    Copy(")");
  }
  /// What a piece of the text becomes, apart from the rest.
  template <class Piece>
  SqlTokens Apart(Piece&& piece) {
    SqlTokens before = std::exchange(Out, {});
    piece();
    return std::exchange(Out, std::move(before));
  }

  QString Finish() const;

  const Dialect& Engine;
  SqlTokens Out;

 private:
  void Conjunction();
  void Negation();
  void Predicate();
  void Like(size_t start, bool isName);
  void PrefixRange(const SqlTokens& name, const SqlTokens& prefix);
  bool PrefixMatch();
  void Term();
  void ReadLeft(SqlTokens& x, SqlTokens& n);
  void Date();

  QString Sql;
  SqlTokens In;
  size_t At = 0;
  int Depth = 0;  ///< of values within values
};

}  // namespace veldrin::engine
