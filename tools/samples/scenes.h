// The motifs that the samples show. Each paints a whole picture on its canvas; another seed makes another
// place.
#pragma once

#include "samples/brush.h"

namespace veldrin::samples {

/// The light of a time of day.
struct Light {
  Stops Sky;         ///< from the zenith to the horizon
  QColor Sun;        ///< its disc and glow; invalid when it isn't seen
  double SunHeight;  ///< above the horizon, as a share of the sky
  QColor Haze;       ///< what far things fade into
  QColor Near;       ///< what near things darken into
  QColor Cloud;
};

const Light& Dawn();
const Light& Noon();
const Light& Evening();
const Light& Dusk();
const Light& Grey();

using Scene = void (*)(Canvas&, const Light&);

/// Sky, sun and clouds down to the horizon.
void PaintSky(Canvas& canvas, const Light& light, double horizon, double cover);

// Land.
void PaintMountains(Canvas& canvas, const Light& light);
void PaintLake(Canvas& canvas, const Light& light);
void PaintMist(Canvas& canvas, const Light& light);
void PaintForest(Canvas& canvas, const Light& light);
void PaintMeadow(Canvas& canvas, const Light& light);
void PaintDunes(Canvas& canvas, const Light& light);
void PaintRows(Canvas& canvas, const Light& light);
void PaintSnow(Canvas& canvas, const Light& light);

// Water and air.
void PaintSea(Canvas& canvas, const Light& light);
void PaintBeach(Canvas& canvas, const Light& light);
void PaintLighthouse(Canvas& canvas, const Light& light);
void PaintCanal(Canvas& canvas, const Light& light);
void PaintBalloons(Canvas& canvas, const Light& light);
void PaintReef(Canvas& canvas, const Light& light);

// Night and city; the light is the time's own.
void PaintMoon(Canvas& canvas, const Light& light);
void PaintStars(Canvas& canvas, const Light& light);
void PaintAurora(Canvas& canvas, const Light& light);
void PaintCity(Canvas& canvas, const Light& light);

// Near things.
void PaintFlower(Canvas& canvas, const Light& light);
void PaintLeaf(Canvas& canvas, const Light& light);
void PaintDrops(Canvas& canvas, const Light& light);
void PaintFruit(Canvas& canvas, const Light& light);
void PaintPortrait(Canvas& canvas, const Light& light);
void PaintWalkers(Canvas& canvas, const Light& light);

}  // namespace veldrin::samples
