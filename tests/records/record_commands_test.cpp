// Which places a photo loses and gets is for the test with the model.
#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "records/delete_photos.h"
#include "records/record_clipboard.h"
#include "support/catalogue_list.h"

namespace veldrin::records {
namespace {

constexpr auto Delete = &DeletePhotos::RecordDel_Click;
constexpr auto Remove = &DeletePhotos::RecordRmv_Click;

class RecordCommands : public testing::Test, public test::CatalogueList {
 protected:
  RecordCommands() {
    QObject::connect(&Deletion, &DeletePhotos::Deleted, &Clipboard, &RecordClipboard::Forget);
  }

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
    Tree.Select(Tree.NodeAt(2));
    Source.SetRecordSource();
  }
  std::string Answer(QMessageBox::StandardButton answer, void (DeletePhotos::*asks)()) {
    return test::AnswerBoxes([&] { (Deletion.*asks)(); }, {answer}).join(u' ').toStdString();
  }
  std::string Photos() { return Catalogue.RowsText("SELECT PhotoID FROM tblPhotos ORDER BY PhotoID"); }
  std::string Files() {
    return test::NamesIn(Catalogue.Paths().ImageDir) + ' ' + test::NamesIn(Catalogue.Paths().ThumbDir);
  }

  RecordClipboard Clipboard{Data1, Tree, Source, Catalogue.Engine(), Catalogue.Paths(), Tell};
  DeletePhotos Deletion{[this] { return Data1.Chosen(true); },
                        Source,
                        Tree,
                        Catalogue.Engine(),
                        Catalogue.Paths(),
                        Window,
                        Work,
                        Tell};
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
  Catalogue.Execute({"UPDATE tblLevel1 SET FolderName = 'theirs'"});
  EXPECT_EQ(test::AnswerBoxes([this] { Deletion.RecordRmv_Click(); }, {QMessageBox::Yes, QMessageBox::Ok})[1],
            "Error|The folder was changed by another machine.");
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
  EXPECT_EQ(Photos() + Files(), " ");
  test::AnswerBoxes([&] { Deletion.RecordDel_Click(); }, {});  // Without records nothing is asked.
}

TEST_F(RecordCommands, APasteThatFailsLeavesEveryPlace) {
  AddPhotos(2);
  for (const int id : {1, 2}) Data1.SelBookmarks.Add(id);
  Clipboard.RecordCut_Click();
  Tree.Select(Tree.Add(Tree.Root(), "too deep"));
  Tree.SelectedItem()->SetTag(QString(44, u'1'));
  Clipboard.RecordPaste_Click();
  EXPECT_TRUE(Told.startsWith("No photos filed in too deep.")) << Told.toStdString();
  Clipboard.RecordCopy_Click();
  Tree.Select(Tree.NodeAt(2));
  Catalogue.Execute({"UPDATE tblLevel1 SET FolderName = 'theirs'"});
  EXPECT_EQ(test::AnswerBoxes([this] { Clipboard.RecordPaste_Click(); }, {QMessageBox::Ok}),
            QStringList("Error|The folder was changed by another machine."));
  Data1.SelBookmarks.Clear();
  Clipboard.RecordCut_Click();  // Of nothing, and nothing is pending any more.
  Tree.Select(Tree.Root());
  Clipboard.RecordPaste_Click();
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, Left(IDNo, 4) FROM tblPhotoLinks"), "1|0001 2|0001");
}

// It had gone before the question, and its number was given anew while that stood.
TEST_F(RecordCommands, ADeleteTakesNoPhotoThatGotTheNumberOfAGoneOne) {
  AddPhotos(2);
  Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 2"});
  std::vector<catalogue::ChosenPhoto> chosen{{1, {}}, {2, {}}};
  const auto database = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  NoteLooks(*database, chosen);
  Catalogue.AddPhoto(2, {}, {});
  EXPECT_EQ(CheckChosen(*database, chosen).Changed, std::vector<int>{2});
}

TEST_F(RecordCommands, APasteFilesNoPhotoThatGotTheNumberOfAChosenOne) {
  Catalogue.AddFolder("0002", "B");
  AddPhotos(3);
  Data1.SelBookmarks.Replace({1, 2, 3});
  Clipboard.RecordCut_Click();
  Data1.SelBookmarks.Replace({2});
  // Another machine gets the number as soon as it is free, and the image is its own.
  QObject::connect(&Deletion, &DeletePhotos::Deleted, &Window,
                   [this] { Catalogue.AddPhoto(2, {}, {"0001"}); });
  Answer(QMessageBox::Yes, Delete);
  EXPECT_EQ(Files(), "1.jpg 2.jpg 1t.bmp 2t.bmp");
  Catalogue.Execute({"UPDATE tblPhotos SET CreateDate = #2020-01-01# WHERE PhotoID = 1"});
  Tree.Select(Tree.NodeAt(3));
  EXPECT_EQ(test::AnswerBoxes([this] { Clipboard.RecordPaste_Click(); }, {QMessageBox::Ok}),
            QStringList("Error|The photo 1 was changed by another machine."));
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, Left(IDNo, 4) FROM tblPhotoLinks ORDER BY PhotoID"),
            "1|0001 2|0001 3|0002");
}

}  // namespace
}  // namespace veldrin::records
