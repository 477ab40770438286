// How long the window's thread is held.
#pragma once

#include <functional>

namespace veldrin::benches {

/// Runs the action from the event loop and the loop until `isDone`. Returns the longest time in milliseconds
/// for which an event that came meanwhile had to wait: one is sent every millisecond.
double LongestHold(const std::function<void()>& action, const std::function<bool()>& isDone);

/// Runs the event loop for some time.
void Look(int milliseconds);

}  // namespace veldrin::benches
