// How much of the machine a thread takes.
#pragma once

namespace veldrin::base {

/// From now on the calling thread lets others go before it; `nice` from 0, as all begin, to 19. One that got
/// nothing at all would keep what it has locked from the window's: beyond 10 that happens.
void BeNice(int nice);

}  // namespace veldrin::base
