#include "tour/show_tour.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMouseEvent>
#include <QTimer>

#include "controls/directory_chooser.h"
#include "controls/file_list.h"
#include "tour/tour.h"

namespace {

class ShowPictures {
 public:
  ShowPictures(veldrin::shell::frmMain& window, QString musicDir,
               const std::function<void(const QPixmap&, const char*)>& save)
      : Window(window), MusicDir(std::move(musicDir)), Save(save) {}

  void InTheWindow() {
    Choose("MainPlay");
    SaveWindow("07-image-play");
    Choose("tbarShow(6)");
    SaveWindow("07-image-play-playing");
    Choose("tbarShow(9)");
    Choose("tbarShow(10)");
    SaveWindow("07-image-play-paused");
  }

  void OnTheWholeScreen() {
    OnDialog([this] { Choose("tbarShow(15)"); },
             [this](QWidget& screen) {
               veldrin::tour::Tour::WaitForPictures();
               Save(screen.grab(), "07-full-screen");
               const QPoint edge(screen.width() / 2, screen.height() - 1);
               QMouseEvent move(QEvent::MouseMove, edge, screen.mapToGlobal(edge), Qt::NoButton, Qt::NoButton,
                                {});
               QApplication::sendEvent(&screen, &move);
               QApplication::processEvents();
               Save(screen.grab(), "07-full-screen-bar");
             });
  }

  void Music() {
    QDir().mkpath(MusicDir);
    for (const char* name : {"evening.mp3", "harbour.wav", "walk in the hills.aiff"}) {
      QFile file(MusicDir + QLatin1String(name));
      if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("can't write music");
    }
    OnDialog(
        [this] { Choose("MusicSetup"); },
        [this](QWidget& dialog) {
          dialog.findChild<veldrin::controls::DirectoryChooser*>()->SetPath(QDir(MusicDir).absolutePath());
          auto& files = *dialog.findChild<veldrin::controls::FileListBox*>(QStringLiteral("FileToSel"));
          files.setCurrentRow(1);
          Save(dialog.grab(), "07-music");
        });
    Choose("MainData");
  }

 private:
  void Choose(const char* name) { Window.findChild<QAction*>(QLatin1String(name))->trigger(); }
  void SaveWindow(const char* name) {
    QApplication::processEvents();
    veldrin::tour::Tour::WaitForPictures();
    Save(Window.grab(), name);
  }
  static void OnDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& action) {
    QTimer::singleShot(0, qApp, [&] {
      QWidget& dialog = *QApplication::activeModalWidget();
      action(dialog);
      dialog.close();
    });
    open();
  }

  veldrin::shell::frmMain& Window;
  QString MusicDir;
  const std::function<void(const QPixmap&, const char*)>& Save;
};

}  // namespace

void ShowTour(veldrin::shell::frmMain& window, const QString& musicDir,
              const std::function<void(const QPixmap&, const char*)>& save) {
  ShowPictures pictures(window, musicDir, save);
  pictures.InTheWindow();
  pictures.OnTheWholeScreen();
  pictures.Music();
}
