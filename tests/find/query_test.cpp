#include "find/query.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "find/query_dialog.h"
#include "platform/dates.h"
#include "platform/runtime_error.h"
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
  // What moving on with Tab shows.
  QStringList LeaveByTab(const char* field, const QString& text) {
    Field(field).setFocus();
    Field(field).setText(text);
    return test::AnswerBoxes(
        [&] {
          QTest::keyClick(&Field(field), Qt::Key_Tab);
          QCoreApplication::processEvents();
        },
        IsValidDate(text) ? QList<QMessageBox::StandardButton>() : QList{QMessageBox::Ok});
  }

  Criteria Query;
  std::unique_ptr<frmQry> Dialog;
};

TEST_F(QueryDialog, IsLaidOutAsTheFormulaThatItReadsAs) {
  Open();
  int right = 0;
  for (const char* name :
       {"qImage", "qTitle", "qCrtDate(0)", "DateBttn(0)", "Label1", "DateBttn(1)", "qCrtDate(1)"}) {
    const QRect place = Get<QWidget>(name).geometry();
    EXPECT_GE(place.left(), right - 2) << name;
    right = place.right();
  }
  EXPECT_LE(Field("qCrtDate(0)").fontMetrics().horizontalAdvance(QStringLiteral("12/31/2001")),
            Field("qCrtDate(0)").width() - 10);
  Field("qImage").setFocus();
  QStringList order;
  for (int i = 0; i < 8; ++i) {
    order << QApplication::focusWidget()->objectName();
    // Enter goes on as Tab does.
    const auto key = qobject_cast<QLineEdit*>(QApplication::focusWidget()) ? Qt::Key_Return : Qt::Key_Tab;
    QTest::keyClick(QApplication::focusWidget(), key);
  }
  EXPECT_EQ(
      order.join(QLatin1Char(' ')),
      QStringLiteral("qImage qTitle qCrtDate(0) DateBttn(0) DateBttn(1) qCrtDate(1) qMadeBy qDescription"));
  EXPECT_TRUE(Dialog->isVisible());
}

TEST_F(QueryDialog, OpensWithoutImageAndTitleAndHandsOverAllThatItHolds) {
  Query = {QStringLiteral("jpg"),
           QStringLiteral("t"),
           QStringLiteral("d"),
           QStringLiteral("m"),
           QStringLiteral("7/4/2001"),
           QStringLiteral("7/5/2001"),
           3,
           4};
  const Criteria before = Query;
  Open();
  Click("CancelBttn");
  EXPECT_FALSE(Dialog->QryAccepted);
  EXPECT_EQ(Query, before);
  Open();
  EXPECT_EQ(Get<QPushButton>("DateBttn(0)").text() + Get<QPushButton>("DateBttn(1)").text(),
            QStringLiteral(">>="));
  Field("qImage").setText(QStringLiteral("b") + QChar::Null + QStringLiteral("mp"));
  Click("OkBttn");
  EXPECT_TRUE(Dialog->QryAccepted);
  Criteria after = before;
  after.QryImageType = QStringLiteral("bmp");
  after.QryTitle.clear();
  EXPECT_EQ(Query, after);
}

TEST_F(QueryDialog, ClearEmptiesTheControlsOnly) {
  Query = {{}, {}, QStringLiteral("d"), QStringLiteral("m"), QStringLiteral("7/4/2001"), {}, 3, 4};
  const Criteria before = Query;
  Open();
  Field("qCrtDate(1)").setText(QStringLiteral("abc"));
  Click("ClearBttn");
  EXPECT_EQ(Query, before);
  EXPECT_EQ(Get<QPushButton>("DateBttn(1)").text(), QStringLiteral("="));
  Click("OkBttn");
  EXPECT_EQ(Query, Criteria());
}

TEST_F(QueryDialog, AnOperatorGoesRound) {
  Open();
  QStringList seen;
  for (int i = 0; i < 5; ++i) {
    Click("DateBttn(0)");
    seen << Get<QPushButton>("DateBttn(0)").text() + Get<QLabel>("qCmpDate(0)").text();
  }
  EXPECT_EQ(seen.join(QLatin1Char(' ')), QStringLiteral("<1 <=2 >3 >=4 =0"));
  EXPECT_EQ(Get<QLabel>("qCmpDate(1)").text(), QStringLiteral("0"));
}

TEST_F(QueryDialog, ADateFieldIsLeftWithADateOrEmpty) {
  const QStringList box = {QStringLiteral("Error|Invalid date value!")};
  for (const int i : {0, 1}) {
    Open();
    const QByteArray field = i == 0 ? "qCrtDate(0)" : "qCrtDate(1)";
    EXPECT_EQ(LeaveByTab(field, QStringLiteral("abc")), box);
    EXPECT_EQ(Dialog->focusWidget(), &Field(field));
    // OK by its key, which leaves the focus where it is.
    EXPECT_EQ(test::AnswerBoxes(
                  [&] {
                    Click("OkBttn");
                    QCoreApplication::processEvents();
                  },
                  {QMessageBox::Ok}),
              box);
    EXPECT_TRUE(Dialog->isVisible());
    EXPECT_EQ(Dialog->focusWidget(), &Field(field));
    for (const char* text : {"", "7/4/2001"}) {
      EXPECT_EQ(LeaveByTab(field, QLatin1String(text)), QStringList());
      EXPECT_NE(Dialog->focusWidget(), &Field(field));
    }
    Field(field).setText(QStringLiteral(" "));
    test::AnswerBoxes([&] { Click("CancelBttn"); }, {});
    EXPECT_FALSE(Dialog->isVisible());
  }
}

// --- the command ------------------------------------------------------------------------------------------

class QueryTest : public test::FindingTest, public test::Controls {
 protected:
  QueryTest() : Querying(Source, Data1, Views, Window) {}

  // Opens the dialog by a command, does something in it, and leaves it by OK.
  void Ask(void (Query::*command)(), const std::function<void()>& enter) {
    QTimer::singleShot(0, qApp, [this, enter] {
      Root = QApplication::activeModalWidget();
      enter();
      Click("OkBttn");
    });
    (Querying.*command)();
  }
  void AskForTitle(const QString& title) {
    Ask(&Query::QueryBttn_Click, [&] { Field("qTitle").setText(title); });
  }

  Query Querying;
};

TEST_F(QueryTest, ATitleHoldsUntilItIsNotTypedAgain) {
  Add({{1, "jpg", "Beach"}, {2, "jpg", "Alps"}});
  Show();
  AskForTitle(QStringLiteral("beach"));
  EXPECT_EQ(Ids(), "1");
  EXPECT_EQ(Views.Shown, 1);
  QTimer::singleShot(0, qApp, [] { QApplication::activeModalWidget()->close(); });
  Querying.QueryBttn_Click();
  EXPECT_EQ(Ids(), "1");
  EXPECT_EQ(Views.Shown, 1);
  Ask(&Query::QueryBttn_Click, [] {});
  EXPECT_EQ(Ids(), "1 2");
  AskForTitle(QStringLiteral("nowhere"));
  EXPECT_EQ(Ids(), "");
  test::AnswerBoxes([&] { Querying.RecordQuery_Click(); }, {});  // No dialog: it would wait for an answer.
  EXPECT_EQ(Views.Shown, 3);
}

TEST_F(QueryTest, TheShowWaitsWhileTheMenusDialogIsOpen) {
  Add({{1, "jpg", "Beach"}});
  Show();
  Ask(&Query::RecordQuery_Click, [&] { EXPECT_TRUE(Views.ShowIsHeld); });
}

TEST_F(QueryTest, AnApostropheInTheTypeIsRaised) {
  Add({{1, "jpg", "Beach"}});
  for (const char* type :
       {"j'g", "' OR 1=1) OR (1='1", "x' UNION SELECT 1 --", "x'; DELETE FROM tblPhotos; --"}) {
    Source.ClearQuery();
    Show();
    EXPECT_THROW(Ask(&Query::QueryBttn_Click, [&] { Field("qImage").setText(QLatin1String(type)); }),
                 platform::RuntimeError)
        << type;
  }
  Source.ClearQuery();
  Show();
  EXPECT_EQ(Ids(), "1");
}

// --- the results, by a filter of the test's own -----------------------------------------------------------

const std::vector<test::Photo> Album = {
    {1, "jpg", "Übung am Fluß", "Für Elise", "Ann", "2001-12-31 00:00:00"},
    {2, "JPG", "ÜBUNG AM FLUẞ", "für elise", "ANN", "2001-12-31 23:59:59"},
    {3, "bmp", "Αθήνα", "ΟΔΥΣΣΕΥΣ", "O'Hara", "2002-01-01 00:00:00"},
    {4, "gif", "Москва", "it's; -- \"x\" /*", "o'hara", "2002-01-02 08:00:00"},
    {5, "jpg", "Photo 12 [a] 100%", "_", "Ann B", "1999-05-06 12:00:00"},
    {6, "jpg", nullptr, nullptr, nullptr, nullptr},
};

struct ResultCase {
  const char* Name;
  Criteria Query;
  std::function<bool(const test::Photo&)> Fits;
};

// Without regard to case, by the letters of the album.
QString Folded(const char* text) { return QString::fromUtf8(text).toCaseFolded(); }

std::function<bool(const test::Photo&)> Contains(const char* test::Photo::*text, const char* part) {
  return [=](const test::Photo& photo) {
    return photo.*text != nullptr && Folded(photo.*text).contains(Folded(part));
  };
}

std::function<bool(const test::Photo&)> Day(const std::function<bool(const std::string&)>& fits) {
  return [=](const test::Photo& photo) {
    return photo.CreateDate != nullptr && fits(std::string(photo.CreateDate).substr(0, 10));
  };
}

Criteria Title(const char* text) {
  Criteria criteria;
  criteria.QryTitle = QString::fromUtf8(text);
  return criteria;
}

Criteria Description(const char* text) {
  Criteria criteria;
  criteria.QryDescription = QString::fromUtf8(text);
  return criteria;
}

Criteria Exact(const char* type, const char* madeBy) {
  Criteria criteria;
  criteria.QryImageType = QLatin1String(type);
  criteria.QryMadeBy = QLatin1String(madeBy);
  return criteria;
}

Criteria Dates(const char* first, int op1, const char* second, int op2) {
  Criteria criteria;
  criteria.QryDate1 = QLatin1String(first);
  criteria.QryDate2 = QLatin1String(second);
  criteria.QryOp1 = op1;
  criteria.QryOp2 = op2;
  return criteria;
}

class QueryResults : public test::FindingTest, public testing::WithParamInterface<ResultCase> {};

TEST_P(QueryResults, AreThosePhotosThatFit) {
  Add(Album);
  std::vector<test::Photo> fitting;
  std::copy_if(Album.begin(), Album.end(), std::back_inserter(fitting), GetParam().Fits);
  Source.Query = GetParam().Query;
  Show();
  EXPECT_EQ(Ids(), test::IdsOf(fitting));
}

INSTANTIATE_TEST_SUITE_P(
    Album, QueryResults,
    testing::Values(
        ResultCase{"Umlauts", Title("übung"), Contains(&test::Photo::Title, "übung")},
        ResultCase{"Greek", Title("ΑΘΉΝΑ"), Contains(&test::Photo::Title, "αθήνα")},
        ResultCase{"GreekFinalSigma", Description("οδυσσεύς"), [](const auto&) { return false; }},
        ResultCase{"GreekSigmas", Description("οδυσσευς"), [](const auto& photo) { return photo.Id == 3; }},
        ResultCase{"Cyrillic", Title("МОСК"), Contains(&test::Photo::Title, "моск")},
        ResultCase{"PatternCharacters", Title("photo ##*[[]?]"),
                   [](const auto& photo) { return photo.Id == 5; }},
        ResultCase{"NoPatternOfSqlite", Title("%"), Contains(&test::Photo::Title, "%")},
        ResultCase{"SqlInAText", Description("it's; -- \"x\" /*"),
                   Contains(&test::Photo::Description, "it's; -- \"x\" /*")},
        ResultCase{"WholeTypeAndMaker", Exact("Jpg", "ann"),
                   [](const auto& photo) { return photo.Id == 1 || photo.Id == 2; }},
        ResultCase{"MakerWithApostrophe", Exact("", "O'HARA"),
                   [](const auto& photo) { return photo.Id == 3 || photo.Id == 4; }},
        ResultCase{"OneDay", Dates("12/31/2001", 0, "", 0),
                   Day([](const auto& day) { return day == "2001-12-31"; })},
        ResultCase{"Before", Dates("1/1/2002", 3, "", 0),
                   Day([](const auto& day) { return "2002-01-01" > day; })},
        ResultCase{"Since", Dates("", 0, "1/1/2002", 4),
                   Day([](const auto& day) { return day >= "2002-01-01"; })},
        ResultCase{"Range", Dates("1/1/2002", 4, "12/31/2001", 4),
                   Day([](const auto& day) { return "2002-01-01" >= day && day >= "2001-12-31"; })},
        ResultCase{"Outside", Dates("1/1/2002", 1, "12/31/2001", 1),
                   Day([](const auto& day) { return "2002-01-01" < day && day < "2001-12-31"; })},
        ResultCase{"Either", Dates("1/1/2000", 4, "1/2/2002", 0),
                   Day([](const auto& day) { return "2000-01-01" >= day || day == "2002-01-02"; })}),
    test::CaseName);

// --- the dates --------------------------------------------------------------------------------------------

// What passes the check means the same day in the SQL, whatever the form and whatever the signs around it.
TEST_F(QueryTest, ADateMeansInTheSqlWhatTheCheckTookItFor) {
  const char* days[] = {"2001-07-04", "2001-04-07", "2001-12-31", "1931-02-03",
                        "2029-02-03", "2000-02-29", "1931-03-02"};
  std::vector<test::Photo> photos;
  for (const char* day : days)
    photos.push_back({static_cast<int>(photos.size()) + 1, "jpg", "", "", "", day});
  Add(photos);
  struct Form {
    const char* Text;
    const char* Day[3];  ///< in the United States, Germany and Great Britain; null for no date
  };
  const Form forms[] = {{"7/4/2001", {days[0], days[0], days[1]}},
                        {"07/04/01", {days[0], nullptr, days[1]}},
                        {" 7/4/2001 ", {days[0], days[0], days[1]}},
                        {"4.7.2001", {nullptr, days[0], nullptr}},
                        {"04.07.01", {nullptr, days[0], nullptr}},
                        {"12/31/2001", {days[2], days[2], days[2]}},
                        {"31/12/2001", {nullptr, nullptr, days[2]}},
                        {"2001-07-04", {days[0], days[0], days[0]}},
                        {"2001-7-4", {days[0], days[0], days[0]}},
                        {"2/3/31", {days[3], nullptr, days[6]}},
                        {"3.2.29", {nullptr, days[4], nullptr}},
                        {"2000-02-29 00:00", {days[5], days[5], days[5]}},
                        {"2001-02-29", {}},
                        {"7/4", {}},
                        {"July 4", {}},
                        {"7/4/2001#", {}},
                        {"7/4/2001# OR #7/4/2001", {}},
                        {"#7/4/2001#", {}},
                        {"7/4/2001'", {}},
                        {"1) OR (1", {}},
                        {"\t", {}}};
  const QLocale saved;
  for (const int country : {0, 1, 2}) {
    QLocale::setDefault(QLocale(QLatin1String(std::array{"en_US", "de_DE", "en_GB"}[country])));
    for (const Form& form : forms) {
      const QString text = QString::fromUtf8(form.Text);
      EXPECT_EQ(IsValidDate(text), form.Day[country] != nullptr) << form.Text << country;
      if (form.Day[country] == nullptr) continue;
      for (const bool first : {true, false}) {
        Source.Query = first ? Dates(form.Text, 0, "", 0) : Dates("", 0, form.Text, 0);
        Show();
        const auto* day = std::find(std::begin(days), std::end(days), form.Day[country]);
        EXPECT_EQ(Ids(), std::to_string(day - days + 1)) << form.Text << country;
      }
    }
  }
  QLocale::setDefault(saved);
}

TEST(QueryDescription, IsOneLineForEachCriterion) {
  EXPECT_EQ(DescribeQuery({}), QStringList());
  Criteria criteria = Dates("1/1/2002", 4, "12/31/2001", 3);
  EXPECT_EQ(DescribeQuery(criteria), QStringList(QStringLiteral("1/1/2002 >= Date > 12/31/2001")));
  criteria.QryDate1.clear();
  criteria.QryTitle = QStringLiteral("b");
  EXPECT_EQ(DescribeQuery(criteria),
            QStringList({QStringLiteral("Title: b"), QStringLiteral("Date > 12/31/2001")}));
}

}  // namespace
}  // namespace veldrin::find
