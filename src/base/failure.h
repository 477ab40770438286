// The manners in which code lets an operation fail. Each routine uses one of them and says so by the name it
// calls; a routine that uses none lets its error reach the application's own report. The manner that shows a
// box is controls::TrapWithBox.
#pragma once

#include <QString>
#include <new>
#include <utility>

#include "base/runtime_error.h"

namespace veldrin::base {

/// "Error Code: <number> <message>".
QString ErrorCodeText(const RuntimeError& error);

/// The place of a call: as a default argument, that of the caller. Clang 14 has no std::source_location.
struct CallPlace {
  const char* File;
  int Line;
  static constexpr CallPlace Current(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return {file, line};
  }
};

/// Says in the logging category "veldrin.passed_over" what was passed over and where. The category is off:
/// QT_LOGGING_RULES="veldrin.passed_over=true" switches it on.
void LogPassedOver(const char* what, CallPlace where);

/// Runs one statement of bulk work or layout and passes over its error, so that the next statement runs: the
/// program's errors, into which the libraries' are turned where they are called, and a lack of memory, as for
/// a picture. Any other exception is a mistake in the program and goes on. Returns whether the statement
/// succeeded.
template <class Statement>
bool ResumeNext(Statement&& statement, CallPlace where = CallPlace::Current()) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (const RuntimeError& error) {
    LogPassedOver(error.what(), where);
  } catch (const std::bad_alloc& error) {
    LogPassedOver(error.what(), where);
  }
  return false;
}

/// Runs a picture routine or page generator, which ends at its first failure and says nothing.
/// Returns whether it came to its end. Passes over what ResumeNext passes over.
template <class Routine>
bool EndSilently(Routine&& routine, CallPlace where = CallPlace::Current()) {
  return ResumeNext(std::forward<Routine>(routine), where);
}

}  // namespace veldrin::base
