#include "output/web_dialog.h"

#include <QTimer>

#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

using test::FilesBelow;
using test::WriteFile;

// The dialog over a directory with an earlier gallery, with links and with what is somebody else's.
class WebDialogTest : public testing::Test, public test::Controls {
 protected:
  WebDialogTest() {
    Root = &Dialog;
    QDir().mkpath(Parent + "/Other/Images");
    QDir().mkpath(Parent + "/Web/Images/mine");
    QDir().mkpath(Parent + "/Web/Thumbnails");
    for (const char* name : {"notes.txt", "Other/Images/1.jpg", "Web/PhotoImage_pg1.htm", "Web/no extension",
                             "Web/.hidden", "Web/Images/1.jpg", "Web/Images/mine/photo.jpg"}) {
      WriteFile(Parent + '/' + name, "earlier");
    }
    QFile::link(Parent + "/notes.txt", Parent + "/Web/link.htm");
    QFile::link(Parent + "/Other", Parent + "/Web/Linked");
    Dialog.LastDir = Parent;
  }

  bool Gallery() { return Get<QAbstractButton>("PgOption(1)").isChecked(); }
  void SetPath(const QString& path) { Get<controls::DirListBox>("Dir1").SetPath(path); }
  // Shows the dialog and does something in it; returns the boxes that came.
  QStringList Show(const std::function<void()>& use, const QList<QMessageBox::StandardButton>& answers = {}) {
    QTimer::singleShot(0, &Dialog, [this, use] {
      use();
      if (Dialog.isVisible()) Click("CancelBttn");
    });
    return test::AnswerBoxes([this] { Dialog.ShowModal(); }, answers);
  }
  QStringList MakeWeb(const QString& name, const QList<QMessageBox::StandardButton>& answers = {}) {
    const auto enter = [this, name] {
      Field("txtWebName").setText(name);
      Click("OkBttn");
    };
    return Show(enter, answers);
  }

  test::TestCatalogue Catalogue;
  const QString Parent = Catalogue.ProgramPath() + "/Webs";
  frmWeb Dialog{Catalogue.Paths()};
};

TEST_F(WebDialogTest, OpensAsItWasLeftButForItsName) {
  Show([this] {
    EXPECT_EQ(Field("txtWebTitle").text(), "");
    EXPECT_EQ(Field("txtWebName").text(), "My Web Pictures");
    EXPECT_TRUE(Gallery());
    Field("txtWebTitle").setText("Mine");
    Click("PgOption(1)");
    EXPECT_EQ(Field("txtWebTitle").text(), "Mine");
    Click("PgOption(0)");
    Click("PgOption(1)");
    EXPECT_EQ(Field("txtWebTitle").text(), "PHOTO IMAGE GALLERY");
    Click("PgOption(0)");
    SetPath(Parent + "/Other");
    QTest::keyClick(&Field("txtWebName"), Qt::Key_Return);
  });
  EXPECT_TRUE(Dialog.WebOK);
  EXPECT_EQ(Dialog.WebDir, Parent + "/Other/My Web Pictures");
  EXPECT_EQ(Dialog.WebTitle, "PHOTO IMAGE LIST");
  EXPECT_EQ(QDir(Dialog.WebDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList("Images"));
  Show([this] {
    EXPECT_EQ(Field("txtWebTitle").text(), "PHOTO IMAGE LIST");
    EXPECT_EQ(Field("txtWebName").text(), "My Web Pictures");
    EXPECT_FALSE(Gallery());
    QTest::keyClick(&Dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(Dialog.WebOK);
  EXPECT_EQ(Dialog.LastDir, Parent + "/Other");
  // Where the last directory has gone it opens on the user's own.
  QDir(Dialog.LastDir).removeRecursively();
  const test::Environment home{{"HOME", Parent.toUtf8()}, {"XDG_CONFIG_HOME", "/none"}};
  Show([this] { EXPECT_EQ(Get<controls::DirListBox>("Dir1").Path(), Parent); });
}

TEST_F(WebDialogTest, OnlyYesDeletesTheEarlierWebAndNothingBeyond) {
  const QStringList before = FilesBelow(Parent);
  EXPECT_EQ(
      MakeWeb("Web", {QMessageBox::No}),
      QStringList(
          "Information|The web '" + Parent +
          "/Web' already exists, do you want to replace it?\n\n"
          "This also deletes 3 files that are no pages or pictures of it: Linked, link.htm, no extension."));
  EXPECT_FALSE(Dialog.WebOK);
  EXPECT_EQ(FilesBelow(Parent), before);
  Dialog.PageType = 0;
  MakeWeb("Web", {QMessageBox::Yes});
  EXPECT_TRUE(Dialog.WebOK);
  EXPECT_EQ(FilesBelow(Parent),
            QStringList({"Other/Images/1.jpg", "Web/.hidden", "Web/Images/mine/photo.jpg", "notes.txt"}));
  EXPECT_FALSE(QDir(Parent + "/Web/Thumbnails").exists());
}

// What the directories are links to is not the web's; nor does a name lead elsewhere.
TEST_F(WebDialogTest, YesEntersNoLinkAndNoOtherDirectory) {
  QDir().mkdir(Parent + "/Links");
  for (const char* link : {"/Links/Images", "/Links/Thumbnails"})
    QFile::link(Parent + "/Other/Images", Parent + link);
  EXPECT_TRUE(MakeWeb("Links", {QMessageBox::Yes}).value(0).endsWith("of it: Images, Thumbnails."));
  EXPECT_FALSE(QFileInfo(Parent + "/Links/Images").isSymLink());
  QFile::link(Parent + "/Other", Parent + "/Linked");
  const QStringList files = FilesBelow(Parent);
  for (const char* name : {"Linked", "", ".", "../Webs/Other", "Other/Images", "notes.txt"}) {
    MakeWeb(name, {QMessageBox::Yes});
    EXPECT_EQ(FilesBelow(Parent), files) << name;
  }
  MakeWeb(QString(256, 'x'));  // longer than a file system takes
  EXPECT_EQ(FilesBelow(Parent), files);
}

TEST_F(WebDialogTest, TheProgramsOwnDirectoriesAreRefused) {
  WriteFile(Catalogue.Paths().ImageDir + "1.jpg", "stored");
  const QStringList before = FilesBelow(Catalogue.ProgramPath());
  // With another catalogue in use the first one stays the program's.
  for (const char* used : {"/Database", "/elsewhere"}) {
    Catalogue.Paths().ImageDir = Catalogue.ProgramPath() + used + "/Images/";
    Catalogue.Paths().DatabaseFile = Catalogue.ProgramPath() + used + "/Photos.mdb";
    for (const char* name : {"Webs/..", "Database", "Temp", "Database/Images"}) {
      Dialog.LastDir = Catalogue.ProgramPath();
      const QStringList boxes = MakeWeb(name, {QMessageBox::Yes, QMessageBox::Ok});
      EXPECT_TRUE(boxes.value(1).endsWith("belongs to Veldrin.")) << name;
      EXPECT_FALSE(Dialog.WebOK);
    }
  }
  EXPECT_EQ(FilesBelow(Catalogue.ProgramPath()), before);
}

}  // namespace
}  // namespace veldrin::output
