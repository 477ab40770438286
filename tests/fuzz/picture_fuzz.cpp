// Files of every format that pictures are read from, and of none. The bytes are the file. Ends the process
// where a file that can't be drawn small is said to be a picture, and where one raises what no file on a
// sound disk may raise.
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "base/runtime_error.h"
#include "pictures/fit.h"

using namespace veldrin;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

// The formats of pictures are plugins of an application.
void StartOnce() {
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  static const bool isSet = qputenv("QT_QPA_PLATFORM", "offscreen");
  static QGuiApplication application(argc, argv);
  if (isSet) QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
}

int ErrorOf(const QString& file) {
  try {
    const auto picture = pictures::LoadPictureForBox(file, {2535, 1935}, 1);
    return picture.IsEmpty() || picture.NaturalPixels().isEmpty() ? -1 : 0;
  } catch (const base::RuntimeError& error) {
    return error.Number();
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  StartOnce();
  static const QTemporaryDir directory;
  static const QString path = directory.filePath(QStringLiteral("picture"));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) std::abort();
  file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  file.close();
  const int error = ErrorOf(path);
  const bool isPicture = pictures::IsPicture(path);
  const bool holds =
      error == 0 || error == base::errOutOfMemory ? isPicture : error == base::errInvalidPicture;
  if (!holds) {
    std::fprintf(stderr, "error %d, picture %d\n", error, isPicture);
    std::abort();
  }
  return 0;
}
