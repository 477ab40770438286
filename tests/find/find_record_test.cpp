#include "find/find_record.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QTimer>

#include "platform/runtime_error.h"
#include "support/finding.h"

namespace veldrin::find {
namespace {

class FindRecordTest : public test::FindingTest, public test::Controls {
 protected:
  FindRecordTest() : Searching(Data1, Fields(), Views, Window) {
    Add({{1, "jpg", "Photo 12", "", "Ann", "2001-07-04 10:15:00"},
         {2, "jpg", "o'clock", "", "Ann", "2001-07-05"},
         {3, "bmp", "ÄPFEL", "", "Bob", "2001-07-04"},
         {11, "bmp", "Photo 13", "", nullptr, nullptr}});
    Show();
  }
  static QStringList Fields() {
    return {QStringLiteral("PhotoID"),    QStringLiteral("ImageType"), QStringLiteral("Title"),
            QStringLiteral("CreateDate"), QStringLiteral("MadeBy"),    QStringLiteral("Gone")};
  }

  // Enters both and presses the button; the boxes that follow, and where the list stands.
  std::string Search(const char* field, const QString& value, const char* button = "FindBttn") {
    QTimer::singleShot(0, qApp, [&, button] {
      Root = QApplication::activeModalWidget();
      Opened = Get<QComboBox>("FldName").currentText() + QLatin1Char('|') + Field("MatchVal").text();
      Get<QComboBox>("FldName").setCurrentText(QLatin1String(field));
      Field("MatchVal").setText(value);
      // A box may come as soon as the dialog has gone.
      QTimer::singleShot(0, qApp, [this, button] { Click(button); });
    });
    QStringList boxes;
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, &answers, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      boxes << box->windowTitle() + QLatin1Char('|') + box->text();
      box->accept();
    });
    answers.start(0);
    Searching.SearchBttn_Click();
    return boxes.join(QLatin1Char(' ')).toStdString() + "@" + std::to_string(Data1.Bookmark());
  }

  RecordSearch Searching;
  QString Opened;
};

TEST_F(FindRecordTest, FindsByEachKindOfField) {
  EXPECT_EQ(Search("Title", QStringLiteral("äpfel")), "@3");
  EXPECT_EQ(Search("Title", QStringLiteral("o'clock")), "@2");
  EXPECT_EQ(Search("Title", QStringLiteral("1")), "@1");
  EXPECT_EQ(Search("Title", QStringLiteral("photo #3")), "@11");
  EXPECT_EQ(Search("PhotoID", QStringLiteral(" 1 ")), "@1");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/5/2001")), "@2");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("2001-07-04")), "@1");
  EXPECT_EQ(Views.Shown, 7);
}

TEST_F(FindRecordTest, FindNextGoesOnFromTheCurrentRecord) {
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001"), "NextBttn"), "@3");
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001"), "NextBttn"), "Information|Record not fund!@3");
  EXPECT_EQ(Views.Shown, 2);
  EXPECT_EQ(Search("CreateDate", QStringLiteral("7/4/2001"), "FindBttn"), "@1");
}

TEST_F(FindRecordTest, KeepsWhatLeftTheDialogByAButtonOfTheTwo) {
  EXPECT_EQ(Search("Title", QStringLiteral("13"), "CancelBttn"), "@1");
  EXPECT_EQ(Search("Title", QStringLiteral("13")), "@11");
  EXPECT_EQ(Opened, QStringLiteral("PhotoID|"));
  EXPECT_EQ(Search("MadeBy", QString()), "@11");
  EXPECT_EQ(Opened, QStringLiteral("Title|13"));
  EXPECT_EQ(Search("MadeBy", QStringLiteral("x"), "CancelBttn"), "@11");
  EXPECT_EQ(Opened, QStringLiteral("MadeBy|"));
  EXPECT_EQ(Views.Shown, 1);
}

TEST_F(FindRecordTest, WhatIsNoValueOfItsFieldIsTheTrappedError) {
  Data1.MoveLast();
  struct {
    const char* Field;
    const char* Value;
  } const cases[] = {{"PhotoID", "abc"},
                     {"PhotoID", "1 OR 1=1"},
                     {"PhotoID", "1) OR (1"},
                     {"PhotoID", "PhotoID"},
                     {"PhotoID", "?"},
                     {"PhotoID", "1; DELETE FROM tblPhotos"},
                     {"PhotoID", "1,5"},
                     {"PhotoID", "0x1"},
                     {"CreateDate", "soon"},
                     {"CreateDate", "7/4/2001# OR #7/4/2001"},
                     {"CreateDate", "2001-02-29"},
                     {"CreateDate", "7/4/2001#) OR (1"},
                     {"CreateDate", "#"}};
  for (const auto& [field, value] : cases) {
    const QString result = QString::fromStdString(Search(field, QLatin1String(value)));
    EXPECT_TRUE(result.startsWith(QLatin1String("Error|Error Code: 3075 Syntax error in")))
        << value << result.toStdString();
    EXPECT_TRUE(result.endsWith(QLatin1String("@11"))) << value;
  }
  EXPECT_EQ(Search("Title", QString(QChar::Null)).substr(0, 27), "Error|Error Code: 3075 Synt");
  EXPECT_EQ(Search("Gone", QStringLiteral("1")),
            "Error|Error Code: 3265 Item not found in this collection: Gone@11");
  EXPECT_EQ(Views.Shown, 0);
  EXPECT_EQ(Catalogue.Value(QStringLiteral("SELECT Count(*) FROM tblPhotos")), QStringLiteral("4"));
}

// Half of a character of two units, quotes, comments: in a text they are text.
TEST_F(FindRecordTest, ATextIsNeverSql) {
  for (const QString& value :
       {QString(QChar(0xD83C)), QStringLiteral("*') OR (1=1) --"), QStringLiteral("\"; DROP TABLE tblPhotos"),
        QStringLiteral("[x]]) OR [y"), QStringLiteral("/* `"), QStringLiteral("%1 %2")}) {
    EXPECT_EQ(Search("Title", value), "Information|Record not fund!@1") << value.toStdString();
  }
}

TEST_F(FindRecordTest, AnEmptyListOpensNothing) {
  Source.Query.QryTitle = QStringLiteral("nowhere");
  Show();
  Searching.SearchBttn_Click();  // A dialog would wait for an answer.
  EXPECT_EQ(Views.Shown, 0);
}

}  // namespace
}  // namespace veldrin::find
