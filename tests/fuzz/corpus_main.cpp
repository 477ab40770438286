// Runs what a fuzzer starts from, and what it has found: a test without the fuzzer.
#include <QDir>
#include <QFile>
#include <QLocale>
#include <iostream>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  const auto files = QDir(QString::fromLocal8Bit(argv[1])).entryInfoList(QDir::Files);
  for (const auto& entry : files) {
    std::cout << entry.fileName().toStdString() << std::endl;
    QFile file(entry.filePath());
    if (!file.open(QIODevice::ReadOnly)) return 1;
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                           static_cast<size_t>(bytes.size()));
  }
  return files.isEmpty() ? 1 : 0;
}
