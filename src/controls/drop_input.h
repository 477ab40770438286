// The time in which what the user does counts for nothing.
#pragma once

#include <QObject>

namespace veldrin::controls {

/// While it lives, keys, mouse, wheel, touch and the closing of windows are dropped in the whole program, not
/// put off: a second press on a button must not give its command again once the first is done. Windows are
/// painted, and timers run.
class DropInput : public QObject {
 public:
  DropInput();

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  Qt::MouseButtons Held;  ///< whose presses came before
};

}  // namespace veldrin::controls
