// Turns the program's SQL texts into SQLite's. The program writes the dialect of the engine its catalogues
// come from: #dates#, DateValue, Left, Like with * ? # [...], [names], DELETE over a join, texts compared
// without regard to case.
#pragma once

#include <QString>
#include <vector>

namespace veldrin::engine {

struct SqlToken {
  enum TokenKind { Word, Number, Text, Date, Symbol };
  TokenKind Kind;
  QString Content;  ///< the content, without quotes, signs or brackets

  bool Is(const char* word) const;
};

/// Raises 3075 for a text, a name or a date that does not end and for signs that aren't the dialect's, such
/// as the one between two statements.
std::vector<SqlToken> TokenizeSql(const QString& sql);

/// The tokens as SQLite reads them, without any of the translations below.
QString JoinTokens(const std::vector<SqlToken>& tokens);

/// `dropClashes`: rows that clash with a key are left out and the others go in; a text too long is an error
/// still. =, <> and Like compare texts without regard to case; Like with digits and a star is a match of
/// keys, which are texts. Raises 3075 for what is no statement of the dialect.
QString ToSqlite(const QString& sql, bool dropClashes = false);

/// A condition, whoever wrote it, in parentheses that are its own: what stands around it in a statement holds
/// whatever the condition says. Raises 3075 for one whose parentheses don't match.
QString ToSqliteCondition(const QString& condition);

/// The text with its apostrophes doubled, for an SQL text.
QString QuoteSql(const QString& text);

}  // namespace veldrin::engine
