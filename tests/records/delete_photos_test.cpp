#include "records/delete_photos.h"

#include <gtest/gtest.h>

#include <QDir>

#include "catalogue/image_store.h"
#include "folders/folder_tree.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

class FakeViews : public DeleteViews, public catalogue::RecordViews {
 public:
  bool FormViewIsShown() const override { return FormView; }
  void ShowFolderRecords() override { ++Shown; }
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override {}

  bool FormView = false;
  int Shown = 0;
};

// A > B, A > C, and D; photos 1 to 6 with the links that a test gives them.
class DeletePhotosTest : public testing::Test {
 protected:
  DeletePhotosTest()
      : Data1(Catalogue.Engine()),
        Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Deleting(Source, Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views, Tree) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    const auto add = [this](int level, const char* name, const char* parent) {
      folders::AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, level, QLatin1String(name),
                               QLatin1String(parent));
    };
    add(1, "A", "");
    add(1, "D", "");
    add(2, "B", "0001");
    add(2, "C", "0001");
    folders::LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
  }

  void Select(const QString& key) {
    for (int i = 1; i <= Tree.Count(); ++i) {
      if (Tree.NodeAt(i)->Tag() == key) Tree.Select(Tree.NodeAt(i));
    }
    Source.SetRecordSource();
  }
  QString Links(int id) {
    QStringList links = Catalogue.Rows(
        QStringLiteral("SELECT IDNo FROM tblPhotoLinks WHERE PhotoID = %1 ORDER BY IDNo").arg(id));
    for (QString& link : links) link = link.left(8);
    return links.join(QLatin1Char(' '));
  }
  QStringList Delete(QMessageBox::StandardButton answer) {
    return test::AnswerBoxes([&] { Deleting.RecordDel_Click(); }, {answer});
  }
  QStringList Remove(QMessageBox::StandardButton answer) {
    return test::AnswerBoxes([&] { Deleting.RecordRmv_Click(); }, {answer});
  }
  QString Photos() {
    return Catalogue.Rows(QStringLiteral("SELECT PhotoID FROM tblPhotos ORDER BY PhotoID"))
        .join(QLatin1Char(' '));
  }
  QStringList Files() {
    return QDir(Catalogue.Paths().ImageDir).entryList(QDir::Files) +
           QDir(Catalogue.Paths().ThumbDir).entryList(QDir::Files);
  }

  test::TestCatalogue Catalogue;
  platform::TreeView Tree;
  catalogue::RecordList Data1;
  FakeViews Views;
  catalogue::RecordSource Source;
  DeletePhotos Deleting;
};

TEST_F(DeletePhotosTest, AsksWithNoAsTheDefault) {
  Catalogue.AddPhoto(1, {}, {QStringLiteral("00010001")}, QSize(4, 4));
  Select(QStringLiteral("00010001"));
  EXPECT_EQ(
      Delete(QMessageBox::No),
      QStringList(QStringLiteral("Delete Record(s)|This option will delete the data and image(s) of selected "
                                 "record(s) from the database, can't be recovered!\n"
                                 "Are you sure to delete the selected record(s)?")));
  EXPECT_EQ(Remove(QMessageBox::No),
            QStringList(QStringLiteral(
                "Delete Record(s)|This option will remove the data and image(s) of selected "
                "record(s) from the current folder,\n"
                "but it/they will not be deleted from the database. It/they could be in another folder or "
                "unorganized.\n"
                "Are you sure to remove the selected record(s) from the folder?")));
  EXPECT_EQ(Photos() + Links(1) + Files().join(QLatin1Char(' ')), QStringLiteral("1000100011.jpg"));
  EXPECT_EQ(Views.Shown, 0);
}

struct ScopeCase {
  const char* Name;
  std::vector<int> Selected;
  bool FormView;
  const char* PhotosLeft;
};

class DeletedPhotos : public DeletePhotosTest, public testing::WithParamInterface<ScopeCase> {};

// Six photos, of which the third is the current one and the fourth has no files.
TEST_P(DeletedPhotos, AreTheSelectedOnesOrTheCurrentOne) {
  for (int id = 1; id <= 6; ++id) {
    Catalogue.AddPhoto(id, {}, {QStringLiteral("00010001"), QStringLiteral("0002")},
                       id == 4 ? QSize() : QSize(4, 4));
    if (id != 4) test::WriteFile(catalogue::ThumbFileName(Catalogue.Paths(), id), "t");
  }
  Select(QStringLiteral("0001"));
  Data1.SetAbsolutePosition(2);
  for (int id : GetParam().Selected) Data1.SelBookmarks.Add(Data1.BookmarkAt(id - 1));
  Views.FormView = GetParam().FormView;
  Delete(QMessageBox::Yes);
  EXPECT_EQ(Photos(), QLatin1String(GetParam().PhotosLeft));
  for (int id = 1; id <= 6; ++id) {
    const bool left = Photos().contains(QString::number(id));
    EXPECT_EQ(Links(id), left ? QStringLiteral("00010001 00020000") : QString()) << id;
    for (const QString& file : {ImageFileName(Catalogue.Paths(), id, QStringLiteral("jpg")),
                                ThumbFileName(Catalogue.Paths(), id)}) {
      EXPECT_EQ(QFile::exists(file), left && id != 4) << file.toStdString();
    }
  }
  EXPECT_EQ(QString::number(Data1.RecordCount()), QString::number(Photos().split(QLatin1Char(' ')).size()));
  EXPECT_FALSE(Data1.SuppressReposition);
  EXPECT_EQ(Views.Shown, 1);
}

INSTANTIATE_TEST_SUITE_P(BySelection, DeletedPhotos,
                         testing::Values(ScopeCase{"TheCurrentOne", {}, false, "1 2 4 5 6"},
                                         ScopeCase{"TheSelectedOnes", {5, 1, 4}, false, "2 3 6"},
                                         ScopeCase{"TheOneInFormView", {5, 1}, true, "1 2 4 5 6"}),
                         test::CaseName);

struct RemoveCase {
  const char* Name;
  const char* Folder;
  QStringList Links;
  const char* LinksAfter;
};

class RemovedPhoto : public DeletePhotosTest, public testing::WithParamInterface<RemoveCase> {};

TEST_P(RemovedPhoto, StaysInTheCatalogue) {
  Catalogue.AddPhoto(1, {}, GetParam().Links);
  Catalogue.AddPhoto(2, {}, GetParam().Links);
  Select(QLatin1String(GetParam().Folder));
  ASSERT_EQ(Data1.RecordCount(), 2);
  Remove(QMessageBox::Yes);
  EXPECT_EQ(Links(1), QLatin1String(GetParam().LinksAfter));
  EXPECT_NE(Links(2), QString());
  EXPECT_EQ(Photos(), QStringLiteral("1 2"));
}

const QString A = QStringLiteral("0001"), B = QStringLiteral("00010001"), C = QStringLiteral("00010002"),
              D = QStringLiteral("0002");

INSTANTIATE_TEST_SUITE_P(
    FromAFolder, RemovedPhoto,
    testing::Values(RemoveCase{"FallsToTheParent", "00010001", {B}, "00010000"},
                    RemoveCase{"StaysInASibling", "00010001", {B, C}, "00010002"},
                    RemoveCase{"ElsewhereIsNotBelowTheParent", "00010001", {B, D}, "00010000 00020000"},
                    RemoveCase{"TakesTheSubtreeAlong", "0001", {A, B, C}, "00000000"},
                    RemoveCase{"AtTheTopTheWholeCatalogueCounts", "0001", {A, B, D}, "00020000"},
                    RemoveCase{"FromUnorganizedItComesBack", "00010000", {A}, "00010000"},
                    RemoveCase{"FromUnorganizedIntoASubfolder", "00010000", {A, B}, "00010001"}),
    test::CaseName);

TEST_F(DeletePhotosTest, ASelectionOfManyGoesAsAWhole) {
  for (int id = 1; id <= 140; ++id) Catalogue.AddPhoto(id, {}, {B});
  Select(B);
  for (int id = 1; id <= 130; ++id) Data1.SelBookmarks.Add(id);
  Remove(QMessageBox::Yes);
  EXPECT_EQ(Data1.RecordCount(), 10);
  Select(QStringLiteral("00010000"));
  EXPECT_EQ(Data1.RecordCount(), 130);
  for (int id = 2; id <= 130; ++id) Data1.SelBookmarks.Add(id);
  Delete(QMessageBox::Yes);
  EXPECT_EQ(Photos(), QStringLiteral("1 131 132 133 134 135 136 137 138 139 140"));
}

TEST_F(DeletePhotosTest, ACatalogueThatAnotherProgramHoldsKeepsItsPhotos) {
  Catalogue.AddPhoto(1, {}, {B}, QSize(4, 4));
  Catalogue.Engine().LockTimeout = 50;
  Select(B);
  const test::HeldCatalogue held(Catalogue, "BEGIN IMMEDIATE");
  Delete(QMessageBox::Yes);
  Remove(QMessageBox::Yes);
  EXPECT_EQ(Photos() + Links(1) + Files().join(QLatin1Char(' ')), QStringLiteral("1000100011.jpg"));
}

TEST_F(DeletePhotosTest, TheRootAndAnEmptyListGiveNothingAway) {
  Catalogue.AddPhoto(1, {}, {D});
  Select(QString());
  Remove(QMessageBox::Yes);
  EXPECT_EQ(Links(1), QStringLiteral("00020000"));
  Select(C);
  test::AnswerBoxes([&] { Deleting.RecordDel_Click(); }, {});
  EXPECT_EQ(Photos(), QStringLiteral("1"));
}

}  // namespace
}  // namespace veldrin::records
