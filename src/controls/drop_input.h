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
  ~DropInput() override;

  /// One lives.
  static bool IsOn() { return Count > 0; }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  /// Whether an event that would be dropped isn't.
  virtual bool Passes(QObject* /*receiver*/, QEvent* /*event*/) const { return false; }
  /// The user wants to close a window.
  virtual void CloseAsked(const QObject* /*window*/) {}

  static int Count;
  Qt::MouseButtons Held;  ///< whose presses came before
};

}  // namespace veldrin::controls
