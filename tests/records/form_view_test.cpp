#include "records/form_view.h"

#include <QLabel>
#include <QPlainTextEdit>

#include "controls/fitted_image.h"
#include "pictures/picture_cache.h"
#include "support/catalogue_list.h"

namespace veldrin::records {
namespace {

class FormViewTest : public testing::Test, public test::Controls, public test::CatalogueList {
 protected:
  FormViewTest() {
    Catalogue.AddPhoto(1, "Wide", {}, QSize(400, 100));
    Catalogue.AddPhoto(2, "Tiny", {}, QSize(3, 4));
    Catalogue.Engine().LockTimeout = 50;
    Root = &Form;
    Form.resize(829, 654);
    Form.show();
    Form.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form));
    Open();
  }

  std::string Label(const char* name) { return Get<QLabel>(name).text().toStdString(); }
  QLineEdit& Title() { return Field("eTitle"); }
  QPlainTextEdit& Description() { return Get<QPlainTextEdit>("eDescription"); }
  // Number, texts and place in the list.
  std::string Shown() {
    return Label("ePhotoID") + "|" + Title().text().toStdString() + "|" +
           Description().toPlainText().toStdString() + "|" + Field("eMadeBy").text().toStdString() + "|" +
           Label("eRcdCount");
  }
  // Where the image is shown; an invalid place with two, or none.
  QRect ShownImage() {
    test::WaitForPictures();
    QRect shown;
    for (const char* name : {"FormImage(0)", "FormImage(1)"}) {
      auto& image = Get<controls::FittedImage>(name);
      if (!image.isHidden()) shown = shown.isNull() ? image.geometry() : QRect();
    }
    return shown;
  }
  std::string Texts() {
    return Catalogue.RowsText("SELECT Title, Description, MadeBy FROM tblPhotos ORDER BY PhotoID");
  }
  // Saves, which is refused with an error.
  void ExpectRefusedSave(const char* error) {
    const QStringList boxes = test::AnswerBoxes([&] { Click("SaveBttn"); }, {QMessageBox::Ok});
    EXPECT_TRUE(boxes.value(0).startsWith(error)) << boxes.value(0).toStdString();
  }

  pictures::PictureCache Cache;
  FormView Form{Data1, Catalogue.Paths(), Catalogue.Engine(), Cache};
};

TEST_F(FormViewTest, ShowsAWideImageInTheMiddleAndNothingOfAnEmptyList) {
  EXPECT_EQ(Label("eImageType") + " " + Label("eDate"), "jpg 7/4/2001");
  EXPECT_EQ(ShownImage(), QRect(0, 160, 641, 160));
  Open(" WHERE PhotoID = 77");  // A list without records empties all but the number.
  for (const char* button : {"First", "Previous", "Next", "Last", "SaveBttn", "UndoBttn"}) Click(button);
  EXPECT_EQ(Shown() + Label("eDate") + Label("eImageFile"), "1||||");
  EXPECT_FALSE(ShownImage().isValid());
}

TEST_F(FormViewTest, TextsAreStoredAsTyped) {
  Click("Next");
  const QStringList texts[] = {{"It's \"'; --", QString::fromUtf8("''\u00A0\n")},
                               {QStringLiteral(u"\U0001F600 שלום"), QStringLiteral(u"مرحبا")},
                               {QString(60, u't'), QString(255, u'd')}};
  for (const QStringList& typed : texts) {
    Title().setText(typed[0]);
    Description().setPlainText(typed[1]);
    Click("SaveBttn");
    EXPECT_EQ(Texts(), "Wide|<null>|<null> " + typed.join(u'|').toStdString() + "|<null>");
    EXPECT_EQ(Title().text() + Label("eRcdCount").c_str(), typed[0] + "2 of 2");
    EXPECT_TRUE(ShownImage().isValid());
  }
  Title().clear();
  Click("SaveBttn");
  EXPECT_EQ(Texts().substr(0, 26), "Wide|<null>|<null> <null>|");
}

TEST_F(FormViewTest, ACatalogueThatAnotherProgramHoldsKeepsTheTextsOnTheScreen) {
  const std::string stored = Texts();
  auto held = std::make_unique<test::HeldCatalogue>(Catalogue, "BEGIN EXCLUSIVE");
  Title().setText("kept");
  ExpectRefusedSave("Error|Error Code: 3260 ");
  EXPECT_EQ(Title().text(), "kept");
  Click("Next");
  EXPECT_EQ(Title().text(), QString());
  held.reset();
  ExpectRefusedSave("Error|Error Code: 3021 ");  // Texts that couldn't be read.
  EXPECT_EQ(Texts(), stored);
  Click("UndoBttn");
  EXPECT_EQ(Shown(), "2|Tiny|||2 of 2");
}

TEST_F(FormViewTest, WhatAnotherMachineChangedStays) {
  Open(" WHERE PhotoID = 1");
  // It may be another photo of that number.
  Catalogue.Execute({"UPDATE tblPhotos SET MadeBy = 'them' WHERE PhotoID = 1"});
  Title().setText("ours");
  ExpectRefusedSave("Error|");
  EXPECT_EQ(Title().text(), "ours");
  Click("UndoBttn");
  Title().setText("ours");
  Click("SaveBttn");
  EXPECT_EQ(Shown(), "1|ours||them|1 of 1");
  Open(" WHERE Title Like '*u*'");
  Title().setText("none");
  Click("SaveBttn");  // A photo that the query no longer finds gives way to the first.
  EXPECT_EQ(Shown() + (ShownImage().isValid() ? "+" : ""), "1||||");
  Open(" WHERE PhotoID = 1");
  Catalogue.Execute({"UPDATE tblPhotos SET Title = 'theirs' WHERE PhotoID = 1"});
  Click("UndoBttn");
  EXPECT_EQ(Shown(), "1|theirs||them|1 of 1");
  Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 1"});
  Title().setText("ours");
  ExpectRefusedSave("Error|");
  EXPECT_EQ(Title().text(), "ours");
}

}  // namespace
}  // namespace veldrin::records
