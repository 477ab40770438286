// Turns SQLite's errors into the program's.
#pragma once

#include <SQLiteCpp/Exception.h>

#include "base/runtime_error.h"

namespace veldrin::engine {

/// By SQLite's result codes alone: its texts are for people.
base::RuntimeError FromSqlite(const SQLite::Exception& error);

/// Runs an operation on SQLite and raises its errors as RuntimeError.
template <class Operation>
auto WithSqliteErrors(Operation&& operation) {
  try {
    return operation();
  } catch (const SQLite::Exception& error) {
    throw FromSqlite(error);
  }
}

}  // namespace veldrin::engine
