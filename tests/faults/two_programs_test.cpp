// Two programs on one catalogue, at random commands, one of them killed now and then. VELDRIN_COMMANDS says
// how many commands each has.
#include <QCryptographicHash>
#include <QRandomGenerator>
#include <iostream>

#include "faults/world.h"

namespace veldrin {
namespace {

using test::World;

constexpr int DefaultCommands = 60;

/// A program on the catalogue of another directory.
class Machine {
 public:
  Machine(const QString& prototype, const QString& database) : Place(prototype) {
    QDir().mkpath(Place.Path() + "/Ini");
    test::WriteFile(Place.Path() + "/Ini/Veldrin.ini", "[Directories]\nDatabase=" + database.toUtf8() + '\n');
    Child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  }
  ~Machine() { Child.kill(), Child.waitForFinished(); }
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  void Start(int commands) {
    Child.start(FAULT_CHILD,
                {"random", Place.Path(), QString::number(QRandomGenerator::global()->generate() >> 1),
                 QString::number(commands)});
    EXPECT_TRUE(Child.waitForStarted());
  }
  /// True when it has ended.
  bool WaitFor(int milliseconds) {
    Child.waitForReadyRead(milliseconds);
    Output += Child.readAllStandardOutput();
    return Child.state() == QProcess::NotRunning;
  }
  void Kill() {
    Child.kill();
    Child.waitForFinished();
    Output += Child.readAllStandardOutput();
  }
  int Done() const { return static_cast<int>(Output.count("done|")); }
  bool EndedWell() const { return Child.exitStatus() == QProcess::NormalExit && Child.exitCode() == 0; }
  /// Of the pictures that it told were stored, where nothing deletes them.
  QList<QByteArray> Stored() const {
    QList<QByteArray> digests;
    // What a kill cut short wasn't told.
    for (const QByteArray& line : Output.left(Output.lastIndexOf('\n') + 1).split('\n'))
      if (line.startsWith("stored|")) digests << line.mid(7);
    return digests;
  }

 private:
  World Place;
  QProcess Child;
  QByteArray Output;
};

TEST(TwoPrograms, LeaveTheCatalogueWholeAndLoseNothingThatWasTold) {
  test::UseMemoryDisk();
  const auto prototype = test::MakePrototype();
  const World shared(prototype->ProgramPath());
  const QString database = shared.Path() + "/Database";
  const int commands = qEnvironmentVariableIsSet("VELDRIN_COMMANDS")
                           ? qEnvironmentVariableIntValue("VELDRIN_COMMANDS")
                           : DefaultCommands;
  Machine steady(prototype->ProgramPath(), database);
  Machine killed(prototype->ProgramPath(), database);
  steady.Start(commands);
  int kills = 0;
  for (int done = 0; done < commands; done = killed.Done()) {
    killed.Start(commands - done);
    const int after = done + 1 + static_cast<int>(QRandomGenerator::global()->bounded(commands / 3));
    ASSERT_TRUE(QTest::qWaitFor([&] { return killed.WaitFor(20) || killed.Done() >= after; }, 60'000));
    steady.WaitFor(0);
    if (killed.Done() >= commands) break;
    killed.Kill();
    ++kills;
  }
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return killed.WaitFor(20) && steady.WaitFor(20); }, 60'000 + commands * 500));
  EXPECT_TRUE(steady.EndedWell() && killed.EndedWell());
  killed.Start(0);  // Sweeps.
  ASSERT_TRUE(QTest::qWaitFor([&] { return killed.WaitFor(20); }, 60'000));

  const test::State state = shared.Look();
  QMap<QString, int> links;
  for (const QString& link : state.Tables.at("tblPhotoLinks")) ++links[link.section(u'|', 1)];
  QSet<QString> images;
  for (const QString& row : state.Tables.at("tblPhotos")) {
    const QString number = row.section(u'|', 0, 0);
    EXPECT_GT(links.take(number), 0) << number.toStdString();
    images << "/Database/Images/" + number + u'.' + row.section(u'|', 1, 1);
  }
  EXPECT_TRUE(links.isEmpty());
  QSet<QByteArray> pictures;
  for (const auto& [name, bytes] : state.Files) {
    if (!name.startsWith("/Database/Images/")) continue;
    EXPECT_TRUE(images.remove(name)) << name.toStdString() << " has no row";
    pictures << QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
  }
  EXPECT_EQ(images, QSet<QString>{"/Database/Images/3.jpg"}) << "the photo without a file, and no other";
  const QList<QByteArray> told = steady.Stored() + killed.Stored();
  for (const QByteArray& digest : told) EXPECT_TRUE(pictures.contains(digest)) << digest.toStdString();
  std::cout << "2 x " << commands << " commands, " << kills << " kills, " << told.size() << " pictures told"
            << std::endl;
}

}  // namespace
}  // namespace veldrin
