// Real playback, over a sound server without a loudspeaker. What it would be given is recorded and measured.
#include "show/media_player.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <iostream>

#include "show/music.h"
#include "support/test_support.h"

namespace veldrin::show {
namespace {

constexpr double TrackSeconds = 1;
constexpr double Loudness = 32768 / 8.0;  // of the tones that ffmpeg makes

// Makes a track of a tone, of the kind that its name tells.
void MakeTrack(const QString& file, int hertz) {
  const QString tone = QStringLiteral("sine=frequency=%1:duration=%2").arg(hertz).arg(TrackSeconds);
  EXPECT_EQ(
      QProcess::execute(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-nostdin"),
                         QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), tone, file}),
      0);
}

// --- what was heard ---------------------------------------------------------------------------------------

constexpr int HeardRate = 8000;
constexpr int Window = HeardRate / 50;  // 20 ms

// Some windows of sound.
struct Tone {
  int Windows = 0;
  int Waves = 0;
  double Energy = 0;

  double Seconds() const { return Windows * 0.02; }
  double Hertz() const { return Waves / Seconds(); }
  double Rms() const { return std::sqrt(Energy / (Windows * Window)); }
  bool IsLoud() const { return Windows > 0 && Rms() > Loudness / 20; }
  void Add(const Tone& more) {
    Windows += more.Windows;
    Waves += more.Waves;
    Energy += more.Energy;
  }
};

std::vector<Tone> WindowsOf(const QByteArray& recording) {
  std::vector<Tone> windows;
  const auto* samples = reinterpret_cast<const qint16*>(recording.constData());
  for (qsizetype start = 1; start + Window <= recording.size() / 2; start += Window) {
    Tone& window = windows.emplace_back(Tone{1, 0, 0});
    for (qsizetype i = start; i < start + Window; ++i) {
      window.Waves += samples[i - 1] < 0 && samples[i] >= 0 ? 1 : 0;
      window.Energy += static_cast<double>(samples[i]) * samples[i];
    }
  }
  return windows;
}

// The tones of a recording, in order. A gap within a tone ends it as little as a crackle begins another one.
std::vector<Tone> Heard(const QByteArray& recording) {
  std::vector<Tone> tones;
  Tone run;
  const auto endRun = [&] {
    if (run.Seconds() >= 0.1) {
      const bool sameTone = !tones.empty() && std::abs(tones.back().Hertz() - run.Hertz()) < 20;
      sameTone ? tones.back().Add(run) : tones.push_back(run);
    }
    run = {};
  };
  for (const Tone& window : WindowsOf(recording)) {
    if (!window.IsLoud() || (run.Windows > 0 && std::abs(window.Hertz() - run.Hertz()) > 100)) endRun();
    if (window.IsLoud()) run.Add(window);
  }
  endRun();
  return tones;
}

double SilenceAtEnd(const QByteArray& recording) {
  const std::vector<Tone> windows = WindowsOf(recording);
  const auto loud = std::find_if(windows.rbegin(), windows.rend(), [](const Tone& w) { return w.IsLoud(); });
  return static_cast<double>(loud - windows.rbegin()) * 0.02;
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

// Records what the sound server plays from its making on.
class Recorder {
 public:
  Recorder() {
    QObject::connect(&Process, &QProcess::readyReadStandardOutput, &Process,
                     [this] { Recording += Process.readAllStandardOutput(); });
    Process.start(QStringLiteral("parec"),
                  {QStringLiteral("--device=null.monitor"), QStringLiteral("--raw"),
                   QStringLiteral("--format=s16le"), QStringLiteral("--channels=1"),
                   QStringLiteral("--rate=%1").arg(HeardRate), QStringLiteral("--latency-msec=20")});
    EXPECT_TRUE(Comes([&] { return !Recording.isEmpty(); }));
  }
  ~Recorder() {
    Process.kill();
    Process.waitForFinished();
  }
  static bool Comes(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }

  QByteArray Recording;

 private:
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

  QString NameOf(const char* name) const { return Directory.filePath(QString::fromUtf8(name)); }
  bool Comes(const QString& changes) {
    return QTest::qWaitFor([&] { return Changes.join(QLatin1Char(' ')).startsWith(changes); }, 20'000);
  }

  static std::unique_ptr<SoundServer> Server;
  QTemporaryDir Directory;
  MediaPlayer Player;
  QStringList Changes;
};

std::unique_ptr<SoundServer> MediaPlayerTest::Server;

TEST_F(MediaPlayerTest, IsHeardInTheOrderOfTheDirectoryAndGoesOnAfterAPause) {
  const std::vector<double> hertz = {400, 600, 800, 1000, 400};
  const QString first = NameOf("1 #%41 \xC3\xBC.wav");
  MakeTrack(first, 400);
  test::WriteFile(NameOf("2.mp3"), "This is no music.");
  MakeTrack(NameOf("3.mp3"), 600);
  MakeTrack(NameOf("4.aiff"), 800);
  MakeTrack(NameOf("5.AU"), 1000);
  controls::FileListBox list;
  const QString directory = Directory.path() + QLatin1Char('/');
  ListMusic(list, directory);
  ShowSettings settings{PlayForward, false, true, 0};
  Music music(settings, list, directory, Player);
  Recorder recorder;
  const QByteArray& recording = recorder.Recording;

  music.Begin();
  ASSERT_TRUE(Comes(QStringLiteral("62 20 02 26 62 20 02 20 02 20 02")))
      << Changes.join(QLatin1Char(' ')).toStdString();
  EXPECT_EQ(settings.MusicIndex, 1);
  const auto heardAgain = [&] {
    const auto tones = Heard(recording);
    return tones.size() == hertz.size() && tones.back().Seconds() > 0.3;
  };
  ASSERT_TRUE(Recorder::Comes(heardAgain));
  settings.ShowState = PausePlay;
  music.Pause();
  QFile::remove(first);  // what plays needs no name
  ASSERT_TRUE(Recorder::Comes([&] { return SilenceAtEnd(recording) > 0.5; }));
  const qsizetype pause = recording.size() / 2 * 2;
  settings = {PlayForward, false, false, 1};
  music.GoOn();
  EXPECT_TRUE(Comes(QStringLiteral("62 20 02 26 62 20 02 20 02 20 02 21 12 20")));
  EXPECT_TRUE(Recorder::Comes([&] { return SilenceAtEnd(recording) > 0.5; }));

  const std::vector<Tone> tones = Heard(recording);
  for (const Tone& tone : tones) {
    std::cout << "heard: " << tone.Hertz() << " Hz, RMS " << tone.Rms() << ", " << tone.Seconds() << " s\n";
  }
  ASSERT_EQ(tones.size(), hertz.size());
  for (size_t i = 0; i < tones.size(); ++i) {
    EXPECT_NEAR(tones[i].Hertz(), hertz[i], 10);
    EXPECT_NEAR(tones[i].Seconds(), TrackSeconds, 0.15);
    EXPECT_NEAR(tones[i].Rms(), Loudness / 2, Loudness / 10);  // one channel becomes two of less each
  }
  const std::vector<Tone> rest = Heard(recording.mid(pause));
  ASSERT_EQ(rest.size(), 1);
  std::cout << "heard after the pause: " << rest[0].Hertz() << " Hz, " << rest[0].Seconds() << " s\n";
  EXPECT_LT(rest[0].Seconds(), TrackSeconds - 0.2);
  // What the state has no use for does nothing.
  Player.Play();
  Player.Pause();
  EXPECT_EQ(Player.PlayState(), MediaStopped);
}

TEST_F(MediaPlayerTest, ClosesWhatItCannotPlay) {
  test::WriteFile(NameOf("text.mp3"), "This is no music.");
  test::WriteFile(NameOf("empty.wav"), {});
  MakeTrack(NameOf("cut.aiff"), 400);
  QFile::resize(NameOf("cut.aiff"), 20);
  for (const char* name : {"text.mp3", "empty.wav", "cut.aiff", "", "none.wav"}) {
    const QString file = NameOf(name);
    MediaPlayer player;
    const QSignalSpy changes(&player, &Media::PlayStateChange);
    player.Open(file);
    EXPECT_EQ(player.PlayState(), MediaPlaying) << name;
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.PlayState() == MediaClosed; })) << name;
    EXPECT_EQ(changes.size(), 2) << name;
  }
}

}  // namespace
}  // namespace veldrin::show
