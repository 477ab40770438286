#include "output/get_photos.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "base/runtime_error.h"
#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

using test::OutputFixture;

class GetTest : public testing::Test {
 protected:
  GetTest()
      : Getter(Fixture.Data1, Fixture.Catalogue.Paths(), Fixture, Fixture.Window,
               [this](const QString& source, const QString& target) { Copy(source, target); }) {
    qputenv("HOME", Target.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", Target.path().toUtf8() + "/none");
  }

  // Runs the command, and the action while its dialog is shown; without one it is a failure.
  void Get(const std::function<void(frmGet&)>& action) {
    bool shown = false;
    QTimer::singleShot(0, &Fixture.Window, [&] {
      auto* dialog = qobject_cast<frmGet*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      shown = true;
      action(*dialog);
      dialog->reject();
    });
    Getter.GetPhotos();
    EXPECT_TRUE(shown);
  }
  static QString Names(const frmGet& dialog) {
    QStringList names;
    for (int i = 0; i < dialog.List1().count(); ++i) names << dialog.List1().item(i)->text();
    return names.join(QLatin1Char(' '));
  }
  static void Press(QWidget& dialog, const char* button) {
    dialog.findChild<QPushButton*>(QLatin1String(button))->click();
  }
  static controls::DirListBox& Dir1(QWidget& dialog) { return *dialog.findChild<controls::DirListBox*>(); }
  // Where the dialog opens; leaves it by a button, in the directory given.
  QString GetTo(const char* directory, const char* button) {
    QString opened;
    Get([&](frmGet& dialog) {
      opened = QDir(Target.path()).relativeFilePath(Dir1(dialog).Path());
      Dir1(dialog).SetPath(Target.filePath(QLatin1String(directory)));
      Press(dialog, button);
      EXPECT_FALSE(dialog.isVisible());
    });
    return opened;
  }

  QTemporaryDir Target;
  OutputFixture Fixture{6};
  frmGet::CopyFunction Copy = desktop::CopyFile;
  PhotoGetter Getter;
};

TEST_F(GetTest, ListsTheChosenPhotos) {
  const auto listed = [this] {
    QString names;
    Get([&](frmGet& dialog) { names = Names(dialog); });
    Fixture.ExpectAsBefore();
    return names;
  };
  EXPECT_EQ(listed(), QStringLiteral("2.jpg"));
  Fixture.Select({5, 1});
  EXPECT_EQ(listed(), QStringLiteral("5.jpg 1.jpg"));
  Fixture.FormView = true;
  EXPECT_EQ(listed(), QStringLiteral("2.jpg"));
}

TEST_F(GetTest, ARecordThatHasGoneShowsABox) {
  Fixture.Select({3, 5});
  Fixture.Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 5")});
  EXPECT_EQ(test::AnswerBoxes([&] { Getter.GetPhotos(); }, {QMessageBox::Ok}),
            QStringList(QStringLiteral("Error|Error Code: 3167 Record is deleted.")));
  Fixture.ExpectAsBefore();
}

TEST_F(GetTest, AnEmptyListOpensNothing) {
  Fixture.Data1.RecordSource += QStringLiteral(" WHERE PhotoID > 99");
  Fixture.Data1.Refresh();
  test::AnswerBoxes([&] { Getter.GetPhotos(); }, {});
}

TEST_F(GetTest, CopiesOverWhatHasTheNames) {
  test::WriteFile(Target.filePath(QStringLiteral("bystander")), "mine");
  test::WriteFile(Target.filePath(QStringLiteral("1.jpg")), "an older one");
  QFile::link(Target.filePath(QStringLiteral("bystander")), Target.filePath(QStringLiteral("3.jpg")));
  QFile::link(Fixture.Catalogue.Paths().ImageDir + OutputFixture::Image(4),
              Target.filePath(QStringLiteral("4.jpg")));
  Fixture.Select({3, 1, 4});
  GetTo(".", "OkBttn");
  for (const int id : {1, 3, 4}) {
    const QString file = Target.filePath(OutputFixture::Image(id));
    EXPECT_EQ(test::ReadFile(file), OutputFixture::Image(id).toUtf8());
    EXPECT_FALSE(QFileInfo(file).isSymLink());
  }
  EXPECT_EQ(QDir(Target.path()).entryList(QDir::Files).join(QLatin1Char(' ')),
            QStringLiteral("1.jpg 3.jpg 4.jpg bystander"));
  EXPECT_EQ(test::ReadFile(Target.filePath(QStringLiteral("bystander"))), "mine");
  EXPECT_EQ(test::ReadFile(Fixture.Catalogue.Paths().ImageDir + OutputFixture::Image(4)), "4.jpg");
  Fixture.ExpectAsBefore();
}

TEST_F(GetTest, OpensOnTheDirectoryOfTheLastCopy) {
  for (const char* name : {"a", "b"}) QDir(Target.path()).mkdir(QLatin1String(name));
  EXPECT_EQ(GetTo("a", "CancelBttn"), QStringLiteral("."));  // no pictures directory: the user's own
  QDir(Target.path()).mkdir(QStringLiteral("Pictures"));
  EXPECT_EQ(GetTo("a", "OkBttn"), QStringLiteral("Pictures"));
  EXPECT_EQ(GetTo("b", "CancelBttn"), QStringLiteral("a"));
  EXPECT_EQ(GetTo("b", "OkBttn"), QStringLiteral("a"));
  QDir(Target.filePath(QStringLiteral("b"))).removeRecursively();
  const QStringList boxes = test::AnswerBoxes([&] { Getter.GetPhotos(); }, {QMessageBox::Ok});
  EXPECT_EQ(boxes.front(),
            QStringLiteral("Error|Error Code: 76 Path not found: ") + Target.filePath(QStringLiteral("b")));
  EXPECT_EQ(GetTo("a", "CancelBttn"), QStringLiteral("Pictures"));
}

TEST_F(GetTest, ACopyThatIsNotThereKeepsTheDialogAndThePointer) {
  Fixture.Select({3, 1, 4});
  int copies = 0;
  Copy = [&](const QString& source, const QString& target) {
    if (++copies == 1)
      desktop::CopyFile(source, target);
    else
      QDir().mkpath(target);
  };
  Get([&](frmGet& dialog) {
    Dir1(dialog).SetPath(Target.path());
    for (int round = 0; round < 2; ++round) {
      copies = 0;
      const QStringList boxes = test::AnswerBoxes([&] { Press(dialog, "OkBttn"); }, {QMessageBox::Ok});
      EXPECT_EQ(boxes.front(), QStringLiteral("Error|File Transfer Error !"));
      EXPECT_EQ(copies, 2);
      EXPECT_TRUE(dialog.isVisible());
      ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
      EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
  });
  Fixture.ExpectAsBefore();
}

// The error is the program's.
TEST_F(GetTest, ACopyThatFailsLeavesTheStoredImages) {
  const QString images = Fixture.Catalogue.Paths().ImageDir;
  QDir(Target.path()).mkdir(QStringLiteral("gone"));
  const auto errorOf = [&](const QString& directory, const char* name) {
    QString last;
    frmGet dialog(images, last, nullptr, desktop::CopyFile);
    dialog.List1().addItem(QLatin1String(name));
    Dir1(dialog).SetPath(directory);
    QDir(Target.filePath(QStringLiteral("gone"))).removeRecursively();
    const int number = test::ErrorOf([&] { Press(dialog, "OkBttn"); });
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(last, QString());
    return number;
  };
  QDir(Target.path()).mkdir(QStringLiteral("2.jpg"));
  EXPECT_EQ(errorOf(Target.filePath(QStringLiteral("gone")), "2.jpg"), base::errPathNotFound);
  EXPECT_EQ(errorOf(images, "2.jpg"), base::errPermissionDenied);
  EXPECT_EQ(errorOf(Target.path(), "2.jpg"), base::errPathFileAccess);
  EXPECT_EQ(errorOf(Target.path(), "9.jpg"), base::errFileNotFound);
  EXPECT_EQ(test::ReadFile(images + OutputFixture::Image(2)), "2.jpg");
}

}  // namespace
}  // namespace veldrin::output
