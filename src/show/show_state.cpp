#include "show/show_state.h"

namespace veldrin::show {

std::array<ShowButtonState, 8> ShowButtonsFor(const ShowSettings& settings, bool stopEnabled) {
  const int state = settings.ShowState;
  const bool playing = state == PlayBackward || state == PlayForward;
  const bool paused = state == PausePlay;
  return {{{PlayBackward, state != PlayBackward},
           // A pause leaves the stop button as it is.
           {StopPlay, paused ? stopEnabled : playing},
           {PlayForward, state != PlayForward},
           {StepBackward, paused},
           {PausePlay, playing},
           {StepForward, paused},
           {PlayOnce, settings.ShowRepeat},
           {PlayRepeat, !settings.ShowRepeat}}};
}

}  // namespace veldrin::show
