#include <gmock/gmock.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
  qputenv("QT_MEDIA_BACKEND", "ffmpeg");
  QApplication application(argc, argv);
  QApplication::setApplicationDisplayName(QStringLiteral("Veldrin"));
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
