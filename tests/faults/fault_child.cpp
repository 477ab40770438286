// Opens the main window on a catalogue and carries out one command, in which a fault is put. Tells on its
// output, a line each, the boxes that came and whether the fault was reached.
// Arguments: the command, the program's directory. With "random" for a command, a seed and a number: so many
// commands at random, each told when it is done.
#include <dlfcn.h>

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QCryptographicHash>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTextStream>
#include <QTimer>
#include <map>

#include "controls/dir_list.h"
#include "controls/file_list.h"
#include "controls/named.h"
#include "shell/application.h"
#include "shell/configuration.h"
#include "shell/main_window.h"

using namespace veldrin;
using controls::Get;

namespace {

QString Program;
QTextStream Told(stdout);

void Tell(const char* what, QString text) {
  Told << what << '|' << text.replace(u'\n', u' ').remove(Program) << '\n';
}

// Yes to each question, and the directories of the trial in the dialogs. One that stays is left.
class User {
 public:
  User() {
    Clock.setInterval(0);
    QObject::connect(&Clock, &QTimer::timeout, &Clock, [this] { Look(); });
    Clock.start();
  }

 private:
  void Look() {
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) return Answer(*box);
    if (modal == nullptr || modal == Left) return;
    const QString name = modal->objectName();
    if (name != QLatin1String("frmGet") && name != QLatin1String("frmWeb")) return;
    Left = modal;
    // Behind this call, which may not come again while it lasts: a box may follow.
    QTimer::singleShot(0, modal, [modal, name] {
      const char* directory = name == QLatin1String("frmGet") ? "/Got" : "/Webs";
      Get<controls::DirListBox>(*modal, QStringLiteral("Dir1")).SetPath(Program + QLatin1String(directory));
      Get<QAbstractButton>(*modal, QStringLiteral("OkBttn")).click();
      if (modal->isVisible()) Get<QAbstractButton>(*modal, QStringLiteral("CancelBttn")).click();
    });
  }

  static void Answer(QMessageBox& box) {
    for (const auto button : {QMessageBox::Yes, QMessageBox::Ignore, QMessageBox::Ok}) {
      if (box.button(button) == nullptr) continue;
      if (button != QMessageBox::Yes) Tell("box", box.text());
      return box.button(button)->click();
    }
  }

  QTimer Clock;
  QPointer<QWidget> Left;
};

class Child {
 public:
  explicit Child(shell::frmMain& window)
      : Window(window), Tree(Get<controls::TreeView>(window, QStringLiteral("tvTreeView"))) {}

  void Choose(const char* action) const { Get<QAction>(Window, QLatin1String(action)).trigger(); }
  void Click(const char* button) const { Get<QAbstractButton>(Window, QLatin1String(button)).click(); }
  void Select(const char* folder) const {
    Found = false;
    for (int i = 1; i <= Tree.Count(); ++i) {
      if (Tree.NodeAt(i)->Text() != QLatin1String(folder)) continue;
      Found = true;
      Tree.Select(Tree.NodeAt(i));
      Q_EMIT Tree.NodeClick(Tree.NodeAt(i));
    }
  }
  void Mark(const char* folder) const {
    Choose("MainImage");
    Select(folder);
    Choose("RecordAll");
  }
  void Type(const char* text) const {
    if (auto* editor = Tree.viewport()->findChild<QLineEdit*>()) editor->setText(QLatin1String(text));
    Tree.EndLabelEdit();
  }
  void ChooseFiles() const {
    Choose("MainAdd");
    Select("Home");
    auto& view = Get<QWidget>(Window, QStringLiteral("TabPannel(2)"));
    Get<controls::DirListBox>(view, QStringLiteral("Dir1")).SetPath(Program + QStringLiteral("/Sources"));
    Get<controls::FileListBox>(view, QStringLiteral("FileToSel")).selectAll();
    Get<QLineEdit>(view, QStringLiteral("nTitle")).setText(QStringLiteral("new"));
    Get<QCheckBox>(view, QStringLiteral("chkRemove")).setChecked(true);
  }
  // New pictures, which a save takes away, into a folder.
  void MakeFiles(const char* folder) {
    QDir(Program).mkpath(QStringLiteral("Sources"));
    for (const QString& old : QDir(Program + QStringLiteral("/Sources")).entryList(QDir::Files))
      QFile::remove(Program + QStringLiteral("/Sources/") + old);
    Digests.clear();
    for (int i = 0; i < 3; ++i) {
      QImage image(8, 8, QImage::Format_RGB32);
      image.fill(Random.bounded(1 << 24));
      image.setPixel(1, 1, Random.generate());
      const QString name = Program + QStringLiteral("/Sources/p%1.bmp").arg(i);
      image.save(name);
      QFile file(name);
      if (file.open(QIODevice::ReadOnly))
        Digests << QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex();
    }
    ChooseFiles();
    Select(folder);
  }
  void TypeInForm() const {
    Choose("MainForm");
    Select("Home");
    Get<QLineEdit>(Window, QStringLiteral("eTitle")).setText(QStringLiteral("typed"));
  }

 private:
  shell::frmMain& Window;
  controls::TreeView& Tree;

 public:
  QRandomGenerator Random;
  mutable bool Found = true;  ///< the folder that was to be selected
  QList<QByteArray> Digests;  ///< of the pictures that were made
};

struct Command {
  void (*Prepare)(const Child& child);
  void (*Run)(const Child& child);
};

const std::map<QString, Command>& Commands() {
  using C = const Child&;
  static const std::map<QString, Command> all = {
      {"Add", {[](C c) { c.ChooseFiles(); }, [](C c) { c.Click("newSaveBttn"); }}},
      {"Delete", {[](C c) { c.Mark("Travels"); }, [](C c) { c.Choose("RecordDel"); }}},
      {"Remove", {[](C c) { c.Mark("Italy"); }, [](C c) { c.Choose("RecordRmv"); }}},
      {"Paste",
       {[](C c) {
          c.Mark("Italy");
          c.Choose("RecordCut");
          c.Select("Home");
        },
        [](C c) { c.Choose("RecordPaste"); }}},
      {"FolderAdd",
       {[](C c) { c.Select("Home"); },
        [](C c) {
          c.Choose("FolderAdd");
          c.Type("Garden");
        }}},
      {"FolderRename",
       {[](C c) {
          c.Select("Home");
          c.Choose("FolderRen");
        },
        [](C c) { c.Type("Renamed"); }}},
      {"FolderDelete", {[](C c) { c.Select("Travels"); }, [](C c) { c.Choose("FolderDel"); }}},
      {"FolderClear", {[](C c) { c.Select("Garden"); }, [](C c) { c.Choose("FolderDel"); }}},
      {"FolderPaste",
       {[](C c) {
          c.Select("Travels");
          c.Choose("FolderCut");
          c.Select("Home");
        },
        [](C c) { c.Choose("FolderPaste"); }}},
      {"Save", {[](C c) { c.TypeInForm(); }, [](C c) { c.Click("SaveBttn"); }}},
      {"Thumbnails", {[](C c) { c.Select("Travels"); }, [](C c) { c.Choose("MainImage"); }}},
      {"Get", {[](C c) { c.Mark("Travels"); }, [](C c) { c.Choose("PhotoGet"); }}},
      {"Web", {[](C c) { c.Mark("Travels"); }, [](C c) { c.Choose("PhotoWeb"); }}},
      {"Mail", {[](C c) { c.Mark("Travels"); }, [](C c) { c.Choose("PhotoEmail"); }}}};
  return all;
}

// Those stored at home nobody deletes.
void RunRandomly(Child& child, const shell::frmMain& window, int count) {
  static const char* const others[] = {"Delete",      "Remove", "Paste",      "FolderAdd",
                                       "FolderClear", "Save",   "Thumbnails", "Get"};
  for (int i = 0; i < count; ++i) {
    const int choice = static_cast<int>(child.Random.bounded(12));
    auto& work = Get<QLabel>(window, QStringLiteral("lblWork"));
    work.clear();
    // As the user's press, so that an error reaches the application's report.
    QEventLoop wait;
    QTimer::singleShot(0, &wait, [&] {
      const auto leave = qScopeGuard([&wait] { QTimer::singleShot(0, &wait, &QEventLoop::quit); });
      if (choice < 4) {
        child.MakeFiles(choice < 2 ? "Home" : "Travels");
        return child.Found ? child.Click("newSaveBttn") : void();
      }
      const Command& command = Commands().at(QLatin1String(others[choice - 4]));
      command.Prepare(child);
      if (child.Found) command.Run(child);
    });
    wait.exec();
    if (choice < 2 && work.text() == QLatin1String("3 photos stored in Home"))
      for (const QByteArray& digest : child.Digests) Tell("stored", QString::fromLatin1(digest));
    Tell("done", QString::number(choice));
    Told.flush();
  }
}

template <class Function>
Function* Preloaded(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

int main(int argc, char** argv) {
  shell::Application application(argc, argv);
  application.CanGoOn = [] { return true; };
  QApplication::setDoubleClickInterval(1);
  const QStringList arguments = QCoreApplication::arguments();
  Program = arguments[2];
  const shell::App app(Program, Program + QStringLiteral("/Temp"));
  catalogue::Paths paths;
  engine::DBEngine engine;
  const User user;
  if (!shell::LoadConfiguration(paths, engine, app)) return 2;
  if (arguments[1] == QLatin1String("none")) return 0;
  paths.BrowserPath = QStringLiteral("true");
  shell::frmMain window(app, paths, engine);
  window.Form_Load();
  window.show();
  Child child(window);
  if (arguments[1] == QLatin1String("random")) {
    child.Random.seed(arguments[3].toUInt());
    RunRandomly(child, window, arguments[4].toInt());
    return 0;
  }
  const Command& command = Commands().at(arguments[1]);
  command.Prepare(child);
  QCoreApplication::processEvents();
  // As the user's press, so that an error reaches the application's report. What the command leaves to later
  // events belongs to it.
  QTimer::singleShot(0, &window, [&] {
    const auto leave = qScopeGuard([] { QTimer::singleShot(0, qApp, &QCoreApplication::quit); });
    if (auto* begin = Preloaded<void()>("BeginToCount")) begin();
    command.Run(child);
    const auto& page = Get<browse::ThumbnailPage>(window, QStringLiteral("ThumbPannel"));
    while (!page.IsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  });
  QCoreApplication::exec();
  auto* end = Preloaded<bool()>("EndCount");
  Tell("reached", QString::number(end != nullptr && end() ? 1 : 0));
  return 0;
}
