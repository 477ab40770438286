#include "output/web_pages.h"

#include <QImage>

#include "output/code_page.h"
#include "output/output_fixture.h"
#include "output/page_names.h"
#include "support/small_disk.h"

namespace veldrin::output {
namespace {

using test::FakeForm;
using test::FilesBelow;
using test::ReadFile;
using test::WriteFile;

class WebPagesTest : public test::OutputTest {
 protected:
  // A page as it was written down by hand.
  QByteArray Golden(const char* name) {
    QByteArray text = ReadFile(QStringLiteral(GOLDEN_DIR "/") + name);
    text.replace("\n", "\r\n");
    text.replace("@ImageDir@", QFile::encodeName(Catalogue.Paths().ImageDir));
    text.replace("@ThumbDir@", QFile::encodeName(Catalogue.Paths().ThumbDir));
    return text;
  }
  QByteArray ReportPage(const char* name) { return ReadFile(Catalogue.Paths().TempDir + name); }
  // How many photos each page of a directory shows.
  static std::vector<qsizetype> PhotosOfPages(const QString& directory, bool gallery) {
    std::vector<qsizetype> photos;
    for (int page = 1; QFile::exists(directory + PageName(gallery, page)); ++page) {
      const QByteArray text = ReadFile(directory + PageName(gallery, page));
      photos.push_back(text.count("<a href=") - text.count(".htm\""));
    }
    return photos;
  }
};

// --- whole trees ------------------------------------------------------------------------------------------

TEST_F(WebPagesTest, AGalleryIsItsPagesAndCopiesInTheOrderOfTheSelection) {
  AddPhotos(13);
  SelectLastFirst(13);
  MakeWebDirs();
  const QString outside = Catalogue.ProgramPath() + "/outside";
  WriteFile(outside, "kept");
  for (const char* name : {"/PhotoImage_pg1.htm", "/Images/1.jpg", "/Thumbnails/1t.bmp"})
    QFile::link(outside, Web.WebDir + name);
  FakeForm form(true);
  Pages.MakeWeb(form);
  EXPECT_EQ(WebPage("PhotoImage_pg1.htm"), Golden("web_gallery_1.htm"));
  EXPECT_EQ(WebPage("PhotoImage_pg2.htm"), Golden("web_gallery_2.htm"));
  for (int n = 1; n <= 13; ++n) {
    const int id = n == 1 ? 13 : n - 1;
    const QString copy = QString::number(n);
    EXPECT_EQ(ReadFile(Web.WebDir + "/Images/" + copy + '.' + TypeOf(id)), BytesOf(id));
    EXPECT_EQ(ReadFile(Web.WebDir + "/Thumbnails/" + copy + "t.bmp"), "thumbnail " + QByteArray::number(id));
  }
  EXPECT_EQ(FilesBelow(Web.WebDir).size(), 2 + 2 * 13);
  EXPECT_EQ(ReadFile(outside), "kept") << "a link is replaced, not written through";
  EXPECT_EQ(form.Percents.front(), "7.692307%");
  EXPECT_EQ(form.Percents.back(), "100%");
}

TEST_F(WebPagesTest, AListNeedsNoThumbnails) {
  AddPhotos(26, false);
  std::vector<int> photos;
  for (int id = 26; id > 0; --id) photos.push_back(id);
  Select(photos);
  MakeWebDirs();
  FakeForm form(false);
  Pages.MakeWeb(form);
  EXPECT_EQ(WebPage("PhotoData_pg2.htm"), Golden("web_list_2.htm"));
  EXPECT_EQ(FilesBelow(Web.WebDir).size(), 2 + 26);
}

TEST_F(WebPagesTest, AReportLinksToTheCatalogueAndReplacesItsOwnKindAlone) {
  AddPhotos(26);
  Select({2, 1});  // Plays no part.
  const QString temp = Catalogue.Paths().TempDir;
  const QString outside = Catalogue.ProgramPath() + "/outside.htm";
  WriteFile(outside, "kept");
  for (const char* name : {"PhotoImage_pg77.htm", "PhotoData_pg77.htm"}) WriteFile(temp + name, "old");
  QFile::link(outside, temp + "PhotoImage_pg1.htm");
  const QStringList images = FilesBelow(Catalogue.Paths().ImageDir);
  FakeForm form(true);
  Pages.MakeReport(form);
  EXPECT_EQ(ReportPage("PhotoImage_pg2.htm"), Golden("report_gallery_2.htm"));
  EXPECT_FALSE(QFile::exists(temp + "PhotoImage_pg77.htm"));
  EXPECT_TRUE(QFile::exists(temp + "PhotoData_pg77.htm"));
  EXPECT_EQ(ReadFile(outside), "kept");
  FakeForm list(false);
  const QString imageDir = std::exchange(Catalogue.Paths().ImageDir, "/50% #1?/Größe \"&x/");
  Pages.MakeReport(list);
  const QByteArray encoded = "/50%25%20%231%3F/Gr%C3%B6%C3%9Fe%20%22%26x/";
  Catalogue.Paths().ImageDir = imageDir;
  EXPECT_EQ(ReportPage("PhotoData_pg1.htm").replace(encoded, QFile::encodeName(imageDir)),
            Golden("report_list_1.htm"));
  EXPECT_TRUE(QFile::exists(temp + "PhotoImage_pg3.htm"));
  EXPECT_EQ(FilesBelow(Catalogue.Paths().ImageDir), images);
}

TEST_F(WebPagesTest, AMissingThumbnailIsMade) {
  AddPhotos(2, false);
  test::WritePicture(ImageOf(1), {400, 300});
  Select({1, 2});
  MakeWebDirs();
  FakeForm form(true);
  Pages.MakeWeb(form);
  EXPECT_EQ(QImage(Web.WebDir + "/Thumbnails/1t.bmp").size(), QSize(169, 127));
  EXPECT_EQ(form.Percents.size(), 1) << "the second has no picture to make one of, so the run ends there";
  FakeForm report(true);
  Pages.MakeReport(report);
  EXPECT_EQ(report.Percents.size(), 2);
}

TEST_F(WebPagesTest, EachPageHasItsPhotosAlsoInAStoppedRun) {
  AddPhotos(40);
  MakeWebDirs();
  const struct {
    int Photos;
    int StopAt;
    bool Gallery;
    std::vector<qsizetype> Pages;
  } cases[] = {{25, 0, true, {12, 12, 1}}, {25, 0, false, {25}}, {40, 26, true, {12, 12, 2}},
               {40, 26, false, {25, 1}},   {13, 6, true, {6}},   {40, 12, true, {12}}};
  for (const auto& [photos, stopAt, gallery, expected] : cases) {
    QDir(Web.WebDir).removeRecursively();
    MakeWebDirs();
    Open(QStringLiteral(" WHERE PhotoID <= %1").arg(photos));
    SelectLastFirst(photos);
    FakeForm web(gallery);
    FakeForm report(gallery);
    web.StopAt = report.StopAt = stopAt;
    Pages.MakeWeb(web);
    EXPECT_EQ(Pages.Report().Stopped, stopAt != 0);
    EXPECT_EQ(Pages.Report().Done, stopAt == 0 ? photos : stopAt);
    EXPECT_EQ(PhotosOfPages(Web.WebDir + '/', gallery), expected) << photos << ' ' << stopAt;
    if (stopAt == 6) {
      EXPECT_EQ(WebPage("PhotoImage_pg1.htm"), Golden("web_gallery_stopped.htm"));
    }
    Pages.MakeReport(report);
    EXPECT_EQ(PhotosOfPages(Catalogue.Paths().TempDir, gallery), expected) << photos << ' ' << stopAt;
    EXPECT_EQ(web.Unloaded + report.Unloaded, 2);
    EXPECT_FALSE(web.Progress || report.Progress);
  }
}

// --- failures ---------------------------------------------------------------------------------------------

// What comes to be is whole: where a picture doesn't fit, a record has gone, a page doesn't fit.
TEST_F(WebPagesTest, AFailureIsToldAndLeavesWholePagesAndTheListAsItWas) {
  AddPhotos(40);
  WriteFile(ImageOf(18), QByteArray(6000, 'x'));
  SelectLastFirst(40);
  const std::tuple<rlim_t, std::vector<qsizetype>, QString> cases[] = {
      {5000,
       {12, 6},
       "18 photos written to the web 'Web'.|Not done, or not in full: 22||Photo 18: Disk full|Photo 19: not "
       "written|"},
      {99'999,
       {12, 11, 12, 4},
       "39 photos written to the web 'Web'.|Not done, or not in full: 1 (deleted by another machine)||Photo "
       "15"},
      {1000,
       {},
       "No photos written to the web 'Web'.|Not done, or not in full: 40||Photo 40: Disk full|Photo 1: not "
       "written|"}};
  for (const auto& [room, pages, told] : cases) {
    QDir(Web.WebDir).removeRecursively();
    MakeWebDirs();
    Data1.SetBookmark(7);
    FakeForm form(true);
    form.AtPhoto = [&, gone = told.contains("deleted")](int photo) {
      if (photo == 5 && gone) Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 15"});
    };
    {
      const test::SmallDisk disk(room);
      Pages.MakeWeb(form);
    }
    ExpectAsBefore(7);
    EXPECT_TRUE(form.Unloaded == 1 && !form.Progress);
    EXPECT_EQ(PhotosOfPages(Web.WebDir + '/', true), pages);
    const QStringList files = FilesBelow(Web.WebDir);
    for (const QString& page : files.filter("htm"))
      EXPECT_TRUE(WebPage(qPrintable(page)).endsWith("</html>\r\n"));
    EXPECT_EQ(files.filter(".part"), QStringList());
    Tell(Pages.Report());
    EXPECT_TRUE(Told.startsWith(told)) << Told.toStdString();
  }
}

TEST_F(WebPagesTest, NoExportGoesOverTheCatalogue) {
  AddPhotos(2);
  Select({2, 1});
  const QString program = Catalogue.ProgramPath();
  QDir(program).mkdir("Other");
  QFile::link(Catalogue.Paths().ImageDir, program + "/Other/Images");
  const QStringList files = FilesBelow(program);
  for (const char* name : {"/Database", "/Database/", "/Database/Images", "/Other", "/Temp/../Database"}) {
    Web.WebDir = program + name;
    FakeForm form(true);
    Pages.MakeWeb(form);
    EXPECT_EQ(form.Percents.size(), 0) << name;
    EXPECT_EQ(Pages.Report().Failures.size(), 1);
  }
  EXPECT_EQ(FilesBelow(program), files);
  EXPECT_EQ(ReadFile(ImageOf(1)), BytesOf(1));
}

TEST(PageTexts, AreOfSinglePrecisionAndOfTheCodePage) {
  EXPECT_EQ(controls::PercentText(100.0F / 3), "33.33333%");
  EXPECT_EQ(controls::PercentText(0.001F), "0.001%");
  EXPECT_EQ(ToCodePage("\u20ac\u0178\u017e\u2122\u00a0\u00ff"), "\x80\x9f\x9e\x99\xa0\xff");
  EXPECT_EQ(ToCodePage(u"\u0081\u0100\uffff"_qs), "&#129;&#256;&#65535;");
  EXPECT_EQ(ToCodePage(QString(QChar(0xD83D)) + 'x' + QChar(0xDE00)), "&#65533;x&#65533;");
}

}  // namespace
}  // namespace veldrin::output
