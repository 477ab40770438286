#include "show/audio_dialog.h"

#include "show/fakes.h"

namespace veldrin::show {
namespace {

class AudioDialogTest : public testing::Test, public test::Controls {
 protected:
  AudioDialogTest() {
    for (const char* name : {"b.mp3", "new.AIFF", "notes.txt", "song.wav"})
      test::WriteFile(Source.filePath(name), name);
    Open(MusicDir);
  }

  void Open(const QString& musicDir) {
    Dialog = std::make_unique<frmAudio>(Fixture.MusicList, musicDir, nullptr, Source.path());
    Root = Dialog.get();
    Dialog->show();
  }
  // Presses Add, of which a box must come.
  QString Add() {
    return test::AnswerBoxes([this] { Click("AddBttn"); }, {QMessageBox::Ok}).join(' ');
  }
  controls::FileListBox& List(const char* name) { return Get<controls::FileListBox>(name); }
  static QString Names(const controls::FileListBox& list) {
    QStringList names;
    for (int i = 0; i < list.ListCount(); ++i) names << list.List(i);
    return names.join(' ');
  }

  QTemporaryDir Source;
  ShowFixture Fixture{0, {"a.wav", "b.mp3"}};
  const QString MusicDir = Fixture.Catalogue.Paths().MusicDir;
  std::unique_ptr<frmAudio> Dialog;
};

TEST_F(AudioDialogTest, AddsAndRemovesFiles) {
  Click("AddBttn");  // nothing is selected
  List("FileToSel").selectAll();
  Click("AddBttn");
  EXPECT_EQ(Names(List("FileToPlay")), "a.wav b.mp3 new.AIFF song.wav");
  EXPECT_EQ(test::ReadFile(MusicDir + "b.mp3"), "b.mp3");
  EXPECT_EQ(Fixture.MusicList.ListCount(), 2)
      << "the show goes on with the old list until the dialog has gone";
  for (const int row : {0, 3}) List("FileToPlay").item(row)->setSelected(true);
  QFile::remove(MusicDir + "a.wav");
  Click("RmvBttn");
  EXPECT_EQ(Names(List("FileToPlay")), "b.mp3 new.AIFF");
  Fixture.Settings.MusicIndex = 7;
  Click("CloseBttn");
  Dialog.reset();
  EXPECT_EQ(Names(Fixture.MusicList), "b.mp3 new.AIFF");
  EXPECT_EQ(Fixture.Settings.MusicIndex, 7);
  Open(Source.filePath("none/"));
  Click("RmvBttn");
  List("FileToSel").selectAll();
  EXPECT_TRUE(Add().contains("3 (Path not found)\n"));
  Dialog.reset();
  EXPECT_EQ(Fixture.MusicList.ListCount(), 0) << "without a music directory";
}

TEST_F(AudioDialogTest, ListsTheDirectoryThatIsChosen) {
  auto& chooser = *Dialog->findChild<controls::DirectoryChooser*>();
  const auto listed = [this] { return Names(List("FileToSel")); };
  chooser.SetPath(QDir(MusicDir).absolutePath());
  EXPECT_EQ(listed(), "a.wav b.mp3");
  List("FileToSel").selectAll();
  EXPECT_TRUE(Add().endsWith("2 (it is among the files to play)\n\na.wav\nb.mp3"));
  EXPECT_EQ(test::ReadFile(MusicDir + "a.wav"), "sound") << "copied onto itself";
  chooser.SetPath(Source.path());
  EXPECT_EQ(listed(), "b.mp3 new.AIFF song.wav");
}

}  // namespace
}  // namespace veldrin::show
