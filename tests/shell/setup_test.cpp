#include "shell/setup.h"

#include "shell/configuration.h"
#include "support/finding.h"

namespace veldrin::shell {
namespace {

class Setup : public testing::Test, protected test::Controls {
 protected:
  Setup() { EXPECT_TRUE(QDir(Directory.path()).mkdir("Ini")); }

  void Open() {
    Dialog = std::make_unique<frmSetup>(Ini);
    Root = Dialog.get();
    Dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Root));
  }
  void Ok() {
    EXPECT_EQ(test::AnswerBoxes([&] { Click("bttnOK"); }, {QMessageBox::Ok}),
              QStringList("Information|If you made any change, you need to restate the program to have it to "
                          "take place!"));
    EXPECT_FALSE(Dialog->isVisible());
  }

  QTemporaryDir Directory;
  const QString Ini = IniFileOf(Directory.path());
  std::unique_ptr<frmSetup> Dialog;
};

TEST_F(Setup, WritesTheTwoValuesAndShowsThemAgain) {
  Open();
  EXPECT_FALSE(Field("txtDirectory").isVisible() || Field("txtBrowser").isVisible());
  Click("dirOption(1)");
  EXPECT_TRUE(Field("txtDirectory").isVisible());
  EXPECT_FALSE(Field("txtBrowser").isVisible());
  Field("txtDirectory").setText("/net/my photos/");
  Click("webOption(1)");
  Field("txtBrowser").setText("/opt/b");
  Ok();
  EXPECT_EQ(test::ReadFile(Ini),
            "[Directories]\nDatabase=/net/my photos/\n\n\n[Programs]\nWebbrowser=/opt/b\n");

  Open();
  EXPECT_TRUE(Field("txtDirectory").isVisible());
  EXPECT_EQ(Field("txtDirectory").text(), "/net/my photos/");
  // The text counts under the second option only; left empty it means the first.
  Click("dirOption(0)");
  Field("txtBrowser").clear();
  Ok();
  EXPECT_EQ(test::ReadFile(Ini), "[Directories]\nDatabase=\n\n\n[Programs]\nWebbrowser=\n");
  Open();
  EXPECT_FALSE(Field("txtBrowser").isVisible());
}

TEST_F(Setup, CancelLeavesTheFileAsItWasAndEnterGoesOn) {
  const QByteArray before = "[Directories]\nDatabase=/old\n";
  test::WriteFile(Ini, before);
  for (const bool byKey : {false, true}) {
    Open();
    QLineEdit& field = Field("txtDirectory");
    field.setFocus();
    field.setText("/new");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_TRUE(Dialog->isVisible());
    EXPECT_FALSE(field.hasFocus());
    byKey ? QTest::keyClick(Root, Qt::Key_Escape) : Click("bttnCancel");
    EXPECT_FALSE(Dialog->isVisible());
    EXPECT_EQ(test::ReadFile(Ini), before);
  }
}

TEST_F(Setup, WhereNothingCanBeWrittenTheBoxComesAllTheSame) {
  ASSERT_TRUE(QDir(Directory.path()).rmdir("Ini"));
  Open();
  Click("dirOption(1)");
  Field("txtDirectory").setText("/net");
  Ok();
  EXPECT_FALSE(QFile::exists(Ini));
}

}  // namespace
}  // namespace veldrin::shell
