// The state of the picture show, which its two windows share, and what it lets the show's buttons do.
#pragma once

#include <array>

namespace veldrin::show {

/// The numbers of the buttons of `tbarShow`; those of a direction, of stop and of pause are the show's states
/// too.
enum ShowButton : int {
  PlayBackward = 4,
  StopPlay = 5,
  PlayForward = 6,
  StepBackward = 8,
  PausePlay = 9,
  StepForward = 10,
  PlayOnce = 12,
  PlayRepeat = 13,
  PlayFullScreen = 15,
  MusicOnOff = 17,
  SetupMusic = 19,
};

/// In which of its windows a show plays.
enum class ShowWindow { Main, FullScreen };

struct ShowSettings {
  int ShowState = StopPlay;
  bool ShowRepeat = false;
  bool MusicOn = false;
  int MusicIndex = 0;
  /// The place in the list that the next tick shows; -1 and the list's length are past its ends. While no
  /// show runs it is where one begins.
  int Next = 0;
};

/// Which buttons are enabled, by number; the others keep what they have.
struct ShowButtonState {
  int Button;
  bool Enabled;
};

/// The states of the buttons that the settings decide.
std::array<ShowButtonState, 8> ShowButtonsFor(const ShowSettings& settings, bool stopEnabled);

}  // namespace veldrin::show
