#include "show/media_player.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFile>
#include <QMediaDevices>
#include <QUrl>
#include <utility>

namespace veldrin::show {

namespace {

// Some tracks don't tell their length. One that plays no longer than this, in milliseconds, had nothing to
// play.
constexpr qint64 NothingPlayed = 1000;

}  // namespace

MediaPlayer::MediaPlayer() : SoundCard(!QMediaDevices::defaultAudioOutput().isNull()) {}

void MediaPlayer::SetState(int state) {
  const int old = std::exchange(State, state);
  if (old != state) Q_EMIT PlayStateChange(old, state);
}

void MediaPlayer::Open(const QString& file) {
  if (Player != nullptr) {
    Player->stop();
    Player->deleteLater();
  }
  auto* track = new QMediaPlayer(this);
  Player = track;
  track->setAudioOutput(new QAudioOutput(track));
  connect(
      track, &QMediaPlayer::mediaStatusChanged, this,
      [this, track](QMediaPlayer::MediaStatus status) {
        if (track == Player) StatusChanged(status);
      },
      Qt::QueuedConnection);
  const auto broken = [this, track] {
    if (track == Player) EndTrack(MediaClosed);
  };
  connect(track, &QMediaPlayer::errorOccurred, this, broken, Qt::QueuedConnection);
  Opened.start();
  SetState(MediaPlaying);
  // The library is handed the open file: it would take some characters of a name for parts of an address.
  auto* bytes = new QFile(file, track);
  if (bytes->open(QIODevice::ReadOnly)) {
    track->setSourceDevice(bytes, QUrl::fromLocalFile(file));
    track->play();
  } else {
    QMetaObject::invokeMethod(this, broken, Qt::QueuedConnection);
  }
}

void MediaPlayer::StatusChanged(QMediaPlayer::MediaStatus status) {
  if (status == QMediaPlayer::InvalidMedia) EndTrack(MediaClosed);
  if (status == QMediaPlayer::EndOfMedia) {
    const bool nothing = Player->duration() <= 0 && Opened.elapsed() < NothingPlayed;
    EndTrack(nothing ? MediaClosed : MediaStopped);
  }
}

void MediaPlayer::EndTrack(int state) {
  if (State != MediaPlaying && State != MediaPaused) return;
  if (state == MediaClosed) Player->stop();  // A player with an error may go on with what it can decode.
  SetState(state);
}

void MediaPlayer::Play() {
  if (State != MediaPaused) return;
  Player->play();
  SetState(MediaPlaying);
}

void MediaPlayer::Pause() {
  if (State != MediaPlaying) return;
  Player->pause();
  SetState(MediaPaused);
}

void MediaPlayer::Stop() {
  if (State != MediaPlaying && State != MediaPaused) return;
  Player->stop();
  SetState(MediaStopped);
}

}  // namespace veldrin::show
