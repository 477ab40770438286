// Whether the machine can make a sound.
#pragma once

namespace veldrin::platform {

/// Whether there is an output device at this moment: the machine's sound card, not its volume.
bool HasSoundCard();

}  // namespace veldrin::platform
