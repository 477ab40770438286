// A show without a clock, a screen and a sound: everything is turned by hand and written down.
#pragma once

#include <set>
#include <utility>

#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "show/picture_show.h"
#include "support/test_support.h"

namespace veldrin::show {

/// A player that does at once what it is told. A track ends when the test says so.
class ScriptedMedia : public Media {
 public:
  bool HasSoundCard() const override { return SoundCard; }
  int PlayState() const override { return State; }
  void Open(const QString& file) override {
    Opened << file.section(QLatin1Char('/'), -1);
    Change(MediaPlaying);
  }
  void Play() override {
    if (State == MediaPaused) Change(MediaPlaying);
  }
  void Pause() override {
    if (State == MediaPlaying) Change(MediaPaused);
  }
  void Stop() override {
    if (State != MediaClosed) Change(MediaStopped);
  }

  void EndTrack() { Change(MediaStopped); }
  void Break() { Change(MediaClosed); }

  bool SoundCard = true;
  int State = MediaClosed;
  QStringList Opened;

 private:
  void Change(int state) {
    const int old = std::exchange(State, state);
    if (old != state) Q_EMIT PlayStateChange(old, state);
  }
};

class HandTimer : public ShowTimer {
 public:
  void SetEnabled(bool enabled) override { Enabled = enabled; }
  bool Enabled = false;
};

/// Shows the numbers of photos. A broken one raises like its file.
class PlainSurface : public ShowSurface {
 public:
  explicit PlainSurface(const ShowSettings& settings) : Settings(settings) {}

  void ShowPicture(const QString& file) override {
    const int photo = Number(file);
    if (Broken.contains(photo)) throw base::RuntimeError(base::errInvalidPicture, file);
    Shown = photo;
  }
  void PreparePicture(const QString& file) override { Prepared = file.isEmpty() ? 0 : Number(file); }
  void HidePictures() override { Shown = 0; }
  void SetSlider(int value) override { Slider = value; }
  bool IsEnabled(int button) const override { return !Disabled.contains(button); }
  void SetShowButtons() override {
    for (const ShowButtonState& state : show::ShowButtonsFor(Settings, IsEnabled(StopPlay))) {
      state.Enabled ? (void)Disabled.erase(state.Button) : (void)Disabled.insert(state.Button);
    }
  }
  void MusicOnChanged() override {}
  void ChangeWindow() override { OtherWindow(); }
  void ShowAudioDialog() override { AudioDialog(); }

  int Shown = 0;     ///< 0 for none
  int Prepared = 0;  ///< 0 for none
  int Slider = 0;
  std::set<int> Broken;
  std::function<void()> OtherWindow = [] {};
  std::function<void()> AudioDialog = [] {};

 private:
  static int Number(const QString& file) {
    return file.section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, 0).toInt();
  }

  const ShowSettings& Settings;
  std::set<int> Disabled;
};

/// The actions of a text, each with what is expected after it.
inline std::vector<std::pair<QString, QString>> StepsOf(const char* text) {
  const QStringList words = QString::fromLatin1(text).split(QLatin1Char(' '));
  std::vector<std::pair<QString, QString>> steps;
  steps.reserve(words.size() / 2);
  for (int i = 0; i + 1 < words.size(); i += 2) steps.emplace_back(words[i], words[i + 1]);
  return steps;
}

/// Photos 1, 2, ..., the tracks a.wav, b.wav and c.wav, and a show of them.
class ShowFixture {
 public:
  explicit ShowFixture(int photos,
                       const QStringList& tracks = {QStringLiteral("a.wav"), QStringLiteral("b.wav"),
                                                    QStringLiteral("c.wav")})
      : Data1(Catalogue.Engine()) {
    for (int id = 1; id <= photos; ++id) Catalogue.AddPhoto(id, QString(), {});
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    QDir().mkpath(Catalogue.Paths().MusicDir);
    for (const QString& track : tracks) test::WriteFile(Catalogue.Paths().MusicDir + track, "sound");
    MusicList.SetPattern(MusicPattern());
    MusicList.SetPath(Catalogue.Paths().MusicDir);
    Settings.MusicOn = true;
    Surface.SetShowButtons();
  }

  /// The number of a button by its word; 0 for another word.
  static int ButtonOf(const QString& word) {
    static const QMap<QString, int> buttons = {
        {QStringLiteral("back"), PlayBackward},     {QStringLiteral("stop"), StopPlay},
        {QStringLiteral("play"), PlayForward},      {QStringLiteral("before"), StepBackward},
        {QStringLiteral("pause"), PausePlay},       {QStringLiteral("on"), StepForward},
        {QStringLiteral("once"), PlayOnce},         {QStringLiteral("repeat"), PlayRepeat},
        {QStringLiteral("window"), PlayFullScreen}, {QStringLiteral("music"), MusicOnOff}};
    return buttons.value(word);
  }
  /// Presses a button by its word, or ticks.
  void Press(const QString& word) {
    word == QLatin1String("tick") ? Tick() : Show.tbarShow_ButtonClick(ButtonOf(word));
  }
  /// The time of a picture is over.
  void Tick() {
    if (Timer.Enabled) Show.Timer1_Timer();
  }
  /// "state:photo shown@current record/slider", and "+" for a running timer. An end of the list counts as a
  /// record.
  QString State() const {
    const int count = Data1.RecordCount();
    const bool atEnd = count > 0 && Data1.Recordset().AtEOF();
    return QStringLiteral("%1:%2@%3/%4%5")
        .arg(Settings.ShowState)
        .arg(Surface.Shown)
        .arg(atEnd ? count + 1 : Data1.AbsolutePosition() + 1)
        .arg(Surface.Slider)
        .arg(Timer.Enabled ? QStringLiteral("+") : QString());
  }

  test::TestCatalogue Catalogue;
  catalogue::RecordList Data1;
  ShowSettings Settings;
  controls::FileListBox MusicList;
  ScriptedMedia Player;
  Music TheMusic{Settings, MusicList, Catalogue.Paths().MusicDir, Player};
  PlainSurface Surface{Settings};
  HandTimer Timer;
  // An hour a picture: nothing ticks by itself within a test.
  ShowParts Parts{Data1, Catalogue.Paths(), Settings, TheMusic, 3'600'000};
  PictureShow Show{Parts, Surface, Timer, ShowWindow::Main};
};

}  // namespace veldrin::show
