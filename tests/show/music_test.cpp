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

// What is done: a button's number, or one of these.
constexpr int EndTrack = 1, Break = 2, HoldByDialog = 3;

struct Step {
  int Action;
  int PlayState;
  const char* Opened;  ///< all tracks so far
};

struct Piece {
  const char* Name;
  QStringList Tracks;
  std::vector<Step> Steps;
};

class MusicJourney : public testing::TestWithParam<Piece> {};

TEST_P(MusicJourney, FollowsTheShow) {
  ShowBench bench(9, GetParam().Tracks);
  for (const Step& step : GetParam().Steps) {
    if (step.Action == EndTrack) {
      bench.Player.EndTrack();
    } else if (step.Action == Break) {
      bench.Player.Break();
    } else if (step.Action == HoldByDialog) {
      const int before = bench.Show.Suspend();
      EXPECT_NE(bench.Player.PlayState(), MediaPlaying);
      EXPECT_FALSE(bench.Timer.Enabled);
      bench.Show.Resume(before);
      EXPECT_EQ(bench.Timer.Enabled, bench.Settings.ShowState == PlayForward);
    } else {
      bench.Press(step.Action);
    }
    EXPECT_EQ(bench.Player.PlayState(), step.PlayState) << "after " << step.Action;
    EXPECT_EQ(bench.Player.Opened.join(QLatin1Char(' ')), QLatin1String(step.Opened))
        << "after " << step.Action;
  }
}

const QStringList One = {QStringLiteral("a.wav")};
const QStringList Two = {QStringLiteral("a.wav"), QStringLiteral("b.mp3"), QStringLiteral("notes.txt")};
const QStringList Three = {QStringLiteral("C.AIFF"), QStringLiteral("a.wav"), QStringLiteral("b.mp3")};

INSTANTIATE_TEST_SUITE_P(
    Pieces, MusicJourney,
    testing::Values(
        Piece{"InTheOrderOfNames",
              Three,
              {{PlayForward, 2, "a.wav"},
               {EndTrack, 2, "a.wav b.mp3"},
               {EndTrack, 2, "a.wav b.mp3 C.AIFF"},
               {EndTrack, 2, "a.wav b.mp3 C.AIFF a.wav"}}},
        Piece{"StopGoesOnWithTheNextFile",
              Two,
              {{PlayForward, 2, "a.wav"}, {StopPlay, 0, "a.wav"}, {PlayBackward, 2, "a.wav b.mp3"}}},
        Piece{"PauseGoesOnWithTheSameFile",
              Two,
              {{PlayForward, 2, "a.wav"}, {PausePlay, 1, "a.wav"}, {PlayForward, 2, "a.wav"}}},
        Piece{"AnEndWithinAPause",
              Two,
              {{PlayForward, 2, "a.wav"},
               {PausePlay, 1, "a.wav"},
               {EndTrack, 0, "a.wav"},
               {PlayForward, 2, "a.wav b.mp3"}}},
        Piece{"OffAndOnInARunningShow",
              Two,
              {{PlayForward, 2, "a.wav"}, {MusicOnOff, 1, "a.wav"}, {MusicOnOff, 2, "a.wav"}}},
        Piece{"OffAndOnInAStoppedShow",
              Two,
              {{MusicOnOff, 6, ""}, {PlayForward, 6, ""}, {MusicOnOff, 2, "a.wav"}}},
        Piece{"OnInAStoppedShow", Two, {{MusicOnOff, 6, ""}, {MusicOnOff, 6, ""}}},
        Piece{"ADialogOverAPlayingShow", Two, {{PlayForward, 2, "a.wav"}, {HoldByDialog, 2, "a.wav"}}},
        Piece{"ADialogOverMusicThatWasPaused",
              Two,
              {{PlayForward, 2, "a.wav"}, {MusicOnOff, 1, "a.wav"}, {HoldByDialog, 1, "a.wav"}}},
        Piece{"ADialogOverAPausedShow",
              Two,
              {{PlayForward, 2, "a.wav"}, {PausePlay, 1, "a.wav"}, {HoldByDialog, 1, "a.wav"}}},
        Piece{"ABrokenTrackIsPassedOver",
              Two,
              {{PlayForward, 2, "a.wav"},
               {Break, 2, "a.wav b.mp3"},
               {EndTrack, 2, "a.wav b.mp3 a.wav"},
               {Break, 2, "a.wav b.mp3 a.wav b.mp3"}}},
        Piece{"BrokenTracksOnlyAreTriedOnce",
              Three,
              {{PlayForward, 2, "a.wav"},
               {Break, 2, "a.wav b.mp3"},
               {Break, 2, "a.wav b.mp3 C.AIFF"},
               {Break, 6, "a.wav b.mp3 C.AIFF"},
               {PlayBackward, 2, "a.wav b.mp3 C.AIFF a.wav"}}},
        Piece{"OneTrackRoundAndRound",
              One,
              {{PlayForward, 2, "a.wav"}, {EndTrack, 2, "a.wav a.wav"}, {Break, 6, "a.wav a.wav"}}},
        Piece{"AnEmptyDirectory", {}, {{PlayForward, 2, ""}, {Break, 6, ""}}}),
    test::CaseName);

TEST(Music, TheMusicDialogHoldsTheShow) {
  for (const ShowWindow window : {ShowWindow::Main, ShowWindow::FullScreen}) {
    ShowBench bench(3);
    PictureShow show(bench.Parts, bench.Surface, bench.Timer, window);
    bench.Surface.AudioDialog = [&] {
      EXPECT_FALSE(bench.Timer.Enabled);
      EXPECT_NE(bench.Player.State, MediaPlaying);
    };
    show.tbarShow_ButtonClick(PlayForward);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_TRUE(bench.Timer.Enabled);
    EXPECT_EQ(bench.Player.State, MediaPlaying);
    // The main window asks how it was before the dialog, the whole screen how it is after it.
    show.tbarShow_ButtonClick(PausePlay);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_EQ(bench.Player.State, window == ShowWindow::Main ? MediaPaused : MediaPlaying);
    EXPECT_FALSE(bench.Timer.Enabled);
  }
}

}  // namespace
}  // namespace veldrin::show
