#include "platform/sound.h"

#include <QAudioDevice>
#include <QMediaDevices>

namespace veldrin::platform {

bool HasSoundCard() { return !QMediaDevices::defaultAudioOutput().isNull(); }

}  // namespace veldrin::platform
