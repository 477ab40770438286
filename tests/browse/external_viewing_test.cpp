#include "browse/external_viewing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTest>
#include <QWidget>

#include "browse/thumbnail_page.h"
#include "catalogue/image_store.h"
#include "support/test_support.h"

namespace veldrin::browse {
namespace {

// A desktop of its own: one program, a script that is registered for JPEG files and paints the one it is
// given red in the year 2030. GIO reads the directories once in a process.
const QTemporaryDir& Desktop() {
  static const QTemporaryDir desktop;
  static const bool made = [] {
    const QString data = desktop.path() + QStringLiteral("/data");
    const QString script = desktop.path() + QStringLiteral("/paint photo.sh");
    QDir().mkpath(data + QStringLiteral("/applications"));
    QDir().mkpath(data + QStringLiteral("/system"));
    test::WritePicture(desktop.path() + QStringLiteral("/red.jpg"), QSize(60, 40), Qt::red);
    test::WriteFile(script,
                    "#!/bin/sh\ncp \"$(dirname \"$0\")/red.jpg\" \"$1\"\n"
                    "touch -d '2030-02-03 04:05:06' \"$1\"\necho \"$1\" >> \"$0.log\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    test::WriteFile(data + QStringLiteral("/applications/painter.desktop"),
                    "[Desktop Entry]\nType=Application\nName=Painter\nMimeType=image/jpeg;\nExec=\"" +
                        script.toUtf8() + "\" %f\n");
    test::WriteFile(data + QStringLiteral("/applications/mimeapps.list"),
                    "[Default Applications]\nimage/jpeg=painter.desktop\n");
    QFile::link(QStringLiteral("/usr/share/mime"), data + QStringLiteral("/system/mime"));
    qputenv("XDG_DATA_HOME", data.toUtf8());
    qputenv("XDG_CONFIG_HOME", data.toUtf8() + "/none");
    qputenv("XDG_DATA_DIRS", data.toUtf8() + "/system");
    return true;
  }();
  EXPECT_TRUE(made);
  return desktop;
}

class ExternalViewingTest : public testing::Test {
 protected:
  ExternalViewingTest()
      : Log(Desktop().path() + QStringLiteral("/paint photo.sh.log")),
        Data1(Catalogue.Engine()),
        Page(Data1, Catalogue.Engine(), Catalogue.Paths(), &Tab),
        Viewing(Data1, Catalogue.Engine(), Catalogue.Paths(), Tab) {
    QFile::remove(Log);
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
  }

  // A photo of the extension, dated by its file as storing does it.
  void Open(const QString& imageType) {
    Catalogue.AddPhoto(5, QStringLiteral("It's"), {}, QSize(60, 40));
    QFile::rename(Image(QStringLiteral("jpg")), Image(imageType));
    Catalogue.Execute({QStringLiteral("UPDATE tblPhotos SET ImageType = '%1', LastModifyDate = #%2#")
                           .arg(imageType, platform::DateToStore(catalogue::GetFileDate(Image(imageType))))});
    Data1.Refresh();
  }
  QString Image(const QString& imageType) {
    return catalogue::ImageFileName(Catalogue.Paths(), 5, imageType);
  }
  QString Notes() {
    return Catalogue.Rows(QStringLiteral("SELECT * FROM CheckPhotos")).join(QLatin1Char(' '));
  }
  QString ModifyDate() { return Catalogue.Value(QStringLiteral("SELECT LastModifyDate FROM tblPhotos")); }
  // Whether the page's first thumbnail is the painted one.
  bool ThumbnailIsRed() {
    const QImage thumbnail(catalogue::ThumbFileName(Catalogue.Paths(), 5));
    return thumbnail.pixelColor(thumbnail.width() - 5, thumbnail.height() - 5).red() > 200;
  }

  QString Log;
  test::TestCatalogue Catalogue;
  QWidget Tab;
  catalogue::RecordList Data1;
  ThumbnailPage Page;
  ExternalViewing Viewing;
};

TEST_F(ExternalViewingTest, AChangeByTheRegisteredProgramComesBackAsANewThumbnail) {
  Open(QStringLiteral("jpg"));
  Page.ShowThumbnails(0);
  ASSERT_FALSE(ThumbnailIsRed());
  const QString stored = ModifyDate();
  Viewing.ViewBttn_Click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(Log); }, 20'000));
  EXPECT_EQ(QString::fromUtf8(test::ReadFile(Log)), Image(QStringLiteral("jpg")) + QLatin1Char('\n'));
  EXPECT_TRUE(Notes().startsWith(QStringLiteral("5|jpg|")));

  Page.ShowThumbnails(0);
  EXPECT_TRUE(ThumbnailIsRed());
  EXPECT_NE(ModifyDate(), stored);
  EXPECT_TRUE(ModifyDate().startsWith(QStringLiteral("2030-02-03"))) << ModifyDate().toStdString();
  EXPECT_EQ(Notes(), QString());
}

TEST_F(ExternalViewingTest, WithoutAProgramItsBoxTellsHowToGetOne) {
  Open(QStringLiteral("tga"));
  const QStringList boxes = test::AnswerBoxes([&] { Viewing.ViewBttn_Click(); }, {QMessageBox::Ok});
  EXPECT_TRUE(boxes.value(0).endsWith(QStringLiteral(
      "|You need to register the file extension such as .bmp, .jpg with your chosen favorite graphics "
      "application!\n"
      "To register the file extension:\n1. Open the Windows Explorer.\n2. Find a JPG file and highlight it.\n"
      "3. Right click on the file and click on the 'Open with' item.\n"
      "4. Select your favorite graphics application from the list.\n"
      "5. Check 'Always use this program to open these files'.\n6. Click on the 'OK' button.\n"
      "7. Repeat 2 to 6 doing a BMP file and other graphics files.")));
  EXPECT_EQ(Notes(), QString());
}

TEST_F(ExternalViewingTest, WithoutAnImageNothingHappens) {
  Data1.Refresh();
  Viewing.ViewBttn_Click();
  Open(QStringLiteral("jpg"));
  QFile::remove(Image(QStringLiteral("jpg")));
  Viewing.ViewBttn_Click();
  QDir().mkdir(Image(QStringLiteral("jpg")));
  Viewing.ViewBttn_Click();
  EXPECT_EQ(Notes(), QString());
}

struct NoteCase {
  const char* Name;
  const char* FirstNote;
  bool FileIsThere;
  const char* DateAfter;
  bool ThumbnailStays;
};

class CheckedPhoto : public ExternalViewingTest, public testing::WithParamInterface<NoteCase> {};

// The file is of 2010; two notes are written, of which the first one counts.
TEST_P(CheckedPhoto, IsComparedWithItsFirstNote) {
  Open(QStringLiteral("jpg"));
  const QString image = Image(QStringLiteral("jpg"));
  QFile file(image);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(
      file.setFileTime(QDateTime(QDate(2010, 1, 1), QTime(12, 0)), QFileDevice::FileModificationTime));
  file.close();
  if (!GetParam().FileIsThere) QFile::remove(image);
  Catalogue.Execute({QStringLiteral("UPDATE tblPhotos SET LastModifyDate = #2010-01-01 12:00:00#")});
  test::WriteFile(catalogue::ThumbFileName(Catalogue.Paths(), 5), "old");
  const auto database = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  for (const char* note : {GetParam().FirstNote, "2022-02-02T00:00:00Z"}) {
    RecordCheckPhoto(*database, 5, QStringLiteral("jpg"),
                     QDateTime::fromString(QLatin1String(note), Qt::ISODate));
  }
  RefreshCheckedPhoto(*database, Catalogue.Paths(), 5);
  EXPECT_TRUE(ModifyDate().startsWith(QLatin1String(GetParam().DateAfter))) << ModifyDate().toStdString();
  EXPECT_EQ(QFile::exists(catalogue::ThumbFileName(Catalogue.Paths(), 5)), GetParam().ThumbnailStays);
  EXPECT_EQ(Notes(), QString());
}

INSTANTIATE_TEST_SUITE_P(
    AllDates, CheckedPhoto,
    testing::Values(NoteCase{"Unchanged", "2010-01-01T12:00:00Z", true, "2010-01-01", true},
                    NoteCase{"Newer", "2009-01-01T12:00:00Z", true, "2010-01-01", false},
                    NoteCase{"Older", "2011-01-01T12:00:00Z", true, "2010-01-01", false},
                    NoteCase{"WithoutADate", "", true, "2010-01-01", false},
                    NoteCase{"WithoutADateAndGone", "", false, "1899-12-30", false},
                    NoteCase{"Gone", "2010-01-01T12:00:00Z", false, "1899-12-30", false}),
    test::CaseName);

}  // namespace
}  // namespace veldrin::browse
