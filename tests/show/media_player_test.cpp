// Real playback, over a sound server without a loudspeaker, which records what it would be given.
#include "show/media_player.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QProcess>
#include <utility>

#include "show/music.h"
#include "support/environment.h"
#include "support/test_support.h"

namespace veldrin::show {
namespace {

constexpr qint16 Loud = 1000;  // The tones that ffmpeg makes are four times as loud.

// Makes a track of a second's tone, of the kind that its name tells.
void MakeTrack(const QString& file, int hertz) {
  const QString tone = QStringLiteral("sine=frequency=%1:duration=1").arg(hertz);
  EXPECT_EQ(QProcess::execute("ffmpeg", {"-v", "error", "-nostdin", "-f", "lavfi", "-i", tone, file}), 0);
}

// Ends with this process, however that ends.
void Start(QProcess& process, const QString& program, const QStringList& arguments) {
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process.start(program, arguments);
}

int WavesOf(const QByteArray& recording) {
  const auto* samples = reinterpret_cast<const qint16*>(recording.constData());
  int waves = 0;
  bool low = false;
  for (qsizetype i = 0; i < recording.size() / 2; ++i) {
    if (samples[i] > Loud && std::exchange(low, false)) ++waves;
    low = low || samples[i] < -Loud;
  }
  return waves;
}

bool Comes(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 20'000); }

// A sound server of this test's own.
struct Server {
  Server() : ToServer{{"PULSE_SERVER", "unix:" + Socket.toUtf8()}} {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
      environment.insert(name, Directory.path());
    Process.setProcessEnvironment(environment);
    Process.setStandardErrorFile(QProcess::nullDevice());
    Begin();
  }
  void Begin() {
    Start(Process, "pulseaudio",
          {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disable-shm=yes", "-L",
           "module-null-sink", "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + Socket});
  }
  bool IsThere() {
    return Process.waitForStarted() && Comes([this] { return QFileInfo::exists(Socket); }) &&
           Comes([] { return MediaPlayer(MUSIC_PROGRAM).HasSoundCard(); });
  }
  void End() {
    Process.kill();
    Process.waitForFinished();
    QFile::remove(Socket);
  }

  QTemporaryDir Directory;
  QString Socket = Directory.filePath("socket");
  const test::Environment ToServer;
  QProcess Process;
};

TEST(MediaPlayer, GoesFromStateToStateAndIsHeard) {
  Server server;
  if (!server.IsThere()) GTEST_SKIP() << "PulseAudio can't be started here: nothing is played";
  const QTemporaryDir& directory = server.Directory;
  const auto nameOf = [&](const char* name) { return directory.filePath(QString::fromUtf8(name)); };
  MediaPlayer player(MUSIC_PROGRAM);
  QStringList changes;
  QObject::connect(&player, &Media::PlayStateChange, &player,
                   [&](int before, int after) { changes << QStringLiteral("%1%2").arg(before).arg(after); });

  const QString first = nameOf("1 #%41 \xC3\xBC.wav");
  MakeTrack(first, 400);
  test::WriteFile(nameOf("2.mp3"), "This is no music.");
  MakeTrack(nameOf("3.aiff"), 600);
  QProcess recorder;
  Start(recorder, "parec",
        {"--device=null.monitor", "--raw", "--format=s16le", "--channels=1", "--rate=8000"});
  QByteArray recording;
  const auto heard = [&] { return WavesOf(recording += recorder.readAllStandardOutput()); };
  ASSERT_TRUE(Comes([&] { return heard() == 0 && !recording.isEmpty(); }));
  player.Open(first);
  ASSERT_TRUE(Comes([&] { return heard() > 100; }));
  ASSERT_TRUE(Comes([&] { return player.PlayState() == MediaStopped; }));
  ASSERT_TRUE(Comes([&] { return heard() > 395; }));
  EXPECT_LT(heard(), 410);
  // What the state has no use for does nothing.
  player.Play();
  player.Pause();
  EXPECT_EQ(std::exchange(changes, {}), QStringList({"62", "20"}));

  controls::FileListBox list;
  const QString musicDir = directory.path() + '/';
  ListMusic(list, musicDir);
  ShowSettings settings{PlayForward, false, true, 0};
  Music music(settings, list, musicDir, player);
  music.Begin();
  ASSERT_TRUE(Comes([&] { return changes.size() == 5; })) << changes.join(' ').toStdString();
  const int before = heard();
  EXPECT_TRUE(Comes([&] { return heard() > before + 50; }));
  music.Pause();
  settings.MusicOn = false;
  QFile::remove(nameOf("3.aiff"));  // What plays needs no name.
  music.GoOn();
  EXPECT_TRUE(Comes([&] { return player.PlayState() == MediaStopped; }));
  EXPECT_EQ(changes, QStringList({"02", "20", "02", "26", "62", "21", "12", "20"}));

  test::WriteFile(nameOf("empty.wav"), {});
  test::WriteFile(nameOf("cut.wav"), test::ReadFile(first).left(20));
  for (const char* name : {"2.mp3", "empty.wav", "cut.wav", "", "none.wav"}) {
    changes.clear();
    player.Open(nameOf(name));
    EXPECT_EQ(player.PlayState(), MediaPlaying) << name;
    EXPECT_TRUE(Comes([&] { return player.PlayState() == MediaClosed; })) << name;
    EXPECT_EQ(changes.size(), 2) << name;
  }

  // The music of a show outlives the sound server: the track begins anew when that is back.
  changes.clear();
  recording.clear();
  player.Open(first);
  EXPECT_TRUE(Comes([&] { return heard() > 100; }));
  server.End();
  EXPECT_EQ(player.PlayState(), MediaPlaying);
  server.Begin();
  EXPECT_TRUE(Comes([&] { return player.PlayState() == MediaStopped; }));
  EXPECT_EQ(changes.join(' '), "62 20");
  server.End();
  recorder.waitForFinished();
}

}  // namespace
}  // namespace veldrin::show
