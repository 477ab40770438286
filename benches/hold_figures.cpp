// The longest time for which one event holds the window's thread, and what is prepared so that none does.

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QImageReader>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QtConcurrent>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/hold_meter.h"
#include "benches/picture_maker.h"
#include "benches/sqlite_file.h"
#include "catalogue/image_store.h"
#include "controls/named.h"
#include "find/query_dialog.h"
#include "folders/folder_keys.h"
#include "output/progress_dialog.h"
#include "records/photo_storing.h"
#include "shell/main_window.h"

namespace veldrin::benches {

namespace {

constexpr int Photos = 200;
constexpr int Motifs = 24;  // of 24 megapixels, so that the disk holds them
constexpr int Deleted = 1000;
constexpr int HeldKeys = 50;
constexpr int KeyInterval = 33;  // milliseconds, as a key repeats
constexpr int LockedFor = 1500;
constexpr CatalogueSize Reported{10'000, 50};

std::vector<std::string> Repeated(std::vector<std::string> pictures, size_t count) {
  const size_t motifs = pictures.size();
  for (size_t i = motifs; i < count; ++i) pictures.push_back(pictures[i % motifs]);
  return pictures;
}

// The program's window over a catalogue.
class HoldBench {
 public:
  explicit HoldBench(const QString& program)
      : Opened(program), App(program, Temporary.path()), Window(App, Opened.Paths(), Opened.Engine()) {
    Window.Form_Load();
    Window.show();
    Look(Settling);
  }

  double Choose(const char* action) {
    return LongestHold([this, action] { Child<QAction>(action).trigger(); }, [] { return true; });
  }
  bool PageIsComplete() { return Child<browse::ThumbnailPage>("ThumbPannel").IsComplete(); }
  void RemoveThumbnails() {
    QDir(Opened.Paths().ThumbDir).removeRecursively();
    QDir().mkpath(Opened.Paths().ThumbDir);
  }
  qsizetype Thumbnails() const { return QDir(Opened.Paths().ThumbDir).entryList(QDir::Files).size(); }
  void Show(const char* view) {
    Child<QAction>(view).trigger();
    while (!PageIsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  template <class Control>
  Control& Child(const char* name) {
    return controls::Get<Control>(Window, QLatin1String(name));
  }

  double ColdPage() {
    Show("MainData");
    RemoveThumbnails();
    return LongestHold([this] { Child<QAction>("MainImage").trigger(); },
                       [this] { return PageIsComplete(); });
  }

  // A key on the page.
  double PageDown() {
    if (List().AbsolutePosition() > Photos - 40) Press(Qt::Key_Home);
    return LongestHold([this] { Press(Qt::Key_PageDown); }, [this] { return PageIsComplete(); });
  }
  void Press(Qt::Key key) { QTest::keyClick(&Child<QWidget>("ThumbPannel"), key); }

  // What a walk through many pages and the photos on them adds to memory at most, in megabytes.
  double WalkPages(int pages) {
    Show("MainImage");
    ForgetPeak();
    const double before = ResidentMegabytes();
    for (int page = 0; page < pages; ++page) {
      if (page % 10 == 0) Show("MainForm");
      Show("MainImage");
      PageDown();
    }
    return PeakMegabytes() - before;
  }

  // A key that is held down.
  double Hold(const std::function<void()>& step) {
    int steps = 0;
    QTimer keys;
    QObject::connect(&keys, &QTimer::timeout, [&] {
      step();
      ++steps;
    });
    return LongestHold([&] { keys.start(KeyInterval); }, [&] { return steps >= HeldKeys; });
  }

  // What an action does while another program holds the catalogue for a while.
  double Locked(const std::function<void()>& action) {
    auto other = std::make_unique<SqliteFile>(Opened.Paths().DatabaseFile);
    other->Run("BEGIN EXCLUSIVE");
    bool done = false;
    QTimer::singleShot(LockedFor, [&] { other.reset(); });
    return LongestHold(
        [&] {
          action();
          done = true;
        },
        [&] { return done && !other && PageIsComplete(); });
  }

  double Press(const QString& folderKey) {
    auto& tree = Child<controls::TreeView>("tvTreeView");
    for (int i = 1; i <= tree.Count(); ++i) {
      if (tree.NodeAt(i)->Tag() != folderKey) continue;
      return LongestHold(
          [&] {
            tree.Select(tree.NodeAt(i));
            Q_EMIT tree.NodeClick(tree.NodeAt(i));
          },
          [] { return true; });
    }
    throw std::runtime_error("no folder");
  }

  // No list is kept any longer.
  void Change() {
    Engine()
        .OpenDatabase(Paths().WorkFile)
        ->Execute(QStringLiteral("UPDATE tblPhotos SET Title = Title WHERE PhotoID = 1"));
  }
  const catalogue::RecordList& List() const { return Window.List(); }
  const catalogue::Paths& Paths() const { return Opened.Paths(); }
  engine::DBEngine& Engine() { return Opened.Engine(); }
  QWidget& Main() { return Window; }

 private:
  static constexpr int Settling = 300;

  QTemporaryDir Temporary;
  OpenedCatalogue Opened;
  shell::App App;
  shell::frmMain Window;
};

// Does something in the next dialog of a kind.
template <class Dialog>
void OnDialog(std::function<void(Dialog&)> use) {
  auto* look = new QTimer(qApp);
  QObject::connect(look, &QTimer::timeout, look, [look, use] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    look->stop();
    look->deleteLater();
    use(*dialog);
  });
  look->start(10);
}

void AnswerYes() {
  OnDialog<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
}

QString LargePhotos(const std::string& data) {
  const QString program = MakePictureCatalogue(QString::fromStdString(data + "/hold"),
                                               Repeated(MakeLargePictures(data, Motifs), Photos));
  SqliteFile(program + QStringLiteral("/Database/Photos.mdb"))
      .Run("INSERT INTO tblLevel1 VALUES('0001', 'Folder')");
  return program;
}

double Store(const std::string& data) {
  const std::string sources = data + "/hold-sources";
  RunShell("rm -rf '" + sources + "' && mkdir '" + sources + "'");
  const auto pictures = Repeated(MakeLargePictures(data, Motifs), Photos);
  for (size_t i = 0; i < pictures.size(); ++i)
    RunShell("ln '" + pictures[i] + "' '" + sources + "/" + std::to_string(i) + ".jpg'");
  const QString program = QString::fromStdString(data + "/hold-store");
  MakeEmptyCatalogue(program);
  HoldBench bench(program);
  records::PhotoBatch batch;
  batch.Directory = QString::fromStdString(sources);
  batch.Names = QDir(batch.Directory).entryList(QDir::Files, QDir::Name);
  batch.LinkKey = folders::LinkKey(QString());
  controls::LongWork work(bench.Main());
  return LongestHold(
      [&] {
        controls::Progress progress(work, QStringLiteral("Storing Photos...."), Photos);
        records::StorePhotos(bench.Paths(), bench.Engine(), batch, &progress);
      },
      [] { return true; });
}

double Delete(const std::string& data) {
  const auto pictures = Repeated(MakeLargePictures(data, Motifs), Deleted);
  HoldBench bench(MakePictureCatalogue(QString::fromStdString(data + "/hold-delete"), pictures));
  bench.Child<QAction>("RecordAll").trigger();
  AnswerYes();
  return bench.Choose("RecordDel");
}

double Report(const std::string& data) {
  HoldBench bench(MakeCatalogue(QString::fromStdString(data), Reported));
  output::WebSettings web;
  catalogue::RecordList list(bench.Engine());
  list.DatabaseName = bench.Paths().WorkFile;
  list.RecordSource = QStringLiteral("tblPhotos");
  list.Refresh();
  auto& tree = bench.Child<controls::TreeView>("tvTreeView");
  output::WebPages pages(list, tree, bench.Paths(), web, bench.Main());
  controls::LongWork work(bench.Main());
  output::frmProg dialog(pages, work);
  return LongestHold([&] { dialog.ShowModal(); }, [] { return true; });
}

double DecodeScaled(const std::vector<std::string>& pictures) {
  return Milliseconds([&] {
    QtConcurrent::blockingMap(pictures, [](const std::string& picture) {
      QImageReader reader(QString::fromStdString(picture));
      reader.setScaledSize(reader.size().scaled(169, 129, Qt::KeepAspectRatio));
      if (reader.read().isNull()) throw std::runtime_error("no picture");
    });
  });
}

double DecodeForForm(const std::string& picture) {
  return Milliseconds([&] {
    QImageReader reader(QString::fromStdString(picture));
    reader.setScaledSize(reader.size().scaled(641, 481, Qt::KeepAspectRatio));
    if (reader.read().isNull()) throw std::runtime_error("no picture");
  });
}

void AddLockedFigures(const std::function<HoldBench&()>& bench) {
  const auto add = [bench](const char* name, std::function<void(HoldBench&)> action) {
    AddFigure({name,
               "ms",
               [bench, action] {
                 bench().Press(QString());
                 bench().Show("MainImage");
                 return bench().Locked([&] { action(bench()); });
               },
               {},
               3});
  };
  add("hold_locked_view", [](HoldBench& on) { on.Child<QAction>("MainForm").trigger(); });
  add("hold_locked_folder", [](HoldBench& on) {
    auto& tree = on.Child<controls::TreeView>("tvTreeView");
    tree.Select(tree.NodeAt(2));
    Q_EMIT tree.NodeClick(tree.NodeAt(2));
  });
  add("hold_locked_page",
      [](HoldBench& on) { on.Press(on.List().AbsolutePosition() == 0 ? Qt::Key_PageDown : Qt::Key_Home); });
  add("hold_locked_delete", [](HoldBench& on) {
    AnswerYes();
    on.Child<QAction>("RecordDel").trigger();
  });
}

}  // namespace

void AddHoldFigures(const std::string& data) {
  const auto photos = Lazy([data] { return std::make_unique<HoldBench>(LargePhotos(data)); });
  const auto add = [](const char* name, std::function<double()> value, int repetitions) {
    AddFigure({name, "ms", std::move(value), {}, repetitions});
  };
  add(
      "hold_page_cold", [photos] { return photos().ColdPage(); }, 5);
  add(
      "hold_page_next_cold",
      [photos] {
        photos().ColdPage();
        return photos().PageDown();
      },
      5);
  add(
      "hold_page_next",
      [photos] {
        photos().Show("MainImage");
        Look(1000);
        return photos().PageDown();
      },
      5);
  add(
      "hold_form_next",
      [photos] {
        photos().Show("MainForm");
        photos().Child<QAbstractButton>("First").click();
        return photos().Hold([photos] { photos().Child<QAbstractButton>("Next").click(); });
      },
      3);
  add(
      "hold_preview",
      [photos] {
        photos().Show("MainData");
        photos().Child<browse::RecordGrid>("TDBGrid1").setFocus();
        Look(1000);
        return photos().Hold(
            [photos] { QTest::keyClick(&photos().Child<browse::RecordGrid>("TDBGrid1"), Qt::Key_Down); });
      },
      3);
  add(
      "hold_store_200", [data] { return Store(data); }, 1);
  add(
      "hold_delete_1000", [data] { return Delete(data); }, 3);
  add(
      "hold_report_10k", [data] { return Report(data); }, 3);
  const auto million = Lazy([data] {
    return std::make_unique<HoldBench>(MakeCatalogue(QString::fromStdString(data), LargeCatalogue));
  });
  add(
      "hold_folder_1m",
      [million] {
        million().Press(QLatin1String(FullFolderKey));
        million().Change();
        return million().Press(QLatin1String(TopFolderKey));
      },
      5);
  add(
      "hold_query_1m",
      [million] {
        million().Press(QLatin1String(TopFolderKey));
        million().Change();
        OnDialog<find::frmQry>([](find::frmQry& dialog) {
          controls::Get<QLineEdit>(dialog, QStringLiteral("qTitle")).setText(QStringLiteral("number 777"));
          controls::Get<QPushButton>(dialog, QStringLiteral("OkBttn")).click();
        });
        const double hold =
            LongestHold([&] { million().Child<QPushButton>("QueryBttn").click(); }, [] { return true; });
        million().Child<QPushButton>("ResetBttn").click();
        return hold;
      },
      5);
  AddLockedFigures(photos);
  AddFigure({"pages_1000_growth", "MB", [photos] { return photos().WalkPages(1000); }, {}, 1});

  AddFigure({"thumbs_200x24mp", "ms",
             [photos] {
               photos().Show("MainData");
               photos().RemoveThumbnails();
               return Milliseconds([&] {
                 photos().Child<QAction>("MainImage").trigger();
                 photos().Child<QPushButton>("RefreshBttn").click();
                 while (photos().Thumbnails() < Photos) Look(20);
               });
             },
             [data] { return DecodeScaled(Repeated(MakeLargePictures(data, Motifs), Photos)); }, 1});
  AddFigure({"page_next_prepared", "ms",
             [photos] {
               photos().Show("MainImage");
               Look(1000);
               photos().Press(Qt::Key_Home);
               Look(1000);
               const double time = Milliseconds([&] {
                 photos().Press(Qt::Key_PageDown);
                 QCoreApplication::processEvents();
               });
               if (photos().List().AbsolutePosition() == 0) throw std::runtime_error("the page stood");
               return time;
             },
             [photos] {
               return Milliseconds([&] {
                 photos().Child<browse::ThumbnailPage>("ThumbPannel").Redraw();
                 QCoreApplication::processEvents();
               });
             },
             11});
  AddFigure({"form_next_prepared", "ms",
             [photos] {
               photos().Show("MainForm");
               Look(1000);
               const int before = photos().List().AbsolutePosition();
               const double time = Milliseconds([&] {
                 photos().Child<QAbstractButton>("Next").click();
                 QCoreApplication::processEvents();
               });
               if (photos().List().AbsolutePosition() == before) throw std::runtime_error("the form stood");
               return time;
             },
             [data] { return DecodeForForm(MakeLargePictures(data, Motifs).front()); }, 11});
}

}  // namespace veldrin::benches
