// The rule by which any picture is fitted into a box, and the loading of a picture at the size that this
// gives.
#pragma once

#include <QString>

#include "pictures/picture.h"

namespace veldrin::pictures {

/// A size in twips.
struct TwipSize {
  int Width = 0;
  int Height = 0;
  bool operator==(const TwipSize&) const = default;
};

/// The size in twips at which a picture fills the box in one direction, its aspect ratio kept; a small
/// picture is enlarged. An empty picture raises 11, division by zero.
TwipSize FitToBox(const Picture& picture, TwipSize box);
/// The same from a natural size in HIMETRIC.
TwipSize FitToBox(int himetricWidth, int himetricHeight, TwipSize box);

/// The margin in twips that centres a length in a box.
constexpr int Centre(int boxLength, int length) { return (boxLength - length) / 2; }

/// Loads a picture for drawing in a box: decoded no larger than the fitted size needs at `pixelRatio` device
/// pixels to a logical one. Raises what LoadPicture raises.
Picture LoadPictureForBox(const QString& path, TwipSize box, double pixelRatio);

/// The same, and scaled to the fitted size, so that nothing is left to do for drawing it. Safe to call from
/// any thread.
Picture LoadFittedPicture(const QString& path, TwipSize box, double pixelRatio);

}  // namespace veldrin::pictures
