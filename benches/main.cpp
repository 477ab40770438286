// bench_veldrin <directory for data> [pattern of figures]...

#include <QDir>
#include <iostream>

#include "benches/figure.h"
#include "shell/application.h"

int main(int argc, char** argv) {
  using namespace veldrin::benches;
  if (argc < 2) {
    std::cerr << "usage: bench_veldrin <directory for data> [pattern of figures]...\n";
    return 2;
  }
  if (std::string(argv[1]) == "--start") return RunStartChild(argc, argv);
  const veldrin::shell::Application application(argc, argv);
  const QDir directory(QString::fromLocal8Bit(argv[1]));
  directory.mkpath(QStringLiteral("."));
  const std::string data = directory.absolutePath().toStdString();
  AddClipboardFigures(data);
  AddFindFigures(data);
  AddFolderFigures(data);
  AddGetFigures(data);
  AddHoldFigures(data);
  AddOutputFigures(data);
  AddPageFigures(data);
  AddStoringFigures(data);
  AddRecordFigures(data);
  AddShowFigures(data);
  AddWindowFigures(data);
  return PrintFigures({argv + 2, argv + argc}) ? 0 : 1;
}
