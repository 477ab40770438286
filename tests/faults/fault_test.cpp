// Each command that writes, with a fault put into it: killed at one of its writes, or one of them failing.
// VELDRIN_FAULTS=all goes through all of them, one by one; without it some are taken at random.
#include <QRandomGenerator>
#include <cerrno>
#include <iostream>

#include "faults/world.h"

namespace veldrin {
namespace {

using test::SourceOf;
using test::Sources;
using test::State;
using test::World;

struct Result {
  bool Killed = false;
  int Status = 0;
  bool Reached = false;
  QString Boxes;
};

Result RunCommand(const World& world, const char* command, int at, int error) {
  QProcess child;
  child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  child.start("env", {"LD_PRELOAD=" FAULT_POINT, QStringLiteral("FAULT_AT=%1").arg(at),
                      QStringLiteral("FAULT_ERROR=%1").arg(error), "ASAN_OPTIONS=verify_asan_link_order=0",
                      "HOME=" + world.Path(), "PATH=" + world.Path() + "/Bin:" + qgetenv("PATH"),
                      "MAILER=any", FAULT_CHILD, command, world.Path()});
  EXPECT_TRUE(child.waitForFinished(60'000));
  const QString output = QString::fromUtf8(child.readAllStandardOutput());
  Result result{
      child.exitStatus() == QProcess::CrashExit, child.exitCode(), output.contains("reached|1"), {}};
  for (const QString& line : output.split(u'\n'))
    if (line.startsWith("box|")) result.Boxes += line.mid(4) + u' ';
  return result;
}

class Faults : public testing::TestWithParam<const char*> {
 protected:
  // Made once, since a catalogue takes longer than its copy.
  static void SetUpTestSuite() {
    test::UseMemoryDisk();
    Prototype = test::MakePrototype();
  }
  static void TearDownTestSuite() { Prototype.reset(); }

  QString PrototypePath() const { return Prototype->ProgramPath(); }

  // A row has the file that it had or is to have; no link leads nowhere, no photo is without a place, no
  // picture without a row; a file that is handed out is whole; and no picture has gone but with its row.
  void ExpectWhole(const State& state, const State& before, const State& after) const {
    QMap<QString, int> links;
    for (const QString& link : state.Tables.at("tblPhotoLinks")) ++links[link.section(u'|', 1)];
    QStringList images;
    for (const QString& row : state.Tables.at("tblPhotos")) {
      const QString number = row.section(u'|', 0, 0);
      const QString name = "/Database/Images/" + number + u'.' + row.section(u'|', 1, 1);
      EXPECT_GT(links.take(number), 0) << number.toStdString();
      images << name;
      const auto former = before.Files.find(name);
      const int day = row.contains("2001-01-") ? row.section("2001-01-", 1).left(2).toInt() : 0;
      const QByteArray picture = former != before.Files.end() ? former->second
                                 : day > 0 && day < Sources   ? SourceOf(day)
                                                              : QByteArray();
      const auto now = state.Files.find(name);
      EXPECT_EQ(now == state.Files.end() ? QByteArray() : now->second, picture) << name.toStdString();
    }
    EXPECT_TRUE(links.isEmpty()) << links.size();
    QSet<QByteArray> pictures;
    for (const auto& [name, bytes] : state.Files) {
      pictures.insert(bytes);
      // A page may show fewer photos than it would have.
      const bool isWhole = (after.Files.contains(name) && after.Files.at(name) == bytes) ||
                           (name.endsWith(".htm") && bytes.trimmed().endsWith("</html>"));
      const bool isOurs =
          name.startsWith("/Database/Images/") ? images.contains(name) : isWhole || name.contains("/.");
      EXPECT_TRUE(isOurs || name.startsWith("/Sources/")) << name.toStdString();
    }
    for (const auto& [name, bytes] : before.Files) {
      const bool mayGo = name.startsWith("/Database/Images/") && !images.contains(name);
      EXPECT_TRUE(mayGo || pictures.contains(bytes)) << name.toStdString();
    }
  }

  static inline std::unique_ptr<test::TestCatalogue> Prototype;
};

TEST_P(Faults, LeaveTheCatalogueWholeAndAreTold) {
  const bool all = qEnvironmentVariable("VELDRIN_FAULTS") == "all";
  const int stride = all ? 1 : 13;
  const State before = World(PrototypePath()).Look();
  const World flawless(PrototypePath());
  ASSERT_EQ(RunCommand(flawless, GetParam(), 0, 0).Status, 0);
  const State after = flawless.Look();
  int tried = 0;
  for (const int error : {0, EIO, ENOSPC}) {
    bool reached = true;
    for (int at = all ? 1 : 1 + QRandomGenerator::global()->bounded(stride); reached; at += stride) {
      SCOPED_TRACE(std::string(GetParam()) + ": call " + std::to_string(at) + ", error " +
                   std::to_string(error));
      const World world(PrototypePath());
      const Result result = RunCommand(world, GetParam(), at, error);
      reached = result.Killed || result.Reached;
      tried += reached;
      EXPECT_TRUE(result.Killed ? error == 0 : result.Status == 0) << result.Status;
      // The next start brings to an end what was left.
      EXPECT_EQ(RunCommand(world, "none", 0, 0).Status, 0);
      const State state = world.Look();
      ExpectWhole(state, before, after);
      EXPECT_TRUE(result.Killed || state == after || !result.Boxes.isEmpty()) << "said nothing\n"
                                                                              << Difference(state, after);
      if (HasFailure()) {
        std::cout << result.Boxes.toStdString() << std::endl;
        return;
      }
    }
  }
  std::cout << GetParam() << ": " << tried << " faults" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Commands, Faults,
                         testing::Values("Add", "Delete", "Remove", "Paste", "FolderAdd", "FolderRename",
                                         "FolderDelete", "FolderPaste", "Save", "Thumbnails", "Get", "Web",
                                         "Mail"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace veldrin
