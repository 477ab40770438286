#include "desktop/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include "base/runtime_error.h"
#include "support/small_disk.h"
#include "support/test_support.h"

namespace veldrin::desktop {
namespace {

// "source" has the bytes to copy, "other" those of a bystander.
class FileCopies : public testing::Test {
 protected:
  FileCopies() {
    test::WriteFile(Path("source"), "new");
    test::WriteFile(Path("other"), "old");
  }
  QString Path(const char* name) const { return Directory.filePath(QLatin1String(name)); }
  int Copy(const char* source, const char* target) const {
    return test::ErrorOf([&] { CopyFile(Path(source), Path(target)); });
  }
  QStringList Names() const {
    constexpr auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    return QDir(Directory.path()).entryList(all);
  }

  QTemporaryDir Directory;
};

TEST_F(FileCopies, RefuseAndLeaveAllAsItWas) {
  QDir(Directory.path()).mkdir("dir");
  ASSERT_TRUE(QFile::link(Path("gone"), Path("broken")));
  ASSERT_EQ(::mkfifo(QFile::encodeName(Path("pipe")).constData(), 0600), 0);
  ASSERT_EQ(
      ::link(QFile::encodeName(Path("source")).constData(), QFile::encodeName(Path("twin")).constData()), 0);
  const struct {
    const char* Source;
    const char* Target;
    int Error;
  } cases[] = {
      {"missing", "new", base::errFileNotFound},      {"missing", "other", base::errFileNotFound},
      {"dir", "new", base::errFileNotFound},          {"broken", "new", base::errFileNotFound},
      {"pipe", "new", base::errFileNotFound},         {"source", "source", base::errPermissionDenied},
      {"source", "twin", base::errPermissionDenied},  {"source", "dir", base::errPathFileAccess},
      {"source", "pipe", base::errPathFileAccess},    {"source", "none/new", base::errPathNotFound},
      {"source", "other/new", base::errPathNotFound},
  };
  const QStringList names = Names();
  for (const auto& [source, target, error] : cases) {
    EXPECT_EQ(Copy(source, target), error) << source << " to " << target;
    EXPECT_EQ(Names(), names) << source << " to " << target;
  }
  EXPECT_EQ(test::ReadFile(Path("source")) + test::ReadFile(Path("other")), "newold");
}

TEST_F(FileCopies, LeaveTheFormerFileWhereTheDiskIsFull) {
  const auto copyToFullDisk = [this](const char* target) {
    const test::SmallDisk full(2);
    return Copy("source", target);
  };
  const int errors[] = {copyToFullDisk("other"), copyToFullDisk("new")};
  for (const int error : errors) EXPECT_EQ(error, base::errDiskFull);
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
  EXPECT_EQ(Names().join(u' '), "other source");
}

// Of what is still written to a copy is a part, and nobody else has the rest.
TEST_F(FileCopies, LeaveWhatAnotherProgramWritesTo) {
  const auto copy = [this] { return FileCopy(Path("source"), Path("copy")).Source(); };
  const auto refusal = [&] { return test::ErrorOf([&] { copy(); }); };
  const base::FileState state = copy();
  const auto removal = [&] { return test::ErrorOf([&] { RemoveUnchanged(Path("source"), state); }); };
  QFile writer(Path("source"));
  ASSERT_TRUE(writer.open(QIODevice::ReadWrite));
  EXPECT_EQ(refusal(), base::errPathFileAccess);
  EXPECT_EQ(removal(), base::errPathFileAccess);
  writer.close();
  EXPECT_EQ(refusal(), 0);
  test::WriteFile(Path("source"), "longer");
  EXPECT_EQ(removal(), base::errPathFileAccess);
  EXPECT_TRUE(QFile::exists(Path("source")));
  RemoveUnchanged(Path("source"), copy());
  EXPECT_FALSE(QFile::exists(Path("source")));
}

TEST_F(FileCopies, ReplaceWhatHasTheName) {
  ASSERT_TRUE(QFile::link(Path("other"), Path("link to other")));
  ASSERT_TRUE(QFile::link(Path("source"), Path("link to source")));
  ASSERT_TRUE(QFile::link(Path("gone"), Path("broken")));
  ASSERT_EQ(::link(QFile::encodeName(Path("other")).constData(), QFile::encodeName(Path("hard")).constData()),
            0);
  const timespec times[] = {{}, {994'241'696, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(Path("source")).constData(), times, 0), 0);
  const QStringList names = Names();
  for (const char* target : {"hard", "link to other", "link to source", "broken"}) {
    EXPECT_EQ(Copy("source", target), 0) << target;
    EXPECT_FALSE(QFileInfo(Path(target)).isSymLink()) << target;
    EXPECT_EQ(test::ReadFile(Path(target)), "new") << target;
    EXPECT_EQ(QFileInfo(Path(target)).lastModified().toSecsSinceEpoch(), 994'241'696);
  }
  EXPECT_EQ(Names(), names);
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
}

TEST_F(FileCopies, LeaveNoHalfFileWhenTheyAreKilled) {
  const auto begin = [this](const char* target) {
    NewFile(Path(target)).Write("half", 4);
    NewFile left(Path(target));
    const NewFile other(Path(target));
    left.Write("half", 4);
    (void)::raise(SIGKILL);
  };
  test::WriteFile(Path(".veldrin-mine.part"), "somebody's");
  const QStringList names = Names();
  for (const char* target : {"none", "other"}) {
    EXPECT_EXIT(begin(target), testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(Names().filter(".part").size(), 3) << "the second run clears what the first left";
  }
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
  EXPECT_EQ(Copy("source", "other"), 0);
  EXPECT_EQ(Names(), names);
}

}  // namespace
}  // namespace veldrin::desktop
