#include "shell/application.h"

#include <QAbstractButton>
#include <QIcon>
#include <QMessageBox>
#include <QPalette>
#include <QStyleFactory>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "base/runtime_error.h"
#include "catalogue/schema.h"
#include "controls/msg_box.h"
#include "shell/configuration.h"
#include "shell/splash.h"

namespace veldrin::shell {

namespace {

// An error that isn't the program's own has no number; this is the one of a call that could not be done.
constexpr int ForeignError = 5;

QPalette CalmPalette() {
  const QColor text(0x1f, 0x29, 0x33);
  const QColor faint(0x9a, 0xa3, 0xad);
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xf4, 0xf5, 0xf7));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xf8, 0xf9, 0xfb));
  palette.setColor(QPalette::Button, QColor(0xf7, 0xf8, 0xfa));
  palette.setColor(QPalette::Light, Qt::white);
  palette.setColor(QPalette::Midlight, QColor(0xeb, 0xed, 0xf1));
  palette.setColor(QPalette::Mid, QColor(0xc9, 0xcf, 0xd6));
  palette.setColor(QPalette::Dark, QColor(0xa8, 0xb0, 0xba));
  palette.setColor(QPalette::Shadow, QColor(0x6b, 0x76, 0x82));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xc4));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x2f, 0x6f, 0xc4));
  palette.setColor(QPalette::LinkVisited, QColor(0x5b, 0x5f, 0xa8));
  palette.setColor(QPalette::ToolTipBase, QColor(0x2b, 0x36, 0x42));
  palette.setColor(QPalette::ToolTipText, QColor(0xf4, 0xf5, 0xf7));
  palette.setColor(QPalette::PlaceholderText, faint);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xd5, 0xda, 0xe1));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(0x6b, 0x76, 0x82));
  return palette;
}

void UseBreezeIcons() {
  const QString systemIcons = QStringLiteral("/usr/share/icons");
  QStringList paths = QIcon::themeSearchPaths();
  if (!paths.contains(systemIcons)) paths << systemIcons;
  QIcon::setThemeSearchPaths(paths);
  QIcon::setThemeName(QStringLiteral("breeze"));
}

// Where it isn't possible nothing is asked.
bool AskToGoOn(const QString& text, bool isPossible) {
  if (!isPossible) {
    controls::MsgBox(nullptr, text, controls::vbCritical);
    return false;
  }
  QMessageBox box(QMessageBox::Critical, QGuiApplication::applicationDisplayName(), text,
                  QMessageBox::Ignore | QMessageBox::Close, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.button(QMessageBox::Ignore)->setText(QStringLiteral("&Go On"));
  box.button(QMessageBox::Close)->setText(QStringLiteral("&End the Program"));
  box.setDefaultButton(QMessageBox::Ignore);
  box.setEscapeButton(QMessageBox::Ignore);
  return box.exec() == QMessageBox::Ignore;
}

}  // namespace

Application::Application(int& argc, char** argv)
    : QApplication(argc, argv), End([](int status) {
        std::fflush(nullptr);
        // Without the destructors, which would go on with what the error left half done.
        std::_Exit(status);
      }) {
  setApplicationName(QStringLiteral("veldrin"));
  setApplicationDisplayName(App::Title());
  setApplicationVersion(App::VersionText().section(QLatin1Char(' '), 1));
  setDesktopFileName(QStringLiteral("veldrin"));
  setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  setPalette(CalmPalette());
  UseBreezeIcons();
  setWindowIcon(QIcon(QStringLiteral(":/veldrin.svg")));
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const base::RuntimeError& error) {
    // By the user, to whom all shows what it showed before.
    if (error.Number() == base::errCanceled) return false;
    ReportError(error.Number(), error.Description());
  } catch (const std::exception& error) {
    ReportError(ForeignError, QString::fromLocal8Bit(error.what()));
  }
  return false;
}

void Application::ReportError(int number, const QString& description) {
  // A window that fails to paint fails again behind the box.
  if (std::exchange(Reporting, true)) return;
  // The pointer of the routine that failed would stay an hourglass over the box.
  while (overrideCursor() != nullptr) restoreOverrideCursor();
  if (!AskToGoOn(QStringLiteral("Run-time error '%1':\n\n%2").arg(number).arg(description),
                 CanGoOn && CanGoOn())) {
    if (CleanUp) CleanUp();
    End(1);
  }
  Reporting = false;
}

StartUp::StartUp(std::unique_ptr<App> app) : TheApp(std::move(app)) {}

StartUp::~StartUp() {
  if (auto* application = qobject_cast<Application*>(QCoreApplication::instance())) {
    application->CleanUp = nullptr;
    application->CanGoOn = nullptr;
  }
}

bool StartUp::Main(MainWindowFactory makeMainWindow) {
  if (TheApp->PrevInstance()) return false;
  MakeMainWindow = std::move(makeMainWindow);
  if (auto* application = qobject_cast<Application*>(QCoreApplication::instance())) {
    application->CleanUp = [this] { catalogue::DeleteWorkFile(ThePaths); };
    application->CanGoOn = [this] { return MainWindow && MainWindow->isVisible() && CatalogueAnswers(); };
  }
  // Until the main window is there, a closed box or a splash out of sight is not the end of the program.
  QApplication::setQuitOnLastWindowClosed(false);
  Splash = std::make_unique<frmSplash>([this] { return LoadConfiguration(ThePaths, TheEngine, *TheApp); },
                                       [this] { ShowMain(); });
  Splash->Show();
  return true;
}

// One that another machine holds at the moment will answer again.
bool StartUp::CatalogueAnswers() {
  try {
    TheEngine.OpenDatabase(ThePaths.WorkFile)
        ->OpenRecordset(QStringLiteral("SELECT Max(tblPhotos.PhotoID) As ID FROM tblPhotos"),
                        engine::dbOpenSnapshot);
    return true;
  } catch (const base::RuntimeError& error) {
    return error.Number() == base::errLocked;
  }
}

void StartUp::ShowMain() {
  if (MainWindow) return;
  MainWindow = MakeMainWindow();
  MainWindow->show();
  QApplication::setQuitOnLastWindowClosed(true);
}

}  // namespace veldrin::shell
