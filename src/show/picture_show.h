// The picture show: a walk through the list of records, a picture every three seconds. Its rules only; it is
// the same in the window and on the whole screen, which give it their surfaces.
#pragma once

#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "show/music.h"
#include "show/show_state.h"

namespace veldrin::show {

/// What the show asks of the window that it plays in.
class ShowSurface {
 public:
  virtual ~ShowSurface() = default;
  /// Shows a file in the place of the picture before it, which stays until the file is decoded, or for good
  /// when it can't be.
  virtual void ShowPicture(const QString& file) = 0;
  /// Tells the file that will probably be shown next; an empty name for none.
  virtual void PreparePicture(const QString& file) = 0;
  virtual void HidePictures() = 0;
  virtual void SetSlider(int value) = 0;
  /// Sets the buttons from the settings.
  virtual void SetShowButtons() = 0;
  virtual void MusicOnChanged() = 0;
  /// Goes on in the other window.
  virtual void ChangeWindow() = 0;
  /// Shows the dialog of the music directory until it is closed.
  virtual void ShowAudioDialog() = 0;
};

/// The timer of the show, which calls Timer1_Timer.
class ShowTimer {
 public:
  virtual ~ShowTimer() = default;
  /// Enabling it begins a new period.
  virtual void SetEnabled(bool enabled) = 0;
};

/// What both windows of the show share.
struct ShowParts {
  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  ShowSettings& Settings;
  Music& TheMusic;
  int Interval = 3000;  ///< how long a picture stands, in milliseconds
};

class PictureShow {
 public:
  /// The references must outlive the show.
  PictureShow(const ShowParts& parts, ShowSurface& surface, ShowTimer& timer, ShowWindow window)
      : Parts(parts), Surface(surface), Timer1(timer), Window(window) {}

  void tbarShow_ButtonClick(int button);
  /// One step: makes the next record the current one and shows it. Errors are passed over. A show that is
  /// stopped leaves the list where its next step would have been, or at the end that it came to.
  void Timer1_Timer();
  void Slider1_MouseDown();
  void Slider1_MouseUp(int value);
  /// The same by keys or wheel: so many records on or back.
  void MoveBy(int records);

  /// Takes up the show in the state in which the other window left it.
  void TakeUp();
  /// Holds a running show while a dialog is open. Returns the state of the player before.
  int Suspend();
  /// Goes on after Suspend, whose answer it takes.
  void Resume(int playState);
  /// The list was read anew: its current record is the next.
  void ListChanged();
  /// The catalogue can be read again: shows the picture that is missing.
  void ReadAgain();
  void DisableTimer() { Timer1.SetEnabled(false); }

 private:
  bool IsRunning() const;
  void Play(int direction);
  void StopShow();
  void Pause();
  void SetRepeat(bool repeat);
  void LeaveWindow();
  void ToggleMusic();
  void ShowMusicSetup();

  void ClearShow();
  void StepShow(int button);
  void ShowPlayImage();
  bool IsPastAnEnd() const;
  bool TurnAround();
  void Prepare(int position);
  void PrepareNext();

  ShowParts Parts;
  ShowSurface& Surface;
  ShowTimer& Timer1;
  ShowWindow Window;
  bool IsUnread = false;  ///< the current record, so that no picture is shown
  bool IsStale = false;   ///< the picture on the screen is of a list that is no more
};

}  // namespace veldrin::show
