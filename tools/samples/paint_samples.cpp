// Paints the sample photographs: paint_samples <directory>. A file that is there already stays.

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSaveFile>
#include <QtConcurrent>
#include <iostream>

#include "samples/sample_files.h"
#include "samples/sample_list.h"

namespace {

using namespace veldrin::samples;

void PaintSample(const Sample& sample, const QDir& directory) {
  const QString path = directory.filePath(QLatin1String(sample.Name));
  if (QFile::exists(path)) return;
  QImage picture(sample.Size, QImage::Format_RGB32);
  picture.fill(Qt::black);
  {
    Canvas canvas(picture, sample.Seed);
    sample.Paint(canvas, sample.Hour());
  }
  // Whole or not at all, so that an interrupted run can go on. The extension tells the type, so it stays the
  // last.
  const QString part = directory.filePath(QLatin1String("part_") + QLatin1String(sample.Name));
  WriteSample(picture, part, sample.Variant);
  QFile file(part);
  if (!file.open(QIODevice::ReadWrite) ||
      !file.setFileTime(QDateTime::fromString(QLatin1String(sample.Date), QStringLiteral("yyyy-MM-dd hh:mm")),
                        QFileDevice::FileModificationTime)) {
    throw std::runtime_error("can't date " + part.toStdString());
  }
  file.close();
  if (!QFile::rename(part, path)) throw std::runtime_error("can't name " + path.toStdString());
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "usage: paint_samples <directory>\n";
    return 2;
  }
  const QDir directory(QString::fromLocal8Bit(argv[1]));
  directory.mkpath(QStringLiteral("."));
  std::atomic<bool> failed = false;
  QtConcurrent::blockingMap(Samples(), [&](const Sample& sample) {
    try {
      PaintSample(sample, directory);
    } catch (const std::exception& error) {
      std::cerr << "paint_samples: " << sample.Name << ": " << error.what() << '\n';
      failed = true;
    }
  });
  return failed ? 1 : 0;
}
