#include "output/web_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "output/pages_fixture.h"

namespace veldrin::output {
namespace {

using test::FilesBelow;
using test::ReadFile;
using test::WriteFile;

// The dialog over a directory with a file of somebody else's.
class WebDialogTest : public testing::Test {
 protected:
  WebDialogTest() : Dialog(Catalogue.Paths()) {
    QDir().mkpath(Parent() + QStringLiteral("/Other/Images"));
    WriteFile(Parent() + QStringLiteral("/Other/Images/1.jpg"), "kept");
    WriteFile(Parent() + QStringLiteral("/notes.txt"), "kept");
    Dialog.LastDir = Parent();
  }

  QString Parent() const { return Catalogue.ProgramPath() + QStringLiteral("/Webs"); }
  QLineEdit& Field(const char* name) { return *Dialog.findChild<QLineEdit*>(QLatin1String(name)); }
  QAbstractButton& Button(const char* name) {
    return *Dialog.findChild<QAbstractButton*>(QLatin1String(name));
  }
  // Shows the dialog and does something in it; returns the boxes that came.
  QStringList Show(const std::function<void()>& use, const QList<QMessageBox::StandardButton>& answers = {}) {
    QTimer::singleShot(0, &Dialog, [this, use] {
      use();
      if (Dialog.isVisible()) Button("CancelBttn").click();
    });
    return test::AnswerBoxes([this] { Dialog.ShowModal(); }, answers);
  }
  QStringList MakeWeb(const QString& name, const QList<QMessageBox::StandardButton>& answers = {}) {
    return Show(
        [&] {
          Field("txtWebName").setText(name);
          Button("OkBttn").click();
        },
        answers);
  }
  // An earlier gallery, with links and what is not to be touched.
  void FillWeb() {
    const QString web = Parent() + QStringLiteral("/Web/");
    QDir().mkpath(web + QStringLiteral("Images/mine"));
    QDir().mkpath(web + QStringLiteral("Thumbnails"));
    for (const char* name : {"PhotoImage_pg1.htm", "no extension", ".hidden", "Images/1.jpg",
                             "Images/mine/photo.jpg", "Thumbnails/1t.bmp"})
      WriteFile(web + QLatin1String(name), "earlier");
    QFile::link(Parent() + QStringLiteral("/notes.txt"), web + QStringLiteral("link.htm"));
    QFile::link(Parent() + QStringLiteral("/Other"), web + QStringLiteral("Linked"));
  }

  test::TestCatalogue Catalogue;
  frmWeb Dialog;
};

TEST_F(WebDialogTest, OpensAsItWasLeftButForItsName) {
  Show([this] {
    EXPECT_EQ(Field("txtWebTitle").text(), QString());
    EXPECT_EQ(Field("txtWebName").text(), QStringLiteral("My Web Pictures"));
    EXPECT_TRUE(Button("PgOption(1)").isChecked());
    Field("txtWebTitle").setText(QStringLiteral("Mine"));
    Button("PgOption(1)").click();
    EXPECT_EQ(Field("txtWebTitle").text(), QStringLiteral("Mine"));
    Button("PgOption(0)").click();
    EXPECT_EQ(Field("txtWebTitle").text(), QStringLiteral("PHOTO IMAGE LIST"));
    Button("PgOption(1)").click();
    EXPECT_EQ(Field("txtWebTitle").text(), QStringLiteral("PHOTO IMAGE GALLERY"));
    Button("PgOption(0)").click();
    Dialog.findChild<controls::DirListBox*>(QStringLiteral("Dir1"))
        ->SetPath(Parent() + QStringLiteral("/Other"));
    QTest::keyClick(&Field("txtWebName"), Qt::Key_Return);
  });
  EXPECT_TRUE(Dialog.WebOK);
  EXPECT_EQ(Dialog.WebDir, Parent() + QStringLiteral("/Other/My Web Pictures"));
  EXPECT_EQ(Dialog.WebTitle, QStringLiteral("PHOTO IMAGE LIST"));
  EXPECT_EQ(Dialog.PageType, 0);
  EXPECT_EQ(QDir(Dialog.WebDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
            QStringList(QStringLiteral("Images")));
  Show([this] {
    EXPECT_EQ(Field("txtWebTitle").text(), QStringLiteral("PHOTO IMAGE LIST"));
    EXPECT_EQ(Field("txtWebName").text(), QStringLiteral("My Web Pictures"));
    EXPECT_TRUE(Button("PgOption(0)").isChecked());
    Field("txtWebName").setText(QStringLiteral("forgotten"));
    QTest::keyClick(&Dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(Dialog.WebOK);
  EXPECT_EQ(Dialog.LastDir, Parent() + QStringLiteral("/Other"));
  // Where the last directory has gone it opens on the one for temporary files.
  QDir(Dialog.LastDir).removeRecursively();
  Show([this] {
    EXPECT_EQ(Dialog.findChild<controls::DirListBox*>(QStringLiteral("Dir1"))->Path(),
              QDir(Catalogue.Paths().TempDir).absolutePath());
  });
}

TEST_F(WebDialogTest, NoKeepsTheEarlierWebAndAsksForAnotherName) {
  FillWeb();
  const QStringList before = FilesBelow(Parent());
  EXPECT_EQ(
      Show(
          [this] {
            Field("txtWebName").setText(QStringLiteral("Web"));
            Button("OkBttn").click();
            EXPECT_TRUE(Dialog.isVisible());
            EXPECT_EQ(Dialog.focusWidget(), &Field("txtWebName"));
          },
          {QMessageBox::No}),
      QStringList(QStringLiteral("Information|The web '%1/Web' already exists, do you want to replace it?")
                      .arg(Parent())));
  EXPECT_FALSE(Dialog.WebOK);
  EXPECT_EQ(FilesBelow(Parent()), before);
}

TEST_F(WebDialogTest, YesDeletesTheEarlierWebAndNothingBeyond) {
  FillWeb();
  Dialog.PageType = 0;
  MakeWeb(QStringLiteral("Web"), {QMessageBox::Yes});
  EXPECT_TRUE(Dialog.WebOK);
  const QStringList left = {QStringLiteral("Other/Images/1.jpg"), QStringLiteral("Web/.hidden"),
                            QStringLiteral("Web/Images/mine/photo.jpg"), QStringLiteral("notes.txt")};
  EXPECT_EQ(FilesBelow(Parent()), left);
  EXPECT_FALSE(QDir(Parent() + QStringLiteral("/Web/Thumbnails")).exists());
}

// What the directories are links to is not the web's.
TEST_F(WebDialogTest, YesEntersNoLink) {
  const QString other = Parent() + QStringLiteral("/Other");
  const QStringList before = FilesBelow(other);
  QDir().mkdir(Parent() + QStringLiteral("/Web"));
  QFile::link(other + QStringLiteral("/Images"), Parent() + QStringLiteral("/Web/Images"));
  QFile::link(other + QStringLiteral("/Images"), Parent() + QStringLiteral("/Web/Thumbnails"));
  MakeWeb(QStringLiteral("Web"), {QMessageBox::Yes});
  EXPECT_EQ(FilesBelow(other), before);
  EXPECT_FALSE(QFileInfo(Parent() + QStringLiteral("/Web/Images")).isSymLink());
  QFile::link(other, Parent() + QStringLiteral("/Linked"));
  MakeWeb(QStringLiteral("Linked"), {QMessageBox::Yes});
  EXPECT_EQ(FilesBelow(other), before);
}

struct NameCase {
  const char* Name;
  QString WebName;
  bool Asks = false;
  bool Made = false;
};

class WebNames : public WebDialogTest, public testing::WithParamInterface<NameCase> {};

// Whatever the name, no file goes that is there, also after Yes.
TEST_P(WebNames, LeadNowhereElse) {
  const QStringList before = FilesBelow(Catalogue.ProgramPath());
  const auto answers = GetParam().Asks ? QList{QMessageBox::Yes} : QList<QMessageBox::StandardButton>();
  const QStringList boxes = MakeWeb(GetParam().WebName, answers);
  const QString named = Parent() + QLatin1Char('/') + GetParam().WebName;
  EXPECT_TRUE(boxes.isEmpty() || boxes.front().contains(named));
  EXPECT_TRUE(Dialog.WebOK);
  EXPECT_EQ(FilesBelow(Catalogue.ProgramPath()), before);
  EXPECT_EQ(QDir(Dialog.WebDir + QStringLiteral("/Thumbnails")).exists(), GetParam().Made);
}

INSTANTIATE_TEST_SUITE_P(Names, WebNames,
                         testing::Values(NameCase{"Empty", QString(), true, true},
                                         NameCase{"Itself", QStringLiteral("."), true, true},
                                         NameCase{"OutAndIn", QStringLiteral("../Webs/Other"), true, true},
                                         NameCase{"Below", QStringLiteral("Other/Images"), true, true},
                                         NameCase{"BelowNothing", QStringLiteral("missing/web")},
                                         NameCase{"AFile", QStringLiteral("notes.txt"), true},
                                         NameCase{"Absolute", QStringLiteral("/tmp"), false, true},
                                         NameCase{"Quotes", QStringLiteral("it's \"mine\" *?"), false, true},
                                         NameCase{"Long", QString(250, QLatin1Char('x')), false, true},
                                         NameCase{"TooLong", QString(256, QLatin1Char('x'))}),
                         test::CaseName);

TEST_F(WebDialogTest, TheProgramsOwnDirectoriesAreRefused) {
  WriteFile(Catalogue.Paths().ImageDir + QStringLiteral("1.jpg"), "stored");
  WriteFile(Catalogue.Paths().ThumbDir + QStringLiteral("1t.bmp"), "stored");
  const QStringList before = FilesBelow(Catalogue.ProgramPath());
  // With another catalogue in use the first one stays the program's.
  for (const char* used : {"Database", "elsewhere"}) {
    Catalogue.Paths().ImageDir =
        Catalogue.ProgramPath() + QStringLiteral("/%1/Images/").arg(QLatin1String(used));
    Catalogue.Paths().DatabaseFile =
        Catalogue.ProgramPath() + QStringLiteral("/%1/Photos.mdb").arg(QLatin1String(used));
    for (const char* name : {"Webs/..", "Database", "Temp", "Database/Images"}) {
      Dialog.LastDir = Catalogue.ProgramPath();
      const QStringList boxes = MakeWeb(QLatin1String(name), {QMessageBox::Yes, QMessageBox::Ok});
      EXPECT_TRUE(boxes.value(1).endsWith(QStringLiteral("belongs to Veldrin."))) << name;
      EXPECT_FALSE(Dialog.WebOK);
    }
  }
  EXPECT_EQ(FilesBelow(Catalogue.ProgramPath()), before);
}

}  // namespace
}  // namespace veldrin::output
