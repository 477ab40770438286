// The media player, as the show knows it.
#pragma once

#include <QObject>
#include <QString>

namespace veldrin::show {

enum MediaState : int { MediaStopped = 0, MediaPaused = 1, MediaPlaying = 2, MediaClosed = 6 };

/// Closed at first. A call that the state has no use for does nothing.
class Media : public QObject {
  Q_OBJECT

 public:
  virtual bool HasSoundCard() const = 0;
  virtual int PlayState() const = 0;
  /// Plays a file from its beginning, in the place of the former one.
  virtual void Open(const QString& file) = 0;
  virtual void Play() = 0;
  virtual void Pause() = 0;
  virtual void Stop() = 0;

 Q_SIGNALS:
  /// A track that ran to its end stops; one that can't be played, or no further, is closed. What wasn't asked
  /// for arrives on the event queue, never within a call.
  void PlayStateChange(int oldState, int newState);
};

}  // namespace veldrin::show
