// The lengths of the windows' design are twips: 1440 to the inch, 15 to a logical pixel at 96 pixels to the
// inch. Qt multiplies logical pixels by the screen's density itself.
#pragma once

#include <cmath>

namespace veldrin::base {

constexpr int TwipsPerPixel = 15;

/// Rounds to the nearest whole number, halves to the even one, as the fit rule and all layout do.
inline int RoundToInt(double value) { return static_cast<int>(std::nearbyint(value)); }

inline int ToPixels(double twips) { return RoundToInt(twips / TwipsPerPixel); }
constexpr int ToTwips(int pixels) { return pixels * TwipsPerPixel; }

}  // namespace veldrin::base
