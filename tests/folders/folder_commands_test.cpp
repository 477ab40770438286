#include "folders/folder_commands.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTest>

#include "catalogue/schema.h"
#include "folders/fake_views.h"
#include "folders/folder_keys.h"
#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::folders {
namespace {

using platform::Node;

QString Text(const char* utf8) { return QString::fromUtf8(utf8); }

class FolderCommandsTest : public testing::Test {
 protected:
  FolderCommandsTest()
      : Data1(Catalogue.Engine()),
        Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Browser(Tree, Other, Source, Views),
        Commands(Tree, Browser, Views, Catalogue.Engine(), Catalogue.Paths()) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Tree.setGeometry(0, 40, 300, 600);
  }

  // Folders by their paths.
  void Load(const char* paths) {
    QMap<QString, QString> keys;
    for (const QString& path : Text(paths).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
      const QString parent = keys.value(path.section(QLatin1Char('/'), 0, -2));
      keys[path] = AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, LevelOfKey(parent) + 1,
                                   path.section(QLatin1Char('/'), -1), parent);
    }
    LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
    Window.show();
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
  }

  Node* Find(const char* path) {
    Node* node = Tree.Root();
    for (const QString& name : Text(path).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
      node = node->Child();
      while (node->Text() != name) node = node->Next();
    }
    return node;
  }
  void On(const char* path, void (FolderCommands::*command)()) {
    Tree.Select(Find(path));
    (Commands.*command)();
  }
  void Copy(const char* from, const char* to) {
    On(from, &FolderCommands::FolderCopy_Click);
    On(to, &FolderCommands::FolderPaste_Click);
  }
  void Move(const char* from, const char* to) {
    On(from, &FolderCommands::FolderCut_Click);
    On(to, &FolderCommands::FolderPaste_Click);
  }
  void Delete(const char* path) {
    test::AnswerBoxes([&] { On(path, &FolderCommands::FolderDel_Click); }, {QMessageBox::Yes});
  }

  void Click(const char* path) {
    QTest::mouseClick(Tree.viewport(), Qt::LeftButton, {}, Tree.visualItemRect(Find(path)).center());
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
    EXPECT_EQ(Editor()->selectedText(), Tree.SelectedItem()->Text());
    Editor()->insert(name);
    QTest::keyClick(Editor(), end);
  }

  static std::string Short(const Node& node) { return IsUnorganized(node) ? "!" : node.Text().toStdString(); }
  static std::string Spell(const Node& node) {
    std::string inside;
    for (const Node* child = node.Child(); child != nullptr; child = child->Next())
      inside += (inside.empty() ? "" : " ") + Spell(*child);
    return Short(node) + (inside.empty() ? "" : "(" + inside + ")");
  }
  QStringList Rows() {
    QStringList rows;
    for (int level = 1; level <= catalogue::LevelCount; ++level) {
      rows += Catalogue.Rows(QStringLiteral("SELECT IDNo, FolderName FROM ") + catalogue::LevelTable(level));
    }
    rows.sort();
    return rows;
  }
  // Checks also that each node has its row and each row its node.
  void ExpectTree(const char* tree) {
    EXPECT_EQ(Spell(*Tree.Root()), tree);
    QStringList nodes;
    for (int i = 2; i <= Tree.Count(); ++i)
      nodes << Tree.NodeAt(i)->Tag() + QLatin1Char('|') + Tree.NodeAt(i)->Text();
    nodes.sort();
    EXPECT_EQ(nodes, Rows());
  }
  std::string GreyOnes() {
    std::string names;
    for (int i = 1; i <= Tree.Count(); ++i) {
      if (IsNodeCut(*Tree.NodeAt(i))) names += (names.empty() ? "" : " ") + Short(*Tree.NodeAt(i));
    }
    return names;
  }
  // The photos' numbers with the keys of their folders.
  std::string Links() {
    const QString sql = QStringLiteral("SELECT PhotoID, IDNo FROM tblPhotoLinks ORDER BY PhotoID, IDNo");
    static const QRegularExpression padding(QStringLiteral("(0000)+(?= |$)"));
    return Catalogue.Rows(sql).join(QLatin1Char(' ')).replace(padding, QString()).toStdString();
  }

  test::TestCatalogue Catalogue;
  QWidget Window;
  platform::TreeView Tree{&Window};
  QLineEdit Other{&Window};
  catalogue::RecordList Data1;
  FakeViews Views;
  catalogue::RecordSource Source;
  FolderBrowser Browser;
  FolderCommands Commands;
};

// --- names ------------------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, TheFirstFolderBringsTheUnorganized) {
  Load("");
  On("", &FolderCommands::FolderAdd_Click);
  ExpectTree("Photos(! New Folder)");
  ASSERT_NE(Editor(), nullptr);
  QTest::keyClicks(Editor(), Text("O'Hara"));
  EXPECT_EQ(Tree.SelectedItem()->Text(), Text("New Folder"));
  EXPECT_EQ(Views.Take(), Text(""));
  QTest::keyClick(Editor(), Qt::Key_Return);
  ExpectTree("Photos(! O'Hara)");
  EXPECT_EQ(Views.Take(), Text("show"));
  EXPECT_EQ(Editor(), nullptr);
  On("O'Hara", &FolderCommands::FolderAdd_Click);
  Type(Text("Never"), Qt::Key_Escape);
  ExpectTree("Photos(! O'Hara(! New Folder))");
  EXPECT_EQ(Views.Take(), Text("show"));  // The new folder's own list.
}

TEST_F(FolderCommandsTest, StoresTheNameThatWasTyped) {
  Load("Old Taken");
  struct Case {
    const char* Name;
    QString Typed, Stored;
  };
  const QString longest(255, QChar(0x00E4));
  for (const Case& c : std::vector<Case>{{"unchanged", Text("Old"), Text("Old")},
                                         {"cleared", Text(""), Text("Old")},
                                         {"blanks", Text("   "), Text("   ")},
                                         {"quotes", Text("\"a\" 'b' ''"), Text("\"a\" 'b' ''")},
                                         {"emoji", Text("🏔 ü"), Text("🏔 ü")},
                                         {"another case", Text("TAKEN"), Text("TAKEN")},
                                         {"longest", longest + QLatin1Char('x'), longest},
                                         {"back", Text("Old"), Text("Old")}}) {
    SCOPED_TRACE(c.Name);
    Tree.Select(Tree.NodeAt(3));
    Commands.FolderRen_Click();
    Type(c.Typed);
    EXPECT_EQ(Views.Take(), Text("show"));
    ExpectTree(("Photos(! " + c.Stored.toStdString() + " Taken)").c_str());
  }
  On("", &FolderCommands::FolderRen_Click);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(FolderCommandsTest, ATakenNameLeadsBackToTheEdit) {
  Load("Mine Taken");
  On("Mine", &FolderCommands::FolderRen_Click);
  const auto refuses = [this](const std::function<void()>& action) {
    EXPECT_EQ(test::AnswerBoxes(action, {QMessageBox::Ok}),
              QStringList(Text("Error|Duplicate Folder Name!")));
    EXPECT_TRUE(IsEditing());
    EXPECT_EQ(Tree.SelectedItem()->Text(), Text("Mine"));
    EXPECT_EQ(Views.Take(), Text(""));
  };
  refuses([this] { Type(Text("Taken")); });
  refuses([this] { Type(UnorganizedName()); });
  refuses([this] { Type(Text("Taken"), Qt::Key_Tab); });
  Editor()->insert(Text("Taken"));
  refuses([this] { Click("Taken"); });  // which then is no click on it
  Editor()->insert(Text("Free"));
  QTest::keyClick(Editor(), Qt::Key_Down);  // moves nothing in the tree
  Click("Taken");
  ExpectTree("Photos(! Free Taken)");
  EXPECT_EQ(Tree.SelectedItem()->Text(), Text("Taken"));
  EXPECT_EQ(Views.Take(), Text("show show"));
}

// --- delete -----------------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, ADeletedFolderEmptiesIntoItsParent) {
  Load("A A/B A/B/C A/D E");
  Catalogue.AddPhoto(1, Text("in C"), {Text("000100010001")});
  Catalogue.AddPhoto(2, Text("in B and D"), {Text("00010001"), Text("00010002")});
  Catalogue.AddPhoto(3, Text("in A and E"), {Text("0001"), Text("0002")});
  EXPECT_EQ(test::AnswerBoxes([this] { On("A/B", &FolderCommands::FolderDel_Click); }, {QMessageBox::No}),
            QStringList(Text("Question|Are you sue to delete the folder B?")));
  ExpectTree("Photos(! A(! B(! C) D) E)");

  Delete("A/B");
  ExpectTree("Photos(! A(! D) E)");
  EXPECT_EQ(Links(), "1|0001 2|00010002 3|0001 3|0002");
  EXPECT_EQ(Tree.SelectedItem(), Find("A"));
  EXPECT_EQ(Views.Take(), Text("show"));
  Delete("A/D");
  ExpectTree("Photos(! A E)");
  EXPECT_EQ(Links(), "1|0001 2|0001 3|0001 3|0002");
  // At the top the photo gets a link although it stands in another folder.
  Delete("A");
  EXPECT_EQ(Links(), "1| 2| 3| 3|0002");
  Delete("E");
  ExpectTree("Photos");
  EXPECT_EQ(Links(), "1| 2| 3|");
}

// --- cut, copy, paste -------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, ACopyHasTheStructureWithoutPhotos) {
  Load("A A/B A/C A/C/D E");
  Delete("A/B");  // the numbers of the copy have no gap
  Catalogue.AddPhoto(1, Text("in C"), {Text("00010002")});
  Views.Take();
  Copy("A", "E");
  ExpectTree("Photos(! A(! C(! D)) E(! A(! C(! D))))");
  EXPECT_EQ(Find("E/A/C/D")->Tag(), Text("0002000100010001"));
  EXPECT_EQ(Tree.SelectedItem(), Find("E/A"));
  EXPECT_EQ(Views.Take(), Text("show"));
  Commands.FolderPaste_Click();  // once only
  for (const char* source : {"E/A/C", "C", "C"}) Copy(source, "");
  ExpectTree("Photos(! A(! C(! D)) E(! A(! C(! D))) C(! D) Copy of C(! D) Copy of C(! D))");
  EXPECT_EQ(Links(), "1|00010002");
}

TEST_F(FolderCommandsTest, AMoveLeavesThePhotosBehind) {
  Load("A A/B C C/B");
  Catalogue.AddPhoto(1, Text("in A/B"), {Text("00010001")});
  Move("A/B", "");
  ExpectTree("Photos(! A C(! B) B)");
  EXPECT_EQ(Links(), "1|0001");
  Move("B", "");  // in its own place
  EXPECT_EQ(Editor(), nullptr);
  Move("B", "C");
  ExpectTree("Photos(! A C(! B B))");
  test::AnswerBoxes([this] { Type(Text("B")); }, {QMessageBox::Ok});
  Type(Text("B2"));
  ExpectTree("Photos(! A C(! B B2))");
  EXPECT_EQ(GreyOnes(), "");
}

TEST_F(FolderCommandsTest, CutAndCopyReplaceEachOther) {
  Load("A A/B C");
  On("A", &FolderCommands::FolderCut_Click);
  EXPECT_EQ(GreyOnes(), "A ! B");
  EXPECT_TRUE(Views.UndoVisible);
  Commands.FolderUndoCut_Click();
  EXPECT_EQ(GreyOnes(), "");
  EXPECT_FALSE(Views.UndoVisible || Commands.HasPending());
  On("A", &FolderCommands::FolderCut_Click);
  On("C", &FolderCommands::FolderCopy_Click);
  EXPECT_EQ(GreyOnes(), "");
  EXPECT_TRUE(Views.PasteEnabled && !Views.UndoVisible);
  On("A/B", &FolderCommands::FolderCut_Click);
  Move("C", "");
  EXPECT_EQ(GreyOnes(), "B");  // for good
  ExpectTree("Photos(! A(! B) C)");
  EXPECT_FALSE(Views.PasteEnabled);
  Commands.FolderUndoCut_Click();
  EXPECT_TRUE(Views.UndoVisible);  // and does nothing
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

// --- limits -----------------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, WhatCantBeDoneWritesNothing) {
  Load(
      "X X/Y 1 1/2 1/2/3 1/2/3/4 1/2/3/4/5 1/2/3/4/5/6 1/2/3/4/5/6/7 1/2/3/4/5/6/7/8 1/2/3/4/5/6/7/8/9 "
      "1/2/3/4/5/6/7/8/9/10");
  const QStringList rows = Rows();
  const int nodes = Tree.Count();
  const auto number = [](const std::function<void()>& command) {
    try {
      command();
    } catch (const platform::RuntimeError& error) {
      return error.Number();
    }
    return 0;
  };
  EXPECT_EQ(number([this] { Copy("1/2", "1/2"); }), platform::errOutOfStackSpace);
  EXPECT_EQ(number([this] { Copy("1/2", "1/2/3/4"); }), platform::errOutOfStackSpace);
  EXPECT_EQ(Tree.Count(), nodes);
  EXPECT_EQ(number([this] { Copy("X", "1/2/3/4/5/6/7/8/9"); }), platform::errNoSuchTable);
  EXPECT_EQ(number([this] { On("1/2/3/4/5/6/7/8/9/10", &FolderCommands::FolderAdd_Click); }),
            platform::errNoSuchTable);
  EXPECT_EQ(Rows(), rows);
}

TEST_F(FolderCommandsTest, LinksThatCantBeMovedStayWithTheirFolder) {
  Load("A A/B");
  Catalogue.AddPhoto(1, {}, {Find("A/B")->Tag()});
  const QStringList rows = Rows();
  // The table takes no more rows, as on a full disk.
  const test::HeldCatalogue full(
      Catalogue, "CREATE TRIGGER Full BEFORE INSERT ON tblPhotoLinks BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_THROW(Delete("A/B"), platform::RuntimeError);
  EXPECT_EQ(Rows(), rows);
  EXPECT_EQ(Catalogue.Value(QStringLiteral("SELECT count(*) FROM tblPhotoLinks")), QStringLiteral("1"));
}

}  // namespace
}  // namespace veldrin::folders
