#include "desktop/file_copy.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>
#include <csignal>

#include "base/runtime_error.h"
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
    try {
      CopyFile(Path(source), Path(target));
    } catch (const base::RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  QStringList Names() const {
    return QDir(Directory.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }

  QTemporaryDir Directory;
};

TEST_F(FileCopies, RefuseAndLeaveAllAsItWas) {
  QDir(Directory.path()).mkdir(QStringLiteral("dir"));
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
  rlimit free{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &free), 0);
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full{2, free.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  const int errors[] = {Copy("source", "other"), Copy("source", "new")};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &free), 0);
  std::signal(SIGXFSZ, handler);
  for (const int error : errors) EXPECT_EQ(error, base::errDiskFull);
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
  EXPECT_EQ(Names().join(QLatin1Char(' ')), QStringLiteral("other source"));
}

TEST_F(FileCopies, ReplaceWhatHasTheName) {
  ASSERT_TRUE(QFile::link(Path("other"), Path("link to other")));
  ASSERT_TRUE(QFile::link(Path("source"), Path("link to source")));
  ASSERT_TRUE(QFile::link(Path("gone"), Path("broken")));
  ASSERT_EQ(::link(QFile::encodeName(Path("other")).constData(), QFile::encodeName(Path("hard")).constData()),
            0);
  const QStringList names = Names();
  for (const char* target : {"hard", "link to other", "link to source", "broken"}) {
    EXPECT_EQ(Copy("source", target), 0) << target;
    EXPECT_FALSE(QFileInfo(Path(target)).isSymLink()) << target;
    EXPECT_EQ(test::ReadFile(Path(target)), "new") << target;
  }
  EXPECT_EQ(Names(), names);
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
}

TEST_F(FileCopies, KeepTheTimeAndFollowNoLinkOutOfTheCatalogue) {
  const QDateTime time = QDateTime::fromSecsSinceEpoch(994'241'696);
  QFile source(Path("source"));
  ASSERT_TRUE(source.open(QFile::ReadWrite) && source.setFileTime(time, QFile::FileModificationTime));
  CopyStoredFile(Path("source"), Path("new"));
  EXPECT_EQ(QFileInfo(Path("new")).lastModified(), time);
  ASSERT_TRUE(QFile::link(Path("source"), Path("link")));
  EXPECT_EQ(test::ErrorOf([this] { CopyStoredFile(Path("link"), Path("other")); }),
            base::errPermissionDenied);
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
}

TEST_F(FileCopies, LeaveNoHalfFileWhenTheyAreKilled) {
  const auto kill = [this](const char* target, int parts) {
    const pid_t child = ::fork();
    if (child == 0) {
      std::vector<std::unique_ptr<NewFile>> files;
      for (int i = 0; i < parts; ++i) {
        files.push_back(std::make_unique<NewFile>(Path(target)));
        (void)!::write(files.back()->Descriptor(), "half", 4);
      }
      (void)::raise(SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
  };
  test::WriteFile(Path(".veldrin-mine.part"), "somebody's");
  const QStringList names = Names();
  kill("none", 3);
  EXPECT_EQ(Names().filter(".part").size(), 4);
  kill("other", 1);
  EXPECT_EQ(Names().filter(".part").size(), 2) << "the second run cleared what the first had left";
  EXPECT_FALSE(QFile::exists(Path("none")));
  EXPECT_EQ(test::ReadFile(Path("other")), "old");
  EXPECT_EQ(Copy("source", "other"), 0);
  EXPECT_EQ(Names(), names);
}

}  // namespace
}  // namespace veldrin::desktop
