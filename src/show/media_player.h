// The media player of the machine: a program of its own, since a sound server that goes away takes along, or
// holds for ever, the one who plays.
#pragma once

#include <QProcess>
#include <QTimer>
#include <memory>

#include "show/media.h"

namespace veldrin::show {

/// The program that plays, where it is built or installed; empty where there is none.
QString MusicProgram();

class MediaPlayer : public Media {
 public:
  /// Starts the program. Without one the machine has no sound card.
  explicit MediaPlayer(const QString& program = MusicProgram());
  ~MediaPlayer() override;
  MediaPlayer(const MediaPlayer&) = delete;
  MediaPlayer& operator=(const MediaPlayer&) = delete;

  /// Whether the machine could make a sound when this began. Waits for the program to say so.
  bool HasSoundCard() const override;
  int PlayState() const override { return State; }
  void Open(const QString& file) override;
  void Play() override;
  void Pause() override;
  void Stop() override;

 private:
  void StartProgram();
  void Forget();
  void Read();
  void Take(const QByteArray& word, int track);
  void Begin();
  void OpenTrack();
  void Lose();
  void Send(const QByteArray& line);
  void SetState(int state);
  void EndTrack(int state);

  const QString Program;
  std::unique_ptr<QProcess> Process;
  mutable int SoundCard = -1;  ///< whether there is one; -1 as long as that isn't known
  bool Ready = false;          ///< the program can play now
  bool IsOpen = false;         ///< the program has the track
  int State = MediaClosed;
  QString File;
  int Track = 0;   ///< tracks are numbered: what an earlier one still reports isn't the new one's
  int Losses = 0;  ///< of the program by the track
  QTimer Silence;  ///< runs while a track plays: ends when nothing was heard of it, or the next look is due
};

}  // namespace veldrin::show
