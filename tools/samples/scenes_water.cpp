#include <QRadialGradient>
#include <cmath>

#include "samples/scenes.h"

namespace veldrin::samples {

namespace {

void PaintWater(Canvas& canvas, const Light& light, double top, const QColor& deep) {
  const QRectF area(0, top, canvas.Width, Canvas::Height - top);
  Mirror(canvas, top, 2.2, deep);
  Shade(canvas, area, {{0, WithAlpha(Mix(deep, light.Haze, 0.4), 0.55)}, {1, WithAlpha(deep, 0.75)}});
  for (double y = top + 0.3; y < Canvas::Height; y += 0.25 + (y - top) * 0.03) {
    const double length = 1.5 + (y - top) * 0.35;
    for (double x = -length; x < canvas.Width; x += length * canvas.Chance.Between(0.8, 2.6)) {
      const bool lit = canvas.Chance.Unit() < 0.5;
      canvas.Paint.setBrush(WithAlpha(lit ? light.Sky.back().second : deep, canvas.Chance.Between(0.1, 0.4)));
      canvas.Paint.drawEllipse(QPointF(x, y), length * canvas.Chance.Between(0.4, 1),
                               0.06 + (y - top) * 0.008);
    }
  }
}

void PaintSail(Canvas& canvas, QPointF at, double size, const QColor& sail, const QColor& hull) {
  canvas.Paint.setBrush(sail);
  canvas.Paint.drawPolygon(QPolygonF(
      {at + QPointF(0.1, -1) * size, at + QPointF(0.1, -0.12) * size, at + QPointF(0.55, -0.14) * size}));
  canvas.Paint.setBrush(Mix(sail, hull, 0.2));
  canvas.Paint.drawPolygon(QPolygonF(
      {at + QPointF(0, -0.9) * size, at + QPointF(0, -0.12) * size, at + QPointF(-0.36, -0.13) * size}));
  canvas.Paint.setBrush(hull);
  QPainterPath boat(at + QPointF(-0.45, -0.09) * size);
  boat.lineTo(at + QPointF(0.55, -0.09) * size);
  boat.quadTo(at + QPointF(0.4, 0.03) * size, at + QPointF(0.1, 0.03) * size);
  boat.lineTo(at + QPointF(-0.3, 0.03) * size);
  boat.closeSubpath();
  canvas.Paint.drawPath(boat);
  canvas.Paint.setBrush(WithAlpha(hull, 0.3));
  canvas.Paint.drawEllipse(at + QPointF(0.05, 0.09) * size, size * 0.4, size * 0.04);
}

}  // namespace

void PaintSea(Canvas& canvas, const Light& light) {
  const double horizon = canvas.Chance.Between(48, 58);
  PaintSky(canvas, light, horizon, 0.5);
  const auto coast = Ridge(canvas, horizon + 1, 7, 40, 0.2);
  if (canvas.Chance.Unit() < 0.6) FillRidge(canvas, coast, Mix(light.Haze, light.Near, 0.35), light.Haze);
  PaintWater(canvas, light, horizon, Mix(QColor(0x1d4a63), light.Near, light.Sun.isValid() ? 0.5 : 0.1));
  const QColor sail = Mix(QColor(0xfaf6ea), light.Near, light.Sun.isValid() ? 0.55 : 0);
  PaintSail(canvas, {canvas.Width * canvas.Chance.Between(0.2, 0.8), horizon + 9}, 17, sail,
            Mix(light.Near, Qt::black, 0.2));
  PaintSail(canvas, {canvas.Width * canvas.Chance.Between(0.1, 0.9), horizon + 1.5}, 4, sail, light.Near);
  Birds(canvas, {canvas.Width * 0.4, 25}, 6, Mix(light.Near, light.Haze, 0.3));
  Develop(canvas, 0.35, 6);
}

void PaintBeach(Canvas& canvas, const Light& light) {
  constexpr double Horizon = 40;
  PaintSky(canvas, light, Horizon, 0.4);
  PaintWater(canvas, light, Horizon, Mix(QColor(0x1a8093), light.Near, light.Sun.isValid() ? 0.4 : 0));
  const double shade = light.Sun.isValid() ? 0.35 : light.Sky.front().second.lightness() < 60 ? 0.55 : 0.04;
  const QColor sand = Mix(QColor(0xe6cfa2), light.Near, shade);
  for (int wave = 0; wave < 4; ++wave) {
    const auto edge = Ridge(canvas, 66 + wave * 5, 5, 40, 0);
    canvas.Paint.setBrush(wave == 3 ? sand : Mix(Mix(QColor(0x6fc2c0), light.Near, shade), sand, wave / 3.0));
    canvas.Paint.drawPath(edge);
    Texture(canvas, edge, {14, 2}, 0.4);
    QPainterPathStroker foam;
    foam.setWidth(1.0 + 0.5 * wave);
    canvas.Paint.setBrush(WithAlpha(Mix(Qt::white, light.Near, shade * 0.6), 0.75));
    canvas.Paint.drawPath(foam.createStroke(edge));
  }
  // Footprints lead along the water.
  for (int step = 0; step < 16; ++step) {
    const double near = step / 15.0;
    const QPointF at(canvas.Width * (0.62 - 0.25 * near) + (step % 2 ? 1.2 : -1.2) * (0.4 + near),
                     83 + 17 * near);
    canvas.Paint.setBrush(WithAlpha(QColor(0x5f4a30), 0.35));
    canvas.Paint.drawEllipse(at, 0.5 + 0.8 * near, 0.25 + 0.5 * near);
  }
  Develop(canvas, 0.3, 6);
}

void PaintLighthouse(Canvas& canvas, const Light& light) {
  constexpr double Horizon = 62;
  PaintSky(canvas, light, Horizon, 0.6);
  PaintWater(canvas, light, Horizon, Mix(QColor(0x24506b), light.Near, 0.45));
  const double x = canvas.Width * 0.68;
  const QColor rock = Mix(QColor(0x4f463f), light.Near, 0.5);
  QPainterPath cliff(QPointF(x - 42, 101));
  const quint32 seed = canvas.Chance.Seed();
  for (double along = -42; along < canvas.Width; along += 0.5) {
    const double rise = 34 / (1 + std::exp(-(along + 22) / 6));
    cliff.lineTo(x + along, 101 - rise - 5 * CloudNoise(along / 6, 0, 4, seed));
  }
  cliff.lineTo(canvas.Width + 2, 101);
  FillRidge(canvas, cliff, Mix(rock, QColor(0x6c7a44), 0.4), rock);
  Relief(canvas, cliff, 11, 0.8);
  const double foot = 101 - 37;
  const auto half = [foot](double y) { return 4.6 - (foot - y) * 0.045; };
  for (int band = 0; band < 5; ++band) {
    const double low = foot + 2 - band * 8.0;
    QLinearGradient round(x - 4.6, 0, x + 4.6, 0);
    const QColor paint = band % 2 ? QColor(0xf4efe6) : QColor(0xb23a30);
    round.setColorAt(0, Mix(paint, Qt::black, 0.1));
    round.setColorAt(0.35, paint);
    round.setColorAt(1, Mix(paint, light.Near, 0.7));
    canvas.Paint.setBrush(round);
    canvas.Paint.drawPolygon(QPolygonF({{x - half(low), low},
                                        {x + half(low), low},
                                        {x + half(low - 8), low - 8},
                                        {x - half(low - 8), low - 8}}));
  }
  const double top = foot - 38;
  canvas.Paint.setBrush(QColor(0x2b2b30));
  canvas.Paint.drawRect(QRectF(x - 4, top - 0.5, 8, 1));
  canvas.Paint.drawPolygon(QPolygonF({{x - 3, top - 5.5}, {x + 3, top - 5.5}, {x, top - 9}}));
  canvas.Paint.setBrush(QColor(0xffe9a8));
  canvas.Paint.drawRect(QRectF(x - 2.2, top - 5.5, 4.4, 5));
  Glow(canvas, {x, top - 3}, 26, WithAlpha(QColor(0xffe29a), 0.95));
  Birds(canvas, {canvas.Width * 0.3, 28}, 8, Mix(light.Near, light.Haze, 0.2));
  Develop(canvas, 0.4, 6);
}

void PaintCanal(Canvas& canvas, const Light& light) {
  constexpr double Quay = 66;
  PaintSky(canvas, light, Quay, 0.4);
  const QList<QColor> walls{QColor(0xc8553d), QColor(0xe0a458), QColor(0xd9c5a0),
                            QColor(0x9db4ab), QColor(0xb5737a), QColor(0xe5d3b3)};
  const bool lit = !light.Sun.isValid() && light.Near.lightness() < 40;
  for (double x = -4; x < canvas.Width;) {
    const double width = canvas.Chance.Between(11, 19);
    const double top = canvas.Chance.Between(18, 34);
    const QColor wall = Mix(walls[static_cast<int>(canvas.Chance.Unit() * 6)], light.Near, lit ? 0.5 : 0.12);
    Shade(canvas, {x, top, width, Quay - top},
          {{0, Mix(wall, light.Haze, 0.25)}, {1, Mix(wall, QColor(0x3a2a22), 0.35)}});
    QPainterPath face;
    face.addRect(x, top, width, Quay - top);
    Texture(canvas, face, {5, 7}, 0.45);
    canvas.Paint.setBrush(Mix(QColor(0x8a4630), light.Near, 0.35));
    canvas.Paint.drawPolygon(QPolygonF({{x - 0.7, top},
                                        {x + width * 0.18, top - 4.5},
                                        {x + width * 0.82, top - 4.5},
                                        {x + width + 0.7, top}}));
    const int columns = width > 15 ? 4 : 3;
    for (double y = top + 3.5; y < Quay - 8; y += 8.5) {
      for (int column = 0; column < columns; ++column) {
        const double left = x + width * (column + 0.5) / columns - 1.1;
        const bool shines = lit && canvas.Chance.Unit() < 0.55;
        canvas.Paint.setBrush(Mix(wall, Qt::white, 0.4));
        canvas.Paint.drawRect(QRectF(left - 0.35, y - 0.35, 2.9, 5.2));
        canvas.Paint.setBrush(shines ? QColor(0xffd98a) : Mix(QColor(0x26303a), light.Haze, 0.15));
        canvas.Paint.drawRect(QRectF(left, y, 2.2, 4.4));
        if (shines) Glow(canvas, {left + 1.1, y + 2}, 6, WithAlpha(QColor(0xffc866), 0.35));
        canvas.Paint.setBrush(Mix(QColor(0x3d6650), wall, 0.25));
        for (const double shutter : {-1.3, 2.6})
          canvas.Paint.drawRect(QRectF(left + shutter, y - 0.2, 0.9, 4.8));
      }
    }
    canvas.Paint.setBrush(QColor(0x2d221c));
    canvas.Paint.drawRoundedRect(QRectF(x + width * 0.4, Quay - 7.5, 3.2, 7.5), 1.5, 1.5);
    x += width;
  }
  canvas.Paint.fillRect(QRectF(0, Quay - 0.8, canvas.Width, 1.2), Mix(QColor(0x8a8378), light.Near, 0.3));
  Mirror(canvas, Quay, 1.8, Mix(QColor(0x1c3f3d), light.Near, 0.4));
  // A gondola, whose bow and stern rise.
  const QPointF at(canvas.Width * canvas.Chance.Between(0.3, 0.6), 84);
  QPainterPath hull(at + QPointF(-15, -4.5));
  hull.quadTo(at + QPointF(-10, 2), at + QPointF(0, 2));
  hull.quadTo(at + QPointF(11, 2), at + QPointF(16, -5.5));
  hull.quadTo(at + QPointF(10, -0.5), at + QPointF(0, -0.4));
  hull.quadTo(at + QPointF(-9, -0.4), at + QPointF(-15, -4.5));
  canvas.Paint.setBrush(QColor(0x14110f));
  canvas.Paint.drawPath(hull);
  canvas.Paint.setBrush(WithAlpha(Qt::black, 0.3));
  canvas.Paint.drawEllipse(at + QPointF(0, 3), 14, 1.1);
  Develop(canvas, 0.4, 6);
}

void PaintBalloons(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 78, 0.35);
  for (int i = 0; i < 3; ++i) {
    const QColor color = Mix(light.Haze, light.Near, 0.25 + 0.3 * i);
    FillRidge(canvas, Ridge(canvas, 84 + 6 * i, 12, 50, 0.4), color, Mix(color, light.Haze, 0.5));
  }
  const QList<QColor> colors{QColor(0xd94f3d), QColor(0xf2b134), QColor(0x2f7f86), QColor(0x6a4c93),
                             QColor(0xef8354)};
  constexpr int Count = 7;
  for (int i = 0; i < Count; ++i) {
    const double radius = 2.2 + 1.5 * i;
    const QPointF at(canvas.Width * std::fmod(0.17 + i * 0.381 + canvas.Chance.Bell() * 0.03, 0.92) + 3,
                     canvas.Chance.Between(18, 58 - i * 2));
    QPainterPath envelope(at + QPointF(-0.28, 1.35) * radius);
    envelope.cubicTo(at + QPointF(-1.3, 0.6) * radius, at + QPointF(-1.3, -1) * radius,
                     at + QPointF(0, -1) * radius);
    envelope.cubicTo(at + QPointF(1.3, -1) * radius, at + QPointF(1.3, 0.6) * radius,
                     at + QPointF(0.28, 1.35) * radius);
    envelope.closeSubpath();
    canvas.Paint.save();
    canvas.Paint.setClipPath(envelope);
    // The gores: ever narrower ellipses, one over the other.
    for (int gore = 0; gore < 5; ++gore) {
      canvas.Paint.setBrush(Mix(colors[(i + gore % 2) % 5], light.Haze, 0.45 - 0.06 * i));
      canvas.Paint.drawEllipse(at + QPointF(0, 0.1 * radius), radius * (1.15 - gore * 0.25), radius * 1.8);
    }
    QRadialGradient round(at + QPointF(-0.4, -0.5) * radius, radius * 1.9);
    round.setColorAt(0, WithAlpha(Qt::white, 0.3));
    round.setColorAt(0.4, WithAlpha(Qt::white, 0));
    round.setColorAt(1, WithAlpha(light.Near, 0.75));
    canvas.Paint.setBrush(round);
    canvas.Paint.drawPath(envelope);
    canvas.Paint.restore();
    canvas.Paint.setPen(QPen(QColor(0x3a2c22), radius * 0.03));
    for (const double side : {-0.2, 0.2})
      canvas.Paint.drawLine(at + QPointF(side * 1.3, 1.35) * radius, at + QPointF(side * 0.8, 1.75) * radius);
    canvas.Paint.setPen(Qt::NoPen);
    canvas.Paint.setBrush(QColor(0x4b3524));
    canvas.Paint.drawRect(QRectF(at + QPointF(-0.17, 1.72) * radius, at + QPointF(0.17, 1.98) * radius));
  }
  Develop(canvas, 0.3, 6);
}

void PaintReef(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  Shade(canvas, {0, 0, canvas.Width, Canvas::Height},
        {{0, QColor(0x8fe0e0)}, {0.35, QColor(0x2b9fb8)}, {1, QColor(0x06304f)}});
  for (int ray = 0; ray < 16; ++ray) {
    const double x = canvas.Width * canvas.Chance.Between(-0.1, 1.1);
    QPainterPath beam(QPointF(x, -2));
    beam.lineTo(x + canvas.Chance.Between(2, 6), -2);
    beam.lineTo(x + 26, 95);
    beam.lineTo(x + 10, 95);
    canvas.Paint.setBrush(WithAlpha(QColor(0xe8ffff), canvas.Chance.Between(0.03, 0.12)));
    canvas.Paint.drawPath(beam);
  }
  Blur(canvas, 1.2);
  for (int i = 0; i < 3; ++i) {
    const auto reef = Ridge(canvas, 82 + 9 * i, 14, 24, 0.6);
    FillRidge(canvas, reef, Mix(QColor(0x1c7590), QColor(0x4a2f4f), 0.25 + 0.3 * i), QColor(0x08263c));
    Relief(canvas, reef, 8, 0.5);
  }
  const QList<QColor> colors{QColor(0xf6a63a), QColor(0xf4d35e), QColor(0xe85d5d), QColor(0x9fd3ff)};
  for (int i = 0; i < 26; ++i) {
    const double size = canvas.Chance.Between(1, 4.2);
    const QPointF at(canvas.Width * canvas.Chance.Between(0.05, 0.95), canvas.Chance.Between(22, 80));
    const QColor color = Mix(QColor(0x2b8fae), colors[i % 4], 0.25 + size * 0.16);
    canvas.Paint.setBrush(color);
    canvas.Paint.drawPolygon(QPolygonF({at + QPointF(-0.7, 0) * size, at + QPointF(-1.5, -0.55) * size,
                                        at + QPointF(-1.3, 0) * size, at + QPointF(-1.5, 0.55) * size}));
    canvas.Paint.drawEllipse(at, size, size * 0.5);
    canvas.Paint.setBrush(WithAlpha(Qt::white, 0.5));
    canvas.Paint.drawEllipse(at + QPointF(0.15, 0) * size, size * 0.12, size * 0.42);
    canvas.Paint.setBrush(QColor(0x0b1a26));
    canvas.Paint.drawEllipse(at + QPointF(0.62, -0.1) * size, size * 0.1, size * 0.1);
  }
  Develop(canvas, 0.45, 6);
}

}  // namespace veldrin::samples
