#include "output/progress_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <optional>

#include "base/runtime_error.h"
#include "output/pages_fixture.h"
#include "output/reports.h"
#include "output/web_export.h"

namespace veldrin::output {
namespace {

using test::FilesBelow;
using test::ReadFile;
using test::WriteFile;

class ProgressDialogTest : public test::PagesTest {
 protected:
  ProgressDialogTest()
      : TheWeb(Catalogue.Paths()),
        Generators(Data1, Tree, Catalogue.Paths(), TheWeb, Window),
        Dialog(Generators) {}

  QLabel& Percent() { return *Dialog.findChild<QLabel*>(QStringLiteral("lblPercent")); }
  QPushButton& Stop() { return *Dialog.findChild<QPushButton*>(QStringLiteral("bttnStop")); }
  int PhotosOnPages() {
    qsizetype photos = 0;
    for (const QString& page : FilesBelow(Catalogue.Paths().TempDir).filter(QStringLiteral("PhotoData_pg")))
      photos += ReadFile(Catalogue.Paths().TempDir + page).count("file://");
    return static_cast<int>(photos);
  }

  frmWeb TheWeb;
  WebPages Generators;
  frmProg Dialog;
};

struct StopCase {
  const char* Name;
  std::function<void(frmProg&, QPushButton&)> Stop;
};

class Stops : public ProgressDialogTest, public testing::WithParamInterface<StopCase> {};

// Each comes in the midst of the run, from within the one yield.
TEST_P(Stops, EndTheRunWithinAPhotoAndTheDialogWithIt) {
  AddPhotos(100);
  for (int showing = 1; showing <= 2; ++showing) {
    bool stopped = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &Dialog, [&] {
      if (stopped || Percent().text().isEmpty()) return;
      stopped = true;
      GetParam().Stop(Dialog, Stop());
      EXPECT_TRUE(Dialog.isVisible());
      EXPECT_FALSE(Dialog.Progress);
      GetParam().Stop(Dialog, Stop());
      EXPECT_TRUE(Dialog.isVisible());
    });
    timer.start(0);
    Dialog.ShowModal();
    EXPECT_FALSE(Dialog.isVisible());
    EXPECT_TRUE(stopped);
    EXPECT_EQ(PhotosOnPages(), Dialog.ProgressValue()) << showing;
    EXPECT_LT(PhotosOnPages(), 5);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Ways, Stops,
    testing::Values(StopCase{"Button", [](auto&, auto& stop) { QTest::mouseClick(&stop, Qt::LeftButton); }},
                    StopCase{"CloseBox", [](auto& dialog, auto&) { EXPECT_FALSE(dialog.close()); }},
                    StopCase{"Escape",
                             [](auto& dialog, auto&) { QTest::keyClick(&dialog, Qt::Key_Escape); }}),
    test::CaseName);

// Closed by an impatient user as soon as it is shown: the pages of an earlier run must not pass for new ones.
class ClosedAtOnce : public QObject {
 public:
  bool eventFilter(QObject* dialog, QEvent* event) override {
    if (event->type() == QEvent::Show) {
      for (int i = 0; i < 2; ++i) static_cast<frmProg*>(dialog)->reject();
    }
    return false;
  }
};

TEST_F(ProgressDialogTest, RunsToItsFirstPhotoAlsoWhenItIsClosedAtOnce) {
  AddPhotos(30);
  ClosedAtOnce user;
  Dialog.installEventFilter(&user);
  Dialog.ShowModal();
  EXPECT_EQ(PhotosOnPages(), 1);
}

// What the label tells at the first painting.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QLabel& label) : Label(label) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && !Text) Text = Label.text();
    return false;
  }
  QLabel& Label;
  std::optional<QString> Text;
};

TEST_F(ProgressDialogTest, IsSeenBeforeItsFirstPhotoIsDone) {
  AddPhotos(1);
  FirstPaint paint(Percent());
  Dialog.installEventFilter(&paint);
  Dialog.ShowModal();
  EXPECT_EQ(paint.Text, QString());
  EXPECT_EQ(Percent().text(), QStringLiteral("100%"));
  EXPECT_EQ(PhotosOnPages(), 1);
}

// --- the commands -----------------------------------------------------------------------------------------

class PageCommands : public ProgressDialogTest {
 protected:
  PageCommands()
      : Export(Data1, Catalogue.Paths(), TheWeb, Dialog, Window),
        TheReports(Data1, Catalogue.Paths(), Dialog, [this] { ++PopUps; }) {
    const QString browser = Catalogue.ProgramPath() + QStringLiteral("/the browser");
    WriteFile(browser,
              "#!/bin/sh\nprintf '%s|' \"$#\" \"$@\" > \"$0 tells.part\"\n"
              "mv \"$0 tells.part\" \"$0 tells\"\n");
    QFile::setPermissions(browser, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Catalogue.Paths().BrowserPath = browser;
  }

  // What the browser was started with since the last time.
  QString Browsed() {
    const QString told = Catalogue.Paths().BrowserPath + QStringLiteral(" tells");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(told); }, 30'000));
    QString arguments = QString::fromUtf8(ReadFile(told));
    QFile::remove(told);
    return arguments;
  }

  int PopUps = 0;
  WebExport Export;
  Reports TheReports;
};

TEST_F(PageCommands, TheExportWantsASelection) {
  AddPhotos(1);
  EXPECT_EQ(test::AnswerBoxes([this] { Export.WebBttn_Click(); }, {QMessageBox::Ok}),
            QStringList(QStringLiteral("Information|Must select records to make web page(s)!")));
}

TEST_F(PageCommands, TheExportWritesWhatTheDialogAskedForAndOpensIt) {
  AddPhotos(3);
  Select({3, 1});
  const auto leaveBy = [this](const char* button) {
    QTimer::singleShot(0, &TheWeb, [this, button] {
      TheWeb.findChild<QLineEdit*>(QStringLiteral("txtWebTitle"))->setText(QStringLiteral("Two"));
      TheWeb.findChild<QPushButton*>(QLatin1String(button))->click();
    });
    Export.WebBttn_Click();
  };
  leaveBy("CancelBttn");
  EXPECT_EQ(FilesBelow(Catalogue.Paths().TempDir).filter(QStringLiteral("htm")), QStringList());
  leaveBy("OkBttn");
  const QString page = Catalogue.Paths().TempDir + QStringLiteral("My Web Pictures/PhotoImage_pg1.htm");
  EXPECT_EQ(Browsed(), QStringLiteral("1|%1|").arg(page));
  EXPECT_TRUE(ReadFile(page).contains("<title>Two </title>"));
  EXPECT_EQ(ReadFile(page).count("<img"), 2);
}

TEST_F(PageCommands, ReportsTakeTheWholeListAndNothingOfAnEmptyOne) {
  AddPhotos(0);
  TheReports.PrintBttn_Click();
  TheReports.ReportList_Click();
  EXPECT_EQ(PopUps, 0);
  AddPhotos(25);
  TheReports.PrintBttn_Click();
  EXPECT_EQ(PopUps, 1);
  TheReports.ReportGallery_Click();
  EXPECT_EQ(Browsed(), QStringLiteral("1|%1PhotoImage_pg1.htm|").arg(Catalogue.Paths().TempDir));
  TheReports.ReportList_Click();
  EXPECT_EQ(Browsed(), QStringLiteral("1|%1PhotoData_pg1.htm|").arg(Catalogue.Paths().TempDir));
  EXPECT_EQ(PhotosOnPages(), 25);
}

TEST_F(PageCommands, ABrowserThatIsNotThereIsAnErrorOnlyWhenThereIsAPage) {
  AddPhotos(1);
  Select({1});
  Catalogue.Paths().BrowserPath = QStringLiteral("/no/such/browser");
  EXPECT_EQ(test::ErrorOf([this] { TheReports.ReportList_Click(); }), base::errFileNotFound);
  QTimer::singleShot(0, &TheWeb, [this] {
    TheWeb.findChild<QLineEdit*>(QStringLiteral("txtWebName"))->setText(QStringLiteral("no/such/web"));
    TheWeb.findChild<QPushButton*>(QStringLiteral("OkBttn"))->click();
  });
  EXPECT_NO_THROW(Export.WebBttn_Click());
}

}  // namespace
}  // namespace veldrin::output
