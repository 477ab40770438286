#include "output/get_photos.h"

#include <QPushButton>

#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

class GetTest : public test::OutputTest {
 protected:
  GetTest() {
    AddPhotos(6);
    Data1.SetBookmark(2);
  }

  void Get(const std::function<void(frmGet&)>& action) {
    test::InDialog([this] { Getter.GetPhotos(); },
                   [&](QWidget& dialog) { action(dynamic_cast<frmGet&>(dialog)); });
    ExpectAsBefore(2);
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
  PhotoGetter Getter{Chosen, Catalogue.Engine(), Catalogue.Paths(), Window, Work, Tell, CopyNow};
};

// What is listed and copied is looked at by the journey.
TEST_F(GetTest, OpensOnTheDirectoryOfTheLastCopy) {
  for (const char* name : {"a", "b"}) QDir(Target.path()).mkdir(name);
  EXPECT_EQ(GetTo("a", "CancelBttn"), ".");  // no pictures directory: the user's own
  QDir(Target.path()).mkdir("Pictures");
  EXPECT_EQ(GetTo("a", "OkBttn"), "Pictures");
  EXPECT_EQ(GetTo("b", "CancelBttn"), "a");
  EXPECT_EQ(Told, "1 photo copied to " + Target.filePath("a"));
  EXPECT_EQ(GetTo("b", "OkBttn"), "a");
  QDir(Target.filePath("b")).removeRecursively();
  EXPECT_EQ(test::AnswerBoxes([this] { Getter.GetPhotos(); }, {QMessageBox::Ok}),
            QStringList("Error|Error Code: 76 Path not found: " + Target.filePath("b")));
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
  EXPECT_EQ(Told, "1 photo copied to " + Target.path() +
                      ".|Not done, or not in full: 2||1.jpg: File not found|4.bmp: not tried");
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
    frmGet dialog(paths, last, Work, nullptr, desktop::CopyStoredFile);
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
