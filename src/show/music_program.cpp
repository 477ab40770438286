// Plays music for the program that started it, which writes a command a line: "open", a number and the name
// in percent encoding; "play", "pause" and "stop". Told are, with the number of the track, that it "plays",
// several times a second, "ended" or is "broken"; before all, by "card", whether the machine can make a
// sound. Without, it ends at once; otherwise with its input.
#include <unistd.h>

#include <QAudioDevice>
#include <QAudioOutput>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QSocketNotifier>
#include <QTimer>
#include <QUrl>
#include <array>
#include <iostream>
#include <memory>
#include <utility>

namespace {

// In milliseconds.
constexpr int BetweenWords = 500;

// Some tracks don't tell their length. One that plays no longer than this had nothing to play.
constexpr qint64 NothingPlayed = 1000;

void Tell(const char* word, int number) { std::cout << word << ' ' << number << std::endl; }

class Track : public QObject {
 public:
  Track(int number, const QString& file) : Number(number), Bytes(file) {
    Player.setAudioOutput(&Output);
    // What is told of the track may end it, which its player doesn't bear within a call.
    connect(&Player, &QMediaPlayer::mediaStatusChanged, this, &Track::StatusChanged, Qt::QueuedConnection);
    connect(
        &Player, &QMediaPlayer::errorOccurred, this, [this] { End("broken"); }, Qt::QueuedConnection);
    Opened.start();
    // The library is handed the open file: it would take some characters of a name for parts of an address.
    if (Bytes.open(QIODevice::ReadOnly)) {
      Player.setSourceDevice(&Bytes, QUrl::fromLocalFile(file));
      Player.play();
    } else {
      End("broken");
    }
  }

  void Do(const QByteArray& command) {
    if (command == "play") Player.play();
    if (command == "pause") Player.pause();
    if (command == "stop") Player.stop();
  }

  // A track that stands still has nothing to say.
  void TellThatItPlays() {
    if (std::exchange(Position, Player.position()) != Player.position()) Tell("plays", Number);
  }

 private:
  void StatusChanged(QMediaPlayer::MediaStatus status) {
    if (status == QMediaPlayer::InvalidMedia) End("broken");
    if (status != QMediaPlayer::EndOfMedia) return;
    const bool nothing = Player.duration() <= 0 && Opened.elapsed() < NothingPlayed;
    End(nothing ? "broken" : "ended");
  }

  // A player with an error may go on with what it can decode.
  void End(const char* word) {
    if (!Ended) Tell(word, Number);
    Ended = true;
    Player.stop();
  }

  const int Number;
  QFile Bytes;
  QAudioOutput Output;
  QMediaPlayer Player;
  QElapsedTimer Opened;
  qint64 Position = 0;
  bool Ended = false;
};

// What was written so far in whole lines; false at the end of the input.
bool ReadCommands(QByteArray& input, QByteArrayList& commands) {
  std::array<char, 4096> bytes{};
  const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count <= 0) return false;
  commands = input.append(bytes.data(), count).split('\n');
  input = commands.takeLast();
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  // The other backend can't play all the sound files that a music directory may hold. Read before the
  // application object is there.
  qputenv("QT_MEDIA_BACKEND", "ffmpeg");
  const QCoreApplication application(argc, argv);
  const bool hasCard = !QMediaDevices::defaultAudioOutput().isNull();
  Tell("card", hasCard ? 1 : 0);
  if (!hasCard) return 0;
  std::unique_ptr<Track> track;
  QByteArray input;
  QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
    QByteArrayList commands;
    if (!ReadCommands(input, commands)) return QCoreApplication::quit();
    for (const QByteArray& command : commands) {
      const QByteArrayList words = command.split(' ');
      if (words.size() == 3)
        track = std::make_unique<Track>(words[1].toInt(),
                                        QString::fromUtf8(QByteArray::fromPercentEncoding(words[2])));
      else if (track)
        track->Do(command);
    }
  });
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&] {
    if (track) track->TellThatItPlays();
  });
  clock.start(BetweenWords);
  return QCoreApplication::exec();
}
