#include "output/progress_dialog.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <cmath>

#include "output/output_fixture.h"
#include "output/reports.h"
#include "output/web_export.h"

namespace veldrin::output {
namespace {

using test::FilesBelow;
using test::ReadFile;

class ProgressDialogTest : public test::OutputTest {
 protected:
  int PhotosOnPages() {
    qsizetype photos = 0;
    for (const QString& page : FilesBelow(Catalogue.Paths().TempDir).filter("PhotoData_pg"))
      photos += ReadFile(Catalogue.Paths().TempDir + page).count("file://");
    return static_cast<int>(photos);
  }

  frmWeb TheWeb{Catalogue.Paths()};
  WebPages Generators{Data1, Tree, Catalogue.Paths(), TheWeb, Window};
  frmProg Dialog{Generators, Work};
};

TEST_F(ProgressDialogTest, AStopEndsTheRunWithinAPhoto) {
  AddPhotos(2000);
  Window.show();
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &Window, [&] { Window.close(); });
  timer.start(0);
  Dialog.ShowModal();
  EXPECT_TRUE(Window.isVisible()) << "to close the program stops its work first";
  EXPECT_EQ(PhotosOnPages(), std::round(Dialog.ProgressValue() * 20));
  EXPECT_LT(PhotosOnPages(), 2000);
  EXPECT_TRUE(Dialog.Report().Stopped);
}

// --- the commands -----------------------------------------------------------------------------------------

class PageCommands : public ProgressDialogTest {
 protected:
  PageCommands() {
    const QString browser = Catalogue.ProgramPath() + "/the browser";
    test::WriteFile(browser, "#!/bin/sh\nprintf '%s|' \"$@\" > \"$0.part\"; mv \"$0.part\" \"$0.out\"\n");
    QFile::setPermissions(browser, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Catalogue.Paths().BrowserPath = browser;
    TheWeb.LastDir = Catalogue.ProgramPath();
  }

  // What the browser was started with since the last time.
  QString Browsed() {
    const QString told = Catalogue.Paths().BrowserPath + ".out";
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(told); }, 30'000));
    QString arguments = QString::fromUtf8(ReadFile(told));
    QFile::remove(told);
    return arguments;
  }
  // Runs the export, with a text in the dialog, which is left by a button.
  void MakeWeb(const char* field, const char* text, const char* button) {
    QTimer::singleShot(0, &TheWeb, [=, this] {
      TheWeb.findChild<QLineEdit*>(field)->setText(text);
      TheWeb.findChild<QPushButton*>(button)->click();
    });
    Export.WebBttn_Click();
  }

  WebExport Export{Data1, Catalogue.Engine(), Catalogue.Paths(), TheWeb, Dialog, Window, Tell};
  Reports TheReports{Data1, Catalogue.Paths(), Dialog, [] { FAIL() << "a menu of an empty list"; }, Tell};
};

TEST_F(PageCommands, TheExportWritesWhatTheDialogAskedForAndOpensIt) {
  AddPhotos(3);
  EXPECT_EQ(test::AnswerBoxes([this] { Export.WebBttn_Click(); }, {QMessageBox::Ok}),
            QStringList("Information|Must select records to make web page(s)!"));
  Select({3, 1});
  MakeWeb("txtWebTitle", "Two", "CancelBttn");
  EXPECT_EQ(FilesBelow(Catalogue.ProgramPath()).filter("htm"), QStringList());
  MakeWeb("txtWebTitle", "Two", "OkBttn");
  const QString page = Catalogue.ProgramPath() + "/My Web Pictures/PhotoImage_pg1.htm";
  EXPECT_EQ(Browsed(), page + '|');
  EXPECT_TRUE(ReadFile(page).contains("<title>Two </title>"));
  EXPECT_EQ(ReadFile(page).count("<img"), 2);
  EXPECT_EQ(Told, "2 photos written to the web 'My Web Pictures'");
  // Where no page comes to be, no browser is missed.
  Catalogue.Paths().BrowserPath = "/no/such/browser";
  EXPECT_NO_THROW(MakeWeb("txtWebName", "no/such/web", "OkBttn"));
  EXPECT_EQ(Told,
            "No photos written to the web 'web'.|Not done, or not in full: 2||"
            "Photo 3: Path not found|Photo 1: not written");
}

TEST_F(PageCommands, ReportsTakeTheWholeListAndNothingOfAnEmptyOne) {
  AddPhotos(0);
  TheReports.PrintBttn_Click();
  TheReports.ReportList_Click();
  AddPhotos(25);
  TheReports.ReportGallery_Click();
  EXPECT_EQ(Browsed(), Catalogue.Paths().TempDir + "PhotoImage_pg1.htm|");
  TheReports.ReportList_Click();
  EXPECT_EQ(Browsed(), Catalogue.Paths().TempDir + "PhotoData_pg1.htm|");
  EXPECT_EQ(PhotosOnPages(), 25);
  EXPECT_EQ(Told, "") << "the browser shows that it is done";
  Catalogue.Paths().BrowserPath = "/no/such/browser";
  EXPECT_EQ(test::ErrorOf([this] { TheReports.ReportList_Click(); }), base::errFileNotFound);
}

}  // namespace
}  // namespace veldrin::output
