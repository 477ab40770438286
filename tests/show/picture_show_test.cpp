#include "show/picture_show.h"

#include <gtest/gtest.h>

#include <QDir>

#include "show/fakes.h"

namespace veldrin::show {
namespace {

struct Journey {
  const char* Name;
  int Photos;
  const char* Steps;  ///< actions, each with the state after it, as ShowFixture::State tells it
};

class ShowJourney : public testing::TestWithParam<Journey> {};

TEST_P(ShowJourney, GoesStepByStep) {
  ShowFixture fixture(GetParam().Photos);
  for (const auto& [action, state] : StepsOf(GetParam().Steps)) {
    if (action == QLatin1String("tick")) {
      ASSERT_TRUE(fixture.Timer.Enabled) << state.toStdString();
      fixture.Tick();
    } else if (action == QLatin1String("delete2")) {
      fixture.Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 2")});
    } else if (action == QLatin1String("spoil2")) {
      fixture.Surface.Broken = {2};
    } else if (action.startsWith(QLatin1String("drag"))) {
      fixture.Show.Slider1_MouseDown();
      EXPECT_FALSE(fixture.Timer.Enabled && fixture.Data1.RecordCount() > 0);
      fixture.Show.Slider1_MouseUp(action.mid(4).toInt());
    } else {
      fixture.Press(action);
    }
    EXPECT_EQ(fixture.State(), state) << "after " << action.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Shows, ShowJourney,
    testing::Values(
        Journey{"OneRecordForwardOnce", 1, "play 6:1@2/1+ tick 5:0@1/1"},
        Journey{"ForwardOnce", 2, "play 6:1@2/1+ tick 6:2@3/2+ tick 5:0@2/2"},
        Journey{"ForwardRepeating", 2, "repeat 5:0@1/0 play 6:1@2/1+ tick 6:2@3/2+ tick 6:1@2/1+"},
        Journey{"BackwardOnce", 2, "back 4:1@0/1+ tick 5:0@1/0"},
        Journey{"BackwardRepeating", 2, "repeat 5:0@1/0 back 4:1@0/1+ tick 4:2@1/2+ tick 4:1@0/1+"},
        Journey{"ARunningShowLearnsToRepeat", 1,
                "play 6:1@2/1+ repeat 6:1@2/1+ tick 6:1@2/1+ once 6:1@2/1+ tick 5:0@1/1"},
        Journey{"PauseTakesTheMoveBack", 3,
                "play 6:1@2/1+ pause 9:1@1/1 play 6:1@2/1+ tick 6:2@3/2+ back 4:3@2/3+ pause 9:3@3/3 "
                "stop 5:0@3/3"},
        Journey{"PauseAtTheEnds", 1, "play 6:1@2/1+ pause 9:1@1/1 back 4:1@0/1+ pause 9:1@1/1"},
        Journey{"StepsStayWithinTheList", 2,
                "play 6:1@2/1+ pause 9:1@1/1 on 9:2@2/2 on 9:2@2/2 before 9:1@1/1 before 9:1@1/1"},
        Journey{"TheSliderOfAPlayingShow", 5, "play 6:1@2/1+ drag3 6:4@5/4+ drag0 6:1@2/1+"},
        Journey{"TheSliderOfAPausedShow", 3, "play 6:1@2/1+ pause 9:1@1/1 drag1 9:2@3/2 drag3 5:0@3/3"},
        Journey{"TheSliderOfAStoppedShow", 3, "drag2 5:0@3/0 play 6:3@4/3+"},
        Journey{"TheSliderOfAShowThatPlaysBackward", 3, "drag2 5:0@3/0 back 4:3@2/3+ drag1 4:2@1/2+"},
        Journey{"ADragToTheEndEndsTheShow", 3, "play 6:1@2/1+ drag3 5:0@3/3"},
        Journey{"ADragToTheEndOfARepeatingShow", 3, "repeat 5:0@1/0 play 6:1@2/1+ drag3 6:1@2/1+"},
        Journey{"ABrokenPictureIsPassedOver", 3, "spoil2 5:0@1/0 play 6:1@2/1+ tick 6:1@3/2+ tick 6:3@4/3+"},
        Journey{"ARecordDeletedMeanwhile", 3, "play 6:1@2/1+ delete2 6:1@2/1+ tick 6:1@3/2+ tick 6:3@4/3+"},
        Journey{"AnEmptyListOnce", 0, "drag1 5:0@0/0 play 5:0@0/0"},
        Journey{"AnEmptyListRepeating", 0,
                "repeat 5:0@0/0 play 6:0@0/0+ tick 6:0@0/0+ pause 9:0@0/0 on 9:0@0/0 stop 5:0@0/0"}),
    test::CaseName);

TEST(PictureShow, PreparesThePictureOfTheNextTick) {
  ShowFixture fixture(3);
  fixture.Settings.ShowRepeat = true;
  for (const auto& [action, prepared] :
       StepsOf("play 2 tick 3 tick 1 pause 1 before 1 back 1 tick 3 stop 0 play 1")) {
    fixture.Press(action);
    EXPECT_EQ(QString::number(fixture.Surface.Prepared), prepared) << action.toStdString();
  }
  fixture.Data1.RecordSource += QStringLiteral(" WHERE PhotoID > 1");
  fixture.Data1.Refresh();
  fixture.Show.ListChanged();
  EXPECT_EQ(fixture.Surface.Prepared, 2);
}

// The end of a show that isn't repeated leaves the guard up.
TEST(PictureShow, GuardsItsMoves) {
  ShowFixture fixture(2);
  bool guarded = true;
  QObject::connect(&fixture.Data1, &catalogue::RecordList::Reposition, &fixture.Data1,
                   [&] { guarded = guarded && fixture.Data1.SuppressReposition; });
  fixture.Press(QStringLiteral("play"));
  EXPECT_FALSE(fixture.Data1.SuppressReposition);
  fixture.Show.Slider1_MouseUp(1);
  EXPECT_FALSE(fixture.Data1.SuppressReposition);
  fixture.Tick();
  EXPECT_TRUE(fixture.Data1.SuppressReposition);
  EXPECT_TRUE(guarded);
}

struct Handover {
  const char* Name;
  const char* Before;  ///< what is pressed in the window, on record 5 of 9
  const char* There;   ///< the photo shown and the current record on the whole screen
  const char* Then;    ///< what is pressed there; nothing for the ways out that don't take the move back
  const char* Back;
};

class ShowHandover : public testing::TestWithParam<Handover> {};

TEST_P(ShowHandover, GoesOnInTheOtherWindow) {
  ShowFixture fixture(9);
  PlainSurface whole(fixture.Settings);
  HandTimer timer;
  PictureShow wholeShow(fixture.Parts, whole, timer, ShowWindow::FullScreen);
  fixture.Show.Slider1_MouseUp(4);
  for (const QString& action : QString::fromLatin1(GetParam().Before).split(QLatin1Char(' ')))
    fixture.Press(action);
  fixture.Surface.OtherWindow = [&] {
    EXPECT_FALSE(fixture.Timer.Enabled);
    wholeShow.TakeUp();
    EXPECT_EQ(QStringLiteral("%1@%2").arg(whole.Shown).arg(fixture.Data1.AbsolutePosition() + 1),
              QLatin1String(GetParam().There));
    wholeShow.tbarShow_ButtonClick(ShowFixture::ButtonOf(QLatin1String(GetParam().Then)));
    fixture.Surface.HidePictures();
    fixture.Show.TakeUp();
  };
  fixture.Press(QStringLiteral("window"));
  EXPECT_EQ(fixture.State(), QLatin1String(GetParam().Back));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ShowHandover,
    testing::Values(Handover{"ForwardByTheButton", "play", "5@6", "window", "6:5@6/5+"},
                    Handover{"ForwardByEsc", "play", "5@6", "", "6:6@7/6+"},
                    Handover{"BackwardByTheButton", "back", "5@4", "window", "4:5@4/5+"},
                    Handover{"BackwardByEsc", "back", "5@4", "", "4:4@3/4+"},
                    Handover{"Paused", "play pause", "5@5", "", "9:5@5/5"},
                    Handover{"PausedThere", "play", "5@6", "pause", "9:5@5/5"},
                    // The window thinks that its show still plays backward, and pauses it as one forward.
                    Handover{"BackwardPausedThere", "back", "5@4", "pause", "9:5@3/5"},
                    // The space bar pauses a stopped show, too.
                    Handover{"StoppedPausedThere", "stop", "0@5", "pause", "9:4@4/4"},
                    Handover{"Stopped", "stop", "0@5", "", "5:0@5/0"}),
    test::CaseName);

TEST(ShowButtons, EnablesByTheState) {
  // A pause leaves the stop button as it is.
  const std::tuple<int, bool, bool, const char*> cases[] = {{PlayBackward, false, false, "5 6 9 13"},
                                                            {StopPlay, true, false, "4 6 13"},
                                                            {PlayForward, false, true, "4 5 9 12"},
                                                            {PausePlay, false, false, "4 6 8 10 13"},
                                                            {PausePlay, true, false, "4 5 6 8 10 13"}};
  for (const auto& [state, stopEnabled, repeat, expected] : cases) {
    ShowSettings settings;
    settings.ShowState = state;
    settings.ShowRepeat = repeat;
    QStringList names;
    for (const ShowButtonState& button : ShowButtonsFor(settings, stopEnabled)) {
      if (button.Enabled) names << QString::number(button.Button);
    }
    EXPECT_EQ(names.join(QLatin1Char(' ')), QLatin1String(expected)) << state;
  }
}

}  // namespace
}  // namespace veldrin::show
