#include "samples/brush.h"

#include <QRadialGradient>
#include <algorithm>
#include <cmath>

namespace veldrin::samples {

namespace {

double Lattice(int x, int y, quint32 seed) {
  quint32 h = seed ^ (static_cast<quint32>(x) * 0x8da6b343U) ^ (static_cast<quint32>(y) * 0xd8163841U);
  h = (h ^ (h >> 15)) * 0x2c1b3c6dU;
  h = (h ^ (h >> 12)) * 0x297a2d39U;
  return static_cast<double>(h ^ (h >> 15)) / 4294967296.0;
}

double Ease(double t) { return t * t * (3 - 2 * t); }

// Noise is computed on a coarse raster and drawn enlarged: at the size of the largest pictures a value for
// every pixel would take minutes.
constexpr int NoiseRaster = 700;

// An image of the area whose every point has the color that `paint` gives for the place, in units from its
// corner.
template <class Paint>
QImage Raster(const QRectF& area, Paint paint) {
  const double finest = std::max(area.width(), area.height()) / NoiseRaster;
  QImage image(std::max(1, static_cast<int>(area.width() / finest)),
               std::max(1, static_cast<int>(area.height() / finest)), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) line[x] = qPremultiply(paint(x * finest, y * finest));
  }
  return image;
}

QRgb Tone(const QColor& color, double alpha) {
  const double share = std::clamp(alpha, 0.0, 1.0);
  return qRgba(color.red(), color.green(), color.blue(), static_cast<int>(share * color.alpha()));
}

// Draws a raster over an area in a mode, within a path.
void DrawWithin(Canvas& canvas, const QPainterPath& path, QPainter::CompositionMode mode, const QRectF& area,
                const QImage& image) {
  canvas.Paint.save();
  canvas.Paint.setClipPath(path);
  canvas.Paint.setCompositionMode(mode);
  canvas.Paint.drawImage(area, image);
  canvas.Paint.restore();
}

// Sharp crests with slopes between them.
double Crests(double x, double y, quint32 seed) {
  double sum = 0;
  double weight = 0.5;
  for (quint32 i = 0; i < 5; ++i, weight *= 0.52, x *= 2.1, y *= 2.1) {
    sum += weight * (1 - std::abs(2 * Noise(x + 0.37 * y, y, seed + i) - 1));
  }
  return sum;
}

void Branch(Canvas& canvas, QPointF from, double angle, double length, double thickness, const QColor& wood,
            const QColor& leaves) {
  const QPointF to = from + QPointF(std::sin(angle) * length, -std::cos(angle) * length);
  canvas.Paint.setPen(QPen(wood, thickness, Qt::SolidLine, Qt::RoundCap));
  canvas.Paint.drawLine(from, to);
  if (thickness < 0.16) {
    if (!leaves.isValid()) return;
    canvas.Paint.setPen(Qt::NoPen);
    for (int i = 0; i < 3; ++i) {
      const double size = canvas.Chance.Between(0.5, 1.1) * length * 0.5;
      canvas.Paint.setBrush(WithAlpha(
          Mix(leaves, canvas.Chance.Unit() < 0.5 ? Qt::white : Qt::black, canvas.Chance.Between(0, 0.25)),
          0.75));
      canvas.Paint.drawEllipse(to + QPointF(canvas.Chance.Bell(), canvas.Chance.Bell()) * length * 0.6, size,
                               size * 0.8);
    }
    return;
  }
  const int forks = canvas.Chance.Unit() < 0.35 ? 3 : 2;
  for (int i = 0; i < forks; ++i) {
    const double spread = (i - (forks - 1) / 2.0) * 0.75 + canvas.Chance.Bell() * 0.25;
    Branch(canvas, to, angle * 0.9 + spread, length * canvas.Chance.Between(0.68, 0.86), thickness * 0.66,
           wood, leaves);
  }
}

}  // namespace

double Noise(double x, double y, quint32 seed) {
  const int left = static_cast<int>(std::floor(x));
  const int top = static_cast<int>(std::floor(y));
  const double tx = Ease(x - left);
  const double ty = Ease(y - top);
  const double above = std::lerp(Lattice(left, top, seed), Lattice(left + 1, top, seed), tx);
  const double below = std::lerp(Lattice(left, top + 1, seed), Lattice(left + 1, top + 1, seed), tx);
  return std::lerp(above, below, ty);
}

double CloudNoise(double x, double y, int octaves, quint32 seed) {
  double sum = 0;
  double weight = 0.5;
  for (int i = 0; i < octaves; ++i, weight /= 2, x *= 2.03, y *= 2.03) {
    sum += weight * Noise(x, y, seed + static_cast<quint32>(i) * 7919);
  }
  return sum;
}

Canvas::Canvas(QImage& picture, quint32 seed)
    : Picture(picture), Paint(&picture), Width(Height * picture.width() / picture.height()), Chance(seed) {
  Paint.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  Paint.scale(picture.height() / Height, picture.height() / Height);
  Paint.setPen(Qt::NoPen);
}

QColor Mix(const QColor& from, const QColor& to, double share) {
  const auto part = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
  return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue()),
          part(from.alpha(), to.alpha())};
}

QColor WithAlpha(QColor color, double alpha) {
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

void Shade(Canvas& canvas, const QRectF& area, const Stops& stops) {
  QLinearGradient gradient(area.topLeft(), area.bottomLeft());
  for (const auto& [place, color] : stops) gradient.setColorAt(place, color);
  canvas.Paint.fillRect(area, gradient);
}

void Glow(Canvas& canvas, QPointF at, double radius, const QColor& color) {
  QRadialGradient gradient(at, radius);
  gradient.setColorAt(0, color);
  gradient.setColorAt(0.25, WithAlpha(color, color.alphaF() * 0.45));
  gradient.setColorAt(0.6, WithAlpha(color, color.alphaF() * 0.12));
  gradient.setColorAt(1, WithAlpha(color, 0));
  canvas.Paint.save();
  canvas.Paint.setCompositionMode(QPainter::CompositionMode_Screen);
  canvas.Paint.setPen(Qt::NoPen);
  canvas.Paint.setBrush(gradient);
  canvas.Paint.drawEllipse(at, radius, radius);
  canvas.Paint.restore();
}

void Clouds(Canvas& canvas, const QRectF& area, const QColor& color, double cover, QSizeF grain) {
  const double least = 0.72 - 0.5 * cover;
  const quint32 seed = canvas.Chance.Seed();
  const auto paint = [&](double x, double y) {
    const double noise = CloudNoise(x / grain.width(), y / grain.height(), 5, seed);
    // Clouds thin out towards the horizon, where they are far away.
    return Tone(color, (noise - least) * 4 * (1 - 0.6 * y / area.height()));
  };
  canvas.Paint.drawImage(area, Raster(area, paint));
}

void Texture(Canvas& canvas, const QPainterPath& path, QSizeF grain, double strength) {
  const QRectF area = path.boundingRect().intersected({0, 0, canvas.Width, Canvas::Height});
  if (area.isEmpty()) return;
  const quint32 seed = canvas.Chance.Seed();
  const auto paint = [&](double x, double y) {
    const double noise = CloudNoise(x / grain.width(), y / grain.height(), 5, seed) - 0.48;
    return Tone(noise < 0 ? Qt::black : Qt::white, std::abs(noise) * 3 * strength);
  };
  DrawWithin(canvas, path, QPainter::CompositionMode_SoftLight, area, Raster(area, paint));
}

void Relief(Canvas& canvas, const QPainterPath& path, double grain, double strength) {
  const QRectF area = path.boundingRect().intersected({0, 0, canvas.Width, Canvas::Height});
  if (area.isEmpty()) return;
  const quint32 seed = canvas.Chance.Seed();
  const auto paint = [&](double x, double y) {
    // Faces are steep: they are drawn out downwards.
    const double across = x / grain;
    const double down = y / grain * 0.6;
    const double slope = Crests(across + 0.09, down + 0.05, seed) - Crests(across, down, seed);
    return Tone(slope < 0 ? QColor(20, 24, 40) : QColor(255, 248, 235), std::abs(slope) * 3.4 * strength);
  };
  DrawWithin(canvas, path, QPainter::CompositionMode_SourceOver, area, Raster(area, paint));
}

QPainterPath Ridge(Canvas& canvas, double base, double height, double grain, double sharp) {
  const quint32 seed = canvas.Chance.Seed();
  QPainterPath path(QPointF(-1, Canvas::Height + 1));
  const double step = canvas.Width / 900;
  for (double x = -1; x <= canvas.Width + 1; x += step) {
    const double rolling = Noise(x / grain, 0, seed) * 0.75 + Noise(x / grain * 2.3, 0, seed + 1) * 0.25;
    double peaks = 0;
    double weight = 0.55;
    for (double size = grain; weight > 0.01; size /= 2.1, weight *= 0.48) {
      peaks += weight * (1 - std::abs(2 * Noise(x / size, 7, seed + 2) - 1));
    }
    path.lineTo(x, base - height * std::lerp(rolling, peaks, sharp));
  }
  path.lineTo(canvas.Width + 1, Canvas::Height + 1);
  path.closeSubpath();
  return path;
}

void FillRidge(Canvas& canvas, const QPainterPath& ridge, const QColor& top, const QColor& foot) {
  const QRectF area = ridge.boundingRect();
  QLinearGradient gradient(0, area.top(), 0, std::min(area.top() + 45, Canvas::Height));
  gradient.setColorAt(0, top);
  gradient.setColorAt(1, foot);
  canvas.Paint.setPen(Qt::NoPen);
  canvas.Paint.setBrush(gradient);
  canvas.Paint.drawPath(ridge);
}

void Mirror(Canvas& canvas, double waterLine, double ripple, const QColor& tint) {
  QImage& picture = canvas.Picture;
  const double unit = picture.height() / Canvas::Height;
  const int line = static_cast<int>(waterLine * unit);
  const int depth = picture.height() - line;
  const QImage above = picture.copy(0, 0, picture.width(), line);
  const quint32 seed = canvas.Chance.Seed();
  canvas.Paint.save();
  canvas.Paint.resetTransform();
  for (int y = 0; y < depth; ++y) {
    const double far = (y + 1) / unit;  // Waves are longer where they are near.
    const double shift =
        (Noise(far * 6 / (1 + far * 0.15), 0, seed) - 0.5) * ripple * (0.3 + far * 0.08) * unit;
    const double wave =
        (Noise(far * 4 / (1 + far * 0.1), 3, seed) - 0.5) * ripple * (0.5 + far * 0.15) * unit;
    const int source = std::clamp(static_cast<int>(line - 1 - y * 0.95 + wave), 0, line - 1);
    canvas.Paint.drawImage(QRectF(-ripple * unit + shift, line + y, picture.width() + 2 * ripple * unit, 1),
                           above, QRectF(0, source, picture.width(), 1));
  }
  canvas.Paint.restore();
  Shade(canvas, {0, waterLine, canvas.Width, Canvas::Height - waterLine},
        {{0, WithAlpha(tint, 0.15)}, {1, WithAlpha(tint, 0.6)}});
  QPainterPath water;
  water.addRect(0, waterLine, canvas.Width, Canvas::Height - waterLine);
  Texture(canvas, water, {14, 0.9}, 0.35 * std::min(1.0, ripple));
}

void Blur(Canvas& canvas, double radius) {
  const double unit = canvas.Picture.height() / Canvas::Height;
  const QSize small = (canvas.Picture.size() / std::max(1.0, radius * unit)).expandedTo({2, 2});
  // Two steps up: a single one shows the coarse raster.
  QImage soft = canvas.Picture.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  soft = soft.scaled(small * 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
             .scaled(small * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  canvas.Paint.drawImage(QRectF(0, 0, canvas.Width, Canvas::Height), soft);
}

void Develop(Canvas& canvas, double vignette, double grain) {
  QRadialGradient corners(QPointF(canvas.Width / 2, 48), std::hypot(canvas.Width, Canvas::Height) / 2);
  corners.setColorAt(0.45, QColor(0, 0, 0, 0));
  corners.setColorAt(1, WithAlpha(Qt::black, vignette));
  canvas.Paint.fillRect(QRectF(0, 0, canvas.Width, Canvas::Height), corners);

  quint32 state = canvas.Chance.Seed() | 1U;
  const int most = static_cast<int>(grain * 2) + 1;
  QImage& picture = canvas.Picture;
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      state ^= state << 13;
      state ^= state >> 17;
      state ^= state << 5;
      const int noise = static_cast<int>((state >> 8) % static_cast<quint32>(most)) - most / 2;
      const auto lit = [noise](int value) { return std::clamp(value + noise, 0, 255); };
      line[x] = qRgb(lit(qRed(line[x])), lit(qGreen(line[x])), lit(qBlue(line[x])));
    }
  }
}

void Fir(Canvas& canvas, QPointF foot, double height, const QColor& color) {
  canvas.Paint.setPen(Qt::NoPen);
  canvas.Paint.setBrush(color);
  canvas.Paint.drawRect(
      QRectF(foot.x() - height * 0.015, foot.y() - height * 0.2, height * 0.03, height * 0.2));
  QPainterPath tree(foot - QPointF(0, height));
  constexpr int Tiers = 9;
  for (const int side : {1, -1}) {
    QList<QPointF> edge;
    for (int tier = 1; tier <= Tiers; ++tier) {
      const double down = static_cast<double>(tier) / Tiers;
      const double reach = height * 0.24 * down * canvas.Chance.Between(0.75, 1.15);
      const double y = foot.y() - height * (1 - down * 0.9);
      edge << QPointF(foot.x() + side * reach, y)
           << QPointF(foot.x() + side * reach * 0.45, y - height * 0.015);
    }
    if (side < 0) std::reverse(edge.begin(), edge.end());
    for (const QPointF& point : edge) tree.lineTo(point);
  }
  tree.closeSubpath();
  canvas.Paint.drawPath(tree);
}

void Tree(Canvas& canvas, QPointF foot, double height, const QColor& wood, const QColor& leaves) {
  Branch(canvas, foot, canvas.Chance.Bell() * 0.06, height * 0.24, std::max(0.5, height * 0.045), wood,
         leaves);
  canvas.Paint.setPen(Qt::NoPen);
}

void Birds(Canvas& canvas, QPointF around, int count, const QColor& color) {
  for (int i = 0; i < count; ++i) {
    const QPointF at = around + QPointF(canvas.Chance.Bell() * 14, canvas.Chance.Bell() * 7);
    const double span = canvas.Chance.Between(0.8, 1.7);
    const double lift = span * canvas.Chance.Between(0.2, 0.6);
    QPainterPath wings(at + QPointF(-span, -lift));
    wings.quadTo(at + QPointF(-span * 0.4, -lift), at);
    wings.quadTo(at + QPointF(span * 0.4, -lift), at + QPointF(span, -lift * 0.8));
    canvas.Paint.setPen(QPen(color, 0.28, Qt::SolidLine, Qt::RoundCap));
    canvas.Paint.setBrush(Qt::NoBrush);
    canvas.Paint.drawPath(wings);
  }
  canvas.Paint.setPen(Qt::NoPen);
}

void Bokeh(Canvas& canvas, int count, double size, const QList<QColor>& colors) {
  canvas.Paint.save();
  canvas.Paint.setCompositionMode(QPainter::CompositionMode_Screen);
  for (int i = 0; i < count; ++i) {
    const QPointF at(canvas.Chance.Unit() * canvas.Width, canvas.Chance.Unit() * Canvas::Height);
    const double radius = size * canvas.Chance.Between(0.4, 1.2);
    const QColor color = colors[static_cast<int>(canvas.Chance.Unit() * static_cast<double>(colors.size()))];
    const double alpha = canvas.Chance.Between(0.08, 0.4);
    QRadialGradient disc(at, radius);
    disc.setColorAt(0, WithAlpha(color, alpha * 0.7));
    disc.setColorAt(0.85, WithAlpha(color, alpha));
    disc.setColorAt(1, WithAlpha(color, 0));
    canvas.Paint.setBrush(disc);
    canvas.Paint.drawEllipse(at, radius, radius);
  }
  canvas.Paint.restore();
}

}  // namespace veldrin::samples
