#include <QRadialGradient>
#include <cmath>
#include <numbers>

#include "samples/scenes.h"

namespace veldrin::samples {

namespace {

constexpr double Turn = 2 * std::numbers::pi;

// A garden far out of focus.
void PaintGarden(Canvas& canvas, const QColor& dark, const QColor& bright) {
  Shade(canvas, {0, 0, canvas.Width, 100},
        {{0, Mix(dark, bright, 0.55)}, {0.5, Mix(dark, bright, 0.3)}, {1, dark}});
  Clouds(canvas, {0, 0, canvas.Width, 100}, WithAlpha(bright, 0.7), 0.55, {26, 26});
  Clouds(canvas, {0, 0, canvas.Width, 100}, WithAlpha(Mix(dark, Qt::black, 0.4), 0.8), 0.35, {34, 34});
  Bokeh(canvas, 22, 8, {bright, Mix(bright, Qt::white, 0.5), Mix(bright, QColor(0xffe28a), 0.6)});
  Blur(canvas, 2);
}

void PaintPetal(Canvas& canvas, QPointF middle, double angle, double length, double width,
                const QColor& color) {
  canvas.Paint.save();
  canvas.Paint.translate(middle);
  canvas.Paint.rotate(angle * 360 / Turn);
  QPainterPath petal(QPointF(0, 0));
  petal.cubicTo(width * 0.5, -length * 0.25, width * 0.75, -length * 0.85, width * 0.12, -length);
  petal.quadTo(0, -length * 0.95, -width * 0.12, -length * 0.99);
  petal.cubicTo(-width * 0.75, -length * 0.85, -width * 0.5, -length * 0.25, 0, 0);
  QLinearGradient fade(0, 0, 0, -length);
  fade.setColorAt(0, Mix(color, Qt::black, 0.45));
  fade.setColorAt(0.45, color);
  fade.setColorAt(1, Mix(color, Qt::white, 0.35));
  canvas.Paint.setBrush(fade);
  canvas.Paint.setPen(QPen(WithAlpha(Mix(color, Qt::black, 0.6), 0.35), 0.18));
  canvas.Paint.drawPath(petal);
  canvas.Paint.setPen(QPen(WithAlpha(Mix(color, Qt::black, 0.5), 0.22), 0.14));
  canvas.Paint.setBrush(Qt::NoBrush);
  for (const double vein : {-0.3, -0.15, 0.0, 0.15, 0.3}) {
    QPainterPath line(QPointF(0, -length * 0.1));
    line.quadTo(vein * width, -length * 0.5, vein * width * 0.7, -length * 0.9);
    canvas.Paint.drawPath(line);
  }
  canvas.Paint.restore();
}

void PaintStem(Canvas& canvas, QPointF from) {
  QPainterPath stem(from);
  stem.quadTo(from + QPointF(4, 30), {from.x() + 9, 112});
  canvas.Paint.setBrush(Qt::NoBrush);
  canvas.Paint.setPen(QPen(QColor(0x2f4f22), 2.4, Qt::SolidLine, Qt::RoundCap));
  canvas.Paint.drawPath(stem);
  canvas.Paint.setPen(QPen(QColor(0x6f9a48), 0.8, Qt::SolidLine, Qt::RoundCap));
  canvas.Paint.drawPath(stem.translated(-0.5, 0));
  canvas.Paint.setPen(Qt::NoPen);
}

void PaintBall(Canvas& canvas, QPointF at, double radius, const QColor& color) {
  canvas.Paint.setBrush(WithAlpha(Qt::black, 0.35));
  for (const double soft : {1.25, 1.1, 0.95}) {
    canvas.Paint.setBrush(WithAlpha(Qt::black, 0.16));
    canvas.Paint.drawEllipse(at + QPointF(radius * 0.35, radius * 0.85), radius * soft, radius * 0.28 * soft);
  }
  QRadialGradient round(at - QPointF(radius, radius) * 0.35, radius * 1.5);
  round.setColorAt(0, Mix(color, Qt::white, 0.55));
  round.setColorAt(0.35, color);
  round.setColorAt(1, Mix(color, Qt::black, 0.72));
  QPainterPath ball;
  ball.addEllipse(at, radius, radius * 0.97);
  canvas.Paint.setBrush(round);
  canvas.Paint.drawPath(ball);
  Texture(canvas, ball, {radius * 0.12, radius * 0.12}, 0.35);
  canvas.Paint.setPen(QPen(QColor(0x3c2a18), radius * 0.08, Qt::SolidLine, Qt::RoundCap));
  canvas.Paint.drawLine(at - QPointF(0, radius * 0.85), at - QPointF(-radius * 0.1, radius * 1.2));
  canvas.Paint.setPen(Qt::NoPen);
}

// A person seen from behind the light, standing; `height` from the feet.
void PaintFigure(Canvas& canvas, QPointF feet, double height, double stride, const QColor& color) {
  canvas.Paint.setBrush(color);
  canvas.Paint.setPen(QPen(color, height * 0.1, Qt::SolidLine, Qt::RoundCap));
  const QPointF hip = feet - QPointF(0, height * 0.48);
  canvas.Paint.drawLine(hip, feet + QPointF(stride * height, -height * 0.03));
  canvas.Paint.drawLine(hip, feet - QPointF(stride * height, height * 0.03));
  canvas.Paint.setPen(QPen(color, height * 0.17, Qt::SolidLine, Qt::RoundCap));
  canvas.Paint.drawLine(hip - QPointF(0, height * 0.02), hip - QPointF(0, height * 0.24));
  canvas.Paint.setPen(QPen(color, height * 0.06, Qt::SolidLine, Qt::RoundCap));
  for (const double side : {-1.0, 1.0}) {
    canvas.Paint.drawLine(hip + QPointF(side * height * 0.07, -height * 0.28),
                          hip + QPointF(side * (height * 0.13 + stride * height * 0.3), height * 0.02));
  }
  canvas.Paint.setPen(Qt::NoPen);
  canvas.Paint.drawEllipse(hip - QPointF(0, height * 0.43), height * 0.075, height * 0.09);
}

}  // namespace

void PaintFlower(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  const QList<QColor> colors{QColor(0xe0527a), QColor(0xf5b13d), QColor(0x7a68c8), QColor(0xf2f0ea),
                             QColor(0xd9412f)};
  const QColor color = colors[static_cast<int>(canvas.Chance.Unit() * 5)];
  PaintGarden(canvas, QColor(0x1f3d22), QColor(0x8fae4e));
  const QPointF middle(canvas.Width * canvas.Chance.Between(0.42, 0.6), 44);
  PaintStem(canvas, middle);
  const int petals = 9 + static_cast<int>(canvas.Chance.Unit() * 10);
  const double length = 33;
  for (int ring = 0; ring < 2; ++ring) {
    for (int i = 0; i < petals; ++i) {
      const double angle = Turn * (i + ring * 0.5) / petals + canvas.Chance.Bell() * 0.06;
      PaintPetal(canvas, middle, angle, length * (1 - 0.18 * ring) * canvas.Chance.Between(0.92, 1.05),
                 4.4 * length / petals, Mix(color, ring ? Qt::white : Qt::black, 0.07));
    }
  }
  // The heart: seeds on a spiral.
  canvas.Paint.setBrush(QColor(0x3e2a10));
  canvas.Paint.drawEllipse(middle, 9, 8.6);
  for (int seed = 0; seed < 420; ++seed) {
    const double out = std::sqrt(seed / 420.0) * 8.8;
    const double angle = seed * 2.39996;
    canvas.Paint.setBrush(Mix(QColor(0x8a5a16), QColor(0xffd75a), canvas.Chance.Unit() * out / 8.8));
    canvas.Paint.drawEllipse(middle + QPointF(std::cos(angle), std::sin(angle)) * out, 0.34, 0.34);
  }
  Develop(canvas, 0.45, 5);
}

void PaintLeaf(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  PaintGarden(canvas, QColor(0x4a2712), QColor(0xd88a3a));
  const QList<QColor> colors{QColor(0xc2401c), QColor(0xe08a1e), QColor(0x9c2b1b), QColor(0xd9b13b)};
  for (int i = 0; i < 6; ++i) {
    const bool sharp = i == 5;
    const double length = sharp ? 74 : canvas.Chance.Between(24, 40);
    const QColor color = colors[static_cast<int>(canvas.Chance.Unit() * 4)];
    canvas.Paint.save();
    canvas.Paint.translate(sharp ? canvas.Width * 0.38 : canvas.Width * canvas.Chance.Unit(),
                           sharp ? 88 : 40 + 60 * canvas.Chance.Unit());
    canvas.Paint.rotate(sharp ? 24 : canvas.Chance.Between(-70, 70));
    QPainterPath leaf(QPointF(0, 0));
    leaf.cubicTo(length * 0.42, -length * 0.2, length * 0.32, -length * 0.75, 0, -length);
    leaf.cubicTo(-length * 0.32, -length * 0.75, -length * 0.42, -length * 0.2, 0, 0);
    QLinearGradient fade(-length * 0.3, 0, length * 0.3, -length);
    fade.setColorAt(0, Mix(color, Qt::black, 0.35));
    fade.setColorAt(0.55, color);
    fade.setColorAt(1, Mix(color, QColor(0xffe08a), 0.5));
    canvas.Paint.setBrush(fade);
    canvas.Paint.drawPath(leaf);
    canvas.Paint.setClipPath(leaf);
    canvas.Paint.setPen(QPen(Mix(color, QColor(0xffe8b0), 0.5), length * 0.012, Qt::SolidLine, Qt::RoundCap));
    canvas.Paint.drawLine(QPointF(0, 0), QPointF(0, -length * 0.97));
    for (double along = 0.12; along < 0.9; along += 0.085) {
      const double reach = length * 0.3 * std::sin(along * Turn / 2);
      for (const int side : {-1, 1}) {
        canvas.Paint.drawLine(QPointF(0, -length * along),
                              QPointF(side * reach * 0.88, -length * (along + 0.13)));
      }
    }
    canvas.Paint.setClipping(false);
    canvas.Paint.drawLine(QPointF(0, length * 0.2), QPointF(0, 0));
    canvas.Paint.restore();
    if (i == 4) Blur(canvas, 1.4);
  }
  Develop(canvas, 0.45, 6);
}

void PaintDrops(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  const QColor color = QColor::fromHslF(static_cast<float>(canvas.Chance.Unit()), 0.5F, 0.4F);
  Shade(canvas, {0, 0, canvas.Width, 100},
        {{0, Mix(color, Qt::white, 0.35)}, {1, Mix(color, Qt::black, 0.6)}});
  Clouds(canvas, {0, 0, canvas.Width, 100}, WithAlpha(Mix(color, QColor(0xffe0a0), 0.7), 0.6), 0.6, {40, 30});
  Blur(canvas, 2);
  for (int i = 0; i < 150; ++i) {
    const double radius = 0.5 + 6 * std::pow(canvas.Chance.Unit(), 3);
    const QPointF at(canvas.Chance.Unit() * canvas.Width, canvas.Chance.Unit() * 100);
    canvas.Paint.setBrush(WithAlpha(Qt::black, 0.22));
    canvas.Paint.drawEllipse(at + QPointF(0.12, 0.2) * radius, radius * 1.04, radius);
    QRadialGradient drop(at - QPointF(0.1, 0.25) * radius, radius * 1.15);
    drop.setColorAt(0, Mix(color, Qt::black, 0.35));
    drop.setColorAt(0.7, Mix(color, Qt::white, 0.12));
    drop.setColorAt(1, Mix(color, Qt::white, 0.6));
    canvas.Paint.setBrush(drop);
    canvas.Paint.drawEllipse(at, radius, radius * 0.96);
    canvas.Paint.setBrush(WithAlpha(Qt::white, 0.9));
    canvas.Paint.drawEllipse(at - QPointF(0.38, 0.42) * radius, radius * 0.17, radius * 0.12);
  }
  Develop(canvas, 0.4, 5);
}

void PaintFruit(Canvas& canvas, const Light& light) {
  Q_UNUSED(light);
  Shade(canvas, {0, 0, canvas.Width, 62}, {{0, QColor(0x2e2a2c)}, {1, QColor(0x5d4d45)}});
  Glow(canvas, {canvas.Width * 0.2, 10}, 90, WithAlpha(QColor(0xffd9a0), 0.4));
  Shade(canvas, {0, 60, canvas.Width, 40}, {{0, QColor(0x6d472a)}, {1, QColor(0x3c2415)}});
  QPainterPath table;
  table.addRect(0, 60, canvas.Width, 40);
  Texture(canvas, table, {30, 1.1}, 0.8);
  const QList<QColor> colors{QColor(0xe08a1c), QColor(0xb8322a), QColor(0xc9b32f), QColor(0x7f9a35),
                             QColor(0xd96f2e)};
  const double middle = canvas.Width / 2;
  for (const double back : {-26.0, -5.0, 17.0, 31.0}) {
    PaintBall(canvas, {middle + back, 56}, canvas.Chance.Between(11, 13.5),
              colors[static_cast<int>(canvas.Chance.Unit() * 5)]);
  }
  for (const double front : {-14.0, 8.0, -36.0}) {
    PaintBall(canvas, {middle + front, 70}, canvas.Chance.Between(11.5, 14),
              colors[static_cast<int>(canvas.Chance.Unit() * 5)]);
  }
  Develop(canvas, 0.55, 7);
}

void PaintPortrait(Canvas& canvas, const Light& light) {
  Shade(canvas, {0, 0, canvas.Width, 100}, light.Sky);
  Clouds(canvas, {0, 0, canvas.Width, 100}, light.Cloud, 0.5, {40, 22});
  const QPointF sun(canvas.Width * canvas.Chance.Between(0.3, 0.7), 52);
  Glow(canvas, sun, 80, WithAlpha(light.Sun.isValid() ? light.Sun : light.Sky.back().second, 0.9));
  Bokeh(canvas, 26, 6, {light.Sky.back().second, light.Haze, QColor(0xffe3a8)});
  Blur(canvas, 1.6);
  // A head in profile, the shoulders, and hair that the light shines through at its edge.
  const double size = 0.92;
  const double facing = canvas.Chance.Unit() < 0.5 ? 1 : -1;
  canvas.Paint.save();
  canvas.Paint.translate(canvas.Width * 0.5, 46);
  canvas.Paint.scale(facing * size, size);
  QPainterPath head(QPointF(-15, 60));
  head.cubicTo(-40, 40, -22, 30, -11, 27);
  head.cubicTo(-9, 22, -11, 19, -14, 14);
  head.cubicTo(-22, 4, -22, -24, -2, -28);
  head.cubicTo(10, -30, 17, -22, 17, -12);
  head.cubicTo(17.5, -9, 16.5, -8, 17.5, -5);
  head.lineTo(21.5, 2);
  head.cubicTo(22, 3.5, 20, 4, 18.5, 4.2);
  head.cubicTo(19.5, 6, 19.8, 7, 18.6, 8);
  head.cubicTo(19.8, 9, 19.4, 10.5, 18.4, 11);
  head.cubicTo(19, 15, 17, 18.5, 12, 18);
  head.cubicTo(8, 18, 6, 20, 6.5, 26);
  head.cubicTo(20, 32, 34, 36, 40, 62);
  head.closeSubpath();
  QPainterPath hair;
  hair.addEllipse(QPointF(-15, -3), 12.5, 14);
  QPainterPath bun;
  if (canvas.Chance.Unit() < 0.5) bun.addEllipse(QPointF(-24, -14), 7, 7);
  const QPainterPath shape = head.united(hair).united(bun);
  const QColor rim = light.Sun.isValid() ? light.Sun : light.Sky.back().second;
  for (const double width : {3.0, 1.8, 0.9}) {
    canvas.Paint.strokePath(shape, QPen(WithAlpha(rim, 0.22), width));
  }
  QLinearGradient dark(0, -28, 0, 60);
  dark.setColorAt(0, Mix(light.Near, rim, 0.12));
  dark.setColorAt(1, Mix(light.Near, Qt::black, 0.35));
  canvas.Paint.setBrush(dark);
  canvas.Paint.drawPath(shape);
  for (int strand = 0; strand < 40; ++strand) {
    const double along = canvas.Chance.Unit() * Turn / 2 + Turn / 2.6;
    const QPointF from(-8 + std::cos(along) * 17, -6 + std::sin(along) * 20);
    canvas.Paint.setPen(QPen(WithAlpha(rim, 0.3), 0.16));
    canvas.Paint.drawLine(
        from, from + QPointF(std::cos(along + 0.7), std::sin(along + 0.7)) * canvas.Chance.Between(1, 5));
  }
  canvas.Paint.restore();
  Develop(canvas, 0.45, 7);
}

void PaintWalkers(Canvas& canvas, const Light& light) {
  PaintSky(canvas, light, 74, 0.5);
  FillRidge(canvas, Ridge(canvas, 76, 14, 50, 0.3), Mix(light.Haze, light.Near, 0.4), light.Haze);
  const quint32 seed = canvas.Chance.Seed();
  const auto ground = [seed](double x) { return 86 - 12 * Noise(x / 70, 0, seed); };
  QPainterPath hill(QPointF(-1, 101));
  for (double x = -1; x < canvas.Width + 2; x += 0.5) hill.lineTo(x, ground(x));
  hill.lineTo(canvas.Width + 2, 101);
  const QColor dark = Mix(light.Near, Qt::black, 0.35);
  FillRidge(canvas, hill, dark, Qt::black);
  for (double x = 0; x < canvas.Width; x += 0.3) {
    canvas.Paint.setPen(QPen(dark, 0.15));
    canvas.Paint.drawLine(QPointF(x, ground(x) + 0.5), QPointF(x + canvas.Chance.Bell() * 1.4,
                                                               ground(x) - canvas.Chance.Between(0.5, 2.4)));
  }
  canvas.Paint.setPen(Qt::NoPen);
  const double from = canvas.Width * canvas.Chance.Between(0.35, 0.5);
  const double tall[] = {23, 21, 13, 15};
  const int count = 2 + static_cast<int>(canvas.Chance.Unit() * 3);
  for (int i = 0; i < count; ++i) {
    const double x = from + i * 10.5;
    PaintFigure(canvas, {x, ground(x) + 0.4}, tall[i], i % 2 ? 0.07 : 0.12, dark);
  }
  Tree(canvas, {canvas.Width * 0.14, ground(canvas.Width * 0.14) + 1}, 48, dark, QColor());
  Birds(canvas, {canvas.Width * 0.7, 22}, 8, dark);
  Develop(canvas, 0.35, 6);
}

}  // namespace veldrin::samples
