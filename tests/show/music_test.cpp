#include "show/music.h"

#include <gtest/gtest.h>

#include "show/fakes.h"

namespace veldrin::show {
namespace {

TEST(NextMusicFile, GoesRoundOnlyAtTheEnd) {
  const QStringList files = {QStringLiteral("a"), QStringLiteral("b")};
  int index = 0;
  for (const char* name : {"a", "b", "a", "b"}) EXPECT_EQ(NextMusicFile(files, index), QLatin1String(name));
  // The list became shorter than the index.
  EXPECT_EQ(NextMusicFile({QStringLiteral("a")}, index), QString());
  EXPECT_EQ(index, 3);
  EXPECT_EQ(NextMusicFile({}, index), QString());
  EXPECT_EQ(index, 3);
}

struct Piece {
  const char* Name;
  QStringList Tracks;
  const char* Steps;  ///< actions, each with the state of the player and the track opened, if any
};

class MusicJourney : public testing::TestWithParam<Piece> {};

TEST_P(MusicJourney, FollowsTheShow) {
  ShowFixture fixture(9, GetParam().Tracks);
  for (const auto& [action, state] : StepsOf(GetParam().Steps)) {
    fixture.Player.Opened.clear();
    if (action == QLatin1String("end")) {
      fixture.Player.EndTrack();
    } else if (action == QLatin1String("break")) {
      fixture.Player.Break();
    } else if (action == QLatin1String("beyond")) {
      fixture.Settings.MusicIndex = 9;
    } else if (action.startsWith(QLatin1String("dialog"))) {
      const int before = fixture.Show.Suspend();
      EXPECT_NE(fixture.Player.PlayState(), MediaPlaying);
      EXPECT_FALSE(fixture.Timer.Enabled);
      if (action == QLatin1String("dialog:end")) fixture.Player.EndTrack();
      fixture.Show.Resume(before);
      EXPECT_EQ(fixture.Timer.Enabled, fixture.Settings.ShowState == PlayForward);
    } else {
      fixture.Press(action);
    }
    EXPECT_EQ(QString::number(fixture.Player.State) + fixture.Player.Opened.join(QString()), state)
        << "after " << action.toStdString();
  }
}

const QStringList One = {QStringLiteral("a.wav")};
const QStringList Two = {QStringLiteral("a.wav"), QStringLiteral("b.mp3"), QStringLiteral("notes.txt")};
const QStringList Three = {QStringLiteral("C.AIFF"), QStringLiteral("a.wav"), QStringLiteral("b.mp3")};

INSTANTIATE_TEST_SUITE_P(
    Pieces, MusicJourney,
    testing::Values(Piece{"InTheOrderOfNames", Three, "play 2a.wav end 2b.mp3 end 2C.AIFF end 2a.wav"},
                    Piece{"StopGoesOnWithTheNextFile", Two, "play 2a.wav stop 0 back 2b.mp3"},
                    Piece{"PauseGoesOnWithTheSameFile", Two, "play 2a.wav pause 1 play 2"},
                    Piece{"AnEndWithinAPause", Two, "play 2a.wav pause 1 end 0 play 2b.mp3"},
                    Piece{"OffAndOnInARunningShow", Two, "play 2a.wav music 1 music 2"},
                    Piece{"OffAndOnInAStoppedShow", Two, "music 6 play 6 music 2a.wav"},
                    Piece{"OnInAStoppedShow", Two, "music 6 music 6"},
                    Piece{"ADialogOverAPlayingShow", Two, "play 2a.wav dialog 2"},
                    Piece{"ATrackThatEndsBehindADialog", Two, "play 2a.wav dialog:end 2b.mp3"},
                    Piece{"AnIndexBeyondTheList", Two, "beyond 6 play 2 break 6 stop 6 play 2 break 6"},
                    Piece{"ADialogOverMusicThatWasPaused", Two, "play 2a.wav music 1 dialog 1"},
                    Piece{"ADialogOverAPausedShow", Two, "play 2a.wav pause 1 dialog 1"},
                    Piece{"ABrokenTrackIsPassedOver", Two,
                          "play 2a.wav break 2b.mp3 end 2a.wav break 2b.mp3"},
                    Piece{"BrokenTracksOnlyAreTriedOnce", Three,
                          "play 2a.wav break 2b.mp3 break 2C.AIFF break 6 back 2a.wav"},
                    Piece{"OneTrackRoundAndRound", One, "play 2a.wav end 2a.wav break 6"},
                    Piece{"AnEmptyDirectory", {}, "play 2 break 6"}),
    test::CaseName);

TEST(Music, TheMusicDialogHoldsTheShow) {
  for (const ShowWindow window : {ShowWindow::Main, ShowWindow::FullScreen}) {
    ShowFixture fixture(3);
    PictureShow show(fixture.Parts, fixture.Surface, fixture.Timer, window);
    fixture.Surface.AudioDialog = [&] {
      EXPECT_FALSE(fixture.Timer.Enabled);
      EXPECT_NE(fixture.Player.State, MediaPlaying);
    };
    show.tbarShow_ButtonClick(PlayForward);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_TRUE(fixture.Timer.Enabled);
    EXPECT_EQ(fixture.Player.State, MediaPlaying);
    // The main window asks how it was before the dialog, the whole screen how it is after it.
    show.tbarShow_ButtonClick(PausePlay);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_EQ(fixture.Player.State, window == ShowWindow::Main ? MediaPaused : MediaPlaying);
    EXPECT_FALSE(fixture.Timer.Enabled);
  }
}

}  // namespace
}  // namespace veldrin::show
