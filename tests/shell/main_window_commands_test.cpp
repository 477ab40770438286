#include <QComboBox>

#include "shell/main_window_fixture.h"
#include "show/fakes.h"

namespace veldrin::shell {
namespace {

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
  // Nor does a show outlive the window.
  Window->close();
  EXPECT_FALSE(clock.isActive());
  EXPECT_EQ(player.State, show::MediaStopped);
  EXPECT_FALSE(Action("tbarShow(5)").isEnabled());
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

}  // namespace
}  // namespace veldrin::shell
