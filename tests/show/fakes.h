// A show without a clock, a screen and a sound: everything is turned by hand and written down.
#pragma once

#include <set>
#include <utility>

#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "show/picture_show.h"
#include "support/catalogue_list.h"

namespace veldrin::show {

/// A player that does at once what it is told. A track ends when the test says so.
class ScriptedMedia : public Media {
 public:
  bool HasSoundCard() const override { return SoundCard; }
  int PlayState() const override { return State; }
  void Open(const QString& file) override {
    Opened << file.section('/', -1);
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
  bool IsEnabled(int button) const { return !Disabled.contains(button); }
  void SetShowButtons() override {
    for (const ShowButtonState& state : show::ShowButtonsFor(Settings, IsEnabled(StopPlay))) {
      state.Enabled ? (void)Disabled.erase(state.Button) : (void)Disabled.insert(state.Button);
    }
  }
  void MusicOnChanged() override {}
  void ChangeWindow() override {}
  void ShowAudioDialog() override { AudioDialog(); }

  int Shown = 0;     ///< 0 for none
  int Prepared = 0;  ///< 0 for none
  int Slider = 0;
  std::set<int> Broken;
  std::function<void()> AudioDialog = [] {};

 private:
  static int Number(const QString& file) { return file.section('/', -1).section('.', 0, 0).toInt(); }

  const ShowSettings& Settings;
  std::set<int> Disabled;
};

/// Photos 1, 2, ..., tracks, and a show of them, with another one on the whole screen.
class ShowFixture : public test::CatalogueList {
 public:
  explicit ShowFixture(int photos, const QStringList& tracks = {"a.wav", "b.wav", "c.wav"}) {
    for (int id = 1; id <= photos; ++id) Catalogue.AddPhoto(id, QString(), {});
    Open();
    for (const QString& track : tracks) test::WriteFile(Catalogue.Paths().MusicDir + track, "sound");
    MusicList.SetPattern(MusicPattern());
    MusicList.SetPath(Catalogue.Paths().MusicDir);
    Settings.MusicOn = true;
    Surface.SetShowButtons();
  }

  /// The time of a picture is over.
  void Tick() {
    if (Timer.Enabled) Show.Timer1_Timer();
  }

  ShowSettings Settings;
  controls::FileListBox MusicList;
  ScriptedMedia Player;
  Music TheMusic{Settings, MusicList, Catalogue.Paths().MusicDir, Player};
  PlainSurface Surface{Settings};
  PlainSurface Whole{Settings};
  HandTimer Timer;
  HandTimer WholeTimer;
  // An hour a picture: nothing ticks by itself within a test.
  ShowParts Parts{Data1, Catalogue.Paths(), Settings, TheMusic, 3'600'000};
  PictureShow Show{Parts, Surface, Timer, ShowWindow::Main};
  PictureShow WholeShow{Parts, Whole, WholeTimer, ShowWindow::FullScreen};
};

}  // namespace veldrin::show
