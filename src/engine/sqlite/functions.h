// The program's own functions in SQLite's statements: MatchesLike(pattern, text) for `Like`, and the
// collation Folded for texts that are compared without regard to case.
#pragma once

struct sqlite3;

namespace veldrin::engine {

void AddFunctions(sqlite3* database);

}  // namespace veldrin::engine
