#include "shell/main_window_fixture.h"
#include "show/fakes.h"
#include "support/environment.h"

namespace veldrin::shell {
namespace {

TEST_F(MainWindowTest, CutsCopiesAndPastesRecords) {
  const auto shown = [this] {
    const bool grey = Get<browse::Shape>("shpMark(0)").BorderColor() == browse::DimmedColor;
    EXPECT_EQ(grey, Get("TDBGrid1").palette().color(QPalette::Highlight) == browse::DimmedColor);
    return Those({"RecordUndoCut", "RecordSep1"}, &QAction::isVisible) + '|' +
           Those({"RecordPaste", "FolderRcdPaste"}, &QAction::isEnabled) + (grey ? "|grey" : "");
  };
  Choose("MainImage");
  ClickFolder(Italy);
  ClickThumb(1, Qt::ControlModifier);
  Choose("RecordCut");
  EXPECT_EQ(shown(), "RecordUndoCut RecordSep1|RecordPaste|grey");
  Choose("RecordUndoCut");
  EXPECT_EQ(shown(), "|");
  Choose("RecordCut");
  ClickFolder(Travels);
  EXPECT_EQ(shown(), "RecordUndoCut RecordSep1|");
  ClickFolder(Home);
  EXPECT_EQ(shown(), "RecordUndoCut RecordSep1|RecordPaste FolderRcdPaste")
      << "another selection isn't the one that was cut";
  Choose("FolderRcdPaste");
  EXPECT_EQ(shown(), "|");
}

TEST_F(MainWindowTest, PhotosAreHandedOnFromEachOfThePlaces) {
  Catalogue.Paths().BrowserPath = "true";
  const test::Environment noMailer{{"PATH", qgetenv("PATH")}};
  Choose("MainImage");
  ClickThumb(1, Qt::ControlModifier);
  for (const char* get : {"FileGet", "PhotoGet", "tbarToolBar(15)", "GetMBttn", "GetSBttn"})
    OnDialog("frmGet", [&] { Choose(get); });
  for (const char* web : {"FileWeb", "PhotoWeb", "tbarToolBar(17)", "WebBttn"})
    OnDialog("frmWeb", [&] { Choose(web); });
  const std::pair<const char*, const char*> reports[] = {{"ReportList", "PhotoData_pg2.htm"},
                                                         {"tbarToolBar(19)", "PhotoData_pg2.htm"},
                                                         {"ReportGallery", "PhotoImage_pg3.htm"},
                                                         {"tbarToolBar(20)", "PhotoImage_pg3.htm"}};
  for (const auto& [command, page] : reports) {
    Choose(command);
    EXPECT_TRUE(QFile::remove(Catalogue.Paths().TempDir + page)) << command;
  }
  Choose("PrintBttn");
  EXPECT_TRUE(Get<QMenu>("ReportMenu").isVisible());
  Get<QMenu>("ReportMenu").close();
  qputenv("PATH", "");
  for (const char* mail : {"FileEmail", "PhotoEmail", "tbarToolBar(16)", "EmailMBttn", "EmailSBttn"}) {
    const QStringList boxes = test::AnswerBoxes([&] { Choose(mail); }, {QMessageBox::Ok});
    EXPECT_TRUE(boxes.value(0).startsWith("Error|Error Code: 32003 ")) << mail;
  }
}

TEST_F(MainWindowTest, TheMusicMenuPressesTheButtonsOfTheShow) {
  for (const bool soundCard : {false, true}) {
    auto player = std::make_unique<show::ScriptedMedia>();
    player->SoundCard = soundCard;
    Start(std::move(player));
    EXPECT_EQ(Action("MusicPlay").isChecked(), soundCard);
    EXPECT_EQ(Those({"MusicPlay", "tbarShow(17)"}, &QAction::isEnabled),
              soundCard ? "MusicPlay tbarShow(17)" : "");
  }
  Choose("MusicPlay");
  EXPECT_FALSE(Action("MusicPlay").isChecked());
  Choose("tbarShow(17)");
  EXPECT_TRUE(Action("MusicPlay").isChecked());
  for (const char* command : {"MusicSetup", "tbarToolBar(22)", "tbarShow(19)"})
    OnDialog("frmAudio", [&] { Choose(command); });
}

TEST_F(MainWindowTest, AShowOnItsTabWaitsForADialog) {
  auto scripted = std::make_unique<show::ScriptedMedia>();
  const show::ScriptedMedia& player = *scripted;
  Start(std::move(scripted));
  const auto expect = [&](bool runs, int music) {
    EXPECT_EQ(Get<QTimer>("Timer1").isActive(), runs);
    EXPECT_EQ(player.State, music);
  };
  Choose("MainPlay");
  Choose("tbarShow(6)");
  // Music that was paused before stays paused.
  for (const int music : {show::MediaPlaying, show::MediaPaused}) {
    for (const auto& [dialog, command] :
         {std::pair("frmSetup", "FileSetup"), std::pair("frmQry", "RecordQuery"),
          std::pair("frmAudio", "tbarShow(19)")}) {
      expect(true, music);
      OnDialog(
          dialog, [this, command = command] { Choose(command); }, [&] { expect(false, show::MediaPaused); });
      expect(true, music);
    }
    Choose("tbarShow(17)");
  }
  // Nor does a show outlive its tab, or the window.
  Choose("MainData");
  expect(false, show::MediaStopped);
  Choose("MainPlay");
  Choose("tbarShow(6)");
  Window->close();
  expect(false, show::MediaStopped);
  EXPECT_FALSE(Action("tbarShow(5)").isEnabled());
}

}  // namespace
}  // namespace veldrin::shell
