// Opens every view and dialog on a catalogue and writes their pictures: a look at the program without a
// display.
#include <QDir>
#include <QTemporaryDir>
#include <iostream>

#include "shell/application.h"
#include "tour/show_tour.h"
#include "tour/tour.h"

int main(int argc, char** argv) {
  veldrin::shell::Application application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) {
    std::cerr << "usage: veldrin_tour <program directory> <photographs> <directory for the pictures>\n";
    return 2;
  }
  const QTemporaryDir temporary;
  const veldrin::shell::App app(QDir(arguments[1]).absolutePath(), temporary.path());
  try {
    veldrin::tour::Tour tour(app, QDir(arguments[2]).absolutePath(), arguments[3]);
    TakeViewPictures(tour);
    TakeFolderPictures(tour);
    ShowTour(tour.Window(), tour.Paths().MusicDir,
             [&tour](const QPixmap& picture, const char* name) { tour.Save(picture, name); });
    TakeFindPictures(tour);
    TakeGetPictures(tour);
    TakeOutputPictures(tour);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
