#include "tour/tour.h"

#include <QApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QLineEdit>
#include <QPainter>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "browse/thumbnail_page.h"
#include "catalogue/image_store.h"
#include "controls/picture_loader.h"
#include "shell/configuration.h"
#include "shell/splash.h"

namespace veldrin::tour {

Tour::Tour(const shell::App& app, QString photographs, QString pictures)
    : TheApp(app), ThePhotographs(std::move(photographs)), Pictures(std::move(pictures)) {
  Splash();
  TheWindow = std::make_unique<shell::frmMain>(TheApp, ThePaths, TheEngine);
  TheWindow->Form_Load();
  TheWindow->show();
  TheWindow->activateWindow();
  (void)QTest::qWaitForWindowActive(TheWindow.get());
}

void Tour::Splash() {
  shell::frmSplash splash([this] { return shell::LoadConfiguration(ThePaths, TheEngine, TheApp); }, [] {});
  splash.Show();
  if (!QTest::qWaitFor([&] { return QFileInfo::exists(ThePaths.WorkFile); }))
    throw std::runtime_error("no catalogue");
  Save(splash.grab(), "01-splash");
  splash.hide();
}

void Tour::Save(const QPixmap& picture, const char* name) {
  const QString file = Pictures + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
  if (!picture.save(file)) throw std::runtime_error("can't write " + file.toStdString());
  std::cout << file.toStdString() << std::endl;
}

void Tour::WaitForPictures() {
  const auto areThere = [] {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      for (const auto* loader : window->findChildren<controls::PictureLoader*>())
        if (!loader->IsIdle()) return false;
      for (const auto* page : window->findChildren<browse::ThumbnailPage*>())
        if (!page->IsComplete()) return false;
    }
    return true;
  };
  if (!QTest::qWaitFor(areThere, 20'000)) throw std::runtime_error("pictures don't come");
}

void Tour::Save(const char* name) {
  QCoreApplication::processEvents();
  WaitForPictures();
  Save(TheWindow->grab(), name);
}

void Tour::SaveModal(const char* name, const std::function<void()>& action) {
  QTimer::singleShot(0, qApp, [this, name] {
    QWidget* dialog = QApplication::activeModalWidget();
    Save(dialog->grab(), name);
    dialog->close();
  });
  action();
}

void Tour::SaveOver(QWidget& other, const char* name) {
  QPixmap picture = TheWindow->grab();
  const QSize room = TheWindow->size() - other.size();
  QPainter(&picture).drawPixmap(QPoint(room.width(), room.height()) / 2, other.grab());
  Save(picture, name);
}

void Tour::SaveMenu(const char* menuName, QPoint place, const char* name) {
  QPixmap picture = TheWindow->grab();
  auto& menu = Get<QMenu>(menuName);
  menu.ensurePolished();
  menu.resize(menu.sizeHint());
  QPainter(&picture).drawPixmap(place, menu.grab());
  Save(picture, name);
}

void Tour::SaveFolderMenu(const char* name) {
  const QPoint place = Tree().visualItemRect(Tree().SelectedItem()).center();
  SaveMenu("FolderMenu", Tree().viewport()->mapTo(TheWindow.get(), place), name);
}

void Tour::GoTo(int row) {
  auto& grid = Get<QTableView>("TDBGrid1");
  grid.setCurrentIndex(grid.model()->index(row, 0));
}

QString Tour::StoredImage(int row) {
  const auto& model = *Get<QTableView>("TDBGrid1").model();
  return catalogue::ImageFileName(ThePaths, model.index(row, 0).data().toInt(),
                                  model.index(row, 1).data().toString());
}

int Tour::FindPhoto(const std::function<bool(QSize)>& kind) {
  for (int row = 0;; ++row) {
    if (kind(QImageReader(StoredImage(row)).size())) return row;
  }
}

void Tour::SelectFolder(const QString& name) {
  Get<QLineEdit>("txtFldrSearch").setText(name);
  QTest::mouseClick(&Get("bttnGo"), Qt::LeftButton);
}

}  // namespace veldrin::tour
