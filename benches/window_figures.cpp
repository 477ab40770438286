// The main window over a million photos: a click on a folder, the start, the memory.

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "shell/application.h"
#include "shell/main_window.h"

namespace veldrin::benches {

namespace {

constexpr double SplashMilliseconds = 1000;

// The window as Data View has it, and beside it the keys as SQLite gives them. Made at the first measurement.
class WindowBench {
 public:
  explicit WindowBench(const QString& program)
      : Opened(program),
        Keys(program),
        App(program, Temporary.path()),
        Window(App, Opened.Paths(), Opened.Engine()) {
    Window.Form_Load();
    Window.show();
    Tree = Window.findChild<controls::TreeView*>();
  }

  /// The first click on a folder after a change of the catalogue, or after none.
  double Click(const QString& folderKey, bool changed) {
    controls::Node& node = Find(folderKey);
    if (changed) {
      Opened.Engine()
          .OpenDatabase(Opened.Paths().WorkFile)
          ->Execute(QStringLiteral("UPDATE tblPhotos SET Title = Title WHERE PhotoID = 1"));
    }
    Press(*Tree->NodeAt(2));  // Another folder, so that each click is a change.
    return Milliseconds([&] { Press(node); });
  }

  double ReadKeys(const QString& folderKey) {
    return Milliseconds([&] { Keys.ReadKeys(folderKey.toStdString()); });
  }

 private:
  controls::Node& Find(const QString& key) const {
    for (int i = 1; i <= Tree->Count(); ++i) {
      if (Tree->NodeAt(i)->Tag() == key) return *Tree->NodeAt(i);
    }
    throw std::runtime_error("no folder " + key.toStdString());
  }

  // What the tree does of a click.
  void Press(controls::Node& node) const {
    Tree->Select(&node);
    Q_EMIT Tree->NodeClick(&node);
  }

  QTemporaryDir Temporary;
  OpenedCatalogue Opened;
  KeyReader Keys;
  shell::App App;
  shell::frmMain Window;
  controls::TreeView* Tree = nullptr;
};

// Milliseconds from the start of the process to its main window, and what it has in memory then.
struct StartResult {
  double Milliseconds = 0;
  double Megabytes = 0;
};

StartResult StartChild(const QString& program) {
  QProcess child;
  QByteArray line;
  StartResult result;
  result.Milliseconds = Milliseconds([&] {
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--start"), program});
    while (!line.startsWith("shown ") && child.waitForReadyRead(120'000)) line = child.readLine();
  });
  child.waitForFinished();
  if (!line.startsWith("shown ")) throw std::runtime_error("the child showed no window");
  result.Milliseconds -= SplashMilliseconds;
  result.Megabytes = line.mid(6).trimmed().toDouble();
  return result;
}

}  // namespace

int RunStartChild(int argc, char** argv) {
  shell::Application application(argc, argv);
  const QTemporaryDir temporary;
  shell::StartUp startUp(std::make_unique<shell::App>(QString::fromLocal8Bit(argv[2]), temporary.path()));
  startUp.Main([&]() -> std::unique_ptr<QWidget> {
    auto window = std::make_unique<shell::frmMain>(startUp.Program(), startUp.Paths(), startUp.Engine());
    window->Form_Load();
    // When the loop comes back the window has been shown and painted.
    QTimer::singleShot(0, window.get(), [] {
      std::cout << "shown " << ResidentMegabytes() << std::endl;
      QCoreApplication::quit();
    });
    return window;
  });
  return shell::Application::exec();
}

void AddWindowFigures(const std::string& data) {
  const auto program = [data] { return MakeCatalogue(QString::fromStdString(data), LargeCatalogue); };
  const auto window = Lazy([program] { return std::make_unique<WindowBench>(program()); });
  const auto addClick = [window](const char* name, const QString& key, int repetitions, bool changed = true) {
    AddFigure({name, "ms", [window, key, changed] { return window().Click(key, changed); },
               [window, key] { return window().ReadKeys(key); }, repetitions});
  };
  addClick("folder_click_2k_of_1m", QLatin1String(FullFolderKey), 501);
  addClick("folder_click_1m", QLatin1String(TopFolderKey), 7);
  addClick("root_click_1m", QString(), 7);
  addClick("folder_again_1m", QLatin1String(TopFolderKey), 51, false);

  AddFigure({"start_1m", "ms", [program] { return StartChild(program()).Milliseconds; },
             [program] {
               KeyReader keys(program());
               return Milliseconds([&] {
                 keys.ReadFolders();
                 keys.ReadKeys({});
               });
             },
             3});
  AddFigure({"memory_1m",
             "MB more than with none",
             [program, data] {
               const QString empty = QString::fromStdString(data + "/empty");
               MakeEmptyCatalogue(empty);
               return StartChild(program()).Megabytes - StartChild(empty).Megabytes;
             },
             {},
             3});
}

}  // namespace veldrin::benches
