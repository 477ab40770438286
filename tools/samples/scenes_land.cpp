#include <QRadialGradient>
#include <cmath>

#include "samples/scenes.h"

namespace veldrin::samples {

const Light& Dawn() {
  static const Light light{
      {{0, QColor(0x5c7fa8)}, {0.55, QColor(0xb9b9cc)}, {0.85, QColor(0xf3cdb4)}, {1, QColor(0xfbe0bd)}},
      QColor(0xffedd0),
      0.12,
      QColor(0xe3c9c0),
      QColor(0x2c3a4c),
      QColor(255, 226, 214, 210)};
  return light;
}

const Light& Noon() {
  static const Light light{{{0, QColor(0x2f6fb5)}, {0.6, QColor(0x7fb2dd)}, {1, QColor(0xd5e6ef)}},
                           QColor(),
                           0.9,
                           QColor(0xb9cfdd),
                           QColor(0x24402c),
                           QColor(255, 255, 255, 235)};
  return light;
}

const Light& Evening() {
  static const Light light{
      {{0, QColor(0x3d4f7c)}, {0.45, QColor(0xa4698a)}, {0.75, QColor(0xf08a5b)}, {1, QColor(0xffcf7d)}},
      QColor(0xfff0b8),
      0.1,
      QColor(0xd98a6c),
      QColor(0x211a2b),
      QColor(255, 150, 110, 190)};
  return light;
}

const Light& Dusk() {
  static const Light light{
      {{0, QColor(0x141f45)}, {0.5, QColor(0x3b4a86)}, {0.85, QColor(0xa880a8)}, {1, QColor(0xe8a797)}},
      QColor(),
      0,
      QColor(0x7b7fae),
      QColor(0x10152b),
      QColor(120, 100, 150, 150)};
  return light;
}

const Light& Grey() {
  static const Light light{{{0, QColor(0x77838d)}, {0.7, QColor(0xa9b3b8)}, {1, QColor(0xccd2d2)}},
                           QColor(),
                           0,
                           QColor(0xb6c0c3),
                           QColor(0x2a3436),
                           QColor(240, 243, 244, 170)};
  return light;
}

void PaintSky(Canvas& canvas, const Light& light, double horizon, double cover) {
  Shade(canvas, {0, 0, canvas.Width, horizon + 1}, light.Sky);
  canvas.Paint.fillRect(QRectF(0, horizon, canvas.Width, Canvas::Height - horizon), light.Sky.back().second);
  const QPointF sun(canvas.Width * canvas.Chance.Between(0.25, 0.75), horizon * (1 - light.SunHeight));
  if (light.Sun.isValid()) Glow(canvas, sun, 75, WithAlpha(light.Sun, 0.75));
  if (cover > 0) Clouds(canvas, {0, 0, canvas.Width, horizon}, light.Cloud, cover, {38, 13});
  if (!light.Sun.isValid()) return;
  canvas.Paint.setBrush(light.Sun);
  canvas.Paint.drawEllipse(sun, 3.2, 3.2);
  Glow(canvas, sun, 22, WithAlpha(light.Sun, 0.9));
}

namespace {

// Ranges one before the other, each nearer and darker.
void PaintRanges(Canvas& canvas, const Light& light, double far, double near, int count, double height,
                 double sharp) {
  for (int i = 0; i < count; ++i) {
    const double nearness = (i + 1.0) / count;
    const double base = std::lerp(far, near, nearness);
    const auto ridge = Ridge(canvas, base, height * (1.1 - 0.45 * nearness), 50 - 14 * nearness,
                             sharp * (1.1 - 0.5 * nearness));
    const QColor color = Mix(light.Haze, light.Near, 0.15 + 0.75 * nearness);
    FillRidge(canvas, ridge, color, Mix(color, light.Haze, 0.55));
    Texture(canvas, ridge, {6 + 6 * nearness, 3}, 0.35 * nearness);
  }
}

void PaintFirs(Canvas& canvas, double base, double unevenness, double height, double density,
               const QColor& color) {
  const quint32 seed = canvas.Chance.Seed();
  for (double x = -2; x < canvas.Width + 2; x += height * canvas.Chance.Between(0.12, 0.3) / density) {
    const double ground = base - unevenness * Noise(x / 30, 0, seed);
    if (canvas.Chance.Unit() > Noise(x / 18, 5, seed) * 1.7) continue;
    Fir(canvas, {x, ground + 1}, height * canvas.Chance.Between(0.55, 1.15), color);
  }
}

void PaintGrass(Canvas& canvas, double top, const QColor& color, const QList<QColor>& flowers) {
  for (double y = top; y < Canvas::Height + 8; y += 0.35 + (y - top) * 0.022) {
    const double size = 0.5 + (y - top) * 0.13;
    for (double x = 0; x < canvas.Width; x += size * 0.35) {
      const QColor blade = Mix(color, canvas.Chance.Unit() < 0.5 ? QColor(0xd9d88a) : QColor(0x18301a),
                               canvas.Chance.Between(0, 0.45));
      const QPointF foot(x + canvas.Chance.Bell() * size, y);
      canvas.Paint.setPen(QPen(blade, size * 0.09));
      canvas.Paint.drawLine(
          foot, foot + QPointF(canvas.Chance.Bell() * size * 0.5, -size * canvas.Chance.Between(0.6, 1.5)));
      if (flowers.isEmpty() || canvas.Chance.Unit() > 0.05) continue;
      canvas.Paint.setPen(Qt::NoPen);
      canvas.Paint.setBrush(
          flowers[static_cast<int>(canvas.Chance.Unit() * static_cast<double>(flowers.size()))]);
      canvas.Paint.drawEllipse(foot - QPointF(0, size), size * 0.2, size * 0.15);
    }
  }
  canvas.Paint.setPen(Qt::NoPen);
}

}  // namespace

void PaintMountains(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 68, 0.45);
  const auto peaks = Ridge(canvas, 72, 58, 62, 1);
  FillRidge(canvas, peaks, Mix(light.Haze, light.Near, 0.42), light.Haze);
  // Snow lies above an uneven line.
  const auto snow = peaks.subtracted(Ridge(canvas, 58, 26, 9, 0.8));
  FillRidge(canvas, snow, Mix(light.Haze, Qt::white, 0.75), Mix(light.Haze, Qt::white, 0.4));
  Relief(canvas, peaks, 15, 0.75);
  PaintRanges(canvas, light, 74, 92, 3, 24, 0.55);
  PaintFirs(canvas, 95, 8, 14, 1.3, Mix(light.Near, light.Haze, 0.12));
  PaintFirs(canvas, 103, 6, 22, 1.1, Mix(light.Near, Qt::black, 0.3));
  Develop(canvas, 0.35, 6);
}

void PaintLake(Canvas& canvas, const Light& light) {
  constexpr double Shore = 60;
  PaintSky(canvas, light, Shore, 0.4);
  const auto peaks = Ridge(canvas, Shore + 2, 46, 58, 0.9);
  FillRidge(canvas, peaks, Mix(light.Haze, light.Near, 0.4), light.Haze);
  Relief(canvas, peaks, 14, 0.7);
  PaintRanges(canvas, light, Shore, Shore + 2, 2, 16, 0.4);
  PaintFirs(canvas, Shore + 0.5, 1.5, 6, 1.6, Mix(light.Near, light.Haze, 0.08));
  Mirror(canvas, Shore, 0.8, Mix(light.Near, light.Sky.front().second, 0.5));
  // The near bank.
  const auto bank = Ridge(canvas, 101, 10, 45, 0.2);
  FillRidge(canvas, bank, Mix(light.Near, QColor(0x4a5a2e), 0.35), light.Near);
  for (double x = 0; x < canvas.Width; x += 0.5) {
    if (Noise(x / 12, 4, 77) < 0.45) continue;
    canvas.Paint.setPen(QPen(Mix(light.Near, QColor(0x6d6a3a), canvas.Chance.Between(0, 0.6)), 0.22));
    canvas.Paint.drawLine(QPointF(x, 101),
                          QPointF(x + canvas.Chance.Bell() * 2, 96 - canvas.Chance.Between(0, 9)));
  }
  Develop(canvas, 0.35, 6);
}

void PaintMist(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 60, 0.3);
  for (int i = 0; i < 6; ++i) {
    const double nearness = (i + 1) / 6.0;
    const double base = 48 + 58 * nearness;
    const QColor color = Mix(light.Haze, light.Near, 0.12 + 0.85 * nearness);
    FillRidge(canvas, Ridge(canvas, base, 20, 45, 0.25), color, Mix(color, light.Haze, 0.8));
    PaintFirs(canvas, base - 5, 10, 4 + 14 * nearness, 2, color);
    if (i == 5) break;
    Clouds(canvas, {0, base - 8, canvas.Width, 30}, WithAlpha(Mix(light.Haze, Qt::white, 0.35), 0.75), 0.75,
           {45, 7});
  }
  Birds(canvas, {canvas.Width * 0.6, 24}, 7, Mix(light.Near, light.Haze, 0.3));
  Develop(canvas, 0.3, 6);
}

void PaintForest(Canvas& canvas, const Light& light) {
  const QColor shine = Mix(light.Sky.back().second, QColor(0xeaf0a8), 0.55);
  Shade(canvas, {0, 0, canvas.Width, Canvas::Height},
        {{0, Mix(shine, QColor(0x3f6b2e), 0.55)},
         {0.6, shine},
         {0.75, Mix(shine, QColor(0x6d7a3a), 0.5)},
         {1, QColor(0x2b3119)}});
  const double sun = canvas.Width * canvas.Chance.Between(0.35, 0.65);
  for (int depth = 0; depth < 5; ++depth) {
    const double nearness = depth / 4.0;
    const QColor bark = Mix(Mix(shine, QColor(0x4a5230), 0.45), QColor(0x19160f), nearness);
    const double ground = 66 + 30 * nearness;
    for (double x = -5; x < canvas.Width + 5; x += canvas.Chance.Between(2, 6) * (1 + 4 * nearness)) {
      const double thick = (0.7 + 4.2 * nearness * nearness) * canvas.Chance.Between(0.6, 1.3);
      const double lean = canvas.Chance.Bell() * 1.8;
      QPainterPath trunk(QPointF(x + lean, -2));
      trunk.cubicTo(x + lean, 30, x, 50, x - thick * 0.35, ground);
      trunk.lineTo(x + thick * 1.35, ground);
      trunk.cubicTo(x + thick, 50, x + thick * 0.8 + lean, 30, x + thick * 0.8 + lean, -2);
      QLinearGradient round(x, 0, x + thick, 0);
      round.setColorAt(x < sun ? 1 : 0, Mix(bark, shine, 0.3 * (1 - 0.5 * nearness)));
      round.setColorAt(x < sun ? 0 : 1, bark);
      canvas.Paint.setBrush(round);
      canvas.Paint.drawPath(trunk);
    }
    Clouds(canvas, {0, -10, canvas.Width, 62},
           WithAlpha(Mix(QColor(0x86a63f), QColor(0x22381a), nearness), 0.85), 0.35 + 0.1 * nearness,
           {7 + 9 * nearness, 5 + 6 * nearness});
    Clouds(canvas, {0, ground - 6, canvas.Width, 40},
           WithAlpha(Mix(QColor(0x9aa54c), QColor(0x30351a), nearness), 0.9), 0.9, {9, 2.5});
    if (depth < 3) Glow(canvas, {sun, 40}, 60, WithAlpha(shine, 0.3));
  }
  for (int ray = -4; ray <= 4; ++ray) {
    QPainterPath beam(QPointF(sun + ray * 3, -2));
    beam.lineTo(sun + ray * 16 + 3, 92);
    beam.lineTo(sun + ray * 16 - 4, 92);
    canvas.Paint.setBrush(WithAlpha(QColor(0xfff6c8), canvas.Chance.Between(0.02, 0.1)));
    canvas.Paint.drawPath(beam);
  }
  Develop(canvas, 0.5, 7);
}

void PaintMeadow(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 55, 0.55);
  PaintRanges(canvas, light, 56, 60, 2, 14, 0.2);
  const QColor green = Mix(QColor(0x6f9140), light.Near, light.Sun.isValid() ? 0.45 : 0.12);
  const auto hill = Ridge(canvas, 66, 9, 90, 0);
  FillRidge(canvas, hill, Mix(green, light.Haze, 0.15), green);
  Texture(canvas, hill, {16, 3}, 0.6);
  const double x = canvas.Width * (canvas.Chance.Unit() < 0.5 ? 0.27 : 0.72);
  Tree(canvas, {x, 63}, 44, Mix(QColor(0x3a2a1c), light.Near, 0.5), Mix(QColor(0x5f8f35), light.Near, 0.25));
  PaintGrass(canvas, 70, green, {QColor(0xd8402f), QColor(0xe8563f), QColor(0xf4efe2), QColor(0x6f7fd0)});
  Develop(canvas, 0.3, 6);
}

void PaintDunes(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 48, 0.1);
  const QColor sand = Mix(QColor(0xe0a264), light.Near, light.Sun.isValid() ? 0.15 : 0);
  for (int i = 0; i < 5; ++i) {
    const double nearness = i / 4.0;
    const auto dune = Ridge(canvas, 54 + 46 * nearness, 12 + 12 * nearness, 60 + 30 * nearness, 0.15);
    FillRidge(canvas, dune, Mix(Mix(sand, light.Haze, 0.5 - 0.5 * nearness), QColor(0xffe0b0), 0.2),
              Mix(sand, QColor(0x7a3f22), 0.7));
    Texture(canvas, dune, {22, 0.7 + nearness}, 0.5);
    // The lee side lies in shadow, cut off by the crest's own wavy line.
    const auto lee = dune.intersected(Ridge(canvas, 66 + 46 * nearness, 30, 28, 0.1));
    canvas.Paint.setBrush(WithAlpha(QColor(0x5a2a1e), 0.28));
    canvas.Paint.drawPath(lee);
  }
  Develop(canvas, 0.35, 6);
}

void PaintRows(Canvas& canvas, const Light& light) {
  constexpr double Horizon = 42;
  PaintSky(canvas, light, Horizon, 0.5);
  PaintRanges(canvas, light, Horizon, Horizon + 1, 2, 8, 0.1);
  const QPointF vanishing(canvas.Width * canvas.Chance.Between(0.35, 0.65), Horizon);
  canvas.Paint.fillRect(QRectF(0, Horizon + 0.5, canvas.Width, 60), Mix(QColor(0x6d7c3c), light.Near, 0.2));
  const QList<QColor> colors{QColor(0xd5324a), QColor(0xf0b429), QColor(0x8e4fa8), QColor(0xf27d8c),
                             QColor(0xf3ead6)};
  const auto first = static_cast<int>(canvas.Chance.Unit() * 5);
  for (int row = -22; row <= 22; ++row) {
    const double left = vanishing.x() + row * 17.0;
    QPainterPath strip(vanishing);
    strip.lineTo(left, 101);
    strip.lineTo(left + 11, 101);
    const QColor color = Mix(colors[(row + 25 + first) / 3 % 5], light.Near, 0.12);
    QLinearGradient far(0, Horizon, 0, 100);
    far.setColorAt(0, Mix(color, light.Haze, 0.5));
    far.setColorAt(1, color);
    canvas.Paint.setBrush(far);
    canvas.Paint.drawPath(strip);
    for (double near = 0.08; near < 1.02; near *= 1.035) {
      for (int blossom = 0; blossom < 5; ++blossom) {
        const QPointF at = vanishing + (QPointF(left + canvas.Chance.Between(0, 11), 101) - vanishing) * near;
        canvas.Paint.setBrush(
            Mix(color, canvas.Chance.Unit() < 0.5 ? Qt::white : Qt::black, canvas.Chance.Between(0, 0.4)));
        canvas.Paint.drawEllipse(at - QPointF(0, near * 1.2), near * 0.9, near * 0.75);
      }
    }
  }
  Develop(canvas, 0.3, 6);
}

void PaintSnow(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 62, 0.5);
  const QColor snow = Mix(QColor(0xf2f6fa), light.Haze, 0.3);
  const auto peaks = Ridge(canvas, 64, 30, 50, 0.8);
  FillRidge(canvas, peaks, Mix(snow, light.Sky.front().second, 0.25), snow);
  Relief(canvas, peaks, 14, 0.6);
  PaintFirs(canvas, 68, 5, 9, 2.2, Mix(light.Haze, QColor(0x2c4048), 0.7));
  const auto field = Ridge(canvas, 76, 8, 70, 0);
  FillRidge(canvas, field, snow, Mix(snow, QColor(0x7d94b5), 0.55));
  Texture(canvas, field, {30, 5}, 0.35);
  const double x = canvas.Width * 0.62;
  canvas.Paint.setBrush(QColor(0x4a3426));
  canvas.Paint.drawRect(QRectF(x, 64, 18, 10));
  canvas.Paint.setBrush(snow);
  canvas.Paint.drawPolygon(QPolygonF({{x - 2.5, 65}, {x + 3, 56}, {x + 15, 56}, {x + 20.5, 65}}));
  canvas.Paint.setBrush(QColor(0xffd479));
  for (const double window : {3.0, 11.5}) canvas.Paint.drawRect(QRectF(x + window, 67, 3.4, 3.6));
  Glow(canvas, {x + 9, 69}, 22, WithAlpha(QColor(0xffc25e), 0.55));
  PaintFirs(canvas, 100, 8, 34, 0.6, Mix(QColor(0x1c2c33), light.Near, 0.4));
  for (int i = 0; i < 500; ++i) {
    const double size = canvas.Chance.Between(0.08, 0.4);
    canvas.Paint.setBrush(WithAlpha(Qt::white, canvas.Chance.Between(0.3, 0.9)));
    canvas.Paint.drawEllipse(QPointF(canvas.Chance.Unit() * canvas.Width, canvas.Chance.Unit() * 100), size,
                             size);
  }
  Develop(canvas, 0.25, 6);
}

}  // namespace veldrin::samples
