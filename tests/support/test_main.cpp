#include <gmock/gmock.h>

#include <QApplication>
#include <QLocale>

#include "support/test_support.h"

int main(int argc, char** argv) {
  veldrin::test::UseMemoryDisk();
  QApplication application(argc, argv);
  QApplication::setApplicationDisplayName("Veldrin");
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
