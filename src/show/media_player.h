// The media player of the machine.
#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QMediaPlayer>
#include <memory>

#include "show/media.h"

namespace veldrin::show {

class MediaPlayer : public Media {
 public:
  MediaPlayer();
  ~MediaPlayer() override;

  bool HasSoundCard() const override;
  int PlayState() const override { return State; }
  void Open(const QString& file) override;
  void Play() override;
  void Pause() override;
  void Stop() override;

 private:
  void SetState(int state);
  void StatusChanged(QMediaPlayer::MediaStatus status);
  void EndTrack(int state);

  int State = MediaClosed;
  QElapsedTimer Opened;
  // Each track has a player of its own: what an earlier one still reports can't be taken for the new one's.
  std::unique_ptr<QFile> File;
  std::unique_ptr<QMediaPlayer> Player;
};

}  // namespace veldrin::show
