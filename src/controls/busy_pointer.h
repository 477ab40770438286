// The hourglass for as long as a routine works.
#pragma once

#include <QGuiApplication>

namespace veldrin::controls {

class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace veldrin::controls
