#include "desktop/program_start.h"

#include "support/environment.h"
#include "support/test_support.h"

namespace veldrin::desktop {
namespace {

struct ProgramStart : testing::Test {
  // A program that writes the number of its arguments and the first of them, as a whole, beside itself.
  void MakeProgram(const QString& name, bool executable = true) const {
    const QString file = Directory.filePath(name);
    QDir().mkpath(QFileInfo(file).path());
    test::WriteFile(file,
                    "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > \"$0.part\"\nmv \"$0.part\" \"$0.out\"\n");
    QFile::setPermissions(file, QFile::ReadOwner | (executable ? QFile::ExeOwner : QFile::WriteOwner));
  }
  void ExpectStart(const QString& line, const QString& program, const char* written) const {
    const QString file = Directory.filePath(program + ".out");
    Shell(line);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(file); })) << file.toStdString();
    EXPECT_EQ(test::ReadFile(file), written);
    QFile::remove(file);
  }

  QTemporaryDir Directory;
};

TEST_F(ProgramStart, TheShortestRunOfWordsIsTheProgram) {
  for (const char* name : {"browser", "my web browser", "two dirs/run", "first second"}) MakeProgram(name);
  MakeProgram("my web", false);
  const QString place = Directory.path() + '/';
  ExpectStart(place + "browser /help dir/welcome.htm", "browser", "1|/help dir/welcome.htm");
  ExpectStart(place + "my web browser /a b  c", "my web browser", "1|/a b  c");
  ExpectStart(place + "two dirs/run", "two dirs/run", "0|");
  MakeProgram("first");
  ExpectStart(place + "first second x", "first", "1|second x");
  const test::Environment path{{"PATH", Directory.path().toUtf8() + ':' + qgetenv("PATH")}};
  ExpectStart("first a page.htm", "first", "1|a page.htm");
}

TEST_F(ProgramStart, WhatIsNoProgramRaisesFileNotFound) {
  MakeProgram("notes", false);
  for (const QString& line :
       QStringList{"", "   ", "/no/such/browser /a/page.htm", "veldrin-no-such-program x", Directory.path(),
                   Directory.filePath("notes x")}) {
    EXPECT_EQ(test::ErrorOf([&] { Shell(line); }), base::errFileNotFound) << line.toStdString();
  }
}

}  // namespace
}  // namespace veldrin::desktop
