// Whether the machine can make a sound.
#pragma once

namespace veldrin::platform {

/// True when there is an output device. Asked once at start: the machine's sound card, not its volume.
bool HasSoundCard();

}  // namespace veldrin::platform
