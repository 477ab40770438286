// The manners in which code lets an operation fail. Each routine uses one of them and says so by the name it
// calls; a routine that uses none lets its error reach the application's own report. The manner that shows a
// box is controls::TrapWithBox.
#pragma once

#include <QString>
#include <utility>

#include "base/runtime_error.h"

namespace veldrin::base {

/// "Error Code: <number> <message>".
QString ErrorCodeText(const RuntimeError& error);

/// Runs one statement of bulk work or layout and passes over its error, so that the next statement runs.
/// Returns whether the statement succeeded.
template <class Statement>
bool ResumeNext(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (const std::exception&) {
    return false;  // Also what a library raises, such as a picture that memory has no room for.
  }
}

/// Runs a picture routine or page generator, which ends at its first failure and says nothing.
/// Returns whether it came to its end.
template <class Routine>
bool EndSilently(Routine&& routine) {
  return ResumeNext(std::forward<Routine>(routine));
}

}  // namespace veldrin::base
