#include "catalogue/record_source.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

struct ClauseCase {
  const char* Name;
  Criteria Query;
  const char* Clause;
};

class QueryClauses : public testing::TestWithParam<ClauseCase> {};

TEST_P(QueryClauses, AreBuiltInOrder) {
  EXPECT_EQ(BuildQueryClause(GetParam().Query), QLatin1String(GetParam().Clause));
}

Criteria Dates(const char* first, const char* second, int op1, int op2) {
  Criteria criteria;
  criteria.QryDate1 = QLatin1String(first);
  criteria.QryDate2 = QLatin1String(second);
  criteria.QryOp1 = op1;
  criteria.QryOp2 = op2;
  return criteria;
}

Criteria Texts(const char* type, const char* title, const char* description, const char* madeBy) {
  Criteria criteria;
  criteria.QryImageType = QLatin1String(type);
  criteria.QryTitle = QLatin1String(title);
  criteria.QryDescription = QLatin1String(description);
  criteria.QryMadeBy = QLatin1String(madeBy);
  return criteria;
}

INSTANTIATE_TEST_SUITE_P(
    Criteria, QueryClauses,
    testing::Values(
        ClauseCase{"None", {}, ""},
        ClauseCase{
            "AllTexts", Texts("jpg", "It's", "d'or", "O'Hara"),
            " WHERE ImageType = 'jpg' AND Title Like '*It''s*' AND Description Like '*d''or*' AND MadeBy = "
            "'O''Hara'"},
        ClauseCase{"FirstDateAlone", Dates("1/1/2002", "", 4, 0),
                   " WHERE (#1/1/2002# >= DateValue(CreateDate))"},
        ClauseCase{"SecondDateAlone", Dates("", "12/31/2001", 0, 3),
                   " WHERE DateValue(CreateDate) > #12/31/2001#"},
        ClauseCase{"SameDirectionIsARange", Dates("1/1/2002", "12/31/2001", 4, 3),
                   " WHERE (#1/1/2002# >= DateValue(CreateDate) AND DateValue(CreateDate) > #12/31/2001#)"},
        ClauseCase{"BothDownward", Dates("1/1/2002", "12/31/2001", 1, 2),
                   " WHERE (#1/1/2002# < DateValue(CreateDate) AND DateValue(CreateDate) <= #12/31/2001#)"},
        ClauseCase{"OppositeDirectionsAreAlternatives", Dates("1/1/2002", "12/31/2001", 4, 1),
                   " WHERE (#1/1/2002# >= DateValue(CreateDate) OR DateValue(CreateDate) < #12/31/2001#)"},
        ClauseCase{"EqualIsNoDirection", Dates("1/1/2002", "12/31/2001", 0, 0),
                   " WHERE (#1/1/2002# = DateValue(CreateDate) OR DateValue(CreateDate) = #12/31/2001#)"}),
    test::CaseName);

// Records what the source asks of the views.
class FakeViews : public RecordViews {
 public:
  bool PreviewIsOn() const override { return Preview; }
  void SetPreview(bool on) override {
    Preview = on;
    Log << (on ? QStringLiteral("on") : QStringLiteral("off"));
  }
  void SetSliderMax(int count) override { Log << QStringLiteral("max %1").arg(count); }
  void InitThumbScroll() override { Log << QStringLiteral("scroll"); }
  bool Preview = true;
  QStringList Log;
};

class RecordSourceTest : public testing::Test {
 protected:
  RecordSourceTest()
      : Data1(Catalogue.Engine()), Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Root = Tree.Add(nullptr, QStringLiteral("Photos"));
    for (const char* key : {"0000", "0001", "00010000", "00010001", "0002", "0003"}) {
      Tree.Add(Root, QLatin1String(key))->SetTag(QLatin1String(key));
    }
    Catalogue.AddPhoto(1, QStringLiteral("unfiled"), {QString()});
    Catalogue.AddPhoto(2, QStringLiteral("in one"), {QStringLiteral("0001")});
    Catalogue.AddPhoto(3, QStringLiteral("below one"), {QStringLiteral("00010001")});
    Catalogue.AddPhoto(4, QStringLiteral("in both"), {QStringLiteral("00010001"), QStringLiteral("0002")});
    Catalogue.AddPhoto(5, QStringLiteral("twice below one"),
                       {QStringLiteral("0001"), QStringLiteral("00010001")});
    Catalogue.AddPhoto(6, QStringLiteral("without a link"), {});
  }

  // The numbers that a folder shows; its place in the tree is all that counts here.
  QString Show(int index) {
    Tree.Select(Tree.NodeAt(index));
    Source.SetRecordSource();
    QStringList ids;
    for (; !Data1.Recordset().AtEOF(); Data1.MoveNext())
      ids << Data1.Field(QStringLiteral("PhotoID")).toString();
    return ids.join(QLatin1Char(' '));
  }

  test::TestCatalogue Catalogue;
  platform::TreeView Tree;
  platform::Node* Root;
  RecordList Data1;
  FakeViews Views;
  RecordSource Source;
};

TEST_F(RecordSourceTest, AFolderShowsThePhotosOfItsSubtreeOnce) {
  EXPECT_EQ(Show(1), QStringLiteral("1 2 3 4 5 6"));
  EXPECT_EQ(Source.RecordSourceSql, QStringLiteral("SELECT tblPhotos.* FROM tblPhotos"));
  EXPECT_EQ(Show(2), QStringLiteral("1"));
  EXPECT_EQ(Show(3), QStringLiteral("2 3 4 5"));
  EXPECT_EQ(Show(4), QStringLiteral("2 5"));
  EXPECT_EQ(Show(5), QStringLiteral("3 4 5"));
  EXPECT_EQ(Show(6), QStringLiteral("4"));
  EXPECT_EQ(Show(7), QString());
  EXPECT_EQ(Source.RecordSourceSql, QStringLiteral("SELECT qryPhotos.* FROM qryPhotos"));
}

TEST_F(RecordSourceTest, ALinkToAPhotoThatHasGoneShowsNothing) {
  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 3")});
  EXPECT_EQ(Show(3), QStringLiteral("2 4 5"));
}

TEST_F(RecordSourceTest, CriteriaHoldWithinTheFolder) {
  Source.Query.QryTitle = QStringLiteral("BELOW");
  EXPECT_EQ(Show(1), QStringLiteral("3 5"));
  EXPECT_EQ(Show(4), QStringLiteral("5"));
  Source.Query = Dates("7/4/2001", "", 0, 0);
  EXPECT_EQ(Show(6), QStringLiteral("4"));
  Source.Query = Dates("", "7/4/2001", 0, 3);
  EXPECT_EQ(Show(3), QString());
}

TEST_F(RecordSourceTest, TurnsThePreviewOffAroundTheMovesAndKeepsTheSliderForAnEmptyList) {
  Show(3);
  EXPECT_EQ(Views.Log, QStringList({QStringLiteral("off"), QStringLiteral("max 4"), QStringLiteral("scroll"),
                                    QStringLiteral("on")}));
  Views.Log.clear();
  Views.Preview = false;
  Show(7);
  EXPECT_EQ(Views.Log, QStringList(QStringLiteral("scroll")));
}

TEST_F(RecordSourceTest, ACriterionThatCantBeReadIsRaisedAndLeavesAnEmptyList) {
  Show(1);
  Source.Query.QryImageType = QStringLiteral("x' AND");
  EXPECT_THROW(Source.SetRecordSource(), platform::RuntimeError);
  EXPECT_EQ(Data1.RecordCount(), 0);
  EXPECT_EQ(Data1.AbsolutePosition(), -1);
}

}  // namespace
}  // namespace veldrin::catalogue
