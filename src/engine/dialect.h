// What of a statement each engine spells in its own way.
#pragma once

#include <span>

#include "engine/sql_tokens.h"

namespace veldrin::engine {

/// What a statement does with rows that clash with a key.
enum class Clashes { Fail, LeaveOut };

/// The tokens that it is given are translated already.
class Dialect {
 public:
  virtual ~Dialect() = default;

  /// A text behind all that begin with the prefix, and before all others that are greater.
  virtual SqlTokens PrefixEnd(const SqlTokens& prefix) const = 0;
  /// The first characters of a text.
  virtual SqlTokens Left(const SqlTokens& text, const SqlTokens& count) const = 0;
  /// The day of a date, as a date at midnight.
  virtual SqlTokens DateValue(const SqlTokens& date) const = 0;
  /// Whether a text matches a pattern of `Like`.
  virtual SqlTokens Like(const SqlTokens& text, const SqlToken& pattern) const = 0;
  /// What follows a text that is compared or sorted without regard to case.
  virtual SqlTokens Folded() const = 0;
  /// What ends an INSERT whose rows that clash with a key are left out. A text too long is an error still.
  virtual SqlTokens LeaveOutClashes() const = 0;

  /// A condition on a number that is one of many, which are the statement's one parameter (see ListOf).
  virtual QString IsOneOf(const QString& column) const = 0;
  /// The parameter for IsOneOf.
  virtual QString ListOf(std::span<const int> numbers) const = 0;
};

}  // namespace veldrin::engine
