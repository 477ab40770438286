// Where the parts of the main window stand. All lengths in twips.
#pragma once

#include "controls/panel_size.h"

namespace veldrin::shell {

constexpr int LeastWindowWidth = 3000;
constexpr int LeastPaneWidth = 1500;
constexpr int SplitterGap = 40;
constexpr int DragBarMargin = 500;
constexpr int DragBarShrink = 20;

// The design: the window's inside, the header, the panes below it.
constexpr int DesignWidth = 15240;
constexpr int PaneTop = 600;
constexpr int DesignHeight = PaneTop + controls::PanelHeight;
constexpr int HeaderHeight = 615;
constexpr int DesignSplitterLeft = 2760;
constexpr int TabWidth = controls::PanelWidth;
constexpr int ToolbarLeft = 2820;

/// The places that follow from a splitter position and the window's inside.
struct MainLayout {
  double SplitterLeft;  ///< also the tree's width
  double MainLeft;      ///< of pcMainWin
  double MainWidth;
  double PaneHeight;
};

/// `position` is brought within the panes' least widths; in a window too narrow for both the right one wins.
MainLayout PanesFor(float& position, double scaleWidth, double scaleHeight);

/// The drag bar's place for a pointer at `left`; it may go nearer to the edges than the panes follow.
double DragBarLeft(double left, double windowWidth);

}  // namespace veldrin::shell
