#include "show/audio_dialog.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QPushButton>

#include "show/fakes.h"

namespace veldrin::show {
namespace {

class AudioDialogTest : public testing::Test {
 protected:
  AudioDialogTest() {
    for (const char* name : {"b.mp3", "new.AIFF", "notes.txt", "song.wav"})
      test::WriteFile(Source.filePath(QLatin1String(name)), name);
    Open(Fixture.Catalogue.Paths().MusicDir);
  }

  void Open(const QString& musicDir) {
    Dialog = std::make_unique<frmAudio>(Fixture.Data1, Fixture.MusicList, musicDir, nullptr, Source.path());
    Dialog->show();
  }
  controls::FileListBox& List(const char* name) {
    return *Dialog->findChild<controls::FileListBox*>(QLatin1String(name));
  }
  void Click(const char* name) { Dialog->findChild<QPushButton*>(QLatin1String(name))->click(); }
  static QString Names(const controls::FileListBox& list) {
    QStringList names;
    for (int i = 0; i < list.ListCount(); ++i) names << list.List(i);
    return names.join(QLatin1Char(' '));
  }

  QTemporaryDir Source;
  ShowFixture Fixture{0, {QStringLiteral("a.wav"), QStringLiteral("b.mp3")}};
  std::unique_ptr<frmAudio> Dialog;
};

TEST_F(AudioDialogTest, AddsAndRemovesFiles) {
  EXPECT_EQ(Dialog->windowTitle(), QStringLiteral("Select Audio FIles"));
  EXPECT_EQ(Names(List("FileToSel")), QStringLiteral("b.mp3 new.AIFF song.wav"));
  Click("AddBttn");  // nothing is selected
  EXPECT_EQ(Names(List("FileToPlay")), QStringLiteral("a.wav b.mp3"));
  List("FileToSel").selectAll();
  Click("AddBttn");
  EXPECT_EQ(Names(List("FileToPlay")), QStringLiteral("a.wav b.mp3 new.AIFF song.wav"));
  EXPECT_EQ(test::ReadFile(Fixture.Catalogue.Paths().MusicDir + QStringLiteral("b.mp3")), "b.mp3");
  // The show goes on with the old list until the dialog has gone.
  EXPECT_EQ(Fixture.MusicList.ListCount(), 2);
  List("FileToPlay").item(0)->setSelected(true);
  List("FileToPlay").item(3)->setSelected(true);
  QFile::remove(Fixture.Catalogue.Paths().MusicDir + QStringLiteral("a.wav"));
  Click("RmvBttn");
  EXPECT_EQ(Names(List("FileToPlay")), QStringLiteral("b.mp3 new.AIFF"));
  Fixture.Settings.MusicIndex = 7;
  Click("CloseBttn");
  EXPECT_FALSE(Dialog->isVisible());
  Dialog.reset();
  EXPECT_EQ(Names(Fixture.MusicList), QStringLiteral("b.mp3 new.AIFF"));
  EXPECT_EQ(Fixture.Settings.MusicIndex, 7);
}

TEST_F(AudioDialogTest, ListsTheDirectoryThatIsChosen) {
  auto& chooser = *Dialog->findChild<controls::DirectoryChooser*>();
  chooser.SetPath(QDir(Fixture.Catalogue.Paths().MusicDir).absolutePath());
  EXPECT_EQ(Names(List("FileToSel")), QStringLiteral("a.wav b.mp3"));
  // A file can't be copied onto itself, and isn't harmed by the attempt.
  List("FileToSel").selectAll();
  EXPECT_THROW(Click("AddBttn"), base::RuntimeError);
  EXPECT_EQ(test::ReadFile(Fixture.Catalogue.Paths().MusicDir + QStringLiteral("a.wav")), "sound");
  // While a routine walks the list of records, the files stay as they are.
  Fixture.Data1.SuppressReposition = true;
  chooser.SetPath(Source.path());
  EXPECT_EQ(Names(List("FileToSel")), QStringLiteral("a.wav b.mp3"));
  // So they do while a drive that can't be opened gives way to the one before.
  Fixture.Data1.SuppressReposition = false;
  Q_EMIT chooser.Restore(true);
  Q_EMIT chooser.Change();
  EXPECT_EQ(Names(List("FileToSel")), QStringLiteral("a.wav b.mp3"));
  Q_EMIT chooser.Restore(false);
  Q_EMIT chooser.Change();
  EXPECT_EQ(Names(List("FileToSel")), QStringLiteral("b.mp3 new.AIFF song.wav"));
}

TEST_F(AudioDialogTest, WithoutAMusicDirectory) {
  Open(Source.filePath(QStringLiteral("none/")));
  EXPECT_EQ(List("FileToPlay").ListCount(), 0);
  Click("RmvBttn");
  EXPECT_EQ(List("FileToPlay").ListCount(), 0);
  List("FileToSel").selectAll();
  EXPECT_THROW(Click("AddBttn"), base::RuntimeError);
  Dialog.reset();
  EXPECT_EQ(Fixture.MusicList.ListCount(), 0);
}

}  // namespace
}  // namespace veldrin::show
