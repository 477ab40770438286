#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/picture.h"
#include "samples/sample_files.h"

namespace veldrin {
namespace {

struct SampleCase {
  const char* Name;
  QSize Size;
  int Variant;
};

class SampleFiles : public testing::TestWithParam<SampleCase> {};

// Upright, the upper left quarter is red and the rest blue.
QImage Marked(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(20, 40, 200));
  for (int y = 0; y < size.height() / 2; ++y) {
    for (int x = 0; x < size.width() / 2; ++x) image.setPixelColor(x, y, QColor(210, 30, 20));
  }
  return image;
}

TEST_P(SampleFiles, LoadUpright) {
  const auto [name, size, variant] = GetParam();
  const QTemporaryDir directory;
  const QString path = directory.filePath(QLatin1String(name));
  samples::WriteSample(Marked(size), path, variant);

  const platform::Picture picture = platform::LoadPicture(path);

  ASSERT_EQ(picture.NaturalPixels(), size);
  ASSERT_EQ(picture.Image().size(), size);
  for (const bool right : {false, true}) {
    for (const bool below : {false, true}) {
      const QColor color =
          picture.Image().pixelColor(size.width() * (right ? 3 : 1) / 4, size.height() * (below ? 3 : 1) / 4);
      EXPECT_EQ(color.red() > color.blue(), !right && !below) << right << below;
    }
  }
}

const SampleCase Types[] = {
    {"plain.jpg", {320, 200}, 0},       {"half_turn.jpg", {320, 200}, 3}, {"turned_right.jpg", {200, 320}, 6},
    {"turned_left.jpg", {200, 320}, 8}, {"windows.bmp", {321, 200}, 0},   {"windows.dib", {321, 200}, 0},
    {"indexed.gif", {320, 200}, 0},     {"odd.pcx", {321, 200}, 0},       {"version2.tga", {321, 200}, 0},
    {"version1.tga", {200, 320}, 1},    {"wide.pcd", {768, 512}, 0},      {"tall.pcd", {512, 768}, 0},
};

std::string CaseName(const testing::TestParamInfo<SampleCase>& tested) {
  return QString::fromLatin1(tested.param.Name).replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Types, SampleFiles, testing::ValuesIn(Types), CaseName);

}  // namespace
}  // namespace veldrin
