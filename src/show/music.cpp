#include "show/music.h"

#include "base/failure.h"

namespace veldrin::show {

// A list keeps the files of the directory before when it can't show another one.
void ListMusic(controls::FileListBox& list, const QString& musicDir) {
  list.SetPattern(MusicPattern());
  if (!base::ResumeNext([&] { list.SetPath(musicDir); })) list.clear();
}

QString NextMusicFile(const QStringList& files, int& MusicIndex) {
  if (files.isEmpty()) return {};
  if (MusicIndex == files.size()) MusicIndex = 0;
  return files.value(MusicIndex++);
}

Music::Music(ShowSettings& settings, controls::FileListBox& list, const QString& musicDir, Media& media)
    : Settings(settings), List(list), Directory(musicDir), Player(media) {
  connect(&Player, &Media::PlayStateChange, this, &Music::Media_PlayStateChange);
}

bool Music::IsWanted() const {
  return Settings.MusicOn && (Settings.ShowState == PlayBackward || Settings.ShowState == PlayForward);
}

void Music::OpenNext() {
  QStringList files;
  for (int i = 0; i < List.ListCount(); ++i) files << List.List(i);
  const QString name = NextMusicFile(files, Settings.MusicIndex);
  HasTrack = !name.isEmpty();
  Player.Open(Directory + name);
}

void Music::Begin() {
  BrokenTracks = 0;
  const int state = Player.PlayState();
  if (state == MediaPaused) Player.Play();
  if (state == MediaClosed || state == MediaStopped) OpenNext();
}

void Music::GoOn() {
  if (Player.PlayState() == MediaPaused) {
    Player.Play();
  } else if (IsWanted()) {
    Begin();
  }
}

void Music::Pause() {
  if (Player.PlayState() == MediaPlaying) Player.Pause();
}

void Music::Stop() {
  if (Player.PlayState() != MediaStopped) Player.Stop();
}

void Music::Media_PlayStateChange(int oldState, int newState) {
  if (oldState != MediaPlaying || (newState != MediaStopped && newState != MediaClosed)) return;
  // A broken track is passed over, but a directory of nothing else must not be gone through for ever.
  BrokenTracks = newState == MediaClosed ? BrokenTracks + 1 : 0;
  if (BrokenTracks > 0 && (!HasTrack || BrokenTracks >= List.ListCount())) return;
  if (IsWanted()) OpenNext();
}

}  // namespace veldrin::show
