#include "shell/setup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

#include "shell/configuration.h"
#include "support/test_support.h"

namespace veldrin::shell {
namespace {

const char* const BoxText =
    "Information|If you made any change, you need to restate the program to have it to take place!";

class Setup : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(QDir().mkpath(Directory.path() + QStringLiteral("/Ini"))); }

  void Open() {
    Dialog = std::make_unique<frmSetup>(Ini);
    Dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
  }
  template <class Control>
  Control* Find(const char* name) const {
    auto* control = Dialog->findChild<Control*>(QLatin1String(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
  }
  void Click(const char* name) const {
    auto* button = Find<QAbstractButton>(name);
    // An option button takes clicks on its text only.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
  }
  void Type(const char* name, const QString& text) const {
    Find<QLineEdit>(name)->selectAll();
    QTest::keyClick(Find<QLineEdit>(name), Qt::Key_Delete);
    QTest::keyClicks(Find<QLineEdit>(name), text);
  }
  void Ok() {
    EXPECT_EQ(test::AnswerBoxes([&] { Click("bttnOK"); }, {QMessageBox::Ok}),
              QStringList(QLatin1String(BoxText)));
    EXPECT_FALSE(Dialog->isVisible());
  }
  QString Database() const {
    return ReadIniString(QStringLiteral("Directories"), QStringLiteral("Database"), Ini);
  }
  QString Browser() const {
    return ReadIniString(QStringLiteral("Programs"), QStringLiteral("Webbrowser"), Ini);
  }

  QTemporaryDir Directory;
  const QString Ini = IniFileOf(Directory.path());
  std::unique_ptr<frmSetup> Dialog;
};

TEST_F(Setup, WritesTheTwoValuesAndShowsThemAgain) {
  Open();
  EXPECT_TRUE(Find<QRadioButton>("dirOption(0)")->isChecked());
  EXPECT_TRUE(Find<QRadioButton>("webOption(0)")->isChecked());
  EXPECT_FALSE(Find<QWidget>("dirPanel")->isVisible());
  EXPECT_FALSE(Find<QWidget>("webPanel")->isVisible());
  Click("dirOption(1)");
  EXPECT_TRUE(Find<QWidget>("dirPanel")->isVisible());
  EXPECT_FALSE(Find<QWidget>("webPanel")->isVisible());
  Type("txtDirectory", QStringLiteral("/net/my photos/"));
  Click("webOption(1)");
  Type("txtBrowser", QStringLiteral("/opt/b"));
  Ok();
  EXPECT_EQ(Database(), QStringLiteral("/net/my photos/"));
  EXPECT_EQ(Browser(), QStringLiteral("/opt/b"));

  Open();
  EXPECT_TRUE(Find<QRadioButton>("dirOption(1)")->isChecked());
  EXPECT_TRUE(Find<QWidget>("dirPanel")->isVisible());
  EXPECT_EQ(Find<QLineEdit>("txtDirectory")->text(), QStringLiteral("/net/my photos/"));
  EXPECT_EQ(Find<QLineEdit>("txtBrowser")->text(), QStringLiteral("/opt/b"));
  // The text counts under the second option only.
  Click("dirOption(0)");
  EXPECT_FALSE(Find<QWidget>("dirPanel")->isVisible());
  Type("txtBrowser", QString());
  Ok();
  EXPECT_EQ(Database(), QString());
  EXPECT_EQ(Browser(), QString());
}

TEST_F(Setup, ANetworkDirectoryLeftEmptyMeansTheLocalOne) {
  Open();
  Click("dirOption(1)");
  Ok();
  EXPECT_TRUE(test::ReadFile(Ini).contains("Database=\n"));
  Open();
  EXPECT_TRUE(Find<QRadioButton>("dirOption(0)")->isChecked());
}

TEST_F(Setup, CancelLeavesTheFileAsItWas) {
  const QByteArray before = "[Directories]\nDatabase=/old\n";
  test::WriteFile(Ini, before);
  for (const bool byKey : {false, true}) {
    Open();
    Type("txtDirectory", QStringLiteral("/new"));
    test::AnswerBoxes([&] { byKey ? QTest::keyClick(Dialog.get(), Qt::Key_Escape) : Click("bttnCancel"); },
                      {});
    EXPECT_FALSE(Dialog->isVisible());
    EXPECT_EQ(test::ReadFile(Ini), before);
  }
}

TEST_F(Setup, EnterInAFieldGoesOn) {
  test::WriteFile(Ini, "[Directories]\nDatabase=/old\n");
  Open();
  auto* field = Find<QLineEdit>("txtDirectory");
  field->setFocus();
  test::AnswerBoxes([&] { QTest::keyClick(field, Qt::Key_Return); }, {});
  EXPECT_TRUE(Dialog->isVisible());
  EXPECT_FALSE(field->hasFocus());
}

TEST_F(Setup, WhereNothingCanBeWrittenTheBoxComesAllTheSame) {
  ASSERT_TRUE(QDir().rmdir(Directory.path() + QStringLiteral("/Ini")));
  Open();
  Click("dirOption(1)");
  Type("txtDirectory", QStringLiteral("/net"));
  Ok();
  EXPECT_EQ(Database(), QString());
}

}  // namespace
}  // namespace veldrin::shell
