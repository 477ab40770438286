#include "pictures/fit.h"

#include <algorithm>
#include <limits>

#include "base/runtime_error.h"
#include "base/units.h"

namespace veldrin::pictures {

using base::RoundToInt;

namespace {

// From HIMETRIC to twips, nearly: the factor by which the program has always drawn.
constexpr double HimetricPerTwip = 1.8;

QSize ToDevicePixels(TwipSize size, double pixelRatio) {
  const auto pixels = [&](int twips) {
    return std::max(1, RoundToInt(twips * pixelRatio / base::TwipsPerPixel));
  };
  return {pixels(size.Width), pixels(size.Height)};
}

}  // namespace

TwipSize FitToBox(int himetricWidth, int himetricHeight, TwipSize box) {
  const int naturalWidth = RoundToInt(himetricWidth / HimetricPerTwip);
  const int naturalHeight = RoundToInt(himetricHeight / HimetricPerTwip);
  if (naturalHeight == 0) throw base::RuntimeError(11, QStringLiteral("Division by zero."));
  TwipSize fitted;
  fitted.Height = box.Height;
  // A picture of a million by one pixel would be wider than numbers go.
  fitted.Width = RoundToInt(std::min<double>(
      std::numeric_limits<int>::max(), naturalWidth * (static_cast<double>(box.Height) / naturalHeight)));
  if (box.Width < fitted.Width) {
    const double ratio = static_cast<double>(box.Width) / fitted.Width;
    fitted.Width = box.Width;
    fitted.Height = RoundToInt(fitted.Height * ratio);
  }
  return fitted;
}

TwipSize FitToBox(const Picture& picture, TwipSize box) {
  return FitToBox(picture.Width(), picture.Height(), box);
}

Picture LoadPictureForBox(const QString& path, TwipSize box, double pixelRatio) {
  return LoadPicture(
      path, [&](QSize natural) { return ToDevicePixels(FitToBox(Picture({}, natural), box), pixelRatio); });
}

Picture LoadFittedPicture(const QString& path, TwipSize box, double pixelRatio) {
  const Picture picture = LoadPictureForBox(path, box, pixelRatio);
  const QSize size = ToDevicePixels(FitToBox(picture, box), pixelRatio);
  return {picture.Image().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
          picture.NaturalPixels()};
}

}  // namespace veldrin::pictures
