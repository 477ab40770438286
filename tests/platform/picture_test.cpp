#include "platform/picture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>

#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::platform {
namespace {

using test::ReadFile;
using test::WriteFile;
using test::WritePicture;

class PictureTest : public testing::Test {
 protected:
  QString Path(const QString& name) const { return Directory.filePath(name); }
  int ErrorOf(const QString& name) const {
    try {
      LoadPicture(Path(name));
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  QTemporaryDir Directory;
};

TEST_F(PictureTest, KeepsTheNaturalSizeWhenDecodedSmaller) {
  WritePicture(Path(QStringLiteral("a.jpg")), QSize(1600, 1200));
  const Picture picture = LoadPicture(Path(QStringLiteral("a.jpg")), [](QSize) { return QSize(160, 120); });
  EXPECT_EQ(picture.Image().size(), QSize(160, 120));
  EXPECT_EQ(picture.NaturalPixels(), QSize(1600, 1200));
  EXPECT_EQ(picture.Width(), 42333);
  EXPECT_EQ(picture.Height(), 31750);
}

TEST_F(PictureTest, StandsUprightByItsOrientationTag) {
  QImage image(400, 200, QImage::Format_RGB32);
  image.fill(Qt::red);
  QImageWriter writer(Path(QStringLiteral("turned.jpg")));
  writer.setTransformation(QImageIOHandler::TransformationRotate90);
  ASSERT_TRUE(writer.write(image));
  const Picture picture =
      LoadPicture(Path(QStringLiteral("turned.jpg")), [](QSize natural) { return natural / 4; });
  EXPECT_EQ(picture.NaturalPixels(), QSize(200, 400));
  EXPECT_EQ(picture.Image().size(), QSize(50, 100));
}

TEST_F(PictureTest, RefusesWhatIsNoWholePicture) {
  WritePicture(Path(QStringLiteral("good.jpg")), QSize(300, 200));
  WritePicture(Path(QStringLiteral("good.bmp")), QSize(300, 200));
  const QByteArray jpeg = ReadFile(Path(QStringLiteral("good.jpg")));
  const QByteArray bitmap = ReadFile(Path(QStringLiteral("good.bmp")));
  QByteArray claim = bitmap;
  claim.replace(18, 8, QByteArray::fromHex("60ea000060ea0000"));  // 60,000 by 60,000
  QByteArray header = jpeg;
  header.replace(2, 20, QByteArray(20, 'x'));
  QDir(Directory.path()).mkdir(QStringLiteral("directory.jpg"));

  struct Case {
    const char* Name;
    QByteArray Bytes;
  };
  for (const Case& bad :
       std::vector<Case>{{"empty.jpg", {}},
                         {"text.jpg", "not a picture\n"},
                         {"cut.jpg", jpeg.left(jpeg.size() / 2)},
                         {"nearly.jpg", jpeg.chopped(2)},
                         {"marker.jpg", jpeg.left(2)},
                         {"header.jpg", header},
                         {"cut.bmp", bitmap.left(bitmap.size() - 100)},
                         {"claim.bmp", claim},
                         {"header.bmp", bitmap.left(30)},
                         {"text.tga", "not a picture either, but long enough"},
                         {"cut.pcx", QByteArray::fromHex("0a0501080000000063006300")},
                         {"script.mvg", "push graphic-context\nimage over 0,0 0,0 'x'\n"}}) {
    WriteFile(Path(QLatin1String(bad.Name)), bad.Bytes);
    EXPECT_EQ(ErrorOf(QLatin1String(bad.Name)), errInvalidPicture) << bad.Name;
  }
  EXPECT_EQ(ErrorOf(QStringLiteral("directory.jpg")), errInvalidPicture);
  EXPECT_EQ(ErrorOf(QStringLiteral("missing.jpg")), errFileNotFound);
  EXPECT_EQ(ErrorOf(QStringLiteral("good.jpg")), 0);
}

TEST_F(PictureTest, ReadsAJpegWithStrayBytesAndWithAPreviewInItsHeader) {
  WritePicture(Path(QStringLiteral("good.jpg")), QSize(300, 200));
  const QByteArray jpeg = ReadFile(Path(QStringLiteral("good.jpg")));
  const QByteArray preview =
      QByteArray::fromHex("ffe10008") + QByteArray::fromHex("ffd8ffd9") + QByteArray(2, 'x');
  WriteFile(Path(QStringLiteral("stray.jpg")), jpeg.left(2) + preview + QByteArray(2, '\0') + jpeg.mid(2));
  EXPECT_EQ(ErrorOf(QStringLiteral("stray.jpg")), 0);
  // The preview's end marker is not the picture's.
  WriteFile(Path(QStringLiteral("cut.jpg")), jpeg.left(2) + preview + jpeg.mid(2, jpeg.size() / 2));
  EXPECT_EQ(ErrorOf(QStringLiteral("cut.jpg")), errInvalidPicture);
}

TEST_F(PictureTest, ReadsByContentWhateverTheName) {
  WritePicture(Path(QStringLiteral("a.bmp")), QSize(30, 20));
  for (const char* name : {"no extension", "two.dots.jpg", "it's \"quoted\"\nbroken.dib", "日本語.gif"}) {
    const QString path = Path(QString::fromUtf8(name));
    ASSERT_TRUE(QFile::copy(Path(QStringLiteral("a.bmp")), path));
    EXPECT_EQ(LoadPicture(path).NaturalPixels(), QSize(30, 20)) << name;
  }
}

TEST_F(PictureTest, ShowsAPhotographOfTwoHundredMegapixels) {
  QImage image(20000, 10000, QImage::Format_Grayscale8);
  image.fill(200);
  ASSERT_TRUE(image.save(Path(QStringLiteral("large.jpg"))));
  const Picture picture =
      LoadPicture(Path(QStringLiteral("large.jpg")), [](QSize) { return QSize(169, 85); });
  EXPECT_EQ(picture.NaturalPixels(), QSize(20000, 10000));
  EXPECT_EQ(picture.Image().size(), QSize(169, 85));
}

TEST_F(PictureTest, SavesABitmapOf24BitsOrNothing) {
  QImage image(10, 10, QImage::Format_ARGB32);
  image.fill(Qt::blue);
  SavePicture(image, Path(QStringLiteral("a.bmp")));
  EXPECT_EQ(ReadFile(Path(QStringLiteral("a.bmp"))).mid(28, 2), QByteArray::fromHex("1800"));
  EXPECT_THROW(SavePicture(image, Path(QStringLiteral("no/such/directory.bmp"))), RuntimeError);
}

}  // namespace
}  // namespace veldrin::platform
