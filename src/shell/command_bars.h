// The menu bar and the toolbar of the main window, made from tables; their items are found by name and
// number.
#pragma once

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "folders/folder_menus.h"
#include "shell/command_state.h"

namespace veldrin::shell {

class CommandBars {
 public:
  /// The bars belong to the window and the header.
  CommandBars(QMenuBar& menuBar, QWidget& header);

  // Each raises 3265 for one that isn't there, which is a mistake in the program.
  /// A menu item by its name, such as "FolderCut".
  QAction& Item(const char* name) const;
  /// A menu by its name, such as "FolderMenu".
  QMenu& Menu(const char* name) const;
  /// A button of `tbarToolBar` by its number.
  QAction& Button(int number) const;
  QToolBar& tbarToolBar() const { return *Toolbar; }

  /// The query's button is down as long as a query holds, and its tip tells of it.
  void ShowQueryHolds(bool holds);

  /// Enables or disables the button and the menu item of a view.
  void EnableView(int view, bool enabled);

  // Apply what the pure functions of the same names answer.
  void Apply(const ViewMenuState& state, int view);
  void Apply(const RecordMenuState& state);
  /// Of the same state what a cut, a copy or the undo of a cut changes at once.
  void ApplyPending(const RecordMenuState& state);
  void Apply(const folders::FolderMenuState& state);

 private:
  void MakeMenus();
  void MakeToolbar(QWidget& header);

  QAction& Find(const QString& name) const;

  QMenuBar& MenuBar;
  QToolBar* Toolbar = nullptr;
  // A click on a folder sets some forty items.
  QHash<QString, QAction*> Actions;
};

}  // namespace veldrin::shell
