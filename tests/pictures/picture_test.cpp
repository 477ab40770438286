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

TEST_F(PictureTest, TellsWhatIsNoPictureFromWhatIsTooLarge) {
  const auto good = [&](const char* name) {
    WritePicture(Path(name), QSize(300, 200));
    return ReadFile(Path(name));
  };
  const QByteArray jpeg = good("good.jpg"), bitmap = good("good.bmp"), webp = good("good.webp"),
                   tiff = good("good.tif");
  QImageWriter writer(Path("scans.jpg"));
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(QImage(Path("good.bmp"))));
  const QByteArray scans = ReadFile(Path("scans.jpg"));
  // The preview's end marker is not the picture's.
  const QByteArray preview = QByteArray::fromHex("ffe10008ffd8ffd9") + "xx";
  const qsizetype data = jpeg.indexOf("\xFF\xDA") + 14;
  const QByteArray lastScan = scans.mid(scans.lastIndexOf("\xFF\xDA")).chopped(2);
  const auto claiming = [](QByteArray file, const char* frame, const char* size) {
    return file.replace(file.indexOf(QByteArray::fromHex(frame)) + 5, 4, QByteArray::fromHex(size));
  };
  constexpr int None = 0;
  const std::tuple<const char*, int, QByteArray> cases[] = {
      {"empty.jpg", base::errInvalidPicture, {}},
      {"text.jpg", base::errInvalidPicture, "not a picture\n"},
      {"cut.jpg", None, jpeg.left(2) + preview + jpeg.mid(2, jpeg.size() / 2)},
      {"nearly.jpg", None, jpeg.chopped(2)},
      {"stray.jpg", None, jpeg.left(2) + preview + QByteArray(2, '\0') + jpeg.mid(2)},
      {"no data.jpg", base::errInvalidPicture, jpeg.left(2) + preview + jpeg.mid(2, data - 2)},
      {"header.jpg", base::errInvalidPicture, QByteArray(jpeg).replace(2, 20, QByteArray(20, 'x'))},
      {"claim.jpg", base::errOutOfMemory, claiming(jpeg, "ffc00011", "fde8fde8")},
      {"panorama.jpg", None, claiming(jpeg, "ffc00011", "7d007d00")},  // A gigapixel.
      {"scans.jpg", None, scans},
      {"coefficients.jpg", base::errOutOfMemory, claiming(scans, "ffc20011", "7d007d00")},
      {"many scans.jpg", base::errOutOfMemory,
       claiming(scans.chopped(2), "ffc20011", "1f401f40") + lastScan.repeated(250)},
      {"webp.jpg", None, webp},
      {"cut.webp", base::errInvalidPicture, webp.chopped(20)},
      {"tiff.jpg", None, tiff},
      {"cut.tif", base::errInvalidPicture, tiff.chopped(20)},
      {"cut.bmp", base::errInvalidPicture, bitmap.chopped(100)},
      {"header.bmp", base::errInvalidPicture, bitmap.left(30)},
      {"claim.bmp", base::errInvalidPicture,
       QByteArray(bitmap).replace(18, 8, QByteArray::fromHex("60ea000060ea0000"))},
      {"claim.tga", base::errInvalidPicture,
       QByteArray::fromHex("000002000000000000000000684268421800") + QByteArray(8, '\0') +
           QByteArray("TRUEVISION-XFILE.", 18)},
      {"script.mvg", base::errInvalidPicture, "push graphic-context\nimage over 0,0 0,0 'x'\n"},
      // A picture is known by its content, whatever the name.
      {"it's \"quoted\"\nbroken.dib", None, bitmap},
      {"日本語.gif", None, bitmap},
  };
  const auto load = [](const QString& path) { LoadPicture(path, [](QSize) { return QSize(30, 20); }); };
  for (const auto& [name, error, bytes] : cases) {
    SCOPED_TRACE(name);
    test::WriteFile(Path(name), bytes);
    EXPECT_EQ(test::ErrorOf([&, file = name] { load(Path(file)); }), error);
    EXPECT_EQ(IsPicture(Path(name)), error != base::errInvalidPicture);
  }
  QDir(Directory.path()).mkdir("directory.jpg");
  const QString unreadable = QStringLiteral("/proc/self/mem");
  EXPECT_EQ(test::ErrorOf([&] { load(Path("directory.jpg")); }), base::errInvalidPicture);
  EXPECT_EQ(test::ErrorOf([&] { load(Path("missing.jpg")); }), base::errFileNotFound);
  EXPECT_EQ(test::ErrorOf([&] { load(unreadable); }), base::errDeviceIO);
  EXPECT_EQ(test::ErrorOf([&] { IsPicture(unreadable); }), base::errDeviceIO);
}

// A bitmap of one red pixel in the ways that occur: its header's size, bits, packing, what stands between
// header and pixels, the pixel. `Change`: bytes of the file that are other than usual, and where.
TEST_F(PictureTest, ReadsEachKindOfBitmap) {
  struct Case {
    const char* Name;
    int Header, Bits, Packing;
    const char *Between, *Pixel;
    int Place = 0;
    const char* Change = "";
  };
  const char* const masks = "0000ff0000ff0000ff000000";
  const Case cases[] = {
      {"24 bits", 40, 24, 0, "", "0000ff00"},
      {"without filling", 40, 24, 0, "", "0000ff"},
      {"upper row first", 40, 24, 0, "", "0000ff00", 22, "ffffffff"},
      {"no plane", 40, 24, 0, "", "0000ff00", 26, "0000"},
      {"size and place too large", 40, 24, 0, "", "0000ff00", 2, "ffffff7f00000000ffffff7f"},
      {"size and place 0", 40, 24, 0, "", "0000ff00", 2, "000000000000000000000000"},
      {"more behind", 40, 24, 0, "", "0000ff00aabbccddeeff"},
      {"masks", 40, 32, 3, masks, "0000ff00"},
      {"masks of ten bits", 40, 32, 3, "0000f03f00fc0f00ff030000", "0000f03f"},
      {"masks with alpha", 40, 32, 6, "0000ff0000ff0000ff000000000000ff", "0000ffff"},
      {"version 2", 52, 16, 3, "", "007c0000", 54, "007c0000e00300001f000000"},
      {"version 5", 124, 32, 3, "", "0000ffff", 54, "0000ff0000ff0000ff000000000000ff"},
      {"few colours", 40, 4, 0, "000000000000ff00", "10000000", 46, "02"},
      {"runs", 40, 8, 1, "000000000000ff00", "01010001", 46, "02"},
      {"too many colours", 40, 1, 0, "000000000000ff00", "80000000", 46, "ffff"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    const QByteArray between = QByteArray::fromHex(c.Between);
    QByteArray file = "BM" + QByteArray(c.Header + 12, '\0') + between + QByteArray::fromHex(c.Pixel);
    for (const auto& [at, value] :
         std::initializer_list<std::pair<int, qsizetype>>{{10, 14 + c.Header + between.size()},
                                                          {14, c.Header},
                                                          {18, 1},
                                                          {22, 1},
                                                          {26, 1},
                                                          {28, c.Bits},
                                                          {30, c.Packing}})
      file[at] = static_cast<char>(value);
    const QByteArray change = QByteArray::fromHex(c.Change);
    file.replace(c.Place, change.size(), change);
    test::WriteFile(Path("a.bmp"), file);
    test::WriteFile(Path("a.dib"), file.mid(14));
    EXPECT_GE(LoadPicture(Path("a.bmp")).Image().pixelColor(0, 0).red(), 248);
    EXPECT_EQ(LoadPicture(Path("a.bmp")).Image().pixelColor(0, 0).blue(), 0);
    EXPECT_EQ(IsPicture(Path("a.dib")),
              c.Place != 26);  // Without a mark in front only what is surely a bitmap.
  }
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
