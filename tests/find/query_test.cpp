#include "find/query.h"

#include <QLocale>
#include <QPushButton>

#include "find/query_dialog.h"
#include "support/finding.h"

namespace veldrin::find {
namespace {

using catalogue::Criteria;

// --- the dialog -------------------------------------------------------------------------------------------

class QueryDialog : public testing::Test, public test::Controls {
 protected:
  void Open() {
    Dialog = std::make_unique<frmQry>(Query);
    Root = Dialog.get();
    Dialog->show();
    Dialog->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
  }
  std::string Operators() {
    return (Get<QPushButton>("DateBttn(0)").text() + u' ' + Get<QPushButton>("DateBttn(1)").text())
        .toStdString();
  }
  // What leaving by Tab shows, or OK's key, which leaves the focus where it is.
  std::string BoxesOf(int boxes, const std::function<void()>& action) {
    return test::AnswerBoxes(
               [&] {
                 action();
                 QCoreApplication::processEvents();
               },
               {boxes, QMessageBox::Ok})
        .join(u' ')
        .toStdString();
  }

  const Criteria Before = {"jpg", "t", "d", "m", "7/4/2001", "7/5/2001", 3, 4};
  Criteria Query = Before;
  std::unique_ptr<frmQry> Dialog;
};

TEST_F(QueryDialog, OpensWithoutImageAndTitleAndHandsOverAllThatItHolds) {
  Open();
  Click("ClearBttn");
  Click("CancelBttn");
  EXPECT_FALSE(Dialog->QryAccepted);
  EXPECT_EQ(Query, Before);
  Open();
  EXPECT_EQ(Operators(), "> >=");
  Click("DateBttn(1)");
  Click("DateBttn(0)");
  EXPECT_EQ(Operators(), ">= =");
  Field("qImage").setText(QString("b") + QChar::Null + "mp");
  Click("OkBttn");
  EXPECT_TRUE(Dialog->QryAccepted);
  EXPECT_EQ(
      Query,
      (Criteria{"bmp", {}, Before.QryDescription, Before.QryMadeBy, Before.QryDate1, Before.QryDate2, 4, 0}));
  Open();
  Field("qCrtDate(1)").setText("abc");
  Click("ClearBttn");
  Click("OkBttn");
  EXPECT_EQ(Query, Criteria());
}

TEST_F(QueryDialog, ADateFieldIsLeftWithADateOrEmpty) {
  for (const char* name : {"qCrtDate(0)", "qCrtDate(1)"}) {
    Open();
    QLineEdit& field = Field(name);
    for (const char* text : {"", "7/4/2001", "abc"}) {
      const bool isDate = *text != 'a';
      field.setFocus();
      field.setText(text);
      BoxesOf(isDate ? 0 : 1, [&] { QTest::keyClick(&field, Qt::Key_Tab); });
      EXPECT_EQ(Dialog->focusWidget() == &field, !isDate);
    }
    EXPECT_EQ(BoxesOf(1, [&] { Click("OkBttn"); }), "Error|Invalid date value!");
    EXPECT_TRUE(Dialog->isVisible());
    BoxesOf(0, [&] { Click("CancelBttn"); });
    EXPECT_FALSE(Dialog->isVisible());
  }
}

// --- the results ------------------------------------------------------------------------------------------

using QueryTest = test::FindingTest;

Criteria Dates(const char* first, int op1, const char* second, int op2) {
  return {{}, {}, {}, {}, first, second, op1, op2};
}

TEST_F(QueryTest, FindsThePhotosThatFit) {
  Add({"1, 'jpg', 'Übung am Fluß 12 [a] 100%', 'ΟΔΥΣΣΕΥΣ', 'Ann', #2001-12-31 23:59:59#",
       "2, 'JPG', 'Москва', 'it''s; -- \"x\" /*', 'o''hara', #2002-01-01#",
       "3, 'bmp', '', '', 'Ann B', #1999-05-06 12:00:00#", "4, 'jpg', Null, Null, Null, Null"});
  const std::pair<Criteria, const char*> cases[] = {
      {{{}, "ÜBUNG*##*[[]?]", "οδυσσευς", {}, {}, {}}, "1"},
      {{{}, "МОСК", "it's; -- \"x\" /*", "O'HARA", {}, {}}, "2"},
      {{"Jpg", {}, {}, "ann", {}, {}}, "1"},
      {Dates("12/31/2001", 0, "", 0), "1"},
      {Dates("1/1/2002", 3, "", 0), "1 3"},
      {Dates("", 0, "1/1/2002", 4), "2"},
      {Dates("1/1/2002", 4, "12/31/2001", 4), "1 2"},
      {Dates("12/31/2001", 2, "1/1/2002", 2), "1 2"},
      {Dates("1/1/2002", 4, "12/31/2001", 1), "1 2 3"},
      {Dates("1/1/2000", 4, "1/1/2002", 0), "2 3"}};
  for (const auto& [query, ids] : cases) {
    Source.Query = query;
    Show();
    EXPECT_EQ(Ids(), ids);
  }
}

// What passes the check means the same day in the SQL, whatever the form and whatever the signs around it.
TEST_F(QueryTest, ADateMeansInTheSqlWhatTheCheckTookItFor) {
  Add({"1, 'jpg', '', '', '', #2001-07-04#", "2, 'jpg', '', '', '', #2001-04-07#",
       "3, 'jpg', '', '', '', #1931-02-03#", "4, 'jpg', '', '', '', #1931-03-02#"});
  // The photos of a date in the United States, Germany and Great Britain; "-" for no date.
  const std::pair<const char*, std::array<const char*, 3>> forms[] = {
      {" 7/4/2001 ", {"1", "1", "2"}}, {"04.07.01", {"-", "1", "-"}},   {"2001-7-4 00:00", {"1", "1", "1"}},
      {"2/3/31", {"3", "-", "4"}},     {"2001-02-29", {"-", "-", "-"}}, {"#7/4/2001#", {"-", "-", "-"}}};
  const QLocale saved;
  for (const size_t country : {0, 1, 2}) {
    QLocale::setDefault(QLocale(QLatin1String(std::array{"en_US", "de_DE", "en_GB"}[country])));
    for (const auto& [text, ids] : forms) {
      for (const Criteria& criteria : {Dates(text, 0, "", 0), Dates("", 0, text, 0)}) {
        Source.Query = criteria;
        if (IsValidDate(text)) Show();
        EXPECT_EQ(IsValidDate(text) ? Ids() : "-", ids[country]) << text << country;
      }
    }
  }
  QLocale::setDefault(saved);
}

}  // namespace
}  // namespace veldrin::find
