#include "platform/program_start.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::platform {
namespace {

class ProgramStart : public testing::Test {
 protected:
  // A program that writes the number of its arguments and the first of them, as a whole, beside itself.
  void MakeProgram(const QString& name, bool executable = true) const {
    const QString file = Directory.path() + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(file).path());
    test::WriteFile(file,
                    "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > \"$0.part\"\nmv \"$0.part\" \"$0.out\"\n");
    QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                    (executable ? QFileDevice::ExeOwner : QFileDevice::Permission{}));
  }
  QByteArray Written(const QString& name) const {
    const QString file = Directory.path() + QLatin1Char('/') + name + QStringLiteral(".out");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(file); })) << file.toStdString();
    return test::ReadFile(file);
  }
  static int Start(const QString& line) {
    try {
      Shell(line);
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }

  QTemporaryDir Directory;
};

TEST_F(ProgramStart, TheShortestRunOfWordsIsTheProgram) {
  struct {
    const char* Program;
    const char* Line;  ///< behind the directory
    const char* Written;
  } const cases[] = {
      {"browser", "browser /help dir/welcome.htm", "1|/help dir/welcome.htm"},
      {"my web browser", "my web browser /a b  c", "1|/a b  c"},
      {"two dirs/run", "two dirs/run", "0|"},
      {"first", "first second x", "1|second x"},
  };
  MakeProgram(QStringLiteral("my web"), false);
  MakeProgram(QStringLiteral("first second"));
  for (const auto& [program, line, written] : cases) {
    MakeProgram(QLatin1String(program));
    EXPECT_EQ(Start(Directory.path() + QLatin1Char('/') + QLatin1String(line)), 0);
    EXPECT_EQ(Written(QLatin1String(program)).toStdString(), written);
  }
}

TEST_F(ProgramStart, ABareNameIsLookedForInThePath) {
  MakeProgram(QStringLiteral("veldrin-test-viewer"));
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", Directory.path().toUtf8() + ':' + path);
  EXPECT_EQ(Start(QStringLiteral("veldrin-test-viewer a page.htm")), 0);
  qputenv("PATH", path);
  EXPECT_EQ(Written(QStringLiteral("veldrin-test-viewer")), QByteArray("1|a page.htm"));
}

TEST_F(ProgramStart, WhatIsNoProgramRaisesFileNotFound) {
  MakeProgram(QStringLiteral("notes"), false);
  for (const QString& line :
       {QString(), QStringLiteral("   "), QStringLiteral("/no/such/browser /a/page.htm"),
        QStringLiteral("veldrin-test-no-such-program x"), Directory.path(),
        Directory.filePath(QStringLiteral("notes x"))}) {
    EXPECT_EQ(Start(line), errFileNotFound) << line.toStdString();
  }
}

}  // namespace
}  // namespace veldrin::platform
