#include "catalogue/image_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

struct FitCase {
  const char* Name;
  QSize Pixels;
  TwipSize Fitted;
};

class Fits : public testing::TestWithParam<FitCase> {};

TEST_P(Fits, TheBox) {
  const platform::Picture picture({}, GetParam().Pixels);
  const TwipSize fitted = FitToBox(picture, ThumbnailBox);
  EXPECT_EQ(fitted, GetParam().Fitted) << fitted.Width << " by " << fitted.Height;
}

INSTANTIATE_TEST_SUITE_P(Pictures, Fits,
                         testing::Values(FitCase{"SquareByItsHeight", QSize(500, 500), {1935, 1935}},
                                         FitCase{"SmallIsEnlarged", QSize(10, 10), {1935, 1935}},
                                         FitCase{"PortraitByItsHeight", QSize(300, 600), {968, 1935}},
                                         FitCase{"WideByItsWidth", QSize(4000, 1000), {2535, 634}},
                                         FitCase{"LineByItsWidth", QSize(10000, 1), {2535, 0}}),
                         test::CaseName);

class ImageStoreTest : public testing::Test {
 protected:
  QString Image(int id) { return ImageFileName(Catalogue.Paths(), id, QStringLiteral("jpg")); }
  QImage Thumbnail(int id) { return QImage(ThumbFileName(Catalogue.Paths(), id)); }
  test::TestCatalogue Catalogue{false};
};

TEST_F(ImageStoreTest, ThumbnailsFollowTheFitAndTheScreen) {
  test::WritePicture(Image(7), QSize(600, 400));
  CreateThumbnail(Catalogue.Paths(), 7, QStringLiteral("jpg"), 1);
  EXPECT_EQ(Thumbnail(7).size(), QSize(169, 113));
  CreateThumbnail(Catalogue.Paths(), 7, QStringLiteral("jpg"), 2);
  EXPECT_EQ(Thumbnail(7).size(), QSize(338, 225));
  EXPECT_TRUE(ThumbFileName(Catalogue.Paths(), 7).endsWith(QStringLiteral("/Images/Thumbnails/7t.bmp")));
}

TEST_F(ImageStoreTest, ALineOfAPictureHasAThumbnail) {
  test::WritePicture(Image(8), QSize(3000, 1));
  CreateThumbnail(Catalogue.Paths(), 8, QStringLiteral("jpg"), 1);
  EXPECT_EQ(Thumbnail(8).size(), QSize(169, 1));
}

TEST_F(ImageStoreTest, FailsSilentlyAndLeavesNothing) {
  test::WriteFile(Image(2), "damaged");
  for (int id : {1, 2}) CreateThumbnail(Catalogue.Paths(), id, QStringLiteral("jpg"), 1);
  EXPECT_TRUE(QDir(Catalogue.Paths().ThumbDir).isEmpty());
}

TEST(ImageStore, TheExtensionBeginsAtTheFirstPoint) {
  EXPECT_EQ(GetFileExtension(QStringLiteral("a.b.jpg")), QStringLiteral("b.jpg"));
  EXPECT_EQ(GetFileExtension(QStringLiteral("a.JPG")), QStringLiteral("JPG"));
  EXPECT_EQ(GetFileExtension(QStringLiteral("a.")), QString());
  EXPECT_EQ(GetFileExtension(QStringLiteral("none")), QString());
}

}  // namespace
}  // namespace veldrin::catalogue
