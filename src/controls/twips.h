// Controls are placed by the twips of the windows' design.
#pragma once

#include <QWidget>

#include "base/units.h"

namespace veldrin::controls {

/// Places a control; all four lengths in twips.
inline void MoveTwips(QWidget& control, double left, double top, double width, double height) {
  control.setGeometry(base::ToPixels(left), base::ToPixels(top), base::ToPixels(width),
                      base::ToPixels(height));
}

}  // namespace veldrin::controls
