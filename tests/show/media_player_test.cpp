// Real playback, over a sound server without a loudspeaker.
#include "show/media_player.h"

#include <gtest/gtest.h>

#include <QDataStream>
#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QtMath>

#include "show/music.h"
#include "support/test_support.h"

namespace veldrin::show {
namespace {

constexpr int SampleRate = 8000;

// A tone as 16-bit samples.
QByteArray Samples(QDataStream::ByteOrder order, int milliseconds) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setByteOrder(order);
  for (int i = 0; i < SampleRate * milliseconds / 1000; ++i)
    stream << static_cast<qint16>(8000 * qSin(i * 0.3));
  return bytes;
}

QByteArray Wav(int milliseconds) {
  const QByteArray samples = Samples(QDataStream::LittleEndian, milliseconds);
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setByteOrder(QDataStream::LittleEndian);
  const auto size = static_cast<quint32>(samples.size());
  stream.writeRawData("RIFF", 4);
  stream << 36 + size;
  stream.writeRawData("WAVEfmt ", 8);
  stream << quint32{16} << quint16{1} << quint16{1} << quint32{SampleRate} << quint32{SampleRate * 2}
         << quint16{2} << quint16{16};
  stream.writeRawData("data", 4);
  stream << size;
  return bytes + samples;
}

QByteArray Au(int milliseconds) {
  const QByteArray samples = Samples(QDataStream::BigEndian, milliseconds);
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.writeRawData(".snd", 4);
  stream << quint32{24} << static_cast<quint32>(samples.size()) << quint32{3} << quint32{SampleRate}
         << quint32{1};
  return bytes + samples;
}

QByteArray Aiff(int milliseconds) {
  const QByteArray samples = Samples(QDataStream::BigEndian, milliseconds);
  const auto size = static_cast<quint32>(samples.size());
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.writeRawData("FORM", 4);
  stream << 46 + size;
  stream.writeRawData("AIFFCOMM", 8);
  stream << quint32{18} << quint16{1} << size / 2 << quint16{16};
  stream.writeRawData("\x40\x0B\xFA\x00\x00\x00\x00\x00\x00\x00", 10);  // 8000 as an extended number
  stream.writeRawData("SSND", 4);
  stream << size + 8 << quint32{0} << quint32{0};
  return bytes + samples;
}

class SoundServer {
 public:
  SoundServer() {
    const QString socket = Directory.filePath(QStringLiteral("socket"));
    Process.setProgram(QStringLiteral("pulseaudio"));
    Process.setArguments({QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                          QStringLiteral("--use-pid-file=no"), QStringLiteral("--exit-idle-time=-1"),
                          QStringLiteral("--disable-shm=yes"), QStringLiteral("-L"),
                          QStringLiteral("module-null-sink"), QStringLiteral("-L"),
                          QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket});
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
      environment.insert(QLatin1String(name), Directory.path());
    Process.setProcessEnvironment(environment);
    Process.setStandardErrorFile(QProcess::nullDevice());
    Process.start();
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    IsRunning = Process.waitForStarted() && QTest::qWaitFor([&] { return QFileInfo::exists(socket); }) &&
                QTest::qWaitFor([] { return MediaPlayer().HasSoundCard(); });
  }
  ~SoundServer() {
    Process.terminate();
    Process.waitForFinished();
  }

  bool IsRunning = false;

 private:
  QTemporaryDir Directory;
  QProcess Process;
};

class MediaPlayerTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { Server = std::make_unique<SoundServer>(); }
  static void TearDownTestSuite() { Server.reset(); }

  void SetUp() override {
    if (!Server->IsRunning) GTEST_SKIP() << "PulseAudio can't be started here: nothing is played";
    QObject::connect(&Player, &Media::PlayStateChange, &Player, [this](int oldState, int newState) {
      Changes << QStringLiteral("%1%2").arg(oldState).arg(newState);
    });
  }

  QString Write(const char* name, const QByteArray& bytes) {
    const QString file = Directory.filePath(QString::fromUtf8(name));
    test::WriteFile(file, bytes);
    return file;
  }
  bool Comes(const QString& changes) {
    return QTest::qWaitFor([&] { return Changes.join(QLatin1Char(' ')) == changes; }, 20'000);
  }

  static std::unique_ptr<SoundServer> Server;
  QTemporaryDir Directory;
  MediaPlayer Player;
  QStringList Changes;
};

std::unique_ptr<SoundServer> MediaPlayerTest::Server;

TEST_F(MediaPlayerTest, PlaysTheDirectoryInItsOrderAndWraps) {
  Write("1 #%41 \xC3\xBC.wav", Wav(300));
  Write("2.mp3", "This is no music.");
  Write("3.aiff", Aiff(300));
  Write("4.AU", Au(300));
  platform::FileListBox list;
  list.SetPattern(MusicPattern());
  list.SetPath(Directory.path());
  ShowSettings settings{PlayForward, false, true, 0};
  const QString directory = Directory.path() + QLatin1Char('/');
  Music music(settings, list, directory, Player);
  music.Begin();
  EXPECT_TRUE(Comes(QStringLiteral("62 20 02 26 62 20 02 20 02")))
      << Changes.join(QLatin1Char(' ')).toStdString();
  EXPECT_EQ(settings.MusicIndex, 1);
  settings.ShowState = StopPlay;
  music.Stop();
  EXPECT_EQ(Changes.last(), QStringLiteral("20"));
  settings.ShowState = PlayForward;
  music.Begin();
  EXPECT_EQ(settings.MusicIndex, 2);
}

TEST_F(MediaPlayerTest, PausesAndGoesOnWithTheSameTrack) {
  const QString file = Write("a.wav", Wav(600));
  Player.Open(file);
  Player.Pause();
  QFile::remove(file);  // what plays needs no name
  Player.Play();
  EXPECT_TRUE(Comes(QStringLiteral("62 21 12 20"))) << Changes.join(QLatin1Char(' ')).toStdString();
  Player.Play();
  Player.Pause();
  Player.Stop();
  EXPECT_EQ(Player.PlayState(), MediaStopped);
}

TEST_F(MediaPlayerTest, ClosesWhatItCannotPlay) {
  for (const QString& file :
       {Write("text.mp3", "This is no music."), Write("empty.wav", {}), Write("cut.aiff", Aiff(300).left(20)),
        Directory.path(), Directory.filePath(QStringLiteral("none.wav"))}) {
    MediaPlayer player;
    const QSignalSpy changes(&player, &Media::PlayStateChange);
    player.Open(file);
    EXPECT_EQ(player.PlayState(), MediaPlaying) << file.toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.PlayState() == MediaClosed; })) << file.toStdString();
    EXPECT_EQ(changes.size(), 2) << file.toStdString();
  }
}

}  // namespace
}  // namespace veldrin::show
