#include "engine/sqlite/functions.h"

#include <sqlite3.h>

#include <string_view>

#include "engine/like.h"

namespace veldrin::engine {

namespace {

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr ? std::string_view() : std::string_view(text, sqlite3_value_bytes(value));
}

// The pattern is read once for all rows: SQLite keeps it as long as the argument is the same.
const LikePattern* PatternOf(sqlite3_context* context, sqlite3_value* argument) {
  if (const void* kept = sqlite3_get_auxdata(context, 0)) return static_cast<const LikePattern*>(kept);
  sqlite3_set_auxdata(context, 0, new LikePattern(TextOf(argument)),
                      [](void* pattern) { delete static_cast<LikePattern*>(pattern); });
  return static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
}

// A number has no characters to match: an error, by a code that SQLite itself never uses.
void CallMatchesLike(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[1]) == SQLITE_NULL) return sqlite3_result_null(context);
  if (sqlite3_value_type(arguments[1]) != SQLITE_TEXT)
    return sqlite3_result_error_code(context, SQLITE_FORMAT);
  const LikePattern* pattern = PatternOf(context, arguments[0]);
  if (pattern == nullptr) return sqlite3_result_error_nomem(context);
  sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])) ? 1 : 0);
}

int CallCompareFolded(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareFolded({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                       {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

}  // namespace

void AddFunctions(sqlite3* database) {
  sqlite3_create_function(database, "MatchesLike", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                          CallMatchesLike, nullptr, nullptr);
  sqlite3_create_collation(database, "Folded", SQLITE_UTF8, nullptr, CallCompareFolded);
}

}  // namespace veldrin::engine
