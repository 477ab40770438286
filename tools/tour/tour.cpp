// Opens every view and dialog on a catalogue and writes their pictures: a look at the program without a
// display.
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QImageReader>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <iostream>

#include "catalogue/image_store.h"
#include "platform/control_drag.h"
#include "platform/dir_list.h"
#include "platform/file_list.h"
#include "shell/application.h"
#include "shell/configuration.h"
#include "shell/main_window.h"
#include "shell/splash.h"
#include "tour/show_tour.h"

namespace {

using veldrin::platform::Node;

class Tour {
 public:
  /// `photographs`: a directory with files to add; `pictures`: where the pictures of the tour go.
  Tour(const veldrin::platform::App& app, QString photographs, QString pictures)
      : TheApp(app), Photographs(std::move(photographs)), Pictures(std::move(pictures)) {}

  void Run() {
    Splash();
    Window = std::make_unique<veldrin::shell::frmMain>(TheApp, Paths, Engine);
    Window->Form_Load();
    Window->show();
    Window->activateWindow();
    (void)QTest::qWaitForWindowActive(Window.get());
    DataView();
    FormView();
    Browse();
    ShowTour(*Window, Paths.MusicDir,
             [this](const QPixmap& picture, const char* name) { Save(picture, name); });
    AddNew();
    Dialogs();
  }

 private:
  template <class Control = QWidget>
  Control& Get(const char* name) {
    return *Window->findChild<Control*>(QLatin1String(name));
  }
  void Choose(const char* name) { Get<QAction>(name).trigger(); }

  void Save(const QPixmap& picture, const char* name) {
    const QString file = Pictures + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
    if (!picture.save(file)) throw std::runtime_error("can't write " + file.toStdString());
    std::cout << file.toStdString() << std::endl;
  }
  void Save(const char* name) {
    QCoreApplication::processEvents();
    Save(Window->grab(), name);
  }

  void SelectFolder(const QString& name) {
    Get<QLineEdit>("txtFldrSearch").setText(name);
    QTest::mouseClick(&Get("bttnGo"), Qt::LeftButton);
  }

  // The picture of the modal window that the action opens; closes it.
  void SaveModal(const char* name, const std::function<void()>& action) {
    QTimer::singleShot(0, qApp, [this, name] {
      QWidget* dialog = QApplication::activeModalWidget();
      Save(dialog->grab(), name);
      dialog->close();
    });
    action();
  }

  void Splash() {
    veldrin::shell::frmSplash splash(
        [this] { return veldrin::shell::LoadConfiguration(Paths, Engine, TheApp); }, [] {});
    splash.Show();
    if (!QTest::qWaitFor([&] { return QFileInfo::exists(Paths.WorkFile); }))
      throw std::runtime_error("no catalogue");
    Save(splash.grab(), "01-splash");
    splash.hide();
  }

  // A picture of the window with a menu open at a place of it.
  void SaveMenu(const char* menuName, QPoint place, const char* name) {
    QPixmap picture = Window->grab();
    auto& menu = Get<QMenu>(menuName);
    menu.ensurePolished();
    menu.resize(menu.sizeHint());
    QPainter(&picture).drawPixmap(place, menu.grab());
    Save(picture, name);
  }

  // Shows a photo by its place in the list.
  void GoTo(int row) {
    Get<QTableView>("TDBGrid1").setCurrentIndex(Get<QTableView>("TDBGrid1").model()->index(row, 0));
  }
  QString StoredImage(int row) {
    const auto& model = *Get<QTableView>("TDBGrid1").model();
    return veldrin::catalogue::ImageFileName(Paths, model.index(row, 0).data().toInt(),
                                             model.index(row, 1).data().toString());
  }
  // Where a stored image waits while the tour shows another state.
  QString Aside() const { return Paths.TempDir + QStringLiteral("/aside"); }
  // The first photo whose picture is of the kind.
  int FindPhoto(const std::function<bool(QSize)>& kind) {
    for (int row = 0;; ++row) {
      if (kind(QImageReader(StoredImage(row)).size())) return row;
    }
  }

  void DataView() {
    auto& grid = Get<QTableView>("TDBGrid1");
    const int portrait = FindPhoto([](QSize size) { return size.height() > size.width(); });
    Save("02-data-view");
    GoTo(portrait);
    Save("02-data-view-portrait");
    QFile::rename(StoredImage(portrait), Aside());
    GoTo(0);
    GoTo(portrait);
    Save("02-data-view-missing-image");
    QFile::rename(Aside(), StoredImage(portrait));
    GoTo(3);
    for (int i = 0; i < 4; ++i) QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    Save("02-data-view-selection");
    SaveMenu("RecordMenu", QPoint(400, 260), "02-record-menu");
    SaveModal("02-delete-question", [this] { Choose("RecordDel"); });
    SelectFolder(QStringLiteral("Family"));
    SaveModal("02-remove-question", [this] { Choose("RecordRmv"); });
    SelectFolder(QStringLiteral("Photos"));
  }

  void FormView() {
    GoTo(1);
    Choose("MainForm");
    Save("02-form-view");
    QImage tiny(6, 4, QImage::Format_RGB32);
    tiny.fill(Qt::darkCyan);
    tiny.setPixelColor(2, 1, Qt::yellow);
    GoTo(2);
    QFile::rename(StoredImage(2), Aside());
    tiny.save(StoredImage(2));
    Choose("MainData");
    Choose("MainForm");
    Get<QPlainTextEdit>("eDescription")
        .setPlainText(QString(25, QLatin1Char('x')) +
                      QStringLiteral(" two lines of a description").repeated(8));
    Save("02-form-view-tiny");
    const QSize size = Window->size();
    Window->resize(size.width(), 560);
    Save("02-form-view-low-window");
    Window->resize(size);
    QFile::remove(StoredImage(2));
    QFile::rename(Aside(), StoredImage(2));
    Choose("MainData");
    SaveNoProgram();
  }

  // No desktop, and so no program for a picture.
  void SaveNoProgram() {
    const QTemporaryDir nothing;
    for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
      qputenv(name, nothing.path().toUtf8());
    SaveModal("02-no-program", [this] { Get<QPushButton>("ViewBttn").click(); });
  }

  void Browse() {
    Choose("MainImage");
    Save("03-image-view-full");
    for (int cell : {1, 3, 4}) {
      QTest::mouseClick(&Get(qPrintable(QStringLiteral("ImgThumb(%1)").arg(cell))), Qt::LeftButton,
                        Qt::ControlModifier);
    }
    Save("04-selection");
    SelectShortFolder();
    Save("05-image-view-short");
    SaveFolderMenu();
  }

  // The first folder with fewer photos than a page has cells.
  void SelectShortFolder() {
    auto& tree = Get<veldrin::platform::TreeView>("tvTreeView");
    for (int i = 2; i <= tree.Count(); ++i) {
      tree.Select(tree.NodeAt(i));
      Q_EMIT tree.NodeClick(tree.NodeAt(i));
      const bool real = tree.NodeAt(i)->Text() != QStringLiteral("!UNORGANIZED");
      if (real && !Get("picThumb(1)").isHidden() && Get("picThumb(9)").isHidden()) return;
    }
  }

  void SaveFolderMenu() {
    auto& tree = Get<veldrin::platform::TreeView>("tvTreeView");
    SaveMenu("FolderMenu",
             tree.viewport()->mapTo(Window.get(), tree.visualItemRect(tree.SelectedItem()).center()),
             "06-folder-menu");
  }

  void AddNew() {
    Choose("MainAdd");
    auto& files = Get<veldrin::platform::FileListBox>("FileToSel");
    Get<veldrin::platform::DirListBox>("Dir1").SetPath(Photographs);
    QTest::keyClick(&files, Qt::Key_Home);
    Save("08-add-new");
    QTest::keyClick(&files, Qt::Key_Down, Qt::ShiftModifier);
    Save("09-add-new-several");
    const auto data = veldrin::platform::MakeControlDrag(Get("picNew"));
    auto& folder = Get("ImgFolder");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&folder, &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&folder, &drop);
    Save("10-add-new-dropped");
    Choose("MainData");
  }

  void Dialogs() {
    SaveModal("11-setup", [this] { Choose("FileSetup"); });
    SaveModal("12-about", [this] { Choose("HelpAbout"); });
    Finding();
    SaveModal("13-folder-not-found", [this] { SelectFolder(QStringLiteral("no such folder")); });
  }

  // Fills a field of the modal dialog that the command opens, and presses a button of it.
  void Enter(const char* command, const char* field, const QString& text, const char* button) {
    QTimer::singleShot(0, qApp, [field, text, button] {
      const QWidget* dialog = QApplication::activeModalWidget();
      dialog->findChild<QLineEdit*>(QLatin1String(field))->setText(text);
      auto* press = dialog->findChild<QPushButton*>(QLatin1String(button));
      QTimer::singleShot(0, press, [press] { press->click(); });
    });
    Choose(command);
  }
  // The box that such a button opens. It comes from within the dialog's own event.
  void SaveBox(const char* name, const char* command, const char* field, const QString& text,
               const char* button) {
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [this, name, &look] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      look.stop();
      Save(box->grab(), name);
      box->close();
      if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
    });
    look.start(0);
    Enter(command, field, text, button);
  }

  void Finding() {
    SelectFolder(QStringLiteral("Photos"));
    Enter("RecordQuery", "qDescription", QStringLiteral("a"), "OkBttn");
    SaveModal("14-query", [this] { Choose("RecordQuery"); });
    Save("14-query-holds");
    Choose("MainImage");
    Save("14-query-holds-image-view");
    Choose("MainData");
    Enter("RecordQuery", "qTitle", QStringLiteral("no such photo"), "OkBttn");
    Save("14-query-without-result");
    Get<QPushButton>("ResetBttn").click();
    SaveModal("15-search", [this] { Choose("RecordSearch"); });
    SaveBox("15-search-no-number", "RecordSearch", "MatchVal", QStringLiteral("one"), "FindBttn");
    SaveBox("15-search-not-found", "RecordSearch", "MatchVal", QStringLiteral("0"), "FindBttn");
    SaveBox("14-query-no-date", "RecordQuery", "qCrtDate(0)", QStringLiteral("soon"), "OkBttn");
  }

  const veldrin::platform::App& TheApp;
  QString Photographs;
  QString Pictures;
  veldrin::catalogue::Paths Paths;
  veldrin::platform::DBEngine Engine;
  std::unique_ptr<veldrin::shell::frmMain> Window;
};

}  // namespace

int main(int argc, char** argv) {
  veldrin::shell::Application application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) {
    std::cerr << "usage: veldrin_tour <program directory> <photographs> <directory for the pictures>\n";
    return 2;
  }
  const QTemporaryDir temporary;
  const veldrin::platform::App app(QDir(arguments[1]).absolutePath(), temporary.path());
  try {
    Tour(app, QDir(arguments[2]).absolutePath(), arguments[3]).Run();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
