#include "show/picture_show.h"

#include <gtest/gtest.h>

#include <QDir>

#include "show/fakes.h"

namespace veldrin::show {
namespace {

// What is done to a show: a button's number, or one of these; a number beyond DragTo drags the slider.
constexpr int Tick = 1, Delete2 = 2, Spoil2 = 3, DragTo = 100;

struct Step {
  int Action;
  const char* State;  ///< as ShowBench::State tells it
};

struct Journey {
  const char* Name;
  int Photos;
  bool Repeat;
  std::vector<Step> Steps;
};

class ShowJourney : public testing::TestWithParam<Journey> {};

TEST_P(ShowJourney, GoesStepByStep) {
  ShowBench bench(GetParam().Photos);
  bench.Settings.ShowRepeat = GetParam().Repeat;
  bench.Surface.SetShowButtons();
  for (const Step& step : GetParam().Steps) {
    if (step.Action == Tick) {
      ASSERT_TRUE(bench.Timer.Enabled) << step.State;
      bench.Tick();
    } else if (step.Action == Delete2) {
      bench.Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 2")});
    } else if (step.Action == Spoil2) {
      bench.Surface.Broken = {2};
    } else if (step.Action >= DragTo) {
      bench.Show.Slider1_MouseDown();
      EXPECT_FALSE(bench.Timer.Enabled && bench.Data1.RecordCount() > 0);
      bench.Show.Slider1_MouseUp(step.Action - DragTo);
    } else {
      bench.Press(step.Action);
    }
    EXPECT_EQ(bench.State(), QLatin1String(step.State)) << "after " << step.Action;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Shows, ShowJourney,
    testing::Values(
        Journey{"OneRecordForwardOnce", 1, false, {{PlayForward, "6: 1 @ 0/1+"}, {Tick, "5: 0 @ 1/1"}}},
        Journey{"ForwardOnce",
                2,
                false,
                {{PlayForward, "6: 1 @ 2/1+"}, {Tick, "6: 2 @ 0/2+"}, {Tick, "5: 0 @ 2/2"}}},
        Journey{"ForwardRepeating",
                2,
                true,
                {{PlayForward, "6: 1 @ 2/1+"}, {Tick, "6: 2 @ 0/2+"}, {Tick, "6: 1 @ 2/1+"}}},
        Journey{"BackwardOnce", 2, false, {{PlayBackward, "4: 1 @ 0/1+"}, {Tick, "5: 0 @ 1/0"}}},
        Journey{"BackwardRepeating",
                2,
                true,
                {{PlayBackward, "4: 1 @ 0/1+"}, {Tick, "4: 2 @ 1/2+"}, {Tick, "4: 1 @ 0/1+"}}},
        Journey{"ARunningShowLearnsToRepeat",
                1,
                false,
                {{PlayForward, "6: 1 @ 0/1+"},
                 {PlayRepeat, "6: 1 @ 0/1+"},
                 {Tick, "6: 1 @ 0/1+"},
                 {PlayOnce, "6: 1 @ 0/1+"},
                 {Tick, "5: 0 @ 1/1"}}},
        Journey{"PauseTakesTheMoveBack",
                3,
                false,
                {{PlayForward, "6: 1 @ 2/1+"},
                 {PausePlay, "9: 1 @ 1/1"},
                 {PlayForward, "6: 1 @ 2/1+"},
                 {Tick, "6: 2 @ 3/2+"},
                 {PlayBackward, "4: 3 @ 2/3+"},
                 {PausePlay, "9: 3 @ 3/3"},
                 {StopPlay, "5: 0 @ 3/3"}}},
        Journey{"PauseAtTheEnds",
                1,
                false,
                {{PlayForward, "6: 1 @ 0/1+"},
                 {PausePlay, "9: 1 @ 1/1"},
                 {PlayBackward, "4: 1 @ 0/1+"},
                 {PausePlay, "9: 1 @ 1/1"}}},
        Journey{"StepsStayWithinTheList",
                2,
                false,
                {{PlayForward, "6: 1 @ 2/1+"},
                 {PausePlay, "9: 1 @ 1/1"},
                 {StepForward, "9: 2 @ 2/2"},
                 {StepForward, "9: 2 @ 2/2"},
                 {StepBackward, "9: 1 @ 1/1"},
                 {StepBackward, "9: 1 @ 1/1"}}},
        Journey{"TheSliderOfAPlayingShow",
                5,
                false,
                {{PlayForward, "6: 1 @ 2/1+"}, {DragTo + 3, "6: 4 @ 5/4+"}, {DragTo + 0, "6: 1 @ 2/1+"}}},
        Journey{"TheSliderOfAPausedShow",
                3,
                false,
                {{PlayForward, "6: 1 @ 2/1+"}, {PausePlay, "9: 1 @ 1/1"}, {DragTo + 1, "9: 2 @ 3/2"}}},
        Journey{
            "TheSliderOfAStoppedShow", 3, false, {{DragTo + 2, "5: 0 @ 3/0"}, {PlayForward, "6: 3 @ 0/3+"}}},
        Journey{
            "ADragToTheEndEndsTheShow", 3, false, {{PlayForward, "6: 1 @ 2/1+"}, {DragTo + 3, "5: 0 @ 3/3"}}},
        Journey{"ADragToTheEndOfARepeatingShow",
                3,
                true,
                {{PlayForward, "6: 1 @ 2/1+"}, {DragTo + 3, "6: 1 @ 2/1+"}}},
        Journey{"ABrokenPictureIsPassedOver",
                3,
                false,
                {{Spoil2, "5: 0 @ 1/0"},
                 {PlayForward, "6: 1 @ 2/1+"},
                 {Tick, "6: 1 @ 3/2+"},
                 {Tick, "6: 3 @ 0/3+"}}},
        Journey{"ARecordDeletedMeanwhile",
                3,
                false,
                {{PlayForward, "6: 1 @ 2/1+"},
                 {Delete2, "6: 1 @ 2/1+"},
                 {Tick, "6: 1 @ 3/2+"},
                 {Tick, "6: 3 @ 0/3+"}}},
        Journey{"AnEmptyListOnce", 0, false, {{DragTo + 1, "5: 0 @ 0/0"}, {PlayForward, "5: 0 @ 0/0"}}},
        Journey{"AnEmptyListRepeating",
                0,
                true,
                {{PlayForward, "6: 0 @ 0/0+"},
                 {Tick, "6: 0 @ 0/0+"},
                 {PausePlay, "9: 0 @ 0/0"},
                 {StepForward, "9: 0 @ 0/0"},
                 {StopPlay, "5: 0 @ 0/0"}}}),
    test::CaseName);

TEST(PictureShow, PreparesThePictureOfTheNextTick) {
  ShowBench bench(3);
  bench.Settings.ShowRepeat = true;
  for (const auto& [action, prepared] : std::vector<std::pair<int, int>>{{PlayForward, 2},
                                                                         {Tick, 3},
                                                                         {Tick, 1},
                                                                         {PausePlay, 1},
                                                                         {StepBackward, 1},
                                                                         {PlayBackward, 1},
                                                                         {Tick, 3}}) {
    action == Tick ? bench.Tick() : bench.Press(action);
    EXPECT_EQ(bench.Surface.Prepared, prepared) << action;
  }
  bench.Data1.RecordSource += QStringLiteral(" WHERE PhotoID > 1");
  bench.Data1.Refresh();
  bench.Show.ListChanged();
  EXPECT_EQ(bench.Surface.Prepared, 2);
}

// The end of a show that isn't repeated leaves the guard up.
TEST(PictureShow, GuardsItsMoves) {
  ShowBench bench(2);
  bool guarded = true;
  QObject::connect(&bench.Data1, &catalogue::RecordList::Reposition, &bench.Data1,
                   [&] { guarded = guarded && bench.Data1.SuppressReposition; });
  bench.Press(PlayForward);
  EXPECT_FALSE(bench.Data1.SuppressReposition);
  bench.Show.Slider1_MouseUp(1);
  EXPECT_FALSE(bench.Data1.SuppressReposition);
  bench.Tick();
  EXPECT_TRUE(bench.Data1.SuppressReposition);
  EXPECT_TRUE(guarded);
}

struct Handover {
  const char* Name;
  int State;
  int Button;  ///< by which the whole screen is left; 0 for the ways that don't take the move back
  const char* There;
  const char* Back;
};

class ShowHandover : public testing::TestWithParam<Handover> {};

TEST_P(ShowHandover, GoesOnInTheOtherWindow) {
  ShowBench bench(9);
  PlainSurface whole(bench.Settings);
  HandTimer timer;
  PictureShow wholeShow(bench.Parts, whole, timer, ShowWindow::FullScreen);
  bench.Show.Slider1_MouseUp(4);
  bench.Press(GetParam().State == PausePlay ? PlayForward : GetParam().State);
  if (GetParam().State == PausePlay) bench.Press(PausePlay);
  bench.Surface.OtherWindow = [&] {
    EXPECT_FALSE(bench.Timer.Enabled);
    wholeShow.TakeUp();
    EXPECT_EQ(QStringLiteral("%1 @ %2").arg(whole.Shown).arg(bench.Data1.AbsolutePosition() + 1),
              QLatin1String(GetParam().There));
    if (GetParam().Button != 0) wholeShow.tbarShow_ButtonClick(GetParam().Button);
    bench.Surface.HidePictures();
    bench.Show.TakeUp();
  };
  bench.Press(PlayFullScreen);
  EXPECT_EQ(bench.State(), QLatin1String(GetParam().Back));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ShowHandover,
    testing::Values(Handover{"ForwardByTheButton", PlayForward, PlayFullScreen, "5 @ 6", "6: 5 @ 6/5+"},
                    Handover{"ForwardByEsc", PlayForward, 0, "5 @ 6", "6: 6 @ 7/6+"},
                    Handover{"BackwardByTheButton", PlayBackward, PlayFullScreen, "5 @ 4", "4: 5 @ 4/5+"},
                    Handover{"BackwardByEsc", PlayBackward, 0, "5 @ 4", "4: 4 @ 3/4+"},
                    Handover{"Paused", PausePlay, 0, "5 @ 5", "9: 5 @ 5/5"},
                    Handover{"PausedThere", PlayForward, PausePlay, "5 @ 6", "9: 5 @ 5/5"},
                    Handover{"Stopped", StopPlay, 0, "0 @ 5", "5: 0 @ 5/0"}),
    test::CaseName);

TEST(SetShowButtons, EnablesByTheState) {
  const std::map<int, const char*> enabled = {{PlayBackward, "5 6 9 13"},
                                              {StopPlay, "4 6 13"},
                                              {PlayForward, "4 5 9 13"},
                                              {PausePlay, "4 6 8 10 13"}};
  for (const auto& [state, expected] : enabled) {
    ShowSettings settings;
    settings.ShowState = state;
    QStringList names;
    for (const ShowButtonState& button : SetShowButtons(settings, false)) {
      if (button.Enabled) names << QString::number(button.Button);
    }
    EXPECT_EQ(names.join(QLatin1Char(' ')), QLatin1String(expected)) << state;
  }
}

}  // namespace
}  // namespace veldrin::show
