#include "show/media_player.h"

#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <csignal>
#include <utility>

namespace veldrin::show {

namespace {

// In milliseconds. The program says several times a second that it plays.
constexpr int LongestSilence = 5000;
constexpr int LongestStart = 3000;
// After so long it is asked again whether the machine can make a sound.
constexpr int NextLook = 2000;

// A track that took the program along twice does so a third time.
constexpr int MostLosses = 2;

}  // namespace

QString MusicProgram() {
  const QDir own(QCoreApplication::applicationDirPath());
  for (const char* place : {"veldrin-music", "../libexec/veldrin/veldrin-music"}) {
    QString program = own.filePath(QLatin1String(place));
    if (QFileInfo(program).isExecutable()) return program;
  }
  return {};
}

MediaPlayer::MediaPlayer(const QString& program) : Program(program) {
  Silence.setSingleShot(true);
  connect(&Silence, &QTimer::timeout, this, [this] { Process ? Lose() : StartProgram(); });
  StartProgram();
}

MediaPlayer::~MediaPlayer() { Forget(); }

// It ends with this process, however that ends.
void MediaPlayer::StartProgram() {
  if (Program.isEmpty()) return;
  Process = std::make_unique<QProcess>();
  Process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  Process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  connect(Process.get(), &QProcess::readyReadStandardOutput, this, &MediaPlayer::Read);
  connect(
      Process.get(), &QProcess::stateChanged, this,
      [this](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning) Lose();
      },
      Qt::QueuedConnection);
  Process->start(Program, QStringList());
  if (State == MediaPlaying) Silence.start(LongestSilence);
}

void MediaPlayer::Forget() {
  if (!Process) return;
  Process->disconnect(this);
  Process->kill();
  Process->waitForFinished(LongestStart);
  Process.reset();
}

bool MediaPlayer::HasSoundCard() const {
  QElapsedTimer waited;
  waited.start();
  while (Process && SoundCard < 0 && waited.elapsed() < LongestStart &&
         Process->waitForReadyRead(LongestStart - static_cast<int>(waited.elapsed()))) {
  }
  SoundCard = SoundCard > 0 ? 1 : 0;
  return SoundCard == 1;
}

// What was a track's own word may have been on its way when the next one was opened.
void MediaPlayer::Read() {
  while (Process && Process->canReadLine()) {
    const QList<QByteArray> words = Process->readLine().simplified().split(' ');
    if (words.size() == 2) Take(words[0], words[1].toInt());
  }
}

void MediaPlayer::Take(const QByteArray& word, int track) {
  if (word == "card") {
    if (SoundCard < 0) SoundCard = track;
    Ready = track == 1;
    if (Ready && State == MediaPlaying) OpenTrack();
    return;
  }
  if (track != Track || State == MediaClosed || State == MediaStopped) return;
  if (word == "plays" && State == MediaPlaying) Silence.start(LongestSilence);
  if (word == "ended") EndTrack(MediaStopped);
  if (word == "broken") EndTrack(MediaClosed);
}

void MediaPlayer::OpenTrack() {
  IsOpen = true;
  Silence.start(LongestSilence);
  Send("open " + QByteArray::number(Track) + ' ' + File.toUtf8().toPercentEncoding());
}

// The program has ended, or is as good as that. The track begins anew as soon as another one can play it: at
// once, or when a sound server that has gone is back.
void MediaPlayer::Lose() {
  Forget();
  const bool wasReady = std::exchange(Ready, false);
  if (std::exchange(IsOpen, false) && ++Losses >= MostLosses) EndTrack(MediaClosed);
  if (Process || State != MediaPlaying) return;
  wasReady ? StartProgram() : Silence.start(NextLook);
}

void MediaPlayer::Send(const QByteArray& line) { Process->write(line + '\n'); }

void MediaPlayer::SetState(int state) {
  const int old = std::exchange(State, state);
  if (state != MediaPlaying) Silence.stop();
  if (old != state) Q_EMIT PlayStateChange(old, state);
}

void MediaPlayer::EndTrack(int state) {
  if (State == MediaPlaying || State == MediaPaused) SetState(state);
}

void MediaPlayer::Open(const QString& file) {
  File = file;
  ++Track;
  Losses = 0;
  IsOpen = false;
  SetState(MediaPlaying);
  if (Program.isEmpty()) {
    QMetaObject::invokeMethod(
        this, [this] { EndTrack(MediaClosed); }, Qt::QueuedConnection);
  } else {
    Begin();
  }
}

void MediaPlayer::Begin() {
  if (Ready) return OpenTrack();
  if (!Process) StartProgram();
}

void MediaPlayer::Play() {
  if (State != MediaPaused) return;
  SetState(MediaPlaying);
  if (!IsOpen) return Begin();
  Silence.start(LongestSilence);
  Send("play");
}

void MediaPlayer::Pause() {
  if (State != MediaPlaying) return;
  if (IsOpen) Send("pause");
  SetState(MediaPaused);
}

void MediaPlayer::Stop() {
  if (State != MediaPlaying && State != MediaPaused) return;
  if (IsOpen) Send("stop");
  SetState(MediaStopped);
}

}  // namespace veldrin::show
