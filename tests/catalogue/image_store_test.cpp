#include "catalogue/image_store.h"

#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

TEST(ImageStore, ThumbnailsFollowTheFitAndTheScreen) {
  test::TestCatalogue catalogue(false);
  const auto& paths = catalogue.Paths();
  const auto sizeOf = [&](int id, double scale) {
    CreateThumbnail(paths, id, "jpg", scale);
    return QImage(ThumbFileName(paths, id)).size();
  };
  test::WriteFile(ImageFileName(paths, 2, "jpg"), "damaged");
  for (int id : {1, 2}) CreateThumbnail(paths, id, "jpg", 1);
  EXPECT_TRUE(QDir(paths.ThumbDir).isEmpty()) << "a failure is silent and leaves nothing";
  test::WritePicture(ImageFileName(paths, 7, "jpg"), QSize(600, 400));
  EXPECT_EQ(sizeOf(7, 1), QSize(169, 113));
  EXPECT_EQ(sizeOf(7, 2), QSize(338, 225));
  test::WritePicture(ImageFileName(paths, 8, "jpg"), QSize(3000, 1));
  EXPECT_EQ(sizeOf(8, 1), QSize(169, 1));
  EXPECT_EQ(QDir(paths.ThumbDir).entryList(QDir::Files), QStringList({"7t.bmp", "8t.bmp"}));
}

TEST(ImageStore, NoTypeLeadsOutOfIt) {
  for (const char* type : {"", "v2.jpg", "a\nb"}) EXPECT_EQ(ImageName(7, type), QString("7.") + type);
  for (const QString& type : QStringList{"../", "/..", "x/../../y", QString(QChar::Null)})
    EXPECT_EQ(ImageName(7, type), "7.(none)");
}

}  // namespace
}  // namespace veldrin::catalogue
