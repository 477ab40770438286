// SQLite's SQL. Its comparisons without regard to case are the program's own: see sqlite/functions.h.
#pragma once

#include "engine/dialect.h"

namespace veldrin::engine {

class SqliteDialect : public Dialect {
 public:
  SqlTokens PrefixEnd(const SqlTokens& prefix) const override;
  SqlTokens Left(const SqlTokens& text, const SqlTokens& count) const override;
  SqlTokens DateValue(const SqlTokens& date) const override;
  SqlTokens Like(const SqlTokens& text, const SqlToken& pattern) const override;
  SqlTokens Folded() const override;
  SqlTokens LeaveOutClashes() const override;
  QString IsOneOf(const QString& column) const override;
  QString ListOf(std::span<const int> numbers) const override;
};

}  // namespace veldrin::engine
