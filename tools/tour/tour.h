// What the pictures of the tour have in common: the window, its controls, saving.
#pragma once

#include <QAction>
#include <QMenu>
#include <functional>
#include <memory>
#include <stdexcept>

#include "controls/tree_view.h"
#include "shell/app.h"
#include "shell/main_window.h"

namespace veldrin::tour {

class Tour {
 public:
  /// `photographs`: a directory with files to add; `pictures`: where the pictures of the tour go.
  Tour(const shell::App& app, QString photographs, QString pictures);

  const QString& Photographs() const { return ThePhotographs; }
  shell::frmMain& Window() { return *TheWindow; }

  template <class Control = QWidget>
  Control& Get(const char* name) {
    return *TheWindow->findChild<Control*>(QLatin1String(name));
  }
  controls::TreeView& Tree() { return Get<controls::TreeView>("tvTreeView"); }
  void Choose(const char* item) { Get<QAction>(item).trigger(); }

  /// A picture of the window as it is.
  void Save(const char* name);
  void Save(const QPixmap& picture, const char* name);
  /// Until every view has decoded what it is to show.
  static void WaitForPictures();
  const catalogue::Paths& Paths() const { return ThePaths; }
  engine::DBEngine& Engine() { return TheEngine; }
  /// A picture of the modal window that the action opens; closes it.
  void SaveModal(const char* name, const std::function<void()>& action);
  /// A picture of the window with another one over its middle.
  void SaveOver(QWidget& other, const char* name);
  /// A picture of the window with a menu open at a place of it.
  void SaveMenu(const char* menuName, QPoint place, const char* name);
  /// A picture of the window with the folder menu open at the selected folder.
  void SaveFolderMenu(const char* name);

  /// Shows a photo by its place in the list.
  void GoTo(int row);
  QString StoredImage(int row);
  /// Where a stored image waits while the tour shows another state.
  QString Aside() const { return ThePaths.TempDir + QStringLiteral("/aside"); }
  /// The first photo whose picture is of the kind.
  int FindPhoto(const std::function<bool(QSize)>& kind);
  void SelectFolder(const QString& name);

 private:
  void Splash();

  const shell::App& TheApp;
  QString ThePhotographs;
  QString Pictures;
  catalogue::Paths ThePaths;
  engine::DBEngine TheEngine;
  std::unique_ptr<shell::frmMain> TheWindow;
};

// The groups of pictures. Each leaves the catalogue as it found it.
void TakeViewPictures(Tour& tour);
void TakeFolderPictures(Tour& tour);
void TakeFindPictures(Tour& tour);
void TakeGetPictures(Tour& tour);
void TakeOutputPictures(Tour& tour);

}  // namespace veldrin::tour
