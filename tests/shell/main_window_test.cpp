#include "shell/main_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include "catalogue/schema.h"
#include "folders/folder_tree.h"
#include "platform/dir_list.h"
#include "platform/runtime_error.h"
#include "show/fakes.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

using test::TestCatalogue;

class MainWindowTest : public testing::Test {
 protected:
  MainWindowTest() : App(Catalogue.ProgramPath(), Catalogue.ProgramPath() + QStringLiteral("/Temp")) {
    const auto add = [this](int level, const char* name, const char* parent) {
      folders::AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, level, QLatin1String(name),
                               QLatin1String(parent));
    };
    add(1, "Travels", "");
    add(2, "Italy", "0001");
    add(1, "Home", "");
    for (int id = 1; id <= 30; ++id) {
      Catalogue.AddPhoto(id, QStringLiteral("Photo %1").arg(id),
                         {id <= 20 ? QStringLiteral("00010001") : QStringLiteral("0002")}, QSize(30, 20));
    }
    Start();
  }

  void Start(std::unique_ptr<show::Media> media = std::make_unique<show::MediaPlayer>()) {
    if (Window) {
      Window.reset();
      catalogue::CreateWorkFile(Catalogue.Paths(), Catalogue.Engine(), Catalogue.ProgramPath());
      catalogue::OpenCatalogue(Catalogue.Paths(), Catalogue.Engine());
    }
    Window = std::make_unique<frmMain>(App, Catalogue.Paths(), Catalogue.Engine(), std::move(media));
    Window->Form_Load();
    Window->show();
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  template <class Control = QWidget>
  Control& Get(const QString& name) {
    auto* control = Window->findChild<Control*>(name);
    if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
    return *control;
  }
  QAction& Action(const char* name) { return Get<QAction>(QLatin1String(name)); }
  void Choose(const char* name) { Action(name).trigger(); }
  // The names of those of the commands that pass the test.
  QString Those(const QStringList& names, bool (QAction::*test)() const) {
    QStringList passed;
    for (const QString& name : names) {
      if ((Get<QAction>(name).*test)()) passed << name;
    }
    return passed.join(QLatin1Char(' '));
  }
  platform::TreeView& Tree() { return Get<platform::TreeView>(QStringLiteral("tvTreeView")); }
  void ClickFolder(int index) {
    Tree().Root()->setExpanded(true);
    for (int i = 1; i <= Tree().Count(); ++i) Tree().NodeAt(i)->setExpanded(true);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                      Tree().visualItemRect(Tree().NodeAt(index)).center());
  }
  QString Counter() { return Get<browse::DataNavigator>(QStringLiteral("Data1")).Caption(); }
  QRect Twips(const char* name) {
    const QRect pixels = Get(QLatin1String(name)).geometry();
    return {pixels.left() * 15, pixels.top() * 15, pixels.width() * 15, pixels.height() * 15};
  }

  // Does something while the dialog that an action opens is there, and closes it.
  static void OnDialog(const char* name, const std::function<void()>& open,
                       const std::function<void()>& action) {
    bool opened = false;
    QTimer::singleShot(0, qApp, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      opened = dialog->objectName() == QLatin1String(name);
      action();
      dialog->close();
    });
    open();
    EXPECT_TRUE(opened) << name;
  }

  TestCatalogue Catalogue;
  platform::App App;
  std::unique_ptr<frmMain> Window;
};

const int Root = 1, TopUnorganized = 2, Home = 3, Travels = 4, Italy = 6;

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

TEST_F(MainWindowTest, CutsAndPastesRecords) {
  const QStringList commands = {QStringLiteral("RecordUndoCut"), QStringLiteral("RecordSep1"),
                                QStringLiteral("RecordPaste"), QStringLiteral("FolderRcdPaste")};
  const QColor mark = Get<platform::Shape>(QStringLiteral("shpMark(0)")).BorderColor();
  const auto shown = [&] {
    const QColor selected = Get<QTableView>(QStringLiteral("TDBGrid1")).palette().color(QPalette::Highlight);
    const bool grey = Get<platform::Shape>(QStringLiteral("shpMark(0)")).BorderColor() != mark;
    EXPECT_EQ(grey, selected == QColor(0x80, 0x80, 0x80));
    const QString enabled = Those(commands.mid(2), &QAction::isEnabled);
    return Those(commands.mid(0, 2), &QAction::isVisible) + QLatin1Char('|') + enabled +
           (grey ? QStringLiteral("|grey") : QString());
  };
  Choose("MainImage");
  ClickFolder(Italy);
  QTest::mouseClick(&Get(QStringLiteral("ImgThumb(1)")), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(shown(), QStringLiteral("|"));
  Choose("RecordCut");
  EXPECT_EQ(shown(), QStringLiteral("RecordUndoCut RecordSep1|RecordPaste|grey"));
  Choose("RecordUndoCut");
  EXPECT_EQ(shown(), QStringLiteral("|"));
  Choose("RecordCut");
  ClickFolder(Travels);
  EXPECT_EQ(shown(), QStringLiteral("RecordUndoCut RecordSep1||grey"));
  ClickFolder(Home);
  EXPECT_EQ(shown(), QStringLiteral("RecordUndoCut RecordSep1|RecordPaste FolderRcdPaste|grey"));
  Choose("FolderRcdPaste");
  EXPECT_EQ(shown(), QStringLiteral("|"));
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 11"));
  EXPECT_EQ(Get<browse::ThumbCaption>(QStringLiteral("ThumbTitle(0)")).Caption(),
            QStringLiteral("2: Photo 2"));
  ClickFolder(Italy);
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 19"));
}

TEST_F(MainWindowTest, ACopyIsPastedAnywhereButAbove) {
  ClickFolder(Italy);
  Choose("RecordAll");
  Choose("RecordCopy");
  for (const auto& [folder, enabled] :
       {std::pair(Travels, false), std::pair(TopUnorganized, false), std::pair(Home, true)}) {
    ClickFolder(folder);
    EXPECT_EQ(Action("RecordPaste").isEnabled(), enabled) << folder;
  }
  Choose("RecordPaste");
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 30"));
  ClickFolder(Italy);
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
}

TEST_F(MainWindowTest, TheFolderMenuChangesTheTree) {
  const QStringList commands = {QStringLiteral("FolderUndoCut"), QStringLiteral("FolderSep")};
  const auto pasteIsEnabled = [this] { return Action("FolderPaste").isEnabled(); };
  ClickFolder(Home);
  Choose("FolderCut");
  EXPECT_EQ(Those(commands, &QAction::isVisible), commands.join(QLatin1Char(' ')));
  EXPECT_FALSE(pasteIsEnabled());
  ClickFolder(Root);
  EXPECT_TRUE(pasteIsEnabled());
  Choose("FolderUndoCut");
  EXPECT_EQ(Those(commands, &QAction::isVisible), QString());
  EXPECT_FALSE(pasteIsEnabled());
  ClickFolder(Italy);
  Choose("FolderCopy");
  EXPECT_TRUE(pasteIsEnabled());
  ClickFolder(Home);
  Choose("FolderPaste");
  EXPECT_EQ(Counter(), QStringLiteral("   No Record"));
  EXPECT_FALSE(pasteIsEnabled());

  // By keys alone: the menu gives the focus back before the name is edited.
  Choose("MainImage");
  ClickFolder(Travels);
  QTest::keyClick(Window.get(), Qt::Key_O, Qt::AltModifier);
  QTest::keyClick(&Get<QMenu>(QStringLiteral("FolderMenu")), Qt::Key_A);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Spain"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(Tree().SelectedItem()->Text(), QStringLiteral("Spain"));
  EXPECT_TRUE(Action("FolderRen").isEnabled());
  test::AnswerBoxes([this] { Choose("FolderDel"); }, {QMessageBox::Yes});
  EXPECT_EQ(Tree().SelectedItem()->Text(), QStringLiteral("Travels"));
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
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

TEST_F(MainWindowTest, FormViewFollowsTheFolderAndADeletion) {
  Choose("MainImage");
  Choose("RecordAll");
  Choose("MainForm");
  const auto title = [&] { return Get<QLineEdit>(QStringLiteral("eTitle")).text(); };
  ClickFolder(Home);  // The thumbnails behind it take neither the event nor the focus.
  EXPECT_EQ(title(), QStringLiteral("Photo 21"));
  test::AnswerBoxes([&] { Choose("RecordDel"); }, {QMessageBox::Yes});
  EXPECT_EQ(title(), QStringLiteral("Photo 22"));
  Get<QAbstractButton>(QStringLiteral("Next")).click();
  Choose("MainData");
  EXPECT_EQ(Counter(), QStringLiteral("   2 of 9"));
  Choose("RecordEdit");
  EXPECT_EQ(title(), QStringLiteral("Photo 23"));
  EXPECT_FALSE(Action("RecordEdit").isEnabled());
}

TEST_F(MainWindowTest, OneSelectionForGridAndPage) {
  ClickFolder(Italy);
  QCoreApplication::processEvents();  // The grid follows the list.
  QTest::keyClick(&Get(QStringLiteral("TDBGrid1")), Qt::Key_Down, Qt::ShiftModifier);
  Choose("MainImage");
  const auto marked = [&](int cell) { return !Get(QStringLiteral("shpMark(%1)").arg(cell)).isHidden(); };
  EXPECT_TRUE(marked(0));
  EXPECT_FALSE(marked(2));
  QTest::mouseClick(&Get(QStringLiteral("ImgThumb(5)")), Qt::LeftButton, Qt::ControlModifier);
  test::AnswerBoxes([&] { Choose("RecordDel"); }, {QMessageBox::Yes});
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 17"));
  EXPECT_EQ(Get<browse::ThumbCaption>(QStringLiteral("ThumbTitle(4)")).Caption(),
            QStringLiteral("8: Photo 8"));
  EXPECT_EQ(Window->focusWidget()->objectName(), QStringLiteral("picThumb(0)"));
}

TEST_F(MainWindowTest, RefreshShowsTheImageOfTheViewAnew) {
  const auto refresh = [&] { Get<QPushButton>(QStringLiteral("RefreshBttn")).click(); };
  QWidget& preview = Get(QStringLiteral("ImgPreview"));
  QFile::remove(Catalogue.Paths().ImageDir + QStringLiteral("1.jpg"));
  refresh();
  EXPECT_TRUE(preview.isHidden());
  Catalogue.AddPhoto(99, {}, {}, QSize(10, 50));
  QFile::rename(Catalogue.Paths().ImageDir + QStringLiteral("99.jpg"),
                Catalogue.Paths().ImageDir + QStringLiteral("1.jpg"));
  Get<QRadioButton>(QStringLiteral("PreviewOption(1)")).click();
  refresh();
  EXPECT_TRUE(preview.isHidden());
  Get<QRadioButton>(QStringLiteral("PreviewOption(0)")).click();
  EXPECT_FALSE(preview.isHidden());
  Choose("MainImage");
  QTest::mouseClick(&Get(QStringLiteral("ImgThumb(5)")), Qt::LeftButton);
  refresh();
  EXPECT_EQ(Counter(), QStringLiteral("   6 of 30"));
  Get<QPushButton>(QStringLiteral("ResetBttn")).click();
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 31"));
  EXPECT_TRUE(Get(QStringLiteral("picThumb(0)")).hasFocus());
  Choose("MainForm");
  QFile::remove(Catalogue.Paths().ImageDir + QStringLiteral("1.jpg"));
  QTest::keyClick(Window.get(), Qt::Key_F5);
  EXPECT_TRUE(Get(QStringLiteral("FormImage(0)")).isHidden());
}

// By the ways to the two dialogs, with what the user sees of a query in each view.
TEST_F(MainWindowTest, AQueryNarrowsTheFolderAndASearchGoesOnInIt) {
  const auto enter = [this](const std::function<void()>& command, const char* field, const char* text,
                            const char* button) {
    QTimer::singleShot(0, qApp, [=] {
      QWidget* dialog = QApplication::activeModalWidget();
      dialog->findChild<QLineEdit*>(QLatin1String(field))->setText(QLatin1String(text));
      if (auto* names = dialog->findChild<QComboBox*>()) names->setCurrentText(QStringLiteral("Title"));
      dialog->findChild<QPushButton*>(QLatin1String(button))->click();
    });
    command();
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  };
  const auto press = [this](const char* button) { Get<QPushButton>(QLatin1String(button)).click(); };
  const auto held = [this] {
    EXPECT_EQ(Get(QStringLiteral("lblQuery")).isHidden(), !Action("tbarToolBar(12)").isChecked());
    return Action("tbarToolBar(12)").isChecked();
  };
  const auto cell = [this](int i) {
    return Get<browse::ThumbCaption>(QStringLiteral("ThumbTitle(%1)").arg(i)).Caption();
  };
  ClickFolder(Italy);
  enter([&] { press("QueryBttn"); }, "qTitle", "photo 1", "CancelBttn");
  EXPECT_FALSE(held());
  enter([&] { Choose("tbarToolBar(12)"); }, "qTitle", "PHOTO 1", "OkBttn");
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 11"));
  EXPECT_TRUE(held());
  enter([&] { Choose("tbarToolBar(12)"); }, "qTitle", "x", "CancelBttn");
  EXPECT_TRUE(held());

  Choose("MainImage");
  QTest::mouseClick(&Get(QStringLiteral("ImgThumb(5)")), Qt::LeftButton);
  enter([&] { press("SearchBttn(0)"); }, "MatchVal", "17", "NextBttn");
  EXPECT_EQ(Counter(), QStringLiteral("   9 of 11"));
  EXPECT_EQ(cell(0), QStringLiteral("17: Photo 17"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(Counter(), QStringLiteral("   10 of 11"));
  enter([&] { Choose("RecordQuery"); }, "qTitle", "2", "OkBttn");
  EXPECT_EQ(cell(1), QStringLiteral("12: Photo 12"));
  EXPECT_TRUE(Get(QStringLiteral("picThumb(0)")).hasFocus());

  Choose("MainForm");
  enter([&] { press("SearchBttn(1)"); }, "MatchVal", "20", "FindBttn");
  EXPECT_EQ(Get<QLineEdit>(QStringLiteral("eTitle")).text(), QStringLiteral("Photo 20"));
  for (const char* command : {"RecordSearch", "tbarToolBar(13)"}) {
    enter([&] { Choose(command); }, "MatchVal", "2", "FindBttn");
    EXPECT_EQ(Get<QLineEdit>(QStringLiteral("eTitle")).text(), QStringLiteral("Photo 2")) << command;
  }
  enter([&] { Choose("RecordQuery"); }, "qTitle", "nowhere", "OkBttn");
  EXPECT_EQ(Get<QLineEdit>(QStringLiteral("eTitle")).text(), QString());
  EXPECT_TRUE(held());
  Choose("tbarToolBar(12)");  // Nothing is asked of an empty list: a dialog would wait.
  EXPECT_TRUE(held());
  Choose("MainData");
  press("ResetBttn");
  EXPECT_EQ(Counter(), QStringLiteral("   1 of 20"));
  EXPECT_FALSE(held());
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

TEST_F(MainWindowTest, TheMusicMenuPressesTheButtonsOfTheShow) {
  for (const bool soundCard : {false, true}) {
    auto player = std::make_unique<show::ScriptedMedia>();
    player->SoundCard = soundCard;
    Start(std::move(player));
    EXPECT_EQ(Action("MusicPlay").isChecked(), soundCard);
    EXPECT_EQ(Action("MusicPlay").isEnabled(), soundCard);
    EXPECT_EQ(Action("tbarShow(17)").isEnabled(), soundCard);
  }
  for (QAction* action : {&Action("MusicPlay"), &Action("tbarShow(17)")}) {
    const bool on = Action("MusicPlay").isChecked();
    action->trigger();
    EXPECT_NE(Action("MusicPlay").isChecked(), on);
  }
  for (const char* name : {"MusicSetup", "tbarToolBar(22)", "tbarShow(19)"}) {
    OnDialog(
        "frmAudio", [&] { Choose(name); }, [] {});
  }
}

TEST_F(MainWindowTest, AShowOnItsTabWaitsForADialog) {
  auto scripted = std::make_unique<show::ScriptedMedia>();
  show::ScriptedMedia& player = *scripted;
  Start(std::move(scripted));
  const auto& clock = Get<QTimer>(QStringLiteral("Timer1"));
  Choose("MainPlay");
  Choose("tbarShow(6)");
  EXPECT_TRUE(clock.isActive());
  EXPECT_EQ(player.State, show::MediaPlaying);
  const auto waits = [&] {
    EXPECT_FALSE(clock.isActive());
    EXPECT_EQ(player.State, show::MediaPaused);
  };
  OnDialog(
      "frmSetup", [this] { Choose("FileSetup"); }, waits);
  EXPECT_TRUE(clock.isActive());
  EXPECT_EQ(player.State, show::MediaPlaying);
  // Music that was paused before stays paused.
  Choose("tbarShow(17)");
  OnDialog(
      "frmSetup", [this] { Choose("FileSetup"); }, waits);
  EXPECT_TRUE(clock.isActive());
  EXPECT_EQ(player.State, show::MediaPaused);
  Window->close();
  EXPECT_FALSE(clock.isActive());
}

TEST_F(MainWindowTest, AShowEndsWhenItsTabIsLeft) {
  for (const char* command : {"MainData", "MainImage", "MainForm", "MainAdd"}) {
    Choose("MainPlay");
    Choose("tbarShow(13)");
    Choose("tbarShow(6)");
    // Beyond the last photo.
    Get<show::ImagePlay>(QStringLiteral("TabPannel(3)")).TheShow().Slider1_MouseUp(29);
    EXPECT_EQ(Get<QSlider>(QStringLiteral("Slider1")).value(), 30);
    Choose(command);
    EXPECT_FALSE(Get<QTimer>(QStringLiteral("Timer1")).isActive()) << command;
    EXPECT_FALSE(Action("tbarShow(5)").isEnabled()) << command;
  }
  Choose("MainPlay");
  Choose("tbarShow(6)");
  ClickFolder(TopUnorganized);  // holds nothing
  Get<show::ImagePlay>(QStringLiteral("TabPannel(3)")).TheShow().Timer1_Timer();
  EXPECT_TRUE(Action("tbarShow(5)").isEnabled());  // repeating
  ClickFolder(Home);
  EXPECT_EQ(Get<QSlider>(QStringLiteral("Slider1")).maximum(), 10);
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
