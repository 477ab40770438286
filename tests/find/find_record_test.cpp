#include "find/find_record.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QTimer>

#include "support/finding.h"

namespace veldrin::find {
namespace {

class FindRecordTest : public test::FindingTest {
 protected:
  FindRecordTest() {
    Add({"1, 'jpg', 'Photo 12', '', 'Ann', #2001-07-04 10:15:00#",
         "2, 'jpg', 'o''clock', '', 'Ann', #2001-07-05#", "3, 'bmp', 'ÄPFEL', '', 'Bob', #2001-07-04#",
         "11, 'bmp', 'Photo 13', '', Null, Null"});
    Show();
  }

  // Enters both and presses the button; the boxes that follow, and where the list stands.
  std::string Search(const char* field, const QString& value, const char* button = "FindBttn",
                     int boxes = 0) {
    QTimer::singleShot(0, qApp, [&, button] {
      Root = QApplication::activeModalWidget();
      Opened = (Get<QComboBox>("FldName").currentText() + u'|' + Field("MatchVal").text()).toStdString();
      Get<QComboBox>("FldName").setCurrentText(field);
      Field("MatchVal").setText(value);
      // A box may come as soon as the dialog has gone.
      QTimer::singleShot(0, qApp, [this, button] { Click(button); });
    });
    const QStringList seen =
        test::AnswerBoxes([this] { Searching.SearchBttn_Click(); }, {boxes, QMessageBox::Ok});
    return seen.join(u' ').toStdString() + "@" + std::to_string(Data1.Bookmark());
  }

  RecordSearch Searching{
      Data1, {"PhotoID", "Title", "CreateDate", "MadeBy", "Gone"}, [this] { ++Searches; }, Window};
  std::string Opened;
  int Searches = 0;
};

TEST_F(FindRecordTest, FindsByEachKindOfFieldAndGoesOnFromTheCurrentRecord) {
  EXPECT_EQ(Search("Title", "äpfel"), "@3");
  EXPECT_EQ(Search("Title", "13", "CancelBttn"), "@3");
  EXPECT_EQ(Opened, "Title|äpfel") << "of what left the dialog by a button of the two";
  EXPECT_EQ(Search("Title", "o'clock"), "@2");
  EXPECT_EQ(Search("Title", "photo #3"), "@11");
  EXPECT_EQ(Search("PhotoID", " 1 "), "@1");
  EXPECT_EQ(Search("CreateDate", "7/5/2001"), "@2");
  EXPECT_EQ(Search("CreateDate", "2001-07-04"), "@1");
  EXPECT_EQ(Search("CreateDate", "7/4/2001", "NextBttn"), "@3");
  EXPECT_EQ(Search("CreateDate", "7/4/2001", "NextBttn", 1), "Information|Record not fund!@3");
  EXPECT_EQ(Search("CreateDate", "7/4/2001"), "@1");
  EXPECT_EQ(Search("Title", "\"; DROP TABLE tblPhotos", "FindBttn", 1), "Information|Record not fund!@1");
  EXPECT_EQ(Searches, 10);
  Source.Query.QryTitle = "nowhere";
  Show();
  Searching.SearchBttn_Click();  // On an empty list no dialog opens: it would wait for an answer.
  EXPECT_EQ(Searches, 10);
}

TEST_F(FindRecordTest, WhatIsNoValueOfItsFieldIsTheTrappedError) {
  Data1.MoveNear(99);
  const std::pair<const char*, const char*> cases[] = {{"PhotoID", "abc"},
                                                       {"PhotoID", "1) OR (1"},
                                                       {"PhotoID", "1; DELETE FROM tblPhotos"},
                                                       {"CreateDate", "soon"},
                                                       {"CreateDate", "7/4/2001# OR #7/4/2001"},
                                                       {"CreateDate", "2001-02-29"}};
  for (const auto& [field, value] : cases) {
    const std::string result = Search(field, value, "FindBttn", 1);
    EXPECT_THAT(result, testing::StartsWith("Error|Error Code: 3075 Syntax error in")) << value;
    EXPECT_THAT(result, testing::EndsWith("@11")) << value;
  }
  EXPECT_THAT(Search("Title", QString(QChar::Null), "FindBttn", 1), testing::HasSubstr("Code: 3075 "));
  EXPECT_EQ(Search("Gone", "1", "FindBttn", 1),
            "Error|Error Code: 3265 Item not found in this collection: Gone@11");
  EXPECT_EQ(Searches, 0);
  EXPECT_EQ(Catalogue.RowsText("SELECT Count(*) FROM tblPhotos"), "4");
}

}  // namespace
}  // namespace veldrin::find
