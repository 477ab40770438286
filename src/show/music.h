// The music behind the show: which track comes next, and when.
#pragma once

#include <QObject>

#include "controls/file_list.h"
#include "show/media.h"
#include "show/show_state.h"

namespace veldrin::show {

/// The file kinds of the music directory.
inline QString MusicPattern() {
  return QStringLiteral("*.wav;*.snd;*.mp3;*.au;*.aif;*.aiff;*.aifc;*.asf;*.asx");
}

/// Has a list show the files of the music directory; none where there is no such directory.
void ListMusic(controls::FileListBox& list, const QString& musicDir);

/// The name at the index, which then counts on. Only an index that equals the number of files begins anew:
/// when the list has become shorter than that, the name is empty, as it is for an empty list.
QString NextMusicFile(const QStringList& files, int& MusicIndex);

class Music : public QObject {
  Q_OBJECT

 public:
  /// The references must outlive it.
  Music(ShowSettings& settings, controls::FileListBox& list, const QString& musicDir, Media& media);

  controls::FileListBox& MusicList() const { return List; }
  const QString& MusicDir() const { return Directory; }
  bool HasSoundCard() const { return Player.HasSoundCard(); }
  int PlayState() const { return Player.PlayState(); }

  /// A paused track goes on; where there is none, the next one begins.
  void Begin();
  /// Goes on after Pause, which a dialog asked for while music played. A track whose end was only told then
  /// gives way to the next.
  void GoOn();
  /// A playing player pauses.
  void Pause();
  void Stop();

 private:
  bool IsWanted() const;
  void OpenNext();
  void Media_PlayStateChange(int oldState, int newState);

  ShowSettings& Settings;
  controls::FileListBox& List;
  const QString& Directory;
  Media& Player;
  bool HasTrack = false;  ///< there was a file to open
  int BrokenTracks = 0;   ///< one after another
};

}  // namespace veldrin::show
