// The lists of drives, directories and files, and the chooser made of the first two.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "platform/directory_chooser.h"
#include "platform/file_list.h"
#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::platform {
namespace {

class Lists : public testing::Test {
 protected:
  QString Path(const QString& name = {}) const {
    return name.isEmpty() ? Directory.path() : Directory.path() + QLatin1Char('/') + name;
  }
  void MakeDirectories(const QStringList& names) {
    for (const QString& name : names) ASSERT_TRUE(QDir(Path()).mkpath(name));
  }
  void MakeFiles(const QStringList& names) {
    for (const QString& name : names) test::WriteFile(Path(name), "x");
  }
  static QStringList Names(const FileListBox& list) {
    QStringList names;
    for (int i = 0; i < list.ListCount(); ++i) names << list.List(i);
    return names;
  }
  static int ErrorOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  static void Click(QListWidget& list, int row, Qt::KeyboardModifiers keys = {}) {
    list.scrollToItem(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, list.visualItemRect(list.item(row)).center());
  }

  QTemporaryDir Directory;
};

// --- files
// --------------------------------------------------------------------------------------------------

struct PatternCase {
  const char* Name;
  const char* Pattern;
  QStringList Expected;
};

class Patterns : public Lists, public testing::WithParamInterface<PatternCase> {};

TEST_P(Patterns, ListMatchingFilesByName) {
  MakeFiles({QStringLiteral("b.JPG"), QStringLiteral("A.jpg"), QStringLiteral("a.jpg"),
             QStringLiteral("c.bmp"), QStringLiteral("d.jpg.txt"), QStringLiteral("noend"),
             QStringLiteral(".hidden.jpg"), QStringLiteral("x\ny.jpg")});
  MakeDirectories({QStringLiteral("dir.jpg")});
  ASSERT_TRUE(QFile::link(Path(QStringLiteral("gone")), Path(QStringLiteral("broken.jpg"))));
  FileListBox list;
  list.SetPath(Path());
  list.SetPattern(QLatin1String(GetParam().Pattern));
  EXPECT_EQ(Names(list), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(, Patterns,
                         testing::Values(PatternCase{"One",
                                                     "*.jpg",
                                                     {QStringLiteral("A.jpg"), QStringLiteral("a.jpg"),
                                                      QStringLiteral("b.JPG"), QStringLiteral("x\ny.jpg")}},
                                         PatternCase{"Two",
                                                     "*.bmp; *.txt",
                                                     {QStringLiteral("c.bmp"), QStringLiteral("d.jpg.txt")}},
                                         PatternCase{"OneCharacter", "?.bmp;", {QStringLiteral("c.bmp")}},
                                         PatternCase{"NoneFits", "*.tga", {}},
                                         PatternCase{"NoWildcards", "NOEND", {QStringLiteral("noend")}}),
                         test::CaseName);

TEST_F(Lists, AFilesOddNameShowsInOneLineAndStaysTrue) {
  const QString name = QStringLiteral("a\nb\t\u202Egpj.jpg");
  MakeFiles({name});
  FileListBox list;
  list.SetPath(Path());
  ASSERT_EQ(list.ListCount(), 1);
  EXPECT_EQ(list.List(0), name);
  for (const QChar odd : {QChar(u'\n'), QChar(u'\t'), QChar(u'\u202E')})
    EXPECT_FALSE(list.item(0)->text().contains(odd));
  EXPECT_TRUE(QFileInfo::exists(list.Path() + QLatin1Char('/') + list.List(0)));
}

TEST_F(Lists, FilesAreSelectedByMouseAndKey) {
  MakeFiles({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")});
  FileListBox list;
  list.resize(200, 200);
  list.show();
  list.SetPath(Path());
  QSignalSpy clicks(&list, &FileListBox::Click);
  const auto selected = [&] {
    QString names;
    for (int i = 0; i < list.ListCount(); ++i) names += list.Selected(i) ? list.List(i) : QStringLiteral("-");
    return names;
  };
  struct Step {
    std::function<void()> Action;
    const char* Selected;
    int Current;
    int Clicks;
  };
  const Step steps[] = {
      {[&] { Click(list, 1); }, "-b--", 1, 1},
      {[&] { Click(list, 1); }, "-b--", 1, 1},
      {[&] { Click(list, 3, Qt::ControlModifier); }, "-b-d", 3, 1},
      {[&] { Click(list, 1, Qt::ControlModifier); }, "---d", 1, 1},
      {[&] { QTest::keyClick(&list, Qt::Key_Down); }, "--c-", 2, 1},
      {[&] { QTest::keyClick(&list, Qt::Key_Up, Qt::ShiftModifier); }, "-bc-", 1, 1},
      {[&] { QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier); }, "abcd", 1, 1},
      {[&] { QTest::keyClick(&list, Qt::Key_F5); }, "abcd", 1, 0},
      {[&] { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(5, 190)); }, "----", 1, 1},
      {[&] { list.Refresh(); }, "----", -1, 0},
  };
  for (size_t i = 0; i < std::size(steps); ++i) {
    clicks.clear();
    steps[i].Action();
    EXPECT_EQ(selected(), QLatin1String(steps[i].Selected)) << i;
    EXPECT_EQ(list.ListIndex(), steps[i].Current) << i;
    EXPECT_EQ(clicks.size(), steps[i].Clicks) << i;
  }
}

TEST_F(Lists, AMissingPathLeavesTheFilesAsTheyAre) {
  MakeFiles({QStringLiteral("a")});
  FileListBox list;
  list.SetPath(Path());
  QSignalSpy changes(&list, &FileListBox::PathChange);
  for (const QString& path : {Path(QStringLiteral("gone")), Path(QStringLiteral("a")), QString()}) {
    EXPECT_EQ(ErrorOf([&] { list.SetPath(path); }), errPathNotFound);
  }
  EXPECT_EQ(Names(list), QStringList(QStringLiteral("a")));
  EXPECT_EQ(changes.size(), 0);
}

// --- directories
// --------------------------------------------------------------------------------------------

TEST_F(Lists, TheOpenDirectoryStandsBetweenItsParentsAndItsOwn) {
  MakeDirectories({QStringLiteral("open/b"), QStringLiteral("open/A"), QStringLiteral("open/.hidden"),
                   QStringLiteral("aside")});
  MakeFiles({QStringLiteral("open/file")});
  DirListBox list;
  list.SetPath(Path(QStringLiteral("open/../open/")));
  EXPECT_EQ(list.Path(), Path(QStringLiteral("open")));
  QStringList entries;
  for (int i = 0; i < list.count(); ++i) entries << list.DirectoryAt(i);
  QStringList expected(QStringLiteral("/"));
  for (const QString& part : list.Path().split(QLatin1Char('/'), Qt::SkipEmptyParts))
    expected << QDir(expected.back()).filePath(part);
  expected << Path(QStringLiteral("open/A")) << Path(QStringLiteral("open/b"));
  EXPECT_EQ(entries, expected);
  EXPECT_EQ(list.DirectoryAt(list.currentRow()), list.Path());
  EXPECT_EQ(ErrorOf([&] { list.SetPath(Path(QStringLiteral("gone"))); }), errPathNotFound);
  EXPECT_EQ(ErrorOf([&] { list.SetPath(Path(QStringLiteral("open/file"))); }), errPathNotFound);
  EXPECT_EQ(list.Path(), Path(QStringLiteral("open")));
}

TEST_F(Lists, DirectoriesOpenByMouseAndKey) {
  MakeDirectories({QStringLiteral("one/two"), QStringLiteral("gone")});
  DirListBox list;
  list.resize(300, 400);
  list.show();
  list.SetPath(Path());
  QSignalSpy changes(&list, &DirListBox::Change);
  const auto rowOf = [&](const QString& path) {
    for (int i = 0; i < list.count(); ++i) {
      if (list.DirectoryAt(i) == path) return i;
    }
    return -1;
  };

  const int one = rowOf(Path(QStringLiteral("one")));
  Click(list, one);
  EXPECT_EQ(changes.size(), 0) << "a single click only moves";
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(one)).center());
  EXPECT_EQ(list.Path(), Path(QStringLiteral("one")));
  QTest::keyClick(&list, Qt::Key_Down);
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(list.Path(), Path(QStringLiteral("one/two")));
  list.setCurrentRow(rowOf(Path()));
  QTest::keyClick(&list, Qt::Key_Enter);
  EXPECT_EQ(list.Path(), Path());
  EXPECT_EQ(changes.size(), 3);

  ASSERT_TRUE(QDir(Path()).rmdir(QStringLiteral("gone")));
  list.setCurrentRow(rowOf(Path(QStringLiteral("gone"))));
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(list.Path(), Path());
  EXPECT_EQ(rowOf(Path(QStringLiteral("gone"))), -1) << "the list shows that it went";
}

// --- drives and the chooser
// ---------------------------------------------------------------------------------

class Choosing : public Lists {
 protected:
  Choosing() {
    MakeDirectories({QStringLiteral("disk/photos"), QStringLiteral("stick/deep")});
    Volumes = {{QStringLiteral("/"), QStringLiteral("System")},
               {Path(QStringLiteral("disk")), {}},
               {Path(QStringLiteral("stick")), {}}};
    Chooser = std::make_unique<DirectoryChooser>(nullptr, [this] { return Volumes; });
    Chooser->show();
  }

  // Chooses as the user does: opens the list and goes on it to the volume.
  void ChooseDrive(int row) {
    DriveListBox& drive = Chooser->Drive1();
    drive.showPopup();
    ASSERT_TRUE(QTest::qWaitFor([&] { return drive.view()->isVisible(); }));
    drive.view()->setCurrentIndex(drive.model()->index(row, 0));
    QTest::keyClick(drive.view(), Qt::Key_Return);
  }

  std::vector<Volume> Volumes;
  std::unique_ptr<DirectoryChooser> Chooser;
};

TEST_F(Choosing, ThePathChoosesTheInnermostVolumeThatHoldsIt) {
  Chooser->SetPath(Path(QStringLiteral("disk/photos")));
  EXPECT_EQ(Chooser->Drive1().Drive(), Path(QStringLiteral("disk")));
  EXPECT_EQ(Chooser->Path(), Path(QStringLiteral("disk/photos")));
  MakeDirectories({QStringLiteral("disk2")});
  Chooser->SetPath(Path(QStringLiteral("disk2")));
  EXPECT_EQ(Chooser->Drive1().Drive(), QStringLiteral("/"));
  EXPECT_EQ(Chooser->Drive1().currentText(), QStringLiteral("/  [System]"));
}

TEST_F(Choosing, AChosenDriveOpensItsRootAndADirectoryElsewhereItsDrive) {
  QSignalSpy changes(Chooser.get(), &DirectoryChooser::Change);
  ChooseDrive(1);
  EXPECT_EQ(Chooser->Path(), Path(QStringLiteral("disk")));
  Chooser->Dir1().SetPath(Path(QStringLiteral("stick/deep")));
  EXPECT_EQ(Chooser->Drive1().Drive(), Path(QStringLiteral("stick")));
  ChooseDrive(2);
  EXPECT_EQ(Chooser->Path(), Path(QStringLiteral("stick")))
      << "the drive that is chosen already leads to its root";
  EXPECT_EQ(changes.size(), 3);
}

TEST_F(Choosing, ADriveThatIsNotReadyIsReportedAndTheEarlierOneStays) {
  Chooser->SetPath(Path(QStringLiteral("disk/photos")));
  ASSERT_TRUE(QDir(Path(QStringLiteral("stick"))).removeRecursively());
  QStringList told;
  QObject::connect(Chooser.get(), &DirectoryChooser::Change, [&] { told << Chooser->Path(); });
  QObject::connect(Chooser.get(), &DirectoryChooser::Restore, [&](bool begins) {
    told << (begins ? QStringLiteral("begins") : QStringLiteral("ends"));
  });
  const QStringList boxes = test::AnswerBoxes([&] { ChooseDrive(2); }, {QMessageBox::Ok});
  EXPECT_EQ(told, (QStringList{QStringLiteral("begins"), Path(QStringLiteral("disk/photos")),
                               QStringLiteral("ends")}));
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_TRUE(boxes[0].startsWith(QStringLiteral("Veldrin|Error Code: 68 "))) << boxes[0].toStdString();
  EXPECT_EQ(Chooser->Drive1().Drive(), Path(QStringLiteral("disk")));
  EXPECT_EQ(Chooser->Path(), Path(QStringLiteral("disk/photos")));

  EXPECT_EQ(ErrorOf([&] { Chooser->SetPath(Path(QStringLiteral("stick/deep"))); }), errDeviceUnavailable);
  EXPECT_EQ(ErrorOf([&] { Chooser->SetPath(Path(QStringLiteral("disk/none"))); }), errPathNotFound);
}

// The earlier one may have gone as well: there is one box then, not one after the other.
TEST_F(Choosing, WithAllDrivesGoneThereIsOneBox) {
  Chooser->SetPath(Path(QStringLiteral("disk/photos")));
  ASSERT_TRUE(QDir(Path(QStringLiteral("stick"))).removeRecursively());
  ASSERT_TRUE(QDir(Path(QStringLiteral("disk"))).removeRecursively());
  test::AnswerBoxes([&] { ChooseDrive(2); }, {QMessageBox::Ok});
}

TEST(MountedVolumes, HoldTheRootOnceAndDirectoriesOnly) {
  int roots = 0;
  for (const Volume& volume : MountedVolumes()) {
    roots += volume.Root == QLatin1String("/") ? 1 : 0;
    EXPECT_TRUE(QFileInfo(volume.Root).isDir()) << volume.Root.toStdString();
    EXPECT_FALSE(volume.Root.startsWith(QStringLiteral("/proc")) ||
                 volume.Root.startsWith(QStringLiteral("/sys/")));
  }
  EXPECT_EQ(roots, 1);
}

}  // namespace
}  // namespace veldrin::platform
