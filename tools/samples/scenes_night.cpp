#include <QRadialGradient>
#include <cmath>

#include "samples/scenes.h"

namespace veldrin::samples {

namespace {

void PaintStarField(Canvas& canvas, double horizon, int count) {
  for (int i = 0; i < count; ++i) {
    const double bright = std::pow(canvas.Chance.Unit(), 6);
    const double size = 0.05 + 0.2 * bright;
    const QColor hue = canvas.Chance.Unit() < 0.3 ? QColor(0xffe2c0) : QColor(0xdfe8ff);
    const QPointF at(canvas.Chance.Unit() * canvas.Width, canvas.Chance.Unit() * horizon);
    canvas.Paint.setBrush(WithAlpha(hue, 0.35 + 0.65 * bright));
    canvas.Paint.drawEllipse(at, size, size);
    if (bright > 0.85) Glow(canvas, at, 1.3, WithAlpha(hue, 0.5));
  }
}

void PaintMilkyWay(Canvas& canvas) {
  canvas.Paint.save();
  canvas.Paint.translate(canvas.Width * 0.5, 40);
  canvas.Paint.rotate(canvas.Chance.Between(-55, -30));
  const double length = canvas.Width + 60;
  for (int layer = 0; layer < 4; ++layer) {
    const double broad = 30 - 6 * layer;
    Clouds(canvas, {-length / 2, -broad / 2, length, broad},
           WithAlpha(Mix(QColor(0x7f86c8), QColor(0xffe9d6), layer / 3.0), 0.3), 0.7, {18, 7});
  }
  for (int i = 0; i < 2600; ++i) {
    const double size = canvas.Chance.Between(0.03, 0.1);
    canvas.Paint.setBrush(WithAlpha(Qt::white, canvas.Chance.Between(0.2, 0.8)));
    canvas.Paint.drawEllipse(
        QPointF(canvas.Chance.Between(-length / 2, length / 2), canvas.Chance.Bell() * 9), size, size);
  }
  canvas.Paint.restore();
}

void PaintDarkWood(Canvas& canvas, double base, const QColor& color) {
  FillRidge(canvas, Ridge(canvas, base, 8, 60, 0.2), color, Mix(color, Qt::black, 0.6));
  for (double x = -1; x < canvas.Width; x += canvas.Chance.Between(0.8, 3.5)) {
    Fir(canvas, {x, base + 2}, canvas.Chance.Between(5, 16), color);
  }
}

void PaintTower(Canvas& canvas, double x, double width, double top, double foot, const QColor& wall,
                double lit) {
  Shade(canvas, {x, top, width, foot - top}, {{0, wall}, {1, Mix(wall, QColor(0x6a5470), 0.2)}});
  constexpr double Floor = 1.5;
  const int columns = std::max(1, static_cast<int>(width / 1.3));
  for (double y = top + 1.2; y < foot - 1; y += Floor) {
    for (int column = 0; column < columns; ++column) {
      if (canvas.Chance.Unit() > lit) continue;
      const QColor shine = canvas.Chance.Unit() < 0.75 ? QColor(0xffd58a) : QColor(0xcfe4ff);
      canvas.Paint.setBrush(WithAlpha(shine, canvas.Chance.Between(0.4, 1)));
      canvas.Paint.drawRect(
          QRectF(x + width * (column + 0.28) / columns, y, width * 0.5 / columns, Floor * 0.5));
    }
  }
}

}  // namespace

void PaintMoon(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  Shade(canvas, {0, 0, canvas.Width, 100},
        {{0, QColor(0x060b1c)}, {0.6, QColor(0x1a2a52)}, {1, QColor(0x3d4f7d)}});
  PaintStarField(canvas, 75, 300);
  const QPointF moon(canvas.Width * canvas.Chance.Between(0.3, 0.7), 34);
  const double radius = canvas.Chance.Between(9, 15);
  Glow(canvas, moon, radius * 4.5, WithAlpha(QColor(0xcfdcff), 0.6));
  QRadialGradient disc(moon - QPointF(radius, radius) * 0.3, radius * 1.6);
  disc.setColorAt(0, QColor(0xfdfbee));
  disc.setColorAt(1, QColor(0xc9c6b6));
  QPainterPath round;
  round.addEllipse(moon, radius, radius);
  canvas.Paint.setBrush(disc);
  canvas.Paint.drawPath(round);
  Texture(canvas, round, {radius * 0.7, radius * 0.7}, 0.8);
  Clouds(canvas, {0, 30, canvas.Width, 40}, QColor(90, 105, 150, 130), 0.5, {40, 8});
  PaintDarkWood(canvas, 86, QColor(0x0a1122));
  PaintDarkWood(canvas, 98, QColor(0x04070f));
  Develop(canvas, 0.4, 9);
}

void PaintStars(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  Shade(canvas, {0, 0, canvas.Width, 100},
        {{0, QColor(0x05081a)}, {0.7, QColor(0x142046)}, {1, QColor(0x51486d)}});
  PaintMilkyWay(canvas);
  PaintStarField(canvas, 85, 1100);
  FillRidge(canvas, Ridge(canvas, 90, 22, 45, 0.7), QColor(0x10162e), QColor(0x1c2140));
  // A tent with a lamp in it.
  const double x = canvas.Width * 0.3;
  Glow(canvas, {x, 90}, 26, WithAlpha(QColor(0xff9c42), 0.7));
  QLinearGradient cloth(x, 80, x, 94);
  cloth.setColorAt(0, QColor(0xb5541f));
  cloth.setColorAt(1, QColor(0xffc46b));
  canvas.Paint.setBrush(cloth);
  canvas.Paint.drawPolygon(QPolygonF({{x - 9, 95}, {x, 82}, {x + 9, 95}}));
  canvas.Paint.setBrush(QColor(0x6b3014));
  canvas.Paint.drawPolygon(QPolygonF({{x - 1.2, 95}, {x, 84}, {x + 1.2, 95}}));
  FillRidge(canvas, Ridge(canvas, 98, 5, 60, 0), QColor(0x070a16), QColor(0x030409));
  Develop(canvas, 0.4, 10);
}

void PaintAurora(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  constexpr double Shore = 74;
  Shade(canvas, {0, 0, canvas.Width, Shore}, {{0, QColor(0x050b1e)}, {1, QColor(0x153a4a)}});
  PaintStarField(canvas, Shore, 500);
  canvas.Paint.save();
  canvas.Paint.setCompositionMode(QPainter::CompositionMode_Screen);
  for (int curtain = 0; curtain < 3; ++curtain) {
    const quint32 seed = canvas.Chance.Seed();
    const double middle = 34 + 9 * curtain;
    for (double x = -2; x < canvas.Width + 2; x += 0.35) {
      const double foot = middle + 22 * (CloudNoise(x / 42, curtain, 3, seed) - 0.45);
      const double high = 14 + 26 * Noise(x / 2.4, 2, seed);
      const double bright = 0.38 * std::pow(CloudNoise(x / 9, 9, 4, seed), 1.4);
      QLinearGradient ray(0, foot - high, 0, foot + 2.5);
      ray.setColorAt(0, WithAlpha(QColor(0x8b3fa8), 0));
      ray.setColorAt(0.35, WithAlpha(QColor(0x6f5fc0), bright * 0.5));
      ray.setColorAt(0.85, WithAlpha(QColor(0x4dffa6), bright * 1.6));
      ray.setColorAt(1, WithAlpha(QColor(0x4dffa6), 0));
      canvas.Paint.fillRect(QRectF(x, foot - high, 0.55, high + 2.5), ray);
    }
  }
  canvas.Paint.restore();
  const auto peaks = Ridge(canvas, Shore + 1, 24, 50, 0.9);
  FillRidge(canvas, peaks, QColor(0x1d3346), QColor(0x0d1a26));
  Relief(canvas, peaks, 14, 0.45);
  Mirror(canvas, Shore, 1.0, QColor(0x06121c));
  Develop(canvas, 0.4, 9);
}

void PaintCity(Canvas& canvas, const Light& light) {
  constexpr double Bank = 70;
  PaintSky(canvas, light, Bank, 0.4);
  const bool day =
      light.Near.green() > 60 || (light.Sky.front().second.lightness() > 100 && !light.Sun.isValid());
  for (int depth = 0; depth < 3; ++depth) {
    const QColor wall = Mix(light.Haze, light.Near, 0.4 + 0.25 * depth);
    for (double x = -3; x < canvas.Width + 3;) {
      const double width = canvas.Chance.Between(4, 9);
      const double middle = 1 - std::abs(x / canvas.Width - 0.55) * 1.3;
      const double top = Bank - canvas.Chance.Between(8, 26 + 20 * middle) * (1.15 - 0.25 * depth);
      PaintTower(canvas, x, width, top, Bank, wall, day ? 0.06 : 0.2 + 0.15 * depth);
      if (canvas.Chance.Unit() < 0.2) {
        canvas.Paint.setBrush(wall);
        canvas.Paint.drawPolygon(QPolygonF({{x + width * 0.3, top + 0.1},
                                            {x + width * 0.5, top - canvas.Chance.Between(3, 9)},
                                            {x + width * 0.7, top + 0.1}}));
      }
      x += width * canvas.Chance.Between(0.9, 1.5);
    }
    Clouds(canvas, {0, Bank - 22, canvas.Width, 24}, WithAlpha(light.Haze, 0.35), 0.6, {50, 10});
  }
  if (!day) Glow(canvas, {canvas.Width * 0.55, Bank}, 60, WithAlpha(QColor(0xffb070), 0.3));
  Mirror(canvas, Bank, 1.6, Mix(light.Near, QColor(0x16324a), 0.5));
  canvas.Paint.fillRect(QRectF(0, Bank - 0.4, canvas.Width, 0.8), light.Near);
  Develop(canvas, 0.4, 7);
}

}  // namespace veldrin::samples
