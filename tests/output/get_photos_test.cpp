#include "output/get_photos.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

class GetTest : public test::OutputTest {
 protected:
  GetTest() {
    AddPhotos(6);
    Data1.SetBookmark(2);
  }

  // Runs the command, and the action while its dialog is shown; without one it is a failure.
  void Get(const std::function<void(frmGet&)>& action) {
    bool shown = false;
    QTimer::singleShot(0, &Window, [&] {
      auto* dialog = qobject_cast<frmGet*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      shown = true;
      action(*dialog);
      dialog->reject();
    });
    Getter.GetPhotos();
    EXPECT_TRUE(shown);
    ExpectAsBefore(2);
  }
  QString Listed(const std::vector<int>& selected) {
    QStringList names;
    Select(selected);
    Get([&](frmGet& dialog) {
      for (int i = 0; i < dialog.List1().count(); ++i) names << dialog.List1().item(i)->text();
    });
    return names.join(' ');
  }
  QString RefusalOf(int boxes) {
    return test::AnswerBoxes([this] { Getter.GetPhotos(); }, {boxes, QMessageBox::Ok}).join(' ');
  }
  static void Press(QWidget& dialog, const char* button) { dialog.findChild<QPushButton*>(button)->click(); }
  static controls::DirListBox& Dir1(QWidget& dialog) { return *dialog.findChild<controls::DirListBox*>(); }
  // Where the dialog opens; leaves it by a button, in the directory given.
  QString GetTo(const char* directory, const char* button) {
    QString opened;
    Get([&](frmGet& dialog) {
      opened = QDir(Target.path()).relativeFilePath(Dir1(dialog).Path());
      Dir1(dialog).SetPath(Target.filePath(directory));
      Press(dialog, button);
      EXPECT_FALSE(dialog.isVisible());
    });
    return opened;
  }

  QTemporaryDir Target;
  const test::Environment Home{{"HOME", Target.path().toUtf8()},
                               {"XDG_CONFIG_HOME", Target.path().toUtf8() + "/none"}};
  frmGet::CopyFunction Copy = desktop::CopyStoredFile;
  const frmGet::CopyFunction CopyNow = [this](const auto& source, const auto& target) {
    Copy(source, target);
  };
  PhotoGetter Getter{Chosen, Catalogue.Engine(), Catalogue.Paths(), Window, Tell, CopyNow};
};

TEST_F(GetTest, ListsTheChosenPhotosAndCopiesThem) {
  EXPECT_EQ(Listed({}), "2.jpg");
  EXPECT_EQ(Listed({5, 4, 1}), "5.jpg 4.bmp 1.jpg");
  EXPECT_EQ(Told, "");
  test::WriteFile(Target.filePath("1.jpg"), "an older one");
  GetTo(".", "OkBttn");
  EXPECT_EQ(Told, "3 photos copied to " + Target.path());
  EXPECT_EQ(test::FilesBelow(Target.path()), QStringList({"1.jpg", "4.bmp", "5.jpg"}));
  EXPECT_EQ(test::ReadFile(Target.filePath("1.jpg")), BytesOf(1));
  Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 5"});
  Select({5});
  EXPECT_EQ(RefusalOf(1), "Error|The photo 5 was changed by another machine.");
  FormView = true;
  EXPECT_EQ(Listed({5, 1}), "2.jpg");
  Data1.RecordSource += " WHERE PhotoID > 99";
  Data1.Refresh();
  EXPECT_EQ(RefusalOf(0), "") << "an empty list opens nothing";
}

TEST_F(GetTest, OpensOnTheDirectoryOfTheLastCopy) {
  for (const char* name : {"a", "b"}) QDir(Target.path()).mkdir(name);
  EXPECT_EQ(GetTo("a", "CancelBttn"), ".");  // no pictures directory: the user's own
  QDir(Target.path()).mkdir("Pictures");
  EXPECT_EQ(GetTo("a", "OkBttn"), "Pictures");
  EXPECT_EQ(GetTo("b", "CancelBttn"), "a");
  EXPECT_EQ(GetTo("b", "OkBttn"), "a");
  QDir(Target.filePath("b")).removeRecursively();
  EXPECT_EQ(RefusalOf(1), "Error|Error Code: 76 Path not found: " + Target.filePath("b"));
  EXPECT_EQ(GetTo("a", "CancelBttn"), "Pictures");
}

TEST_F(GetTest, ACopyThatIsNotThereKeepsTheDialogAndThePointer) {
  Select({3, 1, 4});
  int copies = 0;
  Copy = [&](const QString& source, const QString& target) {
    ++copies % 2 == 1 ? desktop::CopyStoredFile(source, target) : (void)QDir().mkpath(target);
  };
  Get([&](frmGet& dialog) {
    Dir1(dialog).SetPath(Target.path());
    for (const int after : {2, 4}) {
      EXPECT_EQ(test::AnswerBoxes([&] { Press(dialog, "OkBttn"); }, {QMessageBox::Ok}),
                QStringList("Error|File Transfer Error !"));
      EXPECT_EQ(copies, after);
      EXPECT_TRUE(dialog.isVisible());
      ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    }
  });
  EXPECT_EQ(Told, "1 photo copied to " + Target.path() + "|1.jpg: File not found|4.bmp: not tried");
}

TEST_F(GetTest, NothingIsCopiedIntoTheProgramsOwnDirectoriesNorThroughALink) {
  const auto& paths = Catalogue.Paths();
  QFile::remove(ImageOf(3));
  QFile::link(ImageOf(2), ImageOf(3));
  const QStringList files = test::FilesBelow(Catalogue.ProgramPath());
  const std::pair<QString, const char*> cases[] = {{paths.ImageDir, "belongs to Veldrin."},
                                                   {paths.MusicDir, "belongs to Veldrin."},
                                                   {Target.path(), "Error !"}};
  for (const auto& [directory, told] : cases) {
    QString last;
    frmGet dialog(paths, last, nullptr, desktop::CopyStoredFile);
    dialog.List1().addItem("3.jpg");
    Dir1(dialog).SetPath(directory);
    const QStringList boxes = test::AnswerBoxes([&] { Press(dialog, "OkBttn"); }, {QMessageBox::Ok});
    EXPECT_TRUE(boxes.value(0).endsWith(told));
    EXPECT_EQ(last, "");
  }
  EXPECT_EQ(test::FilesBelow(Catalogue.ProgramPath()) + test::FilesBelow(Target.path()), files);
}

}  // namespace
}  // namespace veldrin::output
