#include "show/media_player.h"

#include <QAudioOutput>
#include <QUrl>
#include <utility>

#include "platform/sound.h"

namespace veldrin::show {

namespace {

// A track that ends within this time of its opening, in milliseconds, had nothing to play.
constexpr qint64 NothingPlayed = 50;

}  // namespace

MediaPlayer::MediaPlayer() = default;
MediaPlayer::~MediaPlayer() = default;

bool MediaPlayer::HasSoundCard() const { return platform::HasSoundCard(); }

void MediaPlayer::SetState(int state) {
  const int old = std::exchange(State, state);
  if (old != state) Q_EMIT PlayStateChange(old, state);
}

void MediaPlayer::Open(const QString& file) {
  Player = std::make_unique<QMediaPlayer>();
  Player->setAudioOutput(new QAudioOutput(Player.get()));
  File = std::make_unique<QFile>(file);
  // With the player as their receiver, these wait on the event queue and go with the track.
  connect(
      Player.get(), &QMediaPlayer::mediaStatusChanged, Player.get(),
      [this](QMediaPlayer::MediaStatus status) { StatusChanged(status); }, Qt::QueuedConnection);
  connect(
      Player.get(), &QMediaPlayer::errorOccurred, Player.get(), [this] { EndTrack(MediaClosed); },
      Qt::QueuedConnection);
  Opened.start();
  SetState(MediaPlaying);
  // The library is handed the open file: it would take some characters of a name for parts of an address.
  if (File->open(QIODevice::ReadOnly)) {
    Player->setSourceDevice(File.get(), QUrl::fromLocalFile(file));
    Player->play();
  } else {
    QMetaObject::invokeMethod(
        Player.get(), [this] { EndTrack(MediaClosed); }, Qt::QueuedConnection);
  }
}

void MediaPlayer::StatusChanged(QMediaPlayer::MediaStatus status) {
  if (status == QMediaPlayer::InvalidMedia) EndTrack(MediaClosed);
  if (status == QMediaPlayer::EndOfMedia) {
    EndTrack(Opened.elapsed() < NothingPlayed ? MediaClosed : MediaStopped);
  }
}

void MediaPlayer::EndTrack(int state) {
  if (State == MediaPlaying || State == MediaPaused) SetState(state);
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
