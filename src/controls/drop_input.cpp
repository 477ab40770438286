#include "controls/drop_input.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace veldrin::controls {

namespace {

// Which the user closes. A tool tip or a menu goes by itself.
bool IsWindow(const QObject* object) {
  const auto* widget = qobject_cast<const QWidget*>(object);
  const auto* window = qobject_cast<const QWindow*>(object);
  if (widget == nullptr && window == nullptr) return false;
  const int type = widget != nullptr ? widget->windowType() : window->type();
  return type == Qt::Window || type == Qt::Dialog;
}

}  // namespace

int DropInput::Count = 0;

DropInput::DropInput() : Held(QGuiApplication::mouseButtons()) {
  QCoreApplication::instance()->installEventFilter(this);
  ++Count;
}

DropInput::~DropInput() { --Count; }

bool DropInput::eventFilter(QObject* receiver, QEvent* event) {
  if (Passes(receiver, event)) return false;
  switch (event->type()) {
    case QEvent::MouseButtonRelease:
      // A control that saw the press would wait for the release for ever.
      if (Held.testFlag(static_cast<QMouseEvent*>(event)->button())) return false;
      break;
    case QEvent::Close:
      if (!IsWindow(receiver)) return false;
      CloseAsked(receiver);
      [[fallthrough]];
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      event->ignore();  // Accepted it would have been done: the window closed, the file taken.
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
      break;
    default:
      return false;
  }
  // Otherwise Qt offers it to the next window above.
  event->accept();
  return true;
}

}  // namespace veldrin::controls
