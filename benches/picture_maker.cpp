#include "benches/picture_maker.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QtConcurrent>
#include <filesystem>
#include <stdexcept>

#include "samples/scenes.h"

namespace veldrin::benches {

namespace {

constexpr QSize LargeSize(6000, 4000);
constexpr QSize SmallSize(1800, 1200);
constexpr int LargeNoise = 9;
constexpr int SmallNoise = 18;
// Painting a thousand pictures would take long: each of these few gets a comment of its own.
constexpr int Motifs = 10;

QByteArray PaintJpeg(int number, QSize size, int noise) {
  static const samples::Scene scenes[] = {samples::PaintLake, samples::PaintMountains, samples::PaintMeadow,
                                          samples::PaintCanal, samples::PaintSea};
  QImage picture(size, QImage::Format_RGB32);
  {
    samples::Canvas canvas(picture, static_cast<quint32>(number));
    scenes[number % 5](canvas, number % 2 == 0 ? samples::Noon() : samples::Evening());
    samples::Develop(canvas, 0, noise);
  }
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "JPEG", 92);
  return buffer.data();
}

void WriteWhole(const std::string& path, const QByteArray& bytes) {
  QFile file(QString::fromStdString(path + ".part"));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("can't write " + path);
  file.close();
  std::filesystem::rename(path + ".part", path);
}

// The picture with a comment segment behind its first marker.
QByteArray WithComment(QByteArray jpeg, int number) {
  const QByteArray text = QByteArray::number(number).rightJustified(8, '0');
  return jpeg.insert(2, QByteArray("\xFF\xFE\x00\x0A", 4) + text);
}

}  // namespace

std::vector<std::string> MakeLargePictures(const std::string& data, int count) {
  const std::string directory = data + "/large";
  std::filesystem::create_directories(directory);
  std::vector<std::string> paths;
  for (int number = 1; number <= count; ++number)
    paths.push_back(directory + "/" + std::to_string(number) + ".jpg");
  QtConcurrent::blockingMap(paths, [&](const std::string& path) {
    const int number = std::stoi(std::filesystem::path(path).stem().string());
    if (!std::filesystem::exists(path)) WriteWhole(path, PaintJpeg(number, LargeSize, LargeNoise));
  });
  return paths;
}

std::string MakeManyPictures(const std::string& data, int count) {
  const std::string directory = data + "/many";
  std::filesystem::create_directories(directory);
  for (int motif = 0; motif < Motifs; ++motif) {
    QByteArray jpeg;
    for (int number = motif; number < count; number += Motifs) {
      const std::string path = directory + "/" + std::to_string(10000 + number) + ".jpg";
      if (std::filesystem::exists(path)) continue;
      if (jpeg.isEmpty()) jpeg = PaintJpeg(motif, SmallSize, SmallNoise);
      WriteWhole(path, WithComment(jpeg, number));
    }
  }
  return directory;
}

}  // namespace veldrin::benches
