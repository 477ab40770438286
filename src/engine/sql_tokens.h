// The words and signs of an SQL text.
#pragma once

#include <QString>
#include <vector>

namespace veldrin::engine {

struct SqlToken {
  enum TokenKind { Word, Name, Number, Text, Date, Symbol };  // a Name stands in brackets
  TokenKind Kind;
  QString Content;  ///< without quotes, signs or brackets

  /// Whether it is this word, in any case, or this sign. A name in brackets is no word of the language.
  bool Is(const char* word) const;
};

using SqlTokens = std::vector<SqlToken>;

SqlToken SqlWord(const char* word);
SqlToken SqlSign(const char* sign);
SqlToken SqlNumber(int value);
SqlToken SqlText(const QString& text);

/// Raises 3075 for a text, a name or a date that does not end and for signs that aren't the dialect's, such
/// as the one between two statements.
SqlTokens TokenizeSql(const QString& sql);

/// The tokens as a text again. Half of a character becomes a replacement character.
QString JoinTokens(const SqlTokens& tokens);

/// The text with its apostrophes doubled, for an SQL text.
QString QuoteSql(const QString& text);

/// 3075, "Syntax error in query expression '...'."
[[noreturn]] void RaiseSyntaxError(const QString& sql);

}  // namespace veldrin::engine
