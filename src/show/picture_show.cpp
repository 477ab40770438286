#include "show/picture_show.h"

#include <algorithm>

#include "base/failure.h"
#include "catalogue/image_store.h"

namespace veldrin::show {

using base::EndSilently;

bool PictureShow::IsRunning() const {
  return Parts.Settings.ShowState == PlayBackward || Parts.Settings.ShowState == PlayForward;
}

// --- the buttons ------------------------------------------------------------------------------------------

void PictureShow::tbarShow_ButtonClick(int button) {
  switch (button) {
    case PlayBackward:
    case PlayForward:
      return Play(button);
    case StopPlay:
      return StopShow();
    case StepBackward:
    case StepForward:
      return StepShow(button);
    case PausePlay:
      return Pause();
    case PlayOnce:
    case PlayRepeat:
      return SetRepeat(button == PlayRepeat);
    case PlayFullScreen:
      return LeaveWindow();
    case MusicOnOff:
      return ToggleMusic();
    case SetupMusic:
      return ShowMusicSetup();
    default:
      return;
  }
}

void PictureShow::Play(int direction) {
  if (!IsRunning()) Parts.Settings.Next = Parts.Data1.AbsolutePosition();
  Parts.Settings.ShowState = direction;
  Surface.SetShowButtons();
  Timer1_Timer();
  if (Parts.Settings.MusicOn) Parts.TheMusic.Begin();
}

void PictureShow::StopShow() {
  if (Parts.Settings.ShowState != StopPlay) Parts.Data1.MoveNear(Parts.Settings.Next);
  Parts.Settings.ShowState = StopPlay;
  Surface.SetShowButtons();
  ClearShow();
  Parts.TheMusic.Stop();
}

void PictureShow::Pause() {
  if (IsRunning() && IsStale) ShowPlayImage();
  Parts.Settings.Next = Parts.Data1.AbsolutePosition();
  Parts.Settings.ShowState = PausePlay;
  Surface.SetShowButtons();
  Timer1.SetEnabled(false);
  Parts.TheMusic.Pause();
}

void PictureShow::SetRepeat(bool repeat) {
  Parts.Settings.ShowRepeat = repeat;
  Surface.SetShowButtons();
}

void PictureShow::LeaveWindow() {
  if (IsRunning()) Parts.Settings.Next = Parts.Data1.AbsolutePosition();
  Timer1.SetEnabled(false);
  Surface.ChangeWindow();
}

void PictureShow::TakeUp() {
  if (Parts.Settings.ShowState == PausePlay) ShowPlayImage();
  tbarShow_ButtonClick(Parts.Settings.ShowState);
}

void PictureShow::ToggleMusic() {
  Parts.Settings.MusicOn = !Parts.Settings.MusicOn;
  if (!Parts.Settings.MusicOn) {
    Parts.TheMusic.Pause();
  } else if (IsRunning()) {
    Parts.TheMusic.Begin();
  }
  Surface.MusicOnChanged();
  Surface.SetShowButtons();
}

void PictureShow::ShowMusicSetup() {
  const int before = Suspend();
  Surface.ShowAudioDialog();
  // On the whole screen any pause ends with the dialog.
  const bool paused = Parts.TheMusic.PlayState() == MediaPaused;
  Resume(Window == ShowWindow::FullScreen && paused ? MediaPlaying : before);
}

int PictureShow::Suspend() {
  if (IsRunning()) Timer1.SetEnabled(false);
  const int before = Parts.TheMusic.PlayState();
  Parts.TheMusic.Pause();
  return before;
}

void PictureShow::Resume(int playState) {
  if (playState == MediaPlaying) Parts.TheMusic.GoOn();
  if (!IsRunning()) return;
  Timer1.SetEnabled(true);
  PrepareNext();
}

// --- pictures ---------------------------------------------------------------------------------------------

void PictureShow::Timer1_Timer() {
  Timer1.SetEnabled(false);
  if (IsPastAnEnd() && !TurnAround()) return;
  Parts.Data1.MoveNear(Parts.Settings.Next);
  ShowPlayImage();
  Parts.Settings.Next += Parts.Settings.ShowState == PlayBackward ? -1 : 1;
  Timer1.SetEnabled(true);
  PrepareNext();
}

bool PictureShow::IsPastAnEnd() const {
  return Parts.Settings.Next < 0 || Parts.Settings.Next >= Parts.Data1.RecordCount();
}

// At an end of the list. False when the show is over.
bool PictureShow::TurnAround() {
  const int count = Parts.Data1.RecordCount();
  const bool atEnd = Parts.Settings.Next >= count || count == 0;
  const bool repeat = Parts.Settings.ShowRepeat;
  const bool toLast = atEnd != repeat;
  Parts.Settings.Next = toLast ? count - 1 : 0;
  Surface.SetSlider(toLast ? count : 0);
  if (!repeat) StopShow();
  return repeat;
}

void PictureShow::ShowPlayImage() {
  IsStale = false;
  QString file;
  IsUnread =
      !EndSilently([&] { file = ImageFileAt(Parts.Data1, Parts.ThePaths, Parts.Data1.AbsolutePosition()); });
  // The former one would be taken for the current record's.
  if (IsUnread) Surface.HidePictures();
  if (!file.isEmpty()) EndSilently([&] { Surface.ShowPicture(file); });
  Surface.SetSlider(Parts.Data1.AbsolutePosition() + 1);
}

void PictureShow::ClearShow() {
  Timer1.SetEnabled(false);
  Surface.HidePictures();
  Surface.PreparePicture({});
}

void PictureShow::StepShow(int button) {
  const int step = button == StepForward ? 1 : -1;
  Parts.Data1.MoveNear(Parts.Data1.AbsolutePosition() + step);
  Parts.Settings.Next = Parts.Data1.AbsolutePosition();
  ShowPlayImage();
  Prepare(Parts.Data1.AbsolutePosition() + step);
}

// --- the picture to come ----------------------------------------------------------------------------------

// A paused show stands on the current record; a running one shows it with its next step.
void PictureShow::ListChanged() {
  Parts.Settings.Next = Parts.Data1.AbsolutePosition();
  IsStale = true;
  if (IsRunning()) PrepareNext();
  const bool paused = Parts.Settings.ShowState == PausePlay;
  if (paused || Parts.Data1.RecordCount() == 0) Surface.HidePictures();
  if (paused) ShowPlayImage();
}

void PictureShow::ReadAgain() {
  if (IsUnread && Parts.Settings.ShowState != StopPlay) ShowPlayImage();
}

void PictureShow::PrepareNext() {
  int position = Parts.Settings.Next;
  if (IsPastAnEnd() && Parts.Settings.ShowRepeat) position = position < 0 ? Parts.Data1.RecordCount() - 1 : 0;
  Prepare(position);
}

void PictureShow::Prepare(int position) {
  QString file;
  EndSilently([&] { file = ImageFileAt(Parts.Data1, Parts.ThePaths, position); });
  Surface.PreparePicture(file);
}

// --- the slider -------------------------------------------------------------------------------------------

void PictureShow::Slider1_MouseDown() {
  if (Parts.Data1.RecordCount() != 0) Timer1.SetEnabled(false);
}

// A tick writes positions that count from 1; the user's are records to pass over, from the first one on.
void PictureShow::Slider1_MouseUp(int value) {
  if (Parts.Data1.RecordCount() == 0) return;
  if (Parts.Settings.ShowState == StopPlay) return Parts.Data1.MoveNear(value);
  Parts.Settings.Next = value;
  Timer1_Timer();
  if (Parts.Settings.ShowState != PausePlay) return;
  Timer1.SetEnabled(false);
  Parts.Settings.Next = Parts.Data1.AbsolutePosition();
}

void PictureShow::MoveBy(int records) {
  const int count = Parts.Data1.RecordCount();
  if (count == 0) return;
  Slider1_MouseDown();
  Slider1_MouseUp(std::clamp(Parts.Data1.AbsolutePosition() + records, 0, count - 1));
  if (Parts.Settings.ShowState == StopPlay) Surface.SetSlider(Parts.Data1.AbsolutePosition());
}

}  // namespace veldrin::show
