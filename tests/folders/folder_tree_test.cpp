#include "folders/folder_tree.h"

#include "folders/folder_writer.h"
#include "folders/folders_fixture.h"

namespace veldrin::folders {
namespace {

using controls::Node;

using FolderTree = FoldersTest;

TEST_F(FolderTree, HandsOutKeysBelowEachParent) {
  EXPECT_EQ(AddRow("O'Hara"), "0001");
  EXPECT_EQ(Catalogue.Rows("SELECT IDNo, FolderName FROM tblLevel1"),
            QStringList({"0000|!UNORGANIZED", "0001|O'Hara"}));
  EXPECT_EQ(AddRow("Second"), "0002");
  EXPECT_EQ(AddRow("Below", "0001"), "00010001");
  EXPECT_EQ(AddRow("Beside", "0002"), "00020001");
  EXPECT_EQ(AddRow("Next", "0001"), "00010002");
  // The number of a last folder that went is given out again, one in the middle is not.
  Catalogue.Execute(
      {"DELETE FROM tblLevel1 WHERE IDNo = '0002'", "DELETE FROM tblLevel2 WHERE IDNo = '00010001'"});
  EXPECT_EQ(AddRow("Again"), "0002");
  EXPECT_EQ(AddRow("Third", "0001"), "00010003");
  // The ten thousandth meets the limit of the format.
  Catalogue.Execute({"INSERT INTO tblLevel1 (IDNo, FolderName) VALUES('9999', 'Last')"});
  EXPECT_EQ(AddRow("One more"), "10000");
  EXPECT_EQ(AddRow("And more"), "10000");
  EXPECT_EQ(Catalogue.Value("SELECT FolderName FROM tblLevel1 WHERE IDNo = '10000'"), "One more");
}

// Another machine may have left rows below a key that is handed out again.
TEST_F(FolderTree, OneWriterNumbersASubtreeBehindRowsLeftThere) {
  Catalogue.Execute({"INSERT INTO tblLevel3 (IDNo, FolderName) VALUES('000100020005', 'left')"});
  const auto database = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  FolderWriter writer(*database);
  QStringList keys;
  for (const QString& parent : QStringList{"", "0001", "00010001", "0001", "00010002"}) {
    keys << writer.AddFolderRecord(LevelOfKey(parent) + 1, "new", parent);
  }
  EXPECT_EQ(keys, QStringList({"0001", "00010001", "000100010001", "00010002", "000100020006"}));
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

TEST_F(FolderTree, KnowsTheFoldersAboveASource) {
  Load("A A/Source A/Source/Deep B");
  const QString loose = UnorganizedName();
  const Node& source = *Find("A/Source");
  for (const QString& above : {QString(), loose, QString("A"), "A/" + loose, "A/Source/" + loose}) {
    EXPECT_TRUE(IsAboveFolder(*Find(above), source)) << above.toStdString();
  }
  for (const char* other : {"A/Source", "A/Source/Deep", "B"})
    EXPECT_FALSE(IsAboveFolder(*Find(other), source));
  // As a last child the pseudo-folder isn't found.
  Tree.Remove(Find("A/Source/Deep"));
  EXPECT_FALSE(IsAboveFolder(*Find("A/Source/" + loose), source));
}

}  // namespace
}  // namespace veldrin::folders
