#include "shell/layout.h"

namespace veldrin::shell {

MainLayout PanesFor(float& position, double scaleWidth, double scaleHeight) {
  if (position < LeastPaneWidth) position = LeastPaneWidth;
  if (position > scaleWidth - LeastPaneWidth) position = static_cast<float>(scaleWidth - LeastPaneWidth);
  return {position, position + SplitterGap, scaleWidth - (position + SplitterGap), scaleHeight - PaneTop};
}

double DragBarLeft(double left, double windowWidth) {
  if (left < DragBarMargin) return DragBarMargin;
  return left > windowWidth - DragBarMargin ? windowWidth - DragBarMargin : left;
}

}  // namespace veldrin::shell
