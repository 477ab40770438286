#include "folders/folder_commands.h"

#include <gmock/gmock.h>

#include <QRegularExpression>

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
  void Copy(const QString& from, const QString& to) {
    On(from, &FolderCommands::FolderCopy_Click);
    On(to, &FolderCommands::FolderPaste_Click);
  }
  void Move(const QString& from, const QString& to) {
    On(from, &FolderCommands::FolderCut_Click);
    On(to, &FolderCommands::FolderPaste_Click);
  }
  void Delete(const QString& path) {
    test::AnswerBoxes([&] { On(path, &FolderCommands::FolderDel_Click); }, {QMessageBox::Yes});
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
  // The photos' numbers with the keys of their folders.
  QString Links() {
    static const QRegularExpression padding("(0000)+(?= |$)");
    return Catalogue.Rows("SELECT PhotoID, IDNo FROM tblPhotoLinks ORDER BY PhotoID, IDNo")
        .join(' ')
        .replace(padding, "");
  }

  FolderCommands Commands{Tree, Browser, Views, Catalogue.Engine(), Catalogue.Paths()};
};

TEST_F(FolderCommandsTest, TheFirstFolderBringsTheUnorganized) {
  Load("");
  On("", &FolderCommands::FolderAdd_Click);
  ExpectTree("Photos(! New Folder)");
  EXPECT_EQ(Views.Take(), "");
  Type("O'Hara");
  ExpectTree("Photos(! O'Hara)");
  EXPECT_EQ(Views.Take(), "show");
  On("O'Hara", &FolderCommands::FolderAdd_Click);
  Type("Never", Qt::Key_Escape);
  ExpectTree("Photos(! O'Hara(! New Folder))");
  EXPECT_EQ(Views.Take(), "show");  // The new folder's own list.
}

TEST_F(FolderCommandsTest, StoresTheNameThatWasTyped) {
  Load("Old Taken");
  const QString longest = QString("🏔").repeated(255);
  const std::pair<QString, QString> cases[] = {
      {"", "Old"},        {"   ", "   "},           {"\"a\" 'b' ''", "\"a\" 'b' ''"}, {"🏔 ü", "🏔 ü"},
      {"TAKEN", "TAKEN"}, {longest + 'x', longest},
  };
  for (const auto& [typed, stored] : cases) {
    Tree.Select(Tree.NodeAt(3));
    Commands.FolderRen_Click();
    Type(typed);
    EXPECT_EQ(Views.Take(), "show");
    ExpectTree("Photos(! " + stored + " Taken)");
  }
  On("", &FolderCommands::FolderRen_Click);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(FolderCommandsTest, ATakenNameLeadsBackToTheEdit) {
  Load("Mine Taken");
  On("Mine", &FolderCommands::FolderRen_Click);
  const auto refuses = [this](const std::function<void()>& action) {
    EXPECT_EQ(test::AnswerBoxes(action, {QMessageBox::Ok}), QStringList("Error|Duplicate Folder Name!"));
    EXPECT_TRUE(IsEditing());
    EXPECT_EQ(Selected(), "Mine");
    EXPECT_EQ(Views.Take(), "");
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
  EXPECT_EQ(Views.Take(), "show show");
}

TEST_F(FolderCommandsTest, ADeletedFolderEmptiesIntoItsParent) {
  Load("A A/B A/B/C A/D E");
  Catalogue.AddPhoto(1, "in C", {"000100010001"});
  Catalogue.AddPhoto(2, "in B and D", {"00010001", "00010002"});
  Catalogue.AddPhoto(3, "in A and E", {"0001", "0002"});
  EXPECT_EQ(test::AnswerBoxes([this] { On("A/B", &FolderCommands::FolderDel_Click); }, {QMessageBox::No}),
            QStringList("Question|Are you sue to delete the folder B?"));
  Delete("A/B");
  ExpectTree("Photos(! A(! D) E)");
  EXPECT_EQ(Links(), "1|0001 2|00010002 3|0001 3|0002");
  EXPECT_EQ(Selected(), "A");
  EXPECT_EQ(Views.Take(), "show");
  Delete("A/D");
  // At the top the photo gets a link although it stands in another folder.
  Delete("A");
  EXPECT_EQ(Links(), "1| 2| 3| 3|0002");
  Delete("E");
  ExpectTree("Photos");
  EXPECT_EQ(Links(), "1| 2| 3|");
}

TEST_F(FolderCommandsTest, AMoveOntoATakenNameLeadsToTheEdit) {
  Load("A A/B C C/B");
  Catalogue.AddPhoto(1, "in A/B", {"00010001"});
  Move("A/B", "");
  EXPECT_EQ(Links(), "1|0001");
  Move("B", "");  // in its own place
  EXPECT_EQ(Editor(), nullptr);
  Move("B", "C");
  test::AnswerBoxes([this] { Type("B"); }, {QMessageBox::Ok});
  Type("B2");
  Commands.FolderPaste_Click();  // once only
  ExpectTree("Photos(! A C(! B B2))");
}

TEST_F(FolderCommandsTest, NothingWaitsOnceItsFolderHasGone) {
  Load("A A/B C C/B");
  On("A/B", &FolderCommands::FolderCopy_Click);
  Delete("A");
  EXPECT_FALSE(Commands.HasPending());
  On("C/B", &FolderCommands::FolderCut_Click);
  Delete("C");
  On("", &FolderCommands::FolderAdd_Click);  // whose nodes may stand where those stood in memory
  Commands.FolderUndoCut_Click();
  Commands.FolderPaste_Click();
  ExpectTree("Photos(! New Folder)");
}

TEST_F(FolderCommandsTest, WhatCantBeDoneWritesNothing) {
  Load(
      "X X/Y 1 1/2 1/2/3 1/2/3/4 1/2/3/4/5 1/2/3/4/5/6 1/2/3/4/5/6/7 1/2/3/4/5/6/7/8 1/2/3/4/5/6/7/8/9 "
      "1/2/3/4/5/6/7/8/9/10");
  Catalogue.AddPhoto(1, {}, {Find("X/Y")->Tag()});
  const QStringList rows = Rows();
  const QString links = Links();
  const int nodes = Tree.Count();
  EXPECT_EQ(test::ErrorOf([this] { Copy("1/2", "1/2"); }), base::errOutOfStackSpace);
  EXPECT_EQ(test::ErrorOf([this] { Copy("1/2", "1/2/3/4"); }), base::errOutOfStackSpace);
  EXPECT_EQ(Tree.Count(), nodes);
  // The table takes no more rows, as on a full disk.
  const test::HeldCatalogue full(
      Catalogue, "CREATE TRIGGER Full BEFORE INSERT ON tblPhotoLinks BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_THROW(Delete("X/Y"), base::RuntimeError);
  EXPECT_EQ(Links(), links);
  EXPECT_EQ(test::ErrorOf([this] { Copy("X", "1/2/3/4/5/6/7/8/9"); }), base::errNoSuchTable);
  EXPECT_EQ(test::ErrorOf([this] { On("1/2/3/4/5/6/7/8/9/10", &FolderCommands::FolderAdd_Click); }),
            base::errNoSuchTable);
  EXPECT_EQ(Rows(), rows);
}

}  // namespace
}  // namespace veldrin::folders
