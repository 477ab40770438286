#include "browse/external_viewer.h"

#include "browse/thumbnail_page.h"
#include "catalogue/image_store.h"
#include "support/catalogue_list.h"

namespace veldrin::browse {
namespace {

// A desktop of the test's own: one program, a script that is registered for JPEG files and paints the one it
// is given red in the year 2030.
void MakeDesktop(const QString& directory) {
  const QString script = directory + "/paint photo.sh";
  QDir().mkpath(directory + "/applications");
  QDir().mkpath(directory + "/system");
  test::WritePicture(directory + "/red.jpg", QSize(60, 40), Qt::red);
  test::WriteFile(
      script,
      "#!/bin/sh\ncp \"$(dirname \"$0\")/red.jpg\" \"$1\"\n"
      "touch -d '2030-02-03 04:05:06' \"$1\"\necho \"$1\" > \"$0.part\"; mv \"$0.part\" \"$0.log\"\n");
  QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  test::WriteFile(directory + "/applications/painter.desktop",
                  "[Desktop Entry]\nType=Application\nName=Painter\nMimeType=image/jpeg;\nExec=\"" +
                      script.toUtf8() + "\" %f\n");
  test::WriteFile(directory + "/applications/mimeapps.list",
                  "[Default Applications]\nimage/jpeg=painter.desktop\n");
  QFile::link("/usr/share/mime", directory + "/system/mime");
  qputenv("XDG_DATA_HOME", directory.toUtf8());
  qputenv("XDG_CONFIG_HOME", directory.toUtf8() + "/none");
  qputenv("XDG_DATA_DIRS", directory.toUtf8() + "/system");
}

struct ExternalViewerTest : testing::Test, test::CatalogueList {
  // GIO reads the directories once in a process.
  static void SetUpTestSuite() { MakeDesktop(Desktop.path()); }
  // A photo of the extension, dated by its file as storing does it.
  void OpenPhoto(const QString& imageType) {
    Image = catalogue::ImageFileName(Catalogue.Paths(), 5, imageType);
    Catalogue.AddPhoto(5, "It's", {}, QSize(60, 40));
    QFile::rename(catalogue::ImageFileName(Catalogue.Paths(), 5, "jpg"), Image);
    Catalogue.Execute({QStringLiteral("UPDATE tblPhotos SET ImageType = '%1', LastModifyDate = #%2#")
                           .arg(imageType, engine::DateToStore(catalogue::GetFileDate(Image)))});
    Open();
  }
  QStringList Notes() { return Catalogue.Rows("SELECT PhotoID, ImageType FROM CheckPhotos"); }
  QString ModifyDate() { return Catalogue.Rows("SELECT LastModifyDate FROM tblPhotos")[0].left(10); }
  // Whether the page's first thumbnail is the painted one.
  bool ThumbnailIsRed() {
    const QImage thumbnail(Thumbnail);
    return thumbnail.pixelColor(thumbnail.width() - 5, thumbnail.height() - 5).red() > 200;
  }

  static inline const QTemporaryDir Desktop;
  const QString Thumbnail = catalogue::ThumbFileName(Catalogue.Paths(), 5);
  QString Image;
  ThumbnailPage Page{Data1, Catalogue.Engine(), Catalogue.Paths(), &Window};
  ExternalViewer Viewer{Data1, Catalogue.Engine(), Catalogue.Paths(), Window};
};

TEST_F(ExternalViewerTest, AChangeByTheRegisteredProgramComesBackAsANewThumbnail) {
  const QString log = Desktop.filePath("paint photo.sh.log");
  QFile::remove(log);
  OpenPhoto("jpg");
  Page.ShowThumbnails(0);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Page.IsComplete(); }));
  ASSERT_FALSE(ThumbnailIsRed());
  Viewer.ViewBttn_Click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(log); }, 20'000));
  EXPECT_EQ(test::ReadFile(log), Image.toUtf8() + '\n');
  EXPECT_EQ(Notes(), QStringList("5|jpg"));
  Page.ShowThumbnails(0);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Page.IsComplete(); }));
  EXPECT_TRUE(ThumbnailIsRed());
  EXPECT_EQ(ModifyDate(), "2030-02-03");
  EXPECT_EQ(Notes(), QStringList());
  ASSERT_TRUE(QFile::remove(Image) && QDir().mkdir(Image));
  Viewer.ViewBttn_Click();
  EXPECT_EQ(Notes(), QStringList()) << "without an image nothing happens";
}

// The file is of 2010, or has gone; two notes are written, of which the first one counts.
TEST_F(ExternalViewerTest, ACheckedPhotoIsComparedWithItsFirstNote) {
  const std::tuple<const char*, bool, const char*, bool> cases[] = {
      {"2010-01-01T12:00:00Z", true, "2010-01-01", true},
      {"2009-01-01T12:00:00Z", true, "2010-01-01", false},
      {"", true, "2010-01-01", false},
      {"2010-01-01T12:00:00Z", false, "1899-12-30", false},
      {"", false, "1899-12-30", false}};
  OpenPhoto("jpg");
  QFile file(Image);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2010, 1, 1), QTime(12, 0)), QFile::FileModificationTime));
  const auto database = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  for (const auto& [firstNote, fileIsThere, dateAfter, thumbnailStays] : cases) {
    if (!fileIsThere) QFile::remove(Image);
    Catalogue.Execute({"UPDATE tblPhotos SET LastModifyDate = #2010-01-01 12:00:00#"});
    test::WriteFile(Thumbnail, "old");
    for (const char* note : {firstNote, "2022-02-02T00:00:00Z"}) {
      RecordCheckPhoto(*database, 5, "jpg", QDateTime::fromString(note, Qt::ISODate));
    }
    RefreshCheckedPhoto(*database, Catalogue.Paths(), 5);
    EXPECT_EQ(ModifyDate(), dateAfter) << firstNote;
    EXPECT_EQ(QFile::exists(Thumbnail), thumbnailStays) << firstNote;
    EXPECT_EQ(Notes(), QStringList());
  }
}

}  // namespace
}  // namespace veldrin::browse
