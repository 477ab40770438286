#include "show/picture_show.h"

#include "base/failure.h"
#include "catalogue/image_store.h"

namespace veldrin::show {

using base::EndSilently;
using base::ResumeNext;

namespace {

// A list that couldn't be read has no recordset and counts as empty.
bool AtEnd(const catalogue::RecordList& data1) {
  return data1.RecordCount() == 0 || data1.Recordset().AtEOF();
}
bool AtBeginning(const catalogue::RecordList& data1) {
  return data1.RecordCount() == 0 || data1.Recordset().BOF();
}

}  // namespace

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
  Parts.Settings.ShowState = direction;
  Surface.SetShowButtons();
  Timer1_Timer();
  if (Parts.Settings.MusicOn) Parts.TheMusic.Begin();
}

void PictureShow::StopShow() {
  Parts.Settings.ShowState = StopPlay;
  Surface.SetShowButtons();
  ClearShow();
  Parts.TheMusic.Stop();
}

void PictureShow::Pause() {
  TakeBack();
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
  if (IsRunning()) TakeBack();
  Timer1.SetEnabled(false);
  Surface.ChangeWindow();
}

void PictureShow::TakeUp() {
  if (Parts.Settings.ShowState == PausePlay) Timer1_Timer();
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
  Parts.Data1.SuppressReposition = true;
  if ((AtEnd(Parts.Data1) || AtBeginning(Parts.Data1)) && !TurnAround()) return;
  ShowPlayImage();
  WriteSlider();
  // By the button and not by the state: a show that comes back paused goes on as its window knew it.
  MoveOn(Surface.IsEnabled(PlayBackward));
  Parts.Data1.SuppressReposition = false;
  Timer1.SetEnabled(true);
  PrepareNext();
}

// At an end of the list. False when the show is over; SuppressReposition stays set then.
bool PictureShow::TurnAround() {
  const bool atEnd = AtEnd(Parts.Data1);
  const bool repeat = Parts.Settings.ShowRepeat;
  const bool toLast = atEnd != repeat;
  ResumeNext([&] { toLast ? Parts.Data1.MoveLast() : Parts.Data1.MoveFirst(); });
  Surface.SetSlider(toLast ? Parts.Data1.RecordCount() : 0);
  if (!repeat) StopShow();
  return repeat;
}

void PictureShow::ShowPlayImage() {
  EndSilently([&] {
    // The row may have changed since the list came to stand on it.
    Parts.Data1.Reread();
    Surface.ShowPicture(catalogue::ImageFileName(Parts.ThePaths,
                                                 Parts.Data1.Field(QStringLiteral("PhotoID")).toInt(),
                                                 Parts.Data1.Field(QStringLiteral("ImageType")).toString()));
  });
}

void PictureShow::ClearShow() {
  Timer1.SetEnabled(false);
  Surface.HidePictures();
  Surface.PreparePicture({});
}

void PictureShow::WriteSlider() { Surface.SetSlider(Parts.Data1.AbsolutePosition() + 1); }

void PictureShow::MoveOn(bool forward) {
  ResumeNext([&] { forward ? Parts.Data1.MoveNext() : Parts.Data1.MovePrevious(); });
}

void PictureShow::StepShow(int button) {
  const bool forward = button == StepForward;
  MoveOn(forward);
  if (forward && AtEnd(Parts.Data1)) ResumeNext([&] { Parts.Data1.MoveLast(); });
  if (!forward && AtBeginning(Parts.Data1)) ResumeNext([&] { Parts.Data1.MoveFirst(); });
  ShowPlayImage();
  WriteSlider();
  Prepare(Parts.Data1.AbsolutePosition() + (forward ? 1 : -1));
}

// Undoes the move that the last tick made ahead.
void PictureShow::TakeBack() {
  if (Parts.Settings.ShowState == PlayBackward) {
    MoveOn(true);
    if (AtEnd(Parts.Data1)) ResumeNext([&] { Parts.Data1.MoveLast(); });
  } else {
    MoveOn(false);
    if (AtBeginning(Parts.Data1)) ResumeNext([&] { Parts.Data1.MoveFirst(); });
  }
}

// --- the picture to come ----------------------------------------------------------------------------------

void PictureShow::ListChanged() {
  if (IsRunning()) PrepareNext();
}

void PictureShow::PrepareNext() {
  const catalogue::RecordList& list = Parts.Data1;
  if (list.RecordCount() == 0) return Surface.PreparePicture({});
  int position = list.AbsolutePosition();
  if (position < 0 && Parts.Settings.ShowRepeat) position = AtEnd(list) ? 0 : list.RecordCount() - 1;
  Prepare(position);
}

void PictureShow::Prepare(int position) {
  QString file;
  EndSilently([&] { file = FileAt(position); });
  Surface.PreparePicture(file);
}

QString PictureShow::FileAt(int position) const {
  if (position < 0 || position >= Parts.Data1.RecordCount()) return {};
  const engine::Recordset& records = Parts.Data1.Recordset();
  const auto row = records.ReadRows(position, 1).front();
  if (row.empty()) return {};
  const QStringList names = records.FieldNames();
  const auto field = [&](const QString& name) { return row.at(names.indexOf(name)); };
  return catalogue::ImageFileName(Parts.ThePaths, field(QStringLiteral("PhotoID")).toInt(),
                                  field(QStringLiteral("ImageType")).toString());
}

// --- the slider -------------------------------------------------------------------------------------------

void PictureShow::Slider1_MouseDown() {
  if (Parts.Data1.RecordCount() != 0) Timer1.SetEnabled(false);
}

// A tick writes positions that count from 1; the user's are records to pass over, from the first one on.
void PictureShow::Slider1_MouseUp(int value) {
  const int count = Parts.Data1.RecordCount();
  if (count == 0) return;
  {
    const catalogue::RepositionGuard guard(Parts.Data1);
    if (value < count) {
      Parts.Data1.SetAbsolutePosition(value);
    } else {
      Parts.Data1.MoveLast();
      Parts.Data1.MoveNext();
    }
  }
  if (Parts.Settings.ShowState != StopPlay) Timer1_Timer();
  if (Parts.Settings.ShowState == PausePlay) Timer1.SetEnabled(false);
}

}  // namespace veldrin::show
