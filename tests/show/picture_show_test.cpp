#include "show/picture_show.h"

#include "show/fakes.h"

namespace veldrin::show {
namespace {

// Actions, each with the state after it: of the show as "state:photo shown@current record/slider", with "+"
// for a running timer; or of the player, with the track opened.
class Journey : public ShowFixture {
 public:
  Journey(int photos, const QStringList& tracks, const char* steps)
      : ShowFixture(photos, tracks), Words(QString(steps).split(' ')) {}

  void Walk() {
    while (!Words.isEmpty()) Step();
  }

 private:
  void Step() {
    const QString action = Words.takeFirst();
    Player.Opened.clear();
    Do(action);
    const QString state = Words.takeFirst();
    const QString player = QString::number(Player.State) + Player.Opened.join("");
    EXPECT_EQ((state.contains('@') ? State() : player).toStdString(), state.toStdString())
        << "after " << action.toStdString();
  }
  void Do(const QString& action) {
    if (action == "tick") {
      Tick();
    } else if (action == "end") {
      Player.EndTrack();
    } else if (action == "break") {
      Player.Break();
    } else if (action == "beyond") {
      Settings.MusicIndex = 9;
    } else if (action == "delete2") {
      Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 2"});
    } else if (action == "spoil2") {
      Surface.Broken = {2};
    } else if (action.startsWith("drag")) {
      Show.Slider1_MouseDown();
      EXPECT_FALSE(Timer.Enabled && Data1.RecordCount() > 0);
      Show.Slider1_MouseUp(action.mid(4).toInt());
    } else if (action.startsWith("move")) {
      Show.MoveBy(action.mid(4).toInt());
    } else if (action == "list") {
      Open(" WHERE PhotoID > 2");
      Show.ListChanged();
    } else if (action.startsWith("dialog")) {
      const int before = Show.Suspend();
      EXPECT_NE(Player.PlayState(), MediaPlaying);
      EXPECT_FALSE(Timer.Enabled);
      if (action == "dialog:end") Player.EndTrack();
      Show.Resume(before);
    } else {
      Press(action);
    }
  }
  void Press(const QString& word) {
    static const QMap<QString, int> buttons = {
        {"back", PlayBackward},   {"stop", StopPlay},     {"play", PlayForward},
        {"before", StepBackward}, {"pause", PausePlay},   {"on", StepForward},
        {"once", PlayOnce},       {"repeat", PlayRepeat}, {"music", MusicOnOff}};
    ASSERT_TRUE(buttons.contains(word)) << word.toStdString();
    Show.tbarShow_ButtonClick(buttons[word]);
  }
  QString State() const {
    return QStringLiteral("%1:%2@%3/%4%5")
        .arg(Settings.ShowState)
        .arg(Surface.Shown)
        .arg(Data1.AbsolutePosition() + 1)
        .arg(Surface.Slider)
        .arg(Timer.Enabled ? "+" : "");
  }

  QStringList Words;
};

TEST(PictureShow, GoesStepByStep) {
  const std::tuple<const char*, int, const char*> shows[] = {
      {"forward once", 2, "play 6:1@1/1+ tick 6:2@2/2+ tick 5:0@2/2"},
      {"forward repeating", 2, "repeat 5:0@1/0 play 6:1@1/1+ tick 6:2@2/2+ tick 6:1@1/1+"},
      {"backward once", 2, "back 4:1@1/1+ tick 5:0@1/0"},
      {"backward repeating", 2, "repeat 5:0@1/0 back 4:1@1/1+ tick 4:2@2/2+ tick 4:1@1/1+"},
      {"a running show learns to repeat", 1,
       "play 6:1@1/1+ repeat 6:1@1/1+ tick 6:1@1/1+ once 6:1@1/1+ tick 5:0@1/1"},
      {"a show that is stopped leaves the list a record ahead", 3, "play 6:1@1/1+ stop 5:0@2/1"},
      {"while its last picture stands, on that", 2, "play 6:1@1/1+ tick 6:2@2/2+ stop 5:0@2/2 stop 5:0@2/2"},
      {"a pause is on the picture shown", 3,
       "play 6:1@1/1+ pause 9:1@1/1 play 6:1@1/1+ tick 6:2@2/2+ back 4:3@3/3+ pause 9:3@3/3 stop 5:0@3/3"},
      {"pause at the ends", 1, "play 6:1@1/1+ pause 9:1@1/1 back 4:1@1/1+ pause 9:1@1/1"},
      {"a stopped show is paused, too", 2, "pause 9:0@1/0"},
      {"steps stay within the list", 2,
       "play 6:1@1/1+ pause 9:1@1/1 on 9:2@2/2 on 9:2@2/2 before 9:1@1/1 before 9:1@1/1"},
      {"the slider of a playing show", 5, "play 6:1@1/1+ drag3 6:4@4/4+ drag0 6:1@1/1+ drag5 5:0@5/5"},
      {"of a paused show", 3, "play 6:1@1/1+ pause 9:1@1/1 drag1 9:2@2/2 on 9:3@3/3 drag3 5:0@3/3"},
      {"of a stopped show", 3, "drag2 5:0@3/0 play 6:3@3/3+ stop 5:0@3/3 drag3 5:0@3/3"},
      {"of a show that plays backward", 3, "drag2 5:0@3/0 back 4:3@3/3+ drag1 4:2@2/2+"},
      {"of a repeating show", 3, "repeat 5:0@1/0 play 6:1@1/1+ drag3 6:1@1/1+"},
      {"by keys and wheel", 3,
       "move1 5:0@2/1 play 6:2@2/2+ move1 6:3@3/3+ move-9 6:1@1/1+ pause 9:1@1/1 move1 9:2@2/2"},
      {"a broken picture is passed over", 3, "spoil2 5:0@1/0 play 6:1@1/1+ tick 6:1@2/2+ tick 6:3@3/3+"},
      {"a record deleted meanwhile", 3, "play 6:1@1/1+ delete2 6:1@1/1+ tick 6:1@2/2+ tick 6:3@3/3+"},
      {"another list meanwhile", 3, "play 6:1@1/1+ tick 6:2@2/2+ list 6:2@1/2+ pause 9:3@1/1 list 9:3@1/1"},
      {"an empty list once", 0, "drag1 5:0@0/0 play 5:0@0/0"},
      {"an empty list repeating", 0,
       "repeat 5:0@0/0 play 6:0@0/0+ tick 6:0@0/0+ pause 9:0@0/0 on 9:0@0/0 stop 5:0@0/0"}};
  for (const auto& [name, photos, steps] : shows) {
    SCOPED_TRACE(name);
    Journey(photos, {}, steps).Walk();
  }
  const QStringList three = {"C.AIFF", "a.wav", "b.mp3"};
  const QStringList two = {"a.wav", "b.mp3", "notes.txt"};
  const std::tuple<const char*, QStringList, const char*> pieces[] = {
      {"in the order of names", three, "play 2a.wav end 2b.mp3 end 2C.AIFF end 2a.wav"},
      {"stop goes on with the next file", two, "play 2a.wav stop 0 back 2b.mp3"},
      {"pause goes on with the same file", two, "play 2a.wav pause 1 play 2 pause 1 end 0 play 2b.mp3"},
      {"off and on", two, "play 2a.wav music 1 music 2 stop 0 music 0 play 0 music 2b.mp3"},
      {"a dialog over a playing show", two, "play 2a.wav dialog 2 dialog:end 2b.mp3"},
      {"an index beyond the list", two, "beyond 6 play 2 break 6 stop 6 play 2 break 6"},
      {"a dialog over a pause", two, "play 2a.wav music 1 dialog 1 music 2 pause 1 dialog 1"},
      {"a broken track is passed over", two, "play 2a.wav break 2b.mp3 end 2a.wav break 2b.mp3"},
      {"each broken track is tried once", three,
       "play 2a.wav break 2b.mp3 break 2C.AIFF break 6 back 2a.wav"},
      {"one track round and round", {"a.wav"}, "play 2a.wav end 2a.wav break 6"},
      {"an empty directory", {}, "play 2 break 6"}};
  for (const auto& [name, tracks, steps] : pieces) {
    SCOPED_TRACE(name);
    Journey(9, tracks, steps).Walk();
  }
}

TEST(PictureShow, PreparesThePictureOfTheNextTick) {
  ShowFixture fixture(3);
  fixture.Settings.ShowRepeat = true;
  const std::pair<int, int> steps[] = {
      {PlayForward, 2},  {0, 3}, {0, 1},        {PausePlay, 1},  {StepBackward, 1},
      {PlayBackward, 1}, {0, 3}, {StopPlay, 0}, {PlayForward, 2}};
  for (const auto& [button, prepared] : steps) {
    button == 0 ? fixture.Tick() : fixture.Show.tbarShow_ButtonClick(button);
    EXPECT_EQ(fixture.Surface.Prepared, prepared) << button;
  }
  fixture.Open(" WHERE PhotoID > 1");
  fixture.Show.ListChanged();
  EXPECT_EQ(fixture.Surface.Prepared, 2);
}

TEST(PictureShow, TheMusicDialogHoldsIt) {
  ShowFixture fixture(3);
  const std::tuple<PictureShow&, PlainSurface&, HandTimer&> windows[] = {
      {fixture.Show, fixture.Surface, fixture.Timer}, {fixture.WholeShow, fixture.Whole, fixture.WholeTimer}};
  for (const auto& [show, surface, timer] : windows) {
    surface.SetShowButtons();
    surface.AudioDialog = [&fixture, &timer = timer] {
      EXPECT_FALSE(timer.Enabled);
      EXPECT_NE(fixture.Player.State, MediaPlaying);
    };
    show.tbarShow_ButtonClick(PlayForward);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_TRUE(timer.Enabled);
    EXPECT_EQ(fixture.Player.State, MediaPlaying);
    // The main window asks how it was before the dialog, the whole screen how it is after it.
    show.tbarShow_ButtonClick(PausePlay);
    show.tbarShow_ButtonClick(SetupMusic);
    EXPECT_EQ(fixture.Player.State, &show == &fixture.Show ? MediaPaused : MediaPlaying);
    EXPECT_FALSE(timer.Enabled);
  }
}

}  // namespace
}  // namespace veldrin::show
