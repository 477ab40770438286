// The lists of drives, directories and files, and the chooser made of the first two.
#include <QAbstractItemView>

#include "controls/directory_chooser.h"
#include "controls/file_list.h"
#include "support/test_support.h"

namespace veldrin::controls {
namespace {

using test::ErrorOf;

struct Lists : testing::Test {
  QString Path(const QString& name) const { return Directory.filePath(name); }
  void MakeDirectories(const QStringList& names) {
    for (const QString& name : names) ASSERT_TRUE(QDir(Directory.path()).mkpath(name));
  }
  QTemporaryDir Directory;
};

TEST_F(Lists, FilesAreListedByPatternsAndNames) {
  const QString odd = "x\ny\t\u202Egpj.jpg";
  const std::pair<const char*, QStringList> cases[] = {{"*.jpg", {"A.jpg", "a.jpg", "b.JPG", odd}},
                                                       {"*.bmp; *.txt", {"c.bmp", "d.jpg.txt"}},
                                                       {"*.tga", {}},
                                                       {"NOEND", {"noend"}}};
  MakeDirectories({"dir.jpg"});
  ASSERT_TRUE(QFile::link(Path("gone"), Path("broken.jpg")));
  for (const QString& name :
       QStringList{"b.JPG", "A.jpg", "a.jpg", "c.bmp", "d.jpg.txt", "noend", ".hidden.jpg", odd}) {
    test::WriteFile(Path(name), "x");
  }
  FileListBox list;
  list.SetPath(Directory.path());
  for (const auto& [pattern, expected] : cases) {
    list.SetPattern(pattern);
    QStringList names;
    for (int i = 0; i < list.ListCount(); ++i) names << list.List(i);
    EXPECT_EQ(names, expected) << pattern;
  }
  for (const QString& path : QStringList{Path("gone"), Path("noend"), {}}) {
    EXPECT_EQ(ErrorOf([&] { list.SetPath(path); }), base::errPathNotFound);
  }
  list.SetPattern("x*");
  for (const QChar character : {u'\n', u'\t', u'\u202E'}) {
    EXPECT_FALSE(list.item(0)->text().contains(character)) << "an odd name shows in one line";
  }
}

TEST_F(Lists, DirectoriesOpenByMouseAndKey) {
  MakeDirectories({"one/b", "one/A", "one/.hidden", "gone"});
  test::WriteFile(Path("one/file"), "x");
  DirListBox list;
  list.resize(300, 400);
  list.show();
  const auto entries = [&] {
    QStringList paths;
    for (int i = 0; i < list.count(); ++i) paths << list.DirectoryAt(i);
    return paths;
  };
  const auto press = [&](const QString& path) {
    list.setCurrentRow(static_cast<int>(entries().indexOf(path)));
    QTest::keyClick(&list, Qt::Key_Return);
  };
  list.SetPath(Path("one/../one/"));
  EXPECT_EQ(list.DirectoryAt(list.currentRow()), Path("one"));
  EXPECT_EQ(entries().mid(entries().indexOf(Directory.path())),
            QStringList({Directory.path(), Path("one"), Path("one/A"), Path("one/b")}));
  EXPECT_EQ(ErrorOf([&] { list.SetPath(Path("one/file")); }), base::errPathNotFound);
  const QPoint below = list.visualItemRect(list.item(list.currentRow() + 1)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, below);
  EXPECT_EQ(list.Path(), Path("one")) << "a single click only moves";
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, below);
  EXPECT_EQ(list.Path(), Path("one/A"));
  press(Directory.path());
  EXPECT_EQ(list.Path(), Directory.path());
  ASSERT_TRUE(QDir().rmdir(Path("gone")));
  press(Path("gone"));
  EXPECT_EQ(list.Path(), Directory.path());
  EXPECT_FALSE(entries().contains(Path("gone"))) << "the list shows that it went";
}

TEST(Volumes, AreDirectoriesOfPeople) {
  QStringList roots;
  for (const Volume& volume : MountedVolumes()) roots << volume.Root;
  EXPECT_EQ(roots.value(0), "/");
  for (const QString& root : roots) {
    EXPECT_TRUE(QFileInfo(root).isDir()) << root.toStdString();
    EXPECT_EQ(roots.count(root), 1) << root.toStdString();
    for (const char* own : {"/proc", "/sys", "/dev"})
      EXPECT_FALSE(root.startsWith(own)) << root.toStdString();
  }
}

struct Choosing : Lists {
  Choosing() {
    MakeDirectories({"disk/photos", "stick/deep", "disk2"});
    Chooser.SetPath(Path("disk/photos"));
    Chooser.show();
  }

  // Chooses as the user does: opens the list and goes on it to the volume.
  void ChooseDrive(int row) {
    DriveListBox& drive = Chooser.Drive1();
    drive.showPopup();
    ASSERT_TRUE(QTest::qWaitFor([&] { return drive.view()->isVisible(); }));
    drive.view()->setCurrentIndex(drive.model()->index(row, 0));
    QTest::keyClick(drive.view(), Qt::Key_Return);
  }
  void ExpectPlace(const QString& drive, const QString& path) {
    EXPECT_EQ(Chooser.Drive1().Drive(), drive);
    EXPECT_EQ(Chooser.Path(), path);
  }

  DirectoryChooser Chooser{
      nullptr, [this] {
        return std::vector<Volume>{{"/", "System"}, {Path("disk"), {}}, {Path("stick"), {}}};
      }};
};

TEST_F(Choosing, ADriveThatIsNotReadyIsReportedAndTheEarlierOneStays) {
  ASSERT_TRUE(QDir(Path("stick")).removeRecursively());
  QStringList told;
  QObject::connect(&Chooser, &DirectoryChooser::Change, [&] { told << Chooser.Path(); });
  const QStringList boxes = test::AnswerBoxes([&] { ChooseDrive(2); }, {QMessageBox::Ok});
  EXPECT_EQ(told, QStringList()) << "nothing else is open than before";
  EXPECT_TRUE(boxes.value(0).startsWith("Veldrin|Error Code: 68 "));
  ExpectPlace(Path("disk"), Path("disk/photos"));
  EXPECT_EQ(ErrorOf([&] { Chooser.SetPath(Path("stick/deep")); }), base::errDeviceUnavailable);
  EXPECT_EQ(ErrorOf([&] { Chooser.SetPath(Path("disk/none")); }), base::errPathNotFound);
  // The earlier one may go as well: there is one box then, not one after the other.
  Chooser.SetPath(Path("disk/photos"));
  ASSERT_TRUE(QDir(Path("disk")).removeRecursively());
  test::AnswerBoxes([&] { ChooseDrive(2); }, {QMessageBox::Ok});
}

}  // namespace
}  // namespace veldrin::controls
