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
      Get<QComboBox>("FldName").setCurrentText(QLatin1String(field));
      Field("MatchVal").setText(value);
      // A box may come as soon as the dialog has gone.
      QTimer::singleShot(0, qApp, [this, button] { Click(button); });
    });
    const QStringList seen =
        test::AnswerBoxes([this] { Searching.SearchBttn_Click(); }, {boxes, QMessageBox::Ok});
    return seen.join(u' ').toStdString() + "@" + std::to_string(Data1.Bookmark());
  }

  RecordSearch Searching{Data1, QStringLiteral("PhotoID Title CreateDate MadeBy Gone").split(u' '), Views,
                         Window};
  std::string Opened;
};

TEST_F(FindRecordTest, FindsByEachKindOfFieldAndGoesOnFromTheCurrentRecord) {
  EXPECT_EQ(Search("Title", QStringLiteral("äpfel")), "@3");
  EXPECT_EQ(Search("Title", QStringLiteral("o'clock")), "@2");
  EXPECT_EQ(Search("Title", QStringLiteral("photo #3")), "@11");
  EXPECT_EQ(Search("PhotoID", QStringLiteral(" 1 ")), "@1");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/5/2001")), "@2");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("2001-07-04")), "@1");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001"), "NextBttn"), "@3");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001"), "NextBttn", 1),
            "Information|Record not fund!@3");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001")), "@1");
  EXPECT_EQ(Search("Title", QStringLiteral("\"; DROP TABLE tblPhotos"), "FindBttn", 1),
            "Information|Record not fund!@1");
  EXPECT_EQ(Views.Log.size(), 10);
  Source.Query.QryTitle = QStringLiteral("nowhere");
  Show();
  Searching.SearchBttn_Click();  // On an empty list no dialog opens: it would wait for an answer.
  EXPECT_EQ(Views.Log.size(), 10);
}

TEST_F(FindRecordTest, KeepsWhatLeftTheDialogByAButtonOfTheTwo) {
  EXPECT_EQ(Search("Title", QStringLiteral("13"), "CancelBttn"), "@1");
  EXPECT_EQ(Search("Title", QStringLiteral("13")), "@11");
  EXPECT_EQ(Opened, "PhotoID|");
  EXPECT_EQ(Search("MadeBy", QString()), "@11");
  EXPECT_EQ(Opened, "Title|13");
  EXPECT_EQ(Search("MadeBy", QStringLiteral("x"), "CancelBttn"), "@11");
  EXPECT_EQ(Opened, "MadeBy|");
  EXPECT_EQ(Views.Log.size(), 1);
}

TEST_F(FindRecordTest, WhatIsNoValueOfItsFieldIsTheTrappedError) {
  Data1.MoveLast();
  const std::pair<const char*, const char*> cases[] = {{"PhotoID", "abc"},
                                                       {"PhotoID", "1) OR (1"},
                                                       {"PhotoID", "PhotoID"},
                                                       {"PhotoID", "1; DELETE FROM tblPhotos"},
                                                       {"PhotoID", "1,5"},
                                                       {"CreateDate", "soon"},
                                                       {"CreateDate", "7/4/2001# OR #7/4/2001"},
                                                       {"CreateDate", "2001-02-29"}};
  for (const auto& [field, value] : cases) {
    const std::string result = Search(field, QLatin1String(value), "FindBttn", 1);
    EXPECT_THAT(result, testing::StartsWith("Error|Error Code: 3075 Syntax error in")) << value;
    EXPECT_THAT(result, testing::EndsWith("@11")) << value;
  }
  EXPECT_THAT(Search("Title", QString(QChar::Null), "FindBttn", 1), testing::HasSubstr("Code: 3075 "));
  EXPECT_EQ(Search("Gone", QStringLiteral("1"), "FindBttn", 1),
            "Error|Error Code: 3265 Item not found in this collection: Gone@11");
  EXPECT_EQ(Views.Log.size(), 0);
  EXPECT_EQ(Catalogue.RowsText("SELECT Count(*) FROM tblPhotos"), "4");
}

}  // namespace
}  // namespace veldrin::find
