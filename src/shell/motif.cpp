#include "shell/motif.h"

#include <QMouseEvent>
#include <QPainterPath>
#include <QPixmap>
#include <QRandomGenerator>
#include <QVector>

namespace veldrin::shell {

namespace {

/// A range of mountains by its corners, in parts of the area above the shore.
struct Range {
  QVector<QPointF> Corners;
  double Roughness;
  QColor Top;
  QColor Foot;
};

const QVector<Range>& Ranges() {
  static const QVector<Range> ranges = {
      {{{0, 0.66}, {0.14, 0.5}, {0.3, 0.64}, {0.45, 0.41}, {0.6, 0.58}, {0.78, 0.46}, {1, 0.62}},
       0.05,
       QColor(0x9d, 0xae, 0xc4),
       QColor(0xe6, 0xc7, 0xb0)},
      {{{0, 0.58}, {0.1, 0.66}, {0.24, 0.47}, {0.42, 0.72}, {0.58, 0.84}, {0.8, 0.7}, {1, 0.78}},
       0.07,
       QColor(0x55, 0x71, 0x90),
       QColor(0xb3, 0x9d, 0x9f)},
      {{{0, 0.74}, {0.18, 0.86}, {0.38, 0.93}, {0.56, 0.96}, {0.76, 0.82}, {0.9, 0.58}, {1, 0.5}},
       0.06,
       QColor(0x2c, 0x46, 0x60),
       QColor(0x4d, 0x5f, 0x73)},
  };
  return ranges;
}

// Splits each side of the outline at its middle, a little off the line, until it looks grown. The same at
// each call.
QVector<QPointF> Roughen(QVector<QPointF> outline, double roughness, quint32 seed) {
  QRandomGenerator random(seed);
  for (int round = 0; round < 6; ++round) {
    QVector<QPointF> finer;
    for (qsizetype i = 0; i + 1 < outline.size(); ++i) {
      const QPointF middle = (outline[i] + outline[i + 1]) / 2;
      const double length = outline[i + 1].x() - outline[i].x();
      finer << outline[i] << middle + QPointF(0, (random.generateDouble() - 0.5) * roughness * length * 8);
    }
    finer << outline.back();
    outline = finer;
  }
  return outline;
}

void PaintSky(QPainter& painter, const QRectF& sky) {
  QLinearGradient air(sky.topLeft(), sky.bottomLeft());
  air.setColorAt(0, QColor(0x3f, 0x6a, 0x9f));
  air.setColorAt(0.5, QColor(0x96, 0xad, 0xc6));
  air.setColorAt(0.85, QColor(0xf4, 0xcf, 0xa8));
  air.setColorAt(1, QColor(0xf8, 0xdf, 0xbe));
  painter.fillRect(sky, air);

  const QPointF sun(sky.left() + sky.width() * 0.66, sky.top() + sky.height() * 0.52);
  QRadialGradient glow(sun, sky.height() * 0.7);
  glow.setColorAt(0, QColor(255, 240, 205, 190));
  glow.setColorAt(0.35, QColor(255, 226, 180, 80));
  glow.setColorAt(1, QColor(255, 226, 180, 0));
  painter.fillRect(sky, glow);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xff, 0xf6, 0xdf));
  const double radius = sky.height() * 0.085;
  painter.drawEllipse(sun, radius, radius);
}

void PaintRanges(QPainter& painter, const QRectF& sky) {
  quint32 seed = 41;
  for (const Range& range : Ranges()) {
    QPainterPath path(sky.bottomLeft());
    for (const QPointF& point : Roughen(range.Corners, range.Roughness, seed++)) {
      path.lineTo(sky.left() + point.x() * sky.width(), sky.top() + point.y() * sky.height());
    }
    path.lineTo(sky.bottomRight());
    path.closeSubpath();
    QLinearGradient color(0, sky.top() + sky.height() * 0.4, 0, sky.bottom());
    color.setColorAt(0, range.Top);
    color.setColorAt(1, range.Foot);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(path);
  }
}

void PaintLake(QPainter& painter, const QRectF& area, const QRectF& sky) {
  const QRectF lake(sky.bottomLeft(), area.bottomRight());
  painter.save();
  painter.setClipRect(lake, Qt::IntersectClip);
  painter.translate(0, 2 * sky.bottom());
  painter.scale(1, -1);
  PaintSky(painter, sky);
  PaintRanges(painter, sky);
  painter.restore();

  QLinearGradient water(lake.topLeft(), lake.bottomLeft());
  water.setColorAt(0, QColor(0x8d, 0x86, 0x8f, 90));
  water.setColorAt(1, QColor(0x1d, 0x36, 0x52, 235));
  painter.fillRect(lake, water);

  // The shore hides the seam between the two halves.
  painter.fillRect(
      QRectF(lake.left(), lake.top() - lake.height() * 0.008, lake.width(), lake.height() * 0.016),
      QColor(0x3d, 0x51, 0x67));

  // The sun's way on the water: strokes that grow longer and fainter towards the eye.
  painter.setPen(Qt::NoPen);
  const double centre = area.left() + area.width() * 0.66;
  for (int i = 0; i < 9; ++i) {
    const double part = i / 9.0;
    const double width = area.width() * (0.028 + 0.05 * part) * (i % 2 == 0 ? 1 : 0.62);
    const double height = std::max(lake.height() * 0.014, 0.5);
    const double y = lake.top() + lake.height() * (0.06 + 0.62 * part * (0.55 + 0.45 * part));
    const double shift = area.width() * 0.012 * (i % 3 - 1);
    painter.setBrush(QColor(255, 231, 192, static_cast<int>(170 * (1 - part))));
    painter.drawRoundedRect(QRectF(centre + shift - width / 2, y, width, height), height / 2, height / 2);
  }
}

}  // namespace

void PaintLandscape(QPainter& painter, const QRectF& area) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(area, Qt::IntersectClip);
  const QRectF sky(area.left(), area.top(), area.width(), area.height() * 0.72);
  PaintSky(painter, sky);
  PaintRanges(painter, sky);
  PaintLake(painter, area, sky);
  painter.restore();
}

void PaintPrints(QPainter& painter, const QRectF& area) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(area.topLeft());
  painter.scale(area.width() / 128, area.height() / 128);
  painter.setPen(Qt::NoPen);
  const QRectF sheet(17, 23, 94, 84);
  for (const auto& [angle, color] :
       {std::pair{-11, QColor(0x7d, 0x97, 0xad)}, {-5, QColor(0xc3, 0xd0, 0xda)}}) {
    painter.save();
    painter.translate(64, 64);
    painter.rotate(angle);
    painter.translate(-64, -64);
    painter.setBrush(color);
    painter.drawRoundedRect(sheet, 6, 6);
    painter.restore();
  }
  painter.setBrush(QColor(0x2b, 0x3d, 0x4f, 50));
  painter.drawRoundedRect(sheet.translated(1, 3), 6, 6);
  painter.setBrush(QColor(0xfb, 0xfa, 0xf6));
  painter.drawRoundedRect(sheet, 6, 6);
  PaintLandscape(painter, QRectF(25, 31, 78, 58));
  painter.restore();
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintPrints(painter, QRectF(0, 0, size, size));
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

void MotifBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  Paint(painter, rect());
}

void MotifBox::mousePressEvent(QMouseEvent* event) { event->accept(); }

void MotifBox::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) Q_EMIT Click();
}

}  // namespace veldrin::shell
