// Which places a photo loses and gets is for the test with the model.
#include <QDir>

#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "records/commands_fixture.h"

namespace veldrin::records {
namespace {

constexpr auto Delete = &DeletePhotos::RecordDel_Click;
constexpr auto Remove = &DeletePhotos::RecordRmv_Click;

class RecordCommands : public test::CommandsTest {
 protected:
  // Photos at one folder, each with its image and its thumbnail, but for the third.
  void AddPhotos(int count) {
    Catalogue.AddFolder("0001", "A");
    for (int id = 1; id <= count; ++id) {
      Catalogue.AddPhoto(id, {}, {"0001"});
      if (id == 3) continue;
      test::WriteFile(ImageFileName(Catalogue.Paths(), id, "jpg"), "i");
      test::WriteFile(ThumbFileName(Catalogue.Paths(), id), "t");
    }
    LoadFolders();
    Tree.Select(Find("0001"));
    Source.SetRecordSource();
  }
  std::string Answer(QMessageBox::StandardButton answer, void (DeletePhotos::*asks)()) {
    return test::AnswerBoxes([&] { (Deletion.*asks)(); }, {answer}).join(u' ').toStdString();
  }
  std::string Photos() { return Catalogue.RowsText("SELECT PhotoID FROM tblPhotos ORDER BY PhotoID"); }
  std::string Files() {
    QStringList files;
    for (const QString& directory : {Catalogue.Paths().ImageDir, Catalogue.Paths().ThumbDir})
      files << QDir(directory).entryList(QDir::Files, QDir::Name);
    return files.join(u' ').toStdString();
  }
};

TEST_F(RecordCommands, NothingGoesWithoutAYesNorFromACatalogueThatAnotherProgramHolds) {
  AddPhotos(1);
  EXPECT_EQ(Answer(QMessageBox::No, Delete),
            "Delete Record(s)|This option will delete the data and image(s) of selected record(s) from the "
            "database, can't be recovered!\nAre you sure to delete the selected record(s)?");
  EXPECT_EQ(Answer(QMessageBox::No, Remove),
            "Delete Record(s)|This option will remove the data and image(s) of selected record(s) from the "
            "current folder,\nbut it/they will not be deleted from the database. It/they could be in another "
            "folder or unorganized.\nAre you sure to remove the selected record(s) from the folder?");
  Catalogue.Engine().LockTimeout = 50;
  const test::HeldCatalogue held(Catalogue, "BEGIN IMMEDIATE");
  Answer(QMessageBox::Yes, Delete);
  Answer(QMessageBox::Yes, Remove);
  EXPECT_EQ(Photos() + "|" + Files(), "1|1.jpg 1t.bmp");
  EXPECT_EQ(Catalogue.RowsText("SELECT Left(IDNo, 4) FROM tblPhotoLinks"), "0001");
}

TEST_F(RecordCommands, ASelectionOfManyGoesAsAWholeAndItsFilesWithIt) {
  AddPhotos(140);
  for (int id = 1; id <= 130; ++id) Data1.SelBookmarks.Add(id);
  Answer(QMessageBox::Yes, Remove);
  EXPECT_EQ(Data1.RecordCount(), 10);
  Tree.Select(Tree.Root());
  Source.SetRecordSource();
  Answer(QMessageBox::Yes, Remove);  // The root gives nothing away.
  EXPECT_EQ(Catalogue.RowsText("SELECT Count(*) FROM tblPhotoLinks"), "140");
  for (int id = 2; id <= 140; ++id) Data1.SelBookmarks.Add(id);
  Answer(QMessageBox::Yes, Delete);
  EXPECT_EQ(Photos() + "|" + Files(), "1|1.jpg 1t.bmp");
  Answer(QMessageBox::Yes, Delete);
  EXPECT_EQ(Photos() + Files(), "");
  test::AnswerBoxes([&] { Deletion.RecordDel_Click(); }, {});  // Without records nothing is asked.
}

TEST_F(RecordCommands, APasteThatFailsLeavesEveryPlace) {
  AddPhotos(2);
  for (const int id : {1, 2}) Data1.SelBookmarks.Add(id);
  Clipboard.RecordCut_Click();
  Tree.Select(Tree.Add(Tree.Root(), "too deep"));
  Tree.SelectedItem()->SetTag(QString(44, QLatin1Char('1')));
  Clipboard.RecordPaste_Click();
  EXPECT_TRUE(Told.startsWith("No photos filed in too deep.")) << Told.toStdString();
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, Left(IDNo, 4) FROM tblPhotoLinks"), "1|0001 2|0001");
}

TEST_F(RecordCommands, APhotoThatWasDeletedIsPendingNoMore) {
  Catalogue.AddFolder("0002", "B");
  AddPhotos(2);
  for (const int id : {1, 2}) Data1.SelBookmarks.Add(id);
  Clipboard.RecordCut_Click();
  Data1.SelBookmarks.Replace({2});
  Answer(QMessageBox::Yes, Delete);
  Catalogue.AddPhoto(2, {}, {"0001"});  // the number again
  Tree.Select(Find("0002"));
  Clipboard.RecordPaste_Click();
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, Left(IDNo, 4) FROM tblPhotoLinks ORDER BY PhotoID"),
            "1|0002 2|0001");
}

}  // namespace
}  // namespace veldrin::records
