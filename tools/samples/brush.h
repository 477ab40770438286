// What the painted scenes share: a canvas with chance and noise, and the strokes that make a picture look
// taken rather than drawn.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <random>

namespace veldrin::samples {

/// Chance that falls the same way at every run.
class Dice {
 public:
  explicit Dice(quint32 seed) : Engine(seed) {}
  /// From 0 up to 1.
  double Unit() { return static_cast<double>(Engine()) / 4294967296.0; }
  double Between(double low, double high) { return low + (high - low) * Unit(); }
  /// About -1 to 1, most often near 0.
  double Bell() { return Unit() + Unit() + Unit() - 1.5; }
  quint32 Seed() { return static_cast<quint32>(Engine()); }

 private:
  std::mt19937 Engine;
};

/// Smooth noise from 0 to 1 with features of size 1, and the sum of its octaves.
double Noise(double x, double y, quint32 seed);
double CloudNoise(double x, double y, int octaves, quint32 seed);

/// A picture in the making. Lengths: the picture is 100 units high and Width units wide, y grows downwards.
struct Canvas {
  Canvas(QImage& picture, quint32 seed);

  QImage& Picture;
  QPainter Paint;
  double Width;
  Dice Chance;
  static constexpr double Height = 100;
};

using Stops = QList<std::pair<double, QColor>>;

QColor Mix(const QColor& from, const QColor& to, double share);
QColor WithAlpha(QColor color, double alpha);

/// Fills a rectangle from top to bottom.
void Shade(Canvas& canvas, const QRectF& area, const Stops& stops);

/// Light that falls off around a point; adds to what is there.
void Glow(Canvas& canvas, QPointF at, double radius, const QColor& color);

/// Clouds: noise of the color, more of it with a higher cover (0 to 1). `grain`: the size of a cloud.
void Clouds(Canvas& canvas, const QRectF& area, const QColor& color, double cover, QSizeF grain);

/// Uneven light and dark on what lies within the path, as grass, rock and water have it.
void Texture(Canvas& canvas, const QPainterPath& path, QSizeF grain, double strength);

/// Rock: a rough face with light from the left on what lies within the path.
void Relief(Canvas& canvas, const QPainterPath& path, double grain, double strength);

/// A line of hills across the picture, closed at the bottom. `sharp` from 0, rolling, to 1, peaks.
QPainterPath Ridge(Canvas& canvas, double base, double height, double grain, double sharp);

/// Fills a ridge: its top color fades into the haze at its foot.
void FillRidge(Canvas& canvas, const QPainterPath& ridge, const QColor& top, const QColor& foot);

/// Lets the part above the water line mirror itself below it. `ripple`: how far the waves shift it.
void Mirror(Canvas& canvas, double waterLine, double ripple, const QColor& tint);

/// Puts what is painted so far out of focus. `radius` in units.
void Blur(Canvas& canvas, double radius);

/// The lens and the film: darker corners and grain.
void Develop(Canvas& canvas, double vignette, double grain);

void Fir(Canvas& canvas, QPointF foot, double height, const QColor& color);
/// A bare tree whose branches end in leaves of the color; an invalid one leaves it bare.
void Tree(Canvas& canvas, QPointF foot, double height, const QColor& wood, const QColor& leaves);
void Birds(Canvas& canvas, QPointF around, int count, const QColor& color);
/// Blurred discs of light.
void Bokeh(Canvas& canvas, int count, double size, const QList<QColor>& colors);

}  // namespace veldrin::samples
