#include "folders/folder_commands.h"

#include <gmock/gmock.h>

#include "catalogue/schema.h"
#include "folders/folder_nodes.h"
#include "folders/folders_fixture.h"

namespace veldrin::folders {
namespace {

using controls::Node;

class FolderCommandsTest : public FoldersTest {
 protected:
  void On(const QString& path, void (FolderCommands::*command)()) {
    Tree.Select(Find(path));
    (Commands.*command)();
  }
  int ErrorOfCopy(const QString& from, const QString& to) {
    On(from, &FolderCommands::FolderCopy_Click);
    return test::ErrorOf([&] { On(to, &FolderCommands::FolderPaste_Click); });
  }

  // The field over a label, when it has the focus.
  QLineEdit* Editor() {
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    return field != nullptr && Tree.isAncestorOf(field) ? field : nullptr;
  }
  bool IsEditing() {
    Window.activateWindow();  // Without a window manager a box that is closed leaves no window active.
    return QTest::qWaitFor([this] { return Editor() != nullptr; });
  }
  void Type(const QString& name, Qt::Key end = Qt::Key_Return) {
    ASSERT_TRUE(IsEditing());
    Editor()->insert(name);
    QTest::keyClick(Editor(), end);
  }

  static QString Spell(const Node& node) {
    QStringList inside;
    for (const Node* child = node.Child(); child != nullptr; child = child->Next()) inside << Spell(*child);
    return (IsUnorganized(node) ? "!" : node.Text()) + (inside.isEmpty() ? "" : "(" + inside.join(' ') + ")");
  }
  QStringList Rows() {
    QStringList rows;
    for (int level = 1; level <= catalogue::LevelCount; ++level) {
      rows += Catalogue.Rows("SELECT IDNo, FolderName FROM " + catalogue::LevelTable(level));
    }
    return rows;
  }
  // Checks also that each node has its row and each row its node.
  void ExpectTree(const QString& tree) {
    EXPECT_EQ(Spell(*Tree.Root()), tree);
    QStringList nodes;
    for (int i = 2; i <= Tree.Count(); ++i) nodes << Tree.NodeAt(i)->Tag() + '|' + Tree.NodeAt(i)->Text();
    EXPECT_THAT(nodes, testing::UnorderedElementsAreArray(Rows()));
  }
  FolderCommands Commands{Tree, Navigation, Catalogue.Engine(), Catalogue.Paths(), Tell};
};

TEST_F(FolderCommandsTest, StoresTheNameThatWasTyped) {
  Load("Old Taken");
  const QString longest(255, QChar(0x00E4));
  const std::pair<QString, QString> cases[] = {
      {"", "Old"},        {"   ", "   "},           {"\"a\" 'b' ''", "\"a\" 'b' ''"}, {"🏔 ü", "🏔 ü"},
      {"TAKEN", "TAKEN"}, {longest + 'x', longest},
  };
  for (const auto& [typed, stored] : cases) {
    Tree.Select(Tree.NodeAt(3));
    Commands.FolderRen_Click();
    Type(typed);
    EXPECT_EQ(Take(), "show");
    ExpectTree("Photos(! " + stored + " Taken)");
  }
  On("", &FolderCommands::FolderRen_Click);
  EXPECT_EQ(Editor(), nullptr);
  // A new folder's own list is shown, also when its name is given up.
  On("Taken", &FolderCommands::FolderAdd_Click);
  Type("Never", Qt::Key_Escape);
  EXPECT_EQ(Take(), "show");
  ExpectTree("Photos(! " + longest + " Taken(! New Folder))");
}

TEST_F(FolderCommandsTest, ATakenNameLeadsBackToTheEdit) {
  Load("Mine Taken");
  On("Mine", &FolderCommands::FolderRen_Click);
  const auto refuses = [this](const std::function<void()>& action) {
    EXPECT_EQ(test::AnswerBoxes(action, {QMessageBox::Ok}), QStringList("Error|Duplicate Folder Name!"));
    EXPECT_TRUE(IsEditing());
    EXPECT_EQ(Selected(), "Mine");
    EXPECT_EQ(Take(), "");
  };
  refuses([this] { Type(UnorganizedName()); });
  refuses([this] { Type("Taken", Qt::Key_Tab); });
  Editor()->insert("Taken");
  refuses([this] { Click("Taken"); });  // which then is no click on it
  Editor()->insert("Free");
  QTest::keyClick(Editor(), Qt::Key_Down);  // moves nothing in the tree
  Click("Taken");
  ExpectTree("Photos(! Free Taken)");
  EXPECT_EQ(Selected(), "Taken");
  EXPECT_EQ(Take(), "show show");
}

TEST_F(FolderCommandsTest, WhatCantBeDoneWritesNothing) {
  Load(
      "X X/Y 1 1/2 1/2/3 1/2/3/4 1/2/3/4/5 1/2/3/4/5/6 1/2/3/4/5/6/7 1/2/3/4/5/6/7/8 1/2/3/4/5/6/7/8/9 "
      "1/2/3/4/5/6/7/8/9/10");
  Catalogue.AddPhoto(1, {}, {Find("X/Y")->Tag()});
  const QString tree = Spell(*Tree.Root());
  EXPECT_EQ(ErrorOfCopy("1/2", "1/2"), base::errOutOfStackSpace);
  EXPECT_EQ(ErrorOfCopy("1/2", "1/2/3/4"), base::errOutOfStackSpace);
  // The table takes no more rows, as on a full disk.
  const test::HeldCatalogue full(
      Catalogue, "CREATE TRIGGER Full BEFORE INSERT ON tblPhotoLinks BEGIN SELECT RAISE(ABORT, 'full'); END");
  const auto deleteIt = [this] { On("X/Y", &FolderCommands::FolderDel_Click); };
  test::AnswerBoxes(deleteIt, {QMessageBox::Yes});
  EXPECT_TRUE(Told.startsWith("No folders deleted.")) << Told.toStdString();
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, Left(IDNo, 8) FROM tblPhotoLinks"), "1|00010001");
  EXPECT_EQ(ErrorOfCopy("X", "1/2/3/4/5/6/7/8/9"), 0);
  EXPECT_TRUE(Told.startsWith("No folders pasted.")) << Told.toStdString();
  EXPECT_FALSE(Commands.TakesPaste(*Find("1/2/3/4/5/6/7/8/9")));
  EXPECT_TRUE(Commands.TakesPaste(*Find("1/2/3/4/5/6/7/8")));
  On("1/2/3/4/5/6/7/8/9/10", &FolderCommands::FolderAdd_Click);
  EXPECT_TRUE(Told.startsWith("No folders added.")) << Told.toStdString();
  ExpectTree(tree);

  // A name that couldn't be stored need not be typed again.
  const test::HeldCatalogue locked(Catalogue, "BEGIN EXCLUSIVE");
  Catalogue.Engine().LockTimeout = 0;
  On("X", &FolderCommands::FolderRen_Click);
  Type("Typed");
  EXPECT_TRUE(Told.startsWith("No folders renamed.")) << Told.toStdString();
  ASSERT_TRUE(IsEditing());
  EXPECT_EQ(Editor()->text(), "Typed");
}

TEST_F(FolderCommandsTest, APhotoOfADeletedFolderStaysBelowItsParent) {
  Load("A A/B A/B/C A/D");
  Catalogue.AddPhoto(1, {}, {Find("A/B/C")->Tag(), Find("A/D")->Tag()});
  test::AnswerBoxes([this] { On("A/B/C", &FolderCommands::FolderDel_Click); }, {QMessageBox::Yes});
  EXPECT_EQ(Catalogue.RowsText("SELECT Left(IDNo, 12) FROM tblPhotoLinks ORDER BY IDNo"),
            "000100010000 000100020000");
}

TEST_F(FolderCommandsTest, WhatAnotherMachineChangedIsLeftAlone) {
  Load("X X/Y Z");
  Catalogue.Execute({"UPDATE tblLevel2 SET FolderName = 'theirs' WHERE FolderName = 'Y'"});
  const QStringList rows = Rows();
  const QString tree = Spell(*Tree.Root());
  const QString told = "Error|The folder was changed by another machine.";
  const auto ask = [&](const char* path, void (FolderCommands::*command)(), int questions) {
    QList<QMessageBox::StandardButton> answers(questions, QMessageBox::Yes);
    return test::AnswerBoxes([&] { On(path, command); }, answers << QMessageBox::Ok).last();
  };
  EXPECT_EQ(ask("X", &FolderCommands::FolderDel_Click, 1), told) << "a folder below it";
  EXPECT_EQ(ask("X/Y", &FolderCommands::FolderAdd_Click, 0), told);
  On("Z", &FolderCommands::FolderCopy_Click);
  EXPECT_EQ(ask("X/Y", &FolderCommands::FolderPaste_Click, 0), told);
  On("X", &FolderCommands::FolderCut_Click);
  EXPECT_EQ(ask("Z", &FolderCommands::FolderPaste_Click, 0), told);
  EXPECT_EQ(Rows(), rows);
  EXPECT_EQ(Spell(*Tree.Root()), tree);
  // A folder beside the last one keeps their pseudo-folder.
  Catalogue.Execute({"UPDATE tblLevel2 SET FolderName = 'Y' WHERE FolderName = 'theirs'"});
  AddRow("Spain", Find("X")->Tag());
  Catalogue.Execute({"INSERT INTO ActPhotoLinks (IDNo, PhotoID) VALUES('of a former command', 1)"});
  test::AnswerBoxes([&] { On("X/Y", &FolderCommands::FolderDel_Click); }, {QMessageBox::Yes});
  EXPECT_EQ(Catalogue.RowsText("SELECT FolderName FROM tblLevel2 ORDER BY IDNo"), "!UNORGANIZED Spain");
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID FROM tblPhotoLinks"), "");
}

}  // namespace
}  // namespace veldrin::folders
