#include "folders/folder_writer.h"
#include "folders/folders_fixture.h"

namespace veldrin::folders {
namespace {

class FolderNavigationTest : public FoldersTest {
 protected:
  FolderNavigationTest() { Load("Alpha Alpha/Same Beta Beta/Same"); }
  void Go(const char* name) {
    Search.setText(name);
    Navigation.bttnGo_Click();
  }
};

TEST_F(FolderNavigationTest, AFolderIsShownOnceAndDropsTheQuery) {
  Source.Query.QryTitle = "x";
  Click("Alpha");
  EXPECT_EQ(Source.Query, catalogue::Criteria{});
  Click("Alpha");
  EXPECT_EQ(Take(), "show");
  QTest::keyClick(&Tree, Qt::Key_Down);
  Click("Beta");
  EXPECT_EQ(Take(), "show");
  Find("Beta")->setExpanded(true);
  Click("Beta/Same");
  Find("Beta")->setExpanded(false);
  EXPECT_EQ(Selected(), "Beta") << "a branch that is collapsed over the folder";
  EXPECT_EQ(Take(), "show show");
  Click("Beta", Qt::RightButton);
  EXPECT_EQ(Take(), "popup");
  Click("Alpha", Qt::RightButton);
  EXPECT_EQ(Selected(), "Alpha");
  EXPECT_EQ(Take(), "show popup");
  QTest::mouseClick(Tree.viewport(), Qt::RightButton, {}, QPoint(100, 390));
  EXPECT_EQ(Take(), "");
}

TEST_F(FolderNavigationTest, TheSearchTakesTheFirstWholeNameInAnyCase) {
  Go("SAME");
  EXPECT_EQ(Tree.SelectedItem(), Find("Alpha/Same"));
  EXPECT_TRUE(Find("Alpha")->isExpanded());
  EXPECT_EQ(Take(), "show");
  Go("photos");
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  Go("");
  EXPECT_EQ(test::AnswerBoxes([this] { Go("sam"); }, {QMessageBox::Ok}),
            QStringList("Folder Search|The folder can't be found!"));
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  EXPECT_EQ(Take(), "show");
  Click("Beta");
  Click("");
  {
    const test::HeldCatalogue held(Catalogue, "BEGIN EXCLUSIVE");
    Catalogue.Engine().LockTimeout = 0;
    EXPECT_THROW(Go("beta"), base::RuntimeError);
    EXPECT_EQ(Tree.SelectedItem(), Tree.Root()) << "as the list is";
  }
  Go("beta");
  EXPECT_EQ(Take(), "show show show") << "a search shows what it finds, whatever was clicked before";
}

using FolderTree = FoldersTest;

// Another machine may have left rows below a key that is handed out again.
TEST_F(FolderTree, KeysGoOnBehindTheRowsThatAreThere) {
  Catalogue.Execute({"INSERT INTO tblLevel3 (IDNo, FolderName) VALUES('000100020005', 'left')"});
  const auto database = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  FolderWriter writer(*database);
  QStringList keys;
  for (const QString& parent : QStringList{"", "0001", "00010001", "0001", "00010002"})
    keys << writer.AddFolderRecord(LevelOfKey(parent) + 1, "new", parent);
  EXPECT_EQ(keys, QStringList({"0001", "00010001", "000100010001", "00010002", "000100020006"}));
  // The number of a last folder that went is given out again. The ten thousandth meets the limit of the
  // format.
  EXPECT_EQ(AddRow("O'Hara"), "0002");
  Catalogue.Execute({"DELETE FROM tblLevel1 WHERE IDNo = '0002'"});
  EXPECT_EQ(AddRow("Again"), "0002");
  Catalogue.Execute({"INSERT INTO tblLevel1 (IDNo, FolderName) VALUES('9999', 'Last')"});
  for (const char* name : {"One more", "And more"}) EXPECT_EQ(AddRow(name), "10000");
  EXPECT_EQ(Catalogue.RowsText("SELECT FolderName FROM tblLevel1 WHERE IDNo = '10000'"), "One more");
}

TEST_F(FolderTree, LoadsTheLevelsInOrderOfNames) {
  Load("zebra Apple ärger banana Apple/child");
  QStringList names;
  for (int i = 1; i <= Tree.Count(); ++i) names << Tree.NodeAt(i)->Text() + Tree.NodeAt(i)->Tag();
  EXPECT_EQ(names.join(' '),
            "Photos !UNORGANIZED0000 Apple0002 !UNORGANIZED00020000 child00020001 banana0004 zebra0001 "
            "ärger0003");
  EXPECT_EQ(Find("Apple/child")->Parent(), Find("Apple"));
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
}

}  // namespace
}  // namespace veldrin::folders
