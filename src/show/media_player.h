// The media player of the machine.
#pragma once

#include <QElapsedTimer>
#include <QMediaPlayer>

#include "show/media.h"

namespace veldrin::show {

class MediaPlayer : public Media {
 public:
  MediaPlayer();

  bool HasSoundCard() const override { return SoundCard; }
  int PlayState() const override { return State; }
  void Open(const QString& file) override;
  void Play() override;
  void Pause() override;
  void Stop() override;

 private:
  void SetState(int state);
  void StatusChanged(QMediaPlayer::MediaStatus status);
  void EndTrack(int state);

  const bool SoundCard;  ///< whether the machine can make a sound, not its volume
  int State = MediaClosed;
  QElapsedTimer Opened;
  /// Each track has its own, a child of this object: what an earlier one still reports isn't the new one's.
  QMediaPlayer* Player = nullptr;
};

}  // namespace veldrin::show
