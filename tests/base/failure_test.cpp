#include "base/failure.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QStringList>
#include <stdexcept>

namespace veldrin::base {
namespace {

QStringList Log;

TEST(Failure, WhatIsPassedOverIsSaidOnRequestAndMistakesGoOn) {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { Log << text; });
  const auto fail = [] { ResumeNext([] { throw RuntimeError(errDiskFull, "Disk full: /x"); }); };
  fail();
  EXPECT_EQ(Log, QStringList()) << "the category is off";
  QLoggingCategory::setFilterRules("veldrin.passed_over=true");
  fail();
  EXPECT_FALSE(EndSilently([] { throw std::bad_alloc(); }));
  ASSERT_EQ(Log.size(), 2);
  EXPECT_TRUE(Log[0].contains("failure_test.cpp:") && Log[0].endsWith("61 Disk full: /x"));
  EXPECT_THROW(EndSilently([] { throw std::logic_error("a wrong index"); }), std::logic_error);
  EXPECT_TRUE(ResumeNext([] {}));
  QLoggingCategory::setFilterRules({});
  qInstallMessageHandler(nullptr);
}

}  // namespace
}  // namespace veldrin::base
