// The process: its look, its report of errors that no handler caught, and its start.
#pragma once

#include <QApplication>
#include <functional>
#include <memory>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"
#include "shell/app.h"

namespace veldrin::shell {

class frmSplash;

/// The application object. An error that no handler caught is shown in a box with its number and text; then
/// the working copy is removed and the process ends with exit status 1, unless the program can go on and the
/// user wants it to.
class Application : public QApplication {
  Q_OBJECT

 public:
  /// Sets the program's style, colours and icons.
  Application(int& argc, char** argv);

  /// Removes the working copy, at the end by an error. Set by StartUp while it lives.
  std::function<void()> CleanUp;
  /// Whether there is something to go on with. Set by StartUp while it lives.
  std::function<bool()> CanGoOn;
  /// Ends the process with an exit status. A test puts its own in the place.
  std::function<void(int)> End;

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void ReportError(int number, const QString& description);

  bool Reporting = false;
};

/// The start of the program, and what is owned for a run: the paths, the data engine, the main window.
class StartUp {
 public:
  using MainWindowFactory = std::function<std::unique_ptr<QWidget>()>;

  /// The application object must be there.
  explicit StartUp(std::unique_ptr<App> app = std::make_unique<App>());
  ~StartUp();
  StartUp(const StartUp&) = delete;
  StartUp& operator=(const StartUp&) = delete;

  /// Shows the splash window, which loads and then shows the main window, made by the factory. Returns at
  /// once; false when another instance runs: the process has nothing to do then.
  bool Main(MainWindowFactory makeMainWindow);

  const App& Program() const { return *TheApp; }
  catalogue::Paths& Paths() { return ThePaths; }
  engine::DBEngine& Engine() { return TheEngine; }

 private:
  void ShowMain();
  bool CatalogueAnswers();

  std::unique_ptr<App> TheApp;
  catalogue::Paths ThePaths;
  engine::DBEngine TheEngine;
  MainWindowFactory MakeMainWindow;
  // The windows go before what they refer to.
  std::unique_ptr<frmSplash> Splash;
  std::unique_ptr<QWidget> MainWindow;
};

}  // namespace veldrin::shell
