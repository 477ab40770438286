// The manners in which code lets an operation fail. Each routine uses one of them and says so by the name it
// calls; a routine that uses none lets its error reach the application's own report.
#pragma once

#include <QString>
#include <utility>

#include "platform/runtime_error.h"

class QWidget;

namespace veldrin::platform {

/// "Error Code: <number> <message>".
QString ErrorCodeText(const RuntimeError& error);

/// The box of a routine with a trap: ErrorCodeText, title "Error", critical icon.
void ShowErrorBox(QWidget* parent, const RuntimeError& error);

/// Runs a routine; an error shows ShowErrorBox and ends the routine.
template <class Routine>
void TrapWithBox(QWidget* parent, Routine&& routine) {
  try {
    std::forward<Routine>(routine)();
  } catch (const RuntimeError& error) {
    ShowErrorBox(parent, error);
  }
}

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

}  // namespace veldrin::platform
