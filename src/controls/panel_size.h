// The size of the panels on which the views are designed, in twips.
#pragma once

namespace veldrin::controls {

constexpr int PanelWidth = 12440;
constexpr int PanelHeight = 9804;

/// The left part of the first panel, which the grid and the thumbnail page share.
constexpr int ListWidth = 8295;

}  // namespace veldrin::controls
