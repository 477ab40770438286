// The manner of failing that shows a box: see also base/failure.h for the others.
#pragma once

#include <utility>

#include "base/runtime_error.h"

class QWidget;

namespace veldrin::controls {

/// The box of a routine with a trap: ErrorCodeText, title "Error", critical icon.
void ShowErrorBox(QWidget* parent, const base::RuntimeError& error);

/// Runs a routine; an error shows ShowErrorBox and ends the routine.
template <class Routine>
void TrapWithBox(QWidget* parent, Routine&& routine) {
  try {
    std::forward<Routine>(routine)();
  } catch (const base::RuntimeError& error) {
    ShowErrorBox(parent, error);
  }
}

}  // namespace veldrin::controls
