#include <QFileInfo>

#include "platform/dir_list.h"
#include "platform/runtime_error.h"
#include "shell/main_window_fixture.h"

namespace veldrin::shell {
namespace {

TEST_F(MainWindowTest, StartsInDataViewWithTheWholeCatalogue) {
  EXPECT_EQ(Window->windowTitle(), QStringLiteral("Veldrin"));
  EXPECT_EQ(Tree().SelectedItem(), Tree().Root());
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 30"));
  EXPECT_FALSE(Action("MainData").isEnabled());
  EXPECT_FALSE(Action("tbarToolBar(1)").isEnabled());
  EXPECT_TRUE(Action("MainImage").isEnabled());
  EXPECT_TRUE(Get(QStringLiteral("ThumbPannel")).isHidden());
  EXPECT_TRUE(Get<QRadioButton>(QStringLiteral("PreviewOption(0)")).isChecked());
  EXPECT_FALSE(Get(QStringLiteral("ImgPreview")).isHidden());
  EXPECT_EQ(Get<QSlider>(QStringLiteral("Slider1")).maximum(), 30);
}

TEST_F(MainWindowTest, SwitchesViewsByMenuAndToolbar) {
  const QStringList commands = {QStringLiteral("tbarToolBar(12)"), QStringLiteral("tbarToolBar(13)"),
                                QStringLiteral("tbarToolBar(15)"), QStringLiteral("tbarToolBar(17)"),
                                QStringLiteral("tbarToolBar(20)"), QStringLiteral("tbarToolBar(22)"),
                                QStringLiteral("RecordQuery"),     QStringLiteral("RecordSearch"),
                                QStringLiteral("FileWeb"),         QStringLiteral("FileGet")};
  struct Step {
    const char* Command;
    int View, Tab;
    bool Thumbnails;
    const char* Visible;
  };
  const char* all =
      "tbarToolBar(12) tbarToolBar(13) tbarToolBar(15) tbarToolBar(17) tbarToolBar(20) tbarToolBar(22) "
      "RecordQuery "
      "RecordSearch FileWeb FileGet";
  for (const Step& step :
       std::vector<Step>{{"MainImage", 2, 0, true, all},
                         {"tbarToolBar(4)", 4, 1, true,
                          "tbarToolBar(12) tbarToolBar(13) tbarToolBar(15) tbarToolBar(22) RecordQuery "
                          "RecordSearch FileGet"},
                         {"MainAdd", 5, 2, true, "tbarToolBar(22)"},
                         {"MainPlay", 7, 3, true, "tbarToolBar(12) tbarToolBar(22) RecordQuery"},
                         {"tbarToolBar(2)", 2, 0, true, all},
                         {"MainData", 1, 0, false, all}}) {
    Choose(step.Command);
    EXPECT_EQ(Window->CurrentView(), step.View) << step.Command;
    EXPECT_EQ(Get<QStackedWidget>(QStringLiteral("SSTab1")).currentIndex(), step.Tab) << step.Command;
    EXPECT_EQ(!Get(QStringLiteral("ThumbPannel")).isHidden(), step.Thumbnails) << step.Command;
    EXPECT_EQ(!Get(QStringLiteral("bttnNext")).isHidden(), step.Thumbnails) << step.Command;
    EXPECT_EQ(Those(commands, &QAction::isVisible), QLatin1String(step.Visible)) << step.Command;
    EXPECT_FALSE(Get<QAction>(QStringLiteral("tbarToolBar(%1)").arg(step.View)).isEnabled());
  }
}

TEST_F(MainWindowTest, TheMenusFollowTheFolderAndTheTab) {
  const QStringList commands = {QStringLiteral("FolderAdd"), QStringLiteral("FolderRen"),
                                QStringLiteral("RecordDel"), QStringLiteral("RecordRmv"),
                                QStringLiteral("RecordCut"), QStringLiteral("RecordCopy"),
                                QStringLiteral("RecordAll"), QStringLiteral("ReportList")};
  const auto enabled = [&] { return Those(commands, &QAction::isEnabled); };
  EXPECT_EQ(enabled(), QStringLiteral("FolderAdd RecordDel RecordAll ReportList"));
  ClickFolder(Travels);
  EXPECT_EQ(enabled(), QStringLiteral("FolderAdd FolderRen RecordDel RecordRmv RecordAll ReportList"));
  ClickFolder(Italy);
  EXPECT_EQ(
      enabled(),
      QStringLiteral("FolderAdd FolderRen RecordDel RecordRmv RecordCut RecordCopy RecordAll ReportList"));
  Choose("MainPlay");
  EXPECT_EQ(enabled(), QStringLiteral("FolderAdd FolderRen ReportList"));
  Choose("MainData");
  ClickFolder(TopUnorganized);
  EXPECT_EQ(enabled(), QString());
  EXPECT_EQ(Counter(), QStringLiteral("   No Record"));
}

TEST_F(MainWindowTest, BrowsesAFolderByMouseAndKeyboard) {
  Choose("MainImage");
  ClickFolder(Italy);
  EXPECT_EQ(Get<browse::ThumbCaption>(QStringLiteral("ThumbTitle(11)")).Caption(),
            QStringLiteral("12: Photo 12"));
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
  EXPECT_EQ(Get<browse::ThumbCaption>(QStringLiteral("ThumbTitle(0)")).Caption(),
            QStringLiteral("9: Photo 9"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(Counter(), QStringLiteral("   10 of 20"));
  QTest::mouseClick(&Get(QStringLiteral("ImgThumb(5)")), Qt::LeftButton);
  EXPECT_EQ(Counter(), QStringLiteral("   14 of 20"));
  ClickFolder(Home);
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 10"));
  EXPECT_TRUE(Get(QStringLiteral("picThumb(10)")).isHidden());
  EXPECT_TRUE(Get(QStringLiteral("picThumb(0)")).hasFocus());
  Choose("MainData");
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 10"));
}

TEST_F(MainWindowTest, ALaterTabLeavesTheCounterUntilTheFirstIsBack) {
  Choose("MainForm");
  ClickFolder(Italy);
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 30"));
  Choose("MainData");
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
}

TEST_F(MainWindowTest, TheSplitterMovesThePanesOnRelease) {
  EXPECT_EQ(Twips("pcMainWin").left(), 2805);  // 2800 in whole pixels
  QWidget& splitter = Get(QStringLiteral("bttnSplitter"));
  QWidget& bar = Get(QStringLiteral("picSplitter"));
  QTest::mousePress(&splitter, Qt::LeftButton, {}, QPoint(0, 100));
  QTest::mouseMove(&splitter, QPoint(-400, 100));
  EXPECT_TRUE(bar.isVisible());
  EXPECT_EQ(Twips("picSplitter").left(), 495);  // 500 in whole pixels
  EXPECT_EQ(Twips("tvTreeView").width(), 2760);
  QTest::mouseRelease(&splitter, Qt::LeftButton, {}, QPoint(-400, 100));
  EXPECT_FALSE(bar.isVisible());
  EXPECT_EQ(Twips("tvTreeView").width(), 1500);
}

TEST_F(MainWindowTest, OnlyHeightsFollowTheWindowOnTheRight) {
  const int width = Get(QStringLiteral("SSTab1")).width();
  Window->resize(Window->width() + 200, Window->height() - 150);
  EXPECT_EQ(Get(QStringLiteral("SSTab1")).width(), width);
  for (const char* name : {"SSTab1", "TDBGrid1", "ThumbPannel", "ThumbVScroll"}) {
    EXPECT_EQ(Get(QLatin1String(name)).height(), Get(QStringLiteral("pcMainWin")).height()) << name;
  }
  Window->resize(100, 300);
  EXPECT_EQ(Window->width(), 200);
  EXPECT_EQ(Window->height(), 300);
}

TEST_F(MainWindowTest, AKeyInTheTreeShowsThePageFromItsFirstCell) {
  Choose("MainImage");
  ClickFolder(Home);
  Tree().setFocus();
  QWidget* tree = QApplication::focusWidget();
  QTest::keyPress(tree, Qt::Key_Down);  // to Travels; the page takes the focus, and so the release
  QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(Tree().SelectedItem()->Text(), QStringLiteral("Travels"));
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
  EXPECT_TRUE(Get(QStringLiteral("picThumb(0)")).hasFocus());
}

TEST_F(MainWindowTest, AnEmptyPageLeavesNothingStill) {
  Choose("MainImage");
  ClickFolder(TopUnorganized);
  EXPECT_TRUE(Get(QStringLiteral("picThumb(0)")).isHidden());
  Choose("MainAdd");
  Get<platform::DirListBox>(QStringLiteral("Dir1")).SetPath(Catalogue.Paths().ImageDir);
  EXPECT_EQ(Get<platform::FileListBox>(QStringLiteral("FileToSel")).ListCount(), 30);
  Choose("MainImage");
  Choose("MainData");
  ClickFolder(Home);
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 10"));
}

TEST_F(MainWindowTest, ItsMenusPopUpAtTheirPlaces) {
  QMenu& folders = Get<QMenu>(QStringLiteral("FolderMenu"));
  QMenu& records = Get<QMenu>(QStringLiteral("RecordMenu"));
  QTest::mouseClick(Tree().viewport(), Qt::RightButton, {}, Tree().visualItemRect(Tree().Root()).center());
  EXPECT_TRUE(folders.isVisible());
  folders.hide();
  Choose("MainImage");
  for (const char* place : {"ImgThumb(0)", "ThumbTitle(0)", "ThumbPannel"}) {
    QTest::mouseClick(&Get(QLatin1String(place)), Qt::RightButton, {}, QPoint(2, 2));
    EXPECT_TRUE(records.isVisible()) << place;
    records.hide();
  }
}

TEST_F(MainWindowTest, ClosesWithoutAQuestionAndRemovesTheWorkingCopy) {
  const QString workFile = Catalogue.Paths().WorkFile;
  EXPECT_TRUE(QFileInfo::exists(workFile));
  test::AnswerBoxes([this] { Choose("FileExit"); }, {});
  EXPECT_FALSE(Window->isVisible());
  Window.reset();
  EXPECT_FALSE(QFileInfo::exists(workFile));
}

TEST_F(MainWindowTest, AnEditThatIsOpenEndsWithTheWindow) {
  ClickFolder(Home);
  Choose("FolderRen");
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Kept"));
  Choose("FileExit");
  EXPECT_EQ(Catalogue.Value(QStringLiteral("SELECT FolderName FROM tblLevel1 WHERE IDNo = '0002'")),
            QStringLiteral("Kept"));
  Window->show();
  Choose("FolderRen");
  EXPECT_EQ(Window->focusWidget()->parent(), Tree().viewport());
  Window.reset();
}

TEST_F(MainWindowTest, AMissingBrowserIsLeftToTheReport) {
  Catalogue.Paths().BrowserPath = QStringLiteral("/no/such browser");
  frmMain other(App, Catalogue.Paths(), Catalogue.Engine());
  EXPECT_THROW(other.findChild<QAction*>(QStringLiteral("HelpHelp"))->trigger(), platform::RuntimeError);
}

}  // namespace
}  // namespace veldrin::shell
