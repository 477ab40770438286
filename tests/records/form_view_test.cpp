#include "records/form_view.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>

#include "catalogue/fitted_image.h"
#include "catalogue/image_store.h"
#include "platform/dates.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

class FormViewTest : public testing::Test {
 protected:
  FormViewTest() : Data1(Catalogue.Engine()), Form(Data1, Catalogue.Paths(), Catalogue.Engine()) {
    Catalogue.AddPhoto(1, QStringLiteral("Wide"), {}, QSize(400, 100));
    Catalogue.AddPhoto(2, QStringLiteral("Tiny"), {}, QSize(3, 4));
    Catalogue.AddPhoto(3, QStringLiteral("Lost"), {});
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Form.resize(829, 654);
    Form.show();
    Form.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form));
  }

  void Open(const char* where = "") {
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos") + QLatin1String(where);
    Data1.Refresh();
    Form.ShowFormRecord();
    Form.ShowFormImage();
  }
  template <class Control>
  Control& Get(const char* name) {
    return *Form.findChild<Control*>(QLatin1String(name));
  }
  void Click(const char* name) { Get<QAbstractButton>(name).click(); }
  QString Label(const char* name) { return Get<QLabel>(name).text(); }
  QLineEdit& Title() { return Get<QLineEdit>("eTitle"); }
  QPlainTextEdit& Description() { return Get<QPlainTextEdit>("eDescription"); }
  // Where the image is shown; an invalid place with two, or none.
  QRect ShownImage() {
    QRect shown;
    for (const char* name : {"FormImage(0)", "FormImage(1)"}) {
      auto& image = Get<catalogue::FittedImage>(name);
      if (!image.isHidden()) shown = shown.isNull() ? image.geometry() : QRect();
    }
    return shown;
  }
  QString Texts(int id) {
    return Catalogue
        .Rows(QStringLiteral("SELECT Title, Description, MadeBy FROM tblPhotos WHERE PhotoID = %1").arg(id))
        .join(QLatin1Char(' '));
  }

  test::TestCatalogue Catalogue;
  catalogue::RecordList Data1;
  FormView Form;
};

TEST_F(FormViewTest, ShowsTheRecordAndItsImageInTheMiddleOfTheBox) {
  Catalogue.Execute(
      {QStringLiteral("UPDATE tblPhotos SET Description = 'a', MadeBy = 'b' WHERE PhotoID = 1")});
  Open();
  EXPECT_EQ(Title().text(), QStringLiteral("Wide"));
  EXPECT_EQ(Description().toPlainText(), QStringLiteral("a"));
  EXPECT_EQ(Get<QLineEdit>("eMadeBy").text(), QStringLiteral("b"));
  EXPECT_EQ(Label("ePhotoID") + Label("eImageType"), QStringLiteral("1jpg"));
  EXPECT_EQ(Label("eDate"), platform::FormatDate(QDateTime(QDate(2001, 7, 4), QTime(0, 0), Qt::UTC)));
  EXPECT_EQ(Label("eRcdCount"), QStringLiteral("1 of 3"));
  EXPECT_EQ(ShownImage(), QRect(0, 160, 641, 160));
  Form.resize(829, 554);
  EXPECT_EQ(ShownImage(), QRect(0, 110, 641, 160));
}

TEST_F(FormViewTest, TheNavigatorStopsAtBothEnds) {
  Open();
  struct Step {
    const char* Button;
    const char* Count;
    bool Image;
  };
  for (const Step& step : std::vector<Step>{{"Previous", "1 of 3", true},
                                            {"Next", "2 of 3", true},
                                            {"Next", "3 of 3", false},
                                            {"Next", "3 of 3", false},
                                            {"Previous", "2 of 3", true},
                                            {"Last", "3 of 3", false},
                                            {"First", "1 of 3", true}}) {
    Title().setText(QStringLiteral("typed"));
    Click(step.Button);
    EXPECT_EQ(Label("eRcdCount"), QLatin1String(step.Count)) << step.Button;
    EXPECT_NE(Title().text(), QStringLiteral("typed")) << step.Button;
    EXPECT_EQ(ShownImage().isValid(), step.Image) << step.Button << " " << step.Count;
    EXPECT_FALSE(Data1.SuppressReposition);
  }
  EXPECT_EQ(Texts(1) + Texts(3), QStringLiteral("Wide|<null>|<null>Lost|<null>|<null>"));
}

TEST_F(FormViewTest, AListWithoutRecordsEmptiesAllButTheNumber) {
  Open();
  Open(" WHERE PhotoID = 77");
  for (const char* button : {"First", "Previous", "Next", "Last", "SaveBttn", "UndoBttn"}) Click(button);
  EXPECT_EQ(Title().text() + Label("eRcdCount") + Label("eDate") + Label("eImageFile"), QString());
  EXPECT_EQ(Label("ePhotoID"), QStringLiteral("1"));
  EXPECT_FALSE(ShownImage().isValid());
}

TEST_F(FormViewTest, WhatCantBeShownLeavesTheBoxEmptyAndTheNextImageComes) {
  Open();
  const auto image = [&](int id) { return ImageFileName(Catalogue.Paths(), id, QStringLiteral("jpg")); };
  QFile::remove(image(1));  // While it is shown.
  EXPECT_TRUE(ShownImage().isValid());
  Form.ShowFormImage();
  EXPECT_FALSE(ShownImage().isValid());
  QDir().mkdir(image(1));
  test::WriteFile(image(3), "no picture");
  for (const char* button : {"First", "Last"}) {
    Click(button);
    EXPECT_FALSE(ShownImage().isValid()) << button;
    EXPECT_EQ(Label("eImageFile").isEmpty(), button == std::string("First"));
    Form.ShowFormRecord();
  }
  Click("Previous");
  EXPECT_TRUE(ShownImage().isValid());
  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 1")});
  Click("First");
  EXPECT_EQ(Title().text() + Label("eRcdCount"), QString());
  EXPECT_FALSE(ShownImage().isValid());
}

struct TextCase {
  const char* Name;
  QString Title;
  QString Description;
  const char* Stored;  ///< null for the texts as they were typed
};

class SavedTexts : public FormViewTest, public testing::WithParamInterface<TextCase> {};

TEST_P(SavedTexts, AreStoredAsTyped) {
  Open();
  Click("Next");
  Title().setText(GetParam().Title);
  Description().setPlainText(GetParam().Description);
  Click("SaveBttn");
  const QString typed =
      GetParam().Title + QLatin1Char('|') + GetParam().Description + QStringLiteral("|<null>");
  EXPECT_EQ(Texts(2), GetParam().Stored == nullptr ? typed : QLatin1String(GetParam().Stored));
  EXPECT_EQ(Label("eRcdCount"), QStringLiteral("2 of 3"));
  EXPECT_EQ(Title().text(), GetParam().Title);
  EXPECT_TRUE(ShownImage().isValid());
  EXPECT_EQ(Texts(1), QStringLiteral("Wide|<null>|<null>"));
}

INSTANTIATE_TEST_SUITE_P(OfAllKinds, SavedTexts,
                         testing::Values(TextCase{"Emptied", {}, {}, "<null>|<null>|<null>"},
                                         TextCase{"Apostrophes", QStringLiteral("It's \"'; --"),
                                                  QString::fromUtf8("''\u00A0\n"), nullptr},
                                         TextCase{"EmojiAndRightToLeft", QStringLiteral(u"\U0001F600 שלום"),
                                                  QStringLiteral(u"مرحبا"), nullptr},
                                         TextCase{"OfFullLength", QString(60, QLatin1Char('t')),
                                                  QString(255, QLatin1Char('d')), nullptr}),
                         test::CaseName);

TEST_F(FormViewTest, TheFieldsTakeNoMoreThanTheirColumns) {
  Open();
  QTest::keyClicks(&Title(), QString(65, QLatin1Char('t')));
  QTest::keyClicks(&Get<QLineEdit>("eMadeBy"), QString(30, QLatin1Char('m')));
  QTest::keyClicks(&Description(), QString(260, QLatin1Char('d')));
  Click("SaveBttn");
  EXPECT_EQ(Title().text().size(), 60);
  EXPECT_EQ(Texts(1).size(), 60 + 26 + 255 + 2);
}

TEST_F(FormViewTest, EnterGoesOnAndUndoReadsAgain) {
  Open();
  Title().setFocus();
  for (const char* next : {"eMadeBy", "eDescription"}) {
    QTest::keyClick(Form.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Form.focusWidget()->objectName(), QLatin1String(next));
  }
  QTest::keyClicks(Form.focusWidget(), QStringLiteral("one line"));
  QTest::keyClick(Form.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(Description().toPlainText(), QStringLiteral("one line"));
  EXPECT_FALSE(Description().hasFocus());
  Click("UndoBttn");
  EXPECT_EQ(Description().toPlainText(), QString());
}

TEST_F(FormViewTest, ASavedPhotoThatTheQueryNoLongerFindsGivesWayToTheFirst) {
  Open(" WHERE Title Like '*i*'");
  Title().setText(QStringLiteral("none"));
  Click("SaveBttn");
  EXPECT_EQ(Texts(1), QStringLiteral("none|<null>|<null>"));
  EXPECT_EQ(Label("ePhotoID") + Title().text() + Label("eRcdCount"), QStringLiteral("2Tiny1 of 1"));
  EXPECT_LT(ShownImage().width(), ShownImage().height());
}

TEST_F(FormViewTest, ACatalogueThatAnotherProgramHoldsKeepsTheTextsOnTheScreen) {
  Open();
  Catalogue.Engine().LockTimeout = 50;
  auto held = std::make_unique<test::HeldCatalogue>(Catalogue, "BEGIN EXCLUSIVE");
  Title().setText(QStringLiteral("kept"));
  const QStringList boxes = test::AnswerBoxes([&] { Click("SaveBttn"); }, {QMessageBox::Ok});
  EXPECT_TRUE(boxes.value(0).startsWith(QStringLiteral("Error|Error Code: 3260 ")))
      << boxes.value(0).toStdString();
  EXPECT_EQ(Title().text(), QStringLiteral("kept"));
  held.reset();
  EXPECT_EQ(Texts(1), QStringLiteral("Wide|<null>|<null>"));
  Click("SaveBttn");
  EXPECT_EQ(Texts(1), QStringLiteral("kept|<null>|<null>"));
}

TEST_F(FormViewTest, TextsThatCouldntBeReadAreNeverSaved) {
  Open();
  Catalogue.Engine().LockTimeout = 50;
  auto held = std::make_unique<test::HeldCatalogue>(Catalogue, "BEGIN EXCLUSIVE");
  Click("Next");
  EXPECT_EQ(Title().text(), QString());
  held.reset();
  EXPECT_TRUE(test::AnswerBoxes([&] { Click("SaveBttn"); }, {QMessageBox::Ok})
                  .value(0)
                  .startsWith(QStringLiteral("Error|Error Code: 3021 ")));
  EXPECT_EQ(Texts(2), QStringLiteral("Tiny|<null>|<null>"));
  Click("UndoBttn");
  EXPECT_EQ(Title().text(), QStringLiteral("Tiny"));
}

TEST_F(FormViewTest, WhatAnotherMachineChangedStays) {
  Open();
  Catalogue.Execute(
      {QStringLiteral("UPDATE tblPhotos SET Title = 'theirs', MadeBy = 'they' WHERE PhotoID = 1")});
  Title().setText(QStringLiteral("ours"));
  Click("SaveBttn");
  EXPECT_EQ(Texts(1), QStringLiteral("ours|<null>|they"));
  Catalogue.Execute({QStringLiteral("UPDATE tblPhotos SET Title = 'theirs' WHERE PhotoID = 1")});
  Click("UndoBttn");
  EXPECT_EQ(Title().text(), QStringLiteral("theirs"));
  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 1")});
  Title().setText(QStringLiteral("ours"));
  EXPECT_EQ(test::AnswerBoxes([&] { Click("SaveBttn"); }, {QMessageBox::Ok}).size(), 1);
  EXPECT_EQ(Title().text(), QStringLiteral("ours"));
}

}  // namespace
}  // namespace veldrin::records
