// The scale of the dialogs' design. Their fields are laid out for small type; all lengths grow alike, so that
// a date with its four digits of the year has room.
#pragma once

#include "controls/twips.h"

namespace veldrin::find {

constexpr double DialogScale = 1.4;

/// Places a control of a dialog; all four lengths in the design's twips.
inline void MoveInDialog(QWidget& control, double left, double top, double width, double height) {
  controls::MoveTwips(control, left * DialogScale, top * DialogScale, width * DialogScale,
                      height * DialogScale);
}

inline int DialogPixels(double twips) { return base::ToPixels(twips * DialogScale); }

}  // namespace veldrin::find
