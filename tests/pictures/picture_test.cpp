#include "pictures/picture.h"

#include <QImageWriter>
#include <QPainter>

#include "pictures/fit.h"
#include "samples/sample_files.h"
#include "support/test_support.h"

namespace veldrin::pictures {
namespace {

using test::ReadFile;
using test::WritePicture;

struct PictureTest : testing::Test {
  QString Path(const QString& name) const { return Directory.filePath(name); }
  int ErrorOf(const QString& name) const {
    return test::ErrorOf([&] { LoadPicture(Path(name)); });
  }
  int ErrorOf(const QString& name, const QByteArray& bytes) const {
    test::WriteFile(Path(name), bytes);
    return ErrorOf(name);
  }
  QTemporaryDir Directory;
};

TEST_F(PictureTest, KeepsTheNaturalSizeWhenDecodedSmallerAndTurned) {
  QImage image(400, 200, QImage::Format_RGB32);
  image.fill(Qt::red);
  QImageWriter writer(Path("turned.jpg"));
  writer.setTransformation(QImageIOHandler::TransformationRotate90);
  ASSERT_TRUE(writer.write(image));
  const Picture picture = LoadPicture(Path("turned.jpg"), [](QSize natural) { return natural / 4; });
  EXPECT_EQ(picture.NaturalPixels(), QSize(200, 400));
  EXPECT_EQ(picture.Image().size(), QSize(50, 100));
  EXPECT_EQ(picture.Width(), 5292);
}

TEST_F(PictureTest, RefusesWhatIsNoWholePicture) {
  WritePicture(Path("good.jpg"), QSize(300, 200));
  WritePicture(Path("good.bmp"), QSize(300, 200));
  const QByteArray jpeg = ReadFile(Path("good.jpg"));
  const QByteArray bitmap = ReadFile(Path("good.bmp"));
  const QByteArray claim = QByteArray(bitmap).replace(18, 8, QByteArray::fromHex("60ea000060ea0000"));
  // The preview's end marker is not the picture's.
  const QByteArray preview = QByteArray::fromHex("ffe10008ffd8ffd9") + "xx";
  const std::pair<const char*, QByteArray> cases[] = {
      {"empty.jpg", {}},
      {"text.jpg", "not a picture\n"},
      {"cut.jpg", jpeg.left(2) + preview + jpeg.mid(2, jpeg.size() / 2)},
      {"nearly.jpg", jpeg.chopped(2)},
      {"marker.jpg", jpeg.left(2)},
      {"header.jpg", QByteArray(jpeg).replace(2, 20, QByteArray(20, 'x'))},
      {"cut.bmp", bitmap.chopped(100)},
      {"claim.bmp", claim},  // 60,000 by 60,000
      {"header.bmp", bitmap.left(30)},
      {"text.tga", "not a picture either, but long enough"},
      {"cut.pcx", QByteArray::fromHex("0a0501080000000063006300")},
      {"script.mvg", "push graphic-context\nimage over 0,0 0,0 'x'\n"},
  };
  for (const auto& [name, bytes] : cases) EXPECT_EQ(ErrorOf(name, bytes), base::errInvalidPicture) << name;
  QDir(Directory.path()).mkdir("directory.jpg");
  EXPECT_EQ(ErrorOf("directory.jpg"), base::errInvalidPicture);
  EXPECT_EQ(ErrorOf("missing.jpg"), base::errFileNotFound);
  // A picture is known by its content, whatever the name.
  for (const char* name : {"good.jpg", "no extension", "it's \"quoted\"\nbroken.dib", "日本語.gif"}) {
    EXPECT_EQ(ErrorOf(name, bitmap), 0) << name;
  }
  EXPECT_EQ(ErrorOf("stray.jpg", jpeg.left(2) + preview + QByteArray(2, '\0') + jpeg.mid(2)), 0);
}

TEST_F(PictureTest, ShowsAPhotographOfTwoHundredMegapixels) {
  QImage image(20000, 10000, QImage::Format_Grayscale8);
  image.fill(200);
  ASSERT_TRUE(image.save(Path("large.jpg")));
  const Picture picture = LoadPicture(Path("large.jpg"), [](QSize) { return QSize(169, 85); });
  EXPECT_EQ(picture.NaturalPixels(), QSize(20000, 10000));
  EXPECT_EQ(picture.Image().size(), QSize(169, 85));
}

TEST_F(PictureTest, SavesABitmapOf24BitsOrNothing) {
  QImage image(10, 10, QImage::Format_ARGB32);
  image.fill(Qt::blue);
  SavePicture(image, Path("a.bmp"));
  EXPECT_EQ(ReadFile(Path("a.bmp")).mid(28, 2), QByteArray::fromHex("1800"));
  EXPECT_THROW(SavePicture(image, Path("no/such/directory.bmp")), base::RuntimeError);
}

// Upright, the upper left quarter is red and the rest blue.
QImage Marked(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(20, 40, 200));
  QImage quarter(size / 2, QImage::Format_RGB32);
  quarter.fill(QColor(210, 30, 20));
  QPainter(&image).drawImage(0, 0, quarter);
  return image;
}

TEST_F(PictureTest, ReadsEachFormatUpright) {
  const std::tuple<const char*, QSize, int> types[] = {
      {"plain.jpg", {320, 200}, 0},        {"half_turn.jpg", {320, 200}, 3},
      {"turned_right.jpg", {200, 320}, 6}, {"turned_left.jpg", {200, 320}, 8},
      {"windows.bmp", {321, 200}, 0},      {"windows.dib", {321, 200}, 0},
      {"indexed.gif", {320, 200}, 0},      {"odd.pcx", {321, 200}, 0},
      {"version2.tga", {321, 200}, 0},     {"version1.tga", {200, 320}, 1},
      {"wide.pcd", {768, 512}, 0},         {"tall.pcd", {512, 768}, 0},
  };
  for (const auto& [name, size, variant] : types) {
    SCOPED_TRACE(name);
    samples::WriteSample(Marked(size), Path(name), variant);
    const Picture picture = LoadPicture(Path(name));
    ASSERT_EQ(picture.NaturalPixels(), size);
    ASSERT_EQ(picture.Image().size(), size);
    for (const QPoint quarter : {QPoint(1, 1), QPoint(3, 1), QPoint(1, 3), QPoint(3, 3)}) {
      const QColor color =
          picture.Image().pixelColor(size.width() * quarter.x() / 4, size.height() * quarter.y() / 4);
      EXPECT_EQ(color.red() > color.blue(), quarter == QPoint(1, 1)) << quarter.x() << quarter.y();
    }
  }
}

TEST(Fit, APictureFitsTheBox) {
  const std::pair<QSize, TwipSize> cases[] = {{{500, 500}, {1935, 1935}},
                                              {{10, 10}, {1935, 1935}},
                                              {{300, 600}, {968, 1935}},
                                              {{4000, 1000}, {2535, 634}},
                                              {{10000, 1}, {2535, 0}}};
  for (const auto& [pixels, fitted] : cases) {
    EXPECT_EQ(FitToBox(Picture({}, pixels), {2535, 1935}), fitted) << pixels.width();
  }
}

}  // namespace
}  // namespace veldrin::pictures
