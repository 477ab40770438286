#include "output/web_pages.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QImage>
#include <csignal>

#include "output/code_page.h"
#include "output/page_names.h"
#include "output/pages_fixture.h"

namespace veldrin::output {
namespace {

using test::FakeForm;
using test::FilesBelow;
using test::ReadFile;
using test::WriteFile;

class WebPagesTest : public test::PagesTest {
 protected:
  // A page as it was written down by hand.
  QByteArray Golden(const char* name) {
    QByteArray text = ReadFile(QStringLiteral(GOLDEN_DIR "/") + QLatin1String(name));
    text.replace("\n", "\r\n");
    text.replace("@ImageDir@", QFile::encodeName(Catalogue.Paths().ImageDir));
    text.replace("@ThumbDir@", QFile::encodeName(Catalogue.Paths().ThumbDir));
    return text;
  }
  QByteArray ReportPage(const char* name) {
    return ReadFile(Catalogue.Paths().TempDir + QLatin1String(name));
  }
};

// --- whole trees ------------------------------------------------------------------------------------------

TEST_F(WebPagesTest, AGalleryIsItsPagesAndCopiesInTheOrderOfTheSelection) {
  AddPhotos(13);
  SelectLastFirst(13);
  MakeWebDirs();
  FakeForm form;
  MakeWeb(form, true);
  EXPECT_EQ(WebPage("PhotoImage_pg1.htm"), Golden("web_gallery_1.htm"));
  EXPECT_EQ(WebPage("PhotoImage_pg2.htm"), Golden("web_gallery_2.htm"));
  QStringList expected = {QStringLiteral("PhotoImage_pg1.htm"), QStringLiteral("PhotoImage_pg2.htm")};
  for (int n = 1; n <= 13; ++n) {
    const int id = n == 1 ? 13 : n - 1;
    const QString image = QStringLiteral("Images/%1.").arg(n) + TypeOf(id);
    const QString thumbnail = QStringLiteral("Thumbnails/%1t.bmp").arg(n);
    expected << image << thumbnail;
    EXPECT_EQ(ReadFile(Web.WebDir + QLatin1Char('/') + image), "image " + QByteArray::number(id));
    EXPECT_EQ(ReadFile(Web.WebDir + QLatin1Char('/') + thumbnail), "thumbnail " + QByteArray::number(id));
  }
  expected.sort();
  EXPECT_EQ(FilesBelow(Web.WebDir), expected);
  EXPECT_EQ(form.Percents.front(), QStringLiteral("7.692307%"));
  EXPECT_EQ(form.Percents.back(), QStringLiteral("100%"));
}

TEST_F(WebPagesTest, AListNeedsNoThumbnails) {
  AddPhotos(26, false);
  std::vector<int> photos;
  for (int id = 26; id > 0; --id) photos.push_back(id);
  Select(photos);
  MakeWebDirs();
  FakeForm form;
  MakeWeb(form, false);
  EXPECT_EQ(WebPage("PhotoData_pg2.htm"), Golden("web_list_2.htm"));
  EXPECT_EQ(FilesBelow(Web.WebDir).size(), 2 + 26);
}

TEST_F(WebPagesTest, AReportLinksToTheCatalogueAndReplacesItsOwnKindAlone) {
  AddPhotos(26);
  Select({2, 1});  // Plays no part.
  const QString temp = Catalogue.Paths().TempDir;
  const QString outside = Catalogue.ProgramPath() + QStringLiteral("/outside.htm");
  WriteFile(outside, "kept");
  WriteFile(temp + QStringLiteral("PhotoImage_pg77.htm"), "old");
  WriteFile(temp + QStringLiteral("PhotoData_pg77.htm"), "old");
  QFile::link(outside, temp + QStringLiteral("PhotoImage_pg1.htm"));
  const QStringList images = FilesBelow(Catalogue.Paths().ImageDir);
  FakeForm form;
  form.Gallery = 1;
  Pages.MakeReport(form);
  EXPECT_EQ(ReportPage("PhotoImage_pg2.htm"), Golden("report_gallery_2.htm"));
  EXPECT_FALSE(QFile::exists(temp + QStringLiteral("PhotoImage_pg77.htm")));
  EXPECT_TRUE(QFile::exists(temp + QStringLiteral("PhotoData_pg77.htm")));
  EXPECT_EQ(ReadFile(outside), "kept");
  FakeForm list;
  Pages.MakeReport(list);
  EXPECT_EQ(ReportPage("PhotoData_pg1.htm"), Golden("report_list_1.htm"));
  EXPECT_TRUE(QFile::exists(temp + QStringLiteral("PhotoImage_pg3.htm")));
  EXPECT_FALSE(QFile::exists(temp + QStringLiteral("PhotoData_pg77.htm")));
  EXPECT_EQ(FilesBelow(Catalogue.Paths().ImageDir), images);
}

TEST_F(WebPagesTest, AMissingThumbnailIsMade) {
  AddPhotos(2, false);
  test::WritePicture(ImageOf(1), {400, 300});
  Select({1, 2});
  MakeWebDirs();
  FakeForm form;
  MakeWeb(form, true);
  EXPECT_EQ(QImage(Web.WebDir + QStringLiteral("/Thumbnails/1t.bmp")).size(), QSize(169, 127));
  // The second has no picture to make one of, so the run ends there.
  EXPECT_EQ(form.Percents.size(), 1);
  FakeForm report;
  report.Gallery = 1;
  Pages.MakeReport(report);
  EXPECT_EQ(report.Percents.size(), 2);
}

// --- the pages by count -----------------------------------------------------------------------------------

struct CountCase {
  const char* Name;
  int Photos;
  int StopAt;  ///< 0 for no stop
  std::vector<int> Gallery;
  std::vector<int> List;  ///< how many photos each page shows
};

class PageCounts : public WebPagesTest, public testing::WithParamInterface<CountCase> {
 protected:
  void ExpectPages(const QString& directory, bool gallery, const QString& what) {
    const std::vector<int>& shown = gallery ? GetParam().Gallery : GetParam().List;
    const int perPage = gallery ? 12 : 25;
    const int pages = (GetParam().Photos + perPage - 1) / perPage;
    const QByteArray prefix = "href=\".\\" + PagePrefix(gallery).toLatin1();
    for (int page = 1; page <= static_cast<int>(shown.size()); ++page) {
      const QByteArray text = ReadFile(directory + PageName(gallery, page));
      EXPECT_EQ(text.count("<a href=") - text.count(prefix), shown[page - 1]) << what.toStdString() << page;
      EXPECT_EQ(text.count("<td"), text.count("</td>"));
      EXPECT_EQ(text.count("<tr>"), text.count("</tr>"));
      EXPECT_EQ(text.count("<table"), text.count("</table>"));
      EXPECT_TRUE(text.endsWith("</body>\r\n</html>\r\n"));
      QByteArray links;
      for (qsizetype at = text.indexOf(prefix); at >= 0; at = text.indexOf(prefix, at + 1))
        links += text.mid(at + prefix.size(), text.indexOf("</a>", at) - at - prefix.size()) + ' ';
      QByteArray expected;
      const auto number = [](int of) { return QByteArray::number(of) + ".htm\">"; };
      if (page > 1) expected += "1.htm\">FIRST PAGE " + number(page - 1) + "PREVIOUS PAGE ";
      if (page < pages) expected += number(page + 1) + "NEXT PAGE " + number(pages) + "LAST PAGE ";
      EXPECT_EQ(links, expected) << what.toStdString() << page;
    }
    EXPECT_FALSE(QFile::exists(directory + PageName(gallery, static_cast<int>(shown.size()) + 1)));
  }
};

TEST_P(PageCounts, EachPageHasItsPhotosAndItsLinks) {
  AddPhotos(GetParam().Photos);
  SelectLastFirst(GetParam().Photos);
  MakeWebDirs();
  for (const bool gallery : {true, false}) {
    FakeForm web;
    web.StopAt = GetParam().StopAt;
    MakeWeb(web, gallery);
    ExpectPages(Web.WebDir + QLatin1Char('/'), gallery, QStringLiteral("web "));
    FakeForm report;
    report.StopAt = GetParam().StopAt;
    report.Gallery = gallery ? 1 : 0;
    Pages.MakeReport(report);
    ExpectPages(Catalogue.Paths().TempDir, gallery, QStringLiteral("report "));
    EXPECT_EQ(web.Unloaded + report.Unloaded, 2);
    EXPECT_FALSE(web.Progress || report.Progress);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Counts, PageCounts,
    testing::Values(CountCase{"One", 1, 0, {1}, {1}}, CountCase{"OneFullGalleryPage", 12, 0, {12}, {12}},
                    CountCase{"OneFullListPage", 25, 0, {12, 12, 1}, {25}},
                    CountCase{"OneMoreThanAListPage", 26, 0, {12, 12, 2}, {25, 1}},
                    CountCase{"Forty", 40, 0, {12, 12, 12, 4}, {25, 15}},
                    CountCase{"StoppedAtTheFirst", 40, 1, {1}, {1}},
                    CountCase{"StoppedAtTheEndOfAPage", 40, 12, {12}, {12}},
                    CountCase{"StoppedAtTheBeginningOfAPage", 40, 26, {12, 12, 2}, {25, 1}},
                    CountCase{"StoppedAtTheLast", 13, 13, {12, 1}, {13}}),
    test::CaseName);

TEST_F(WebPagesTest, AStopInARowEndsThePageAsAnyOther) {
  AddPhotos(13);
  SelectLastFirst(13);
  MakeWebDirs();
  FakeForm form;
  form.StopAt = 6;
  MakeWeb(form, true);
  EXPECT_EQ(WebPage("PhotoImage_pg1.htm"), Golden("web_gallery_stopped.htm"));
}

// --- failures ---------------------------------------------------------------------------------------------

// Files can't grow beyond a size, as on a disk that is full.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : Handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &Before);
    const rlimit small{bytes, Before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &Before);
    (void)std::signal(SIGXFSZ, Handler);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  void (*Handler)(int);
  rlimit Before{};
};

struct FailureCase {
  const char* Name;
  std::function<void(test::TestCatalogue&, const QString& webDir)> Before;
  std::function<void(test::TestCatalogue&, const QString& webDir)> AtPhoto5;
  rlim_t Room;           ///< how large a file can grow
  int Photos;            ///< how many were done
  const char* LastPage;  ///< the page in hand; null where there is none
};

class PageFailures : public WebPagesTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(PageFailures, EndTheRunSilentlyAndLeaveTheListAsItWas) {
  AddPhotos(40);
  WriteFile(ImageOf(18), QByteArray(6000, 'x'));
  SelectLastFirst(40);
  MakeWebDirs();
  Data1.SetBookmark(7);
  int repositions = 0;
  QObject::connect(&Data1, &catalogue::RecordList::Reposition, &Window, [&] { ++repositions; });
  if (GetParam().Before) GetParam().Before(Catalogue, Web.WebDir);
  FakeForm form;
  bool guarded = true;
  form.AtPhoto = [&](int photo) {
    guarded &= Data1.SuppressReposition;
    if (photo == 5 && GetParam().AtPhoto5) GetParam().AtPhoto5(Catalogue, Web.WebDir);
  };
  {
    const SmallDisk disk(GetParam().Room);
    MakeWeb(form, true);
  }
  EXPECT_EQ(form.Percents.size(), GetParam().Photos);
  EXPECT_TRUE(guarded);
  EXPECT_FALSE(Data1.SuppressReposition);
  EXPECT_EQ(Data1.Bookmark(), 7);
  EXPECT_EQ(repositions, 0);
  EXPECT_FALSE(form.Progress);
  EXPECT_EQ(form.Unloaded, 1);
  const QStringList pages = FilesBelow(Web.WebDir).filter(QStringLiteral("htm"));
  if (GetParam().LastPage == nullptr) {
    EXPECT_EQ(pages, QStringList());
  } else {
    EXPECT_EQ(pages.back(), QLatin1String(GetParam().LastPage));
    const QByteArray page = WebPage(GetParam().LastPage);
    EXPECT_EQ(page.count("<img"), (GetParam().Photos - 1) % 12 + 1);
    EXPECT_FALSE(page.contains("</html>"));
  }
}

constexpr rlim_t Plenty = 1'000'000;

INSTANTIATE_TEST_SUITE_P(
    Failures, PageFailures,
    testing::Values(FailureCase{"AFileForTheDirectory",
                                [](auto&, const auto& web) {
                                  QDir(web).removeRecursively();
                                  WriteFile(web, "a file");
                                },
                                {},
                                Plenty,
                                0,
                                nullptr},
                    FailureCase{"ALinkForTheImages",
                                [](auto& catalogue, const auto& web) {
                                  QDir(web + QStringLiteral("/Images")).removeRecursively();
                                  QFile::link(catalogue.ProgramPath(), web + QStringLiteral("/Images"));
                                },
                                {},
                                Plenty,
                                0,
                                nullptr},
                    FailureCase{
                        "ADirectoryForThePage",
                        [](auto&, const auto& web) { QDir(web).mkdir(QStringLiteral("PhotoImage_pg1.htm")); },
                        {},
                        Plenty,
                        0,
                        nullptr},
                    FailureCase{"TheDirectoryGoes",
                                {},
                                [](auto&, const auto& web) { QDir(web).removeRecursively(); },
                                Plenty,
                                5,
                                nullptr},
                    FailureCase{"AnImageIsMissing",
                                {},
                                [](auto& catalogue, const auto&) {
                                  QFile::remove(catalogue.Paths().ImageDir + QStringLiteral("8.bmp"));
                                },
                                Plenty,
                                8,
                                "PhotoImage_pg1.htm"},
                    FailureCase{"ARecordIsDeleted",
                                {},
                                [](auto& catalogue, const auto&) {
                                  catalogue.Execute(
                                      {QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 15")});
                                },
                                Plenty,
                                15,
                                "PhotoImage_pg2.htm"},
                    FailureCase{"NoRoomForAPage", {}, {}, 2800, 12, "PhotoImage_pg1.htm"},
                    FailureCase{"NoRoomForAnImage", {}, {}, 5000, 18, "PhotoImage_pg2.htm"}),
    test::CaseName);

TEST_F(WebPagesTest, WhatMovesTheListMeanwhileIsTakenBack) {
  AddPhotos(3);
  Select({1, 2, 3});
  MakeWebDirs();
  Data1.SetBookmark(2);
  FakeForm form;
  form.AtPhoto = [this](int) { Data1.MoveLast(); };
  MakeWeb(form, false);
  EXPECT_EQ(form.Percents.size(), 3);
  EXPECT_EQ(Data1.Bookmark(), 2);
}

// --- nothing is lost --------------------------------------------------------------------------------------

TEST_F(WebPagesTest, AFileThatIsReplacedIsNotWrittenThrough) {
  AddPhotos(1);
  Select({1});
  MakeWebDirs();
  const QString outside = Catalogue.ProgramPath() + QStringLiteral("/outside");
  WriteFile(outside, "kept");
  for (const char* name : {"/PhotoImage_pg1.htm", "/Images/1.jpg", "/Thumbnails/1t.bmp"})
    QFile::link(outside, Web.WebDir + QLatin1String(name));
  FakeForm form;
  MakeWeb(form, true);
  EXPECT_EQ(ReadFile(outside), "kept");
  EXPECT_EQ(WebPage("Images/1.jpg"), "image 1");
  EXPECT_EQ(WebPage("Thumbnails/1t.bmp"), "thumbnail 1");
  EXPECT_TRUE(WebPage("PhotoImage_pg1.htm").endsWith("</html>\r\n"));
}

TEST_F(WebPagesTest, NoExportGoesOverTheCatalogue) {
  AddPhotos(2);
  Select({2, 1});
  const QString program = Catalogue.ProgramPath();
  QDir(program).mkdir(QStringLiteral("Other"));
  QFile::link(Catalogue.Paths().ImageDir, program + QStringLiteral("/Other/Images"));
  const QStringList files = FilesBelow(program);
  for (const char* name : {"/Database", "/Database/", "/Database/Images", "/Other", "/Temp/../Database"}) {
    Web.WebDir = program + QLatin1String(name);
    FakeForm form;
    MakeWeb(form, true);
    EXPECT_EQ(form.Percents.size(), 0) << name;
    EXPECT_EQ(form.Unloaded, 1) << name;
  }
  EXPECT_EQ(FilesBelow(program), files);
  EXPECT_EQ(ReadFile(program + QStringLiteral("/Database/Images/1.jpg")), "image 1");
}

// --- texts ------------------------------------------------------------------------------------------------

TEST(PercentTextTest, PrintsANumberOfSinglePrecision) {
  EXPECT_EQ(PercentText(100.0F / 3), QStringLiteral("33.33333%"));
  EXPECT_EQ(PercentText(0.001F), QStringLiteral("0.001%"));
  EXPECT_EQ(PercentText(12.5F), QStringLiteral("12.5%"));
}

TEST(CodePageTest, HasAReferenceForWhatItLacks) {
  EXPECT_EQ(ToCodePage(QStringLiteral("\u20ac\u0178\u017e\u2122\u00a0\u00ff")), "\x80\x9f\x9e\x99\xa0\xff");
  EXPECT_EQ(ToCodePage(QStringLiteral("\u0081\u0100\uffff")), "&#129;&#256;&#65535;");
  EXPECT_EQ(ToCodePage(QString(QChar(0xD83D)) + QLatin1Char('x') + QChar(0xDE00)), "&#65533;x&#65533;");
}

}  // namespace
}  // namespace veldrin::output
