#include "folders/folder_commands.h"

#include <gtest/gtest.h>

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

  // Folders by their names, each below the one that its name's path says.
  void Load(const QStringList& paths) {
    QMap<QString, QString> keys;
    for (const QString& path : paths) {
      const QString parent = keys.value(path.section(QLatin1Char('/'), 0, -2));
      keys[path] = AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, LevelOfKey(parent) + 1,
                                   path.section(QLatin1Char('/'), -1), parent);
    }
    LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
    Window.show();
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
  }

  Node* Find(const QString& path) {
    Node* node = Tree.Root();
    for (const QString& name : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
      node = node->Child();
      while (node->Text() != name) node = node->Next();
    }
    return node;
  }
  void On(const char* path, void (FolderCommands::*command)()) {
    Tree.Select(Find(QLatin1String(path)));
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

  static QString Spell(const Node& node) {
    QStringList children;
    for (const Node* child = node.Child(); child != nullptr; child = child->Next()) children << Spell(*child);
    const QString inside = children.join(QLatin1Char(' '));
    return node.Text() + (inside.isEmpty() ? QString() : QLatin1Char('(') + inside + QLatin1Char(')'));
  }
  QString Spell() { return Spell(*Tree.Root()).replace(UnorganizedName(), QStringLiteral("!")); }
  QStringList Rows() {
    QStringList rows;
    for (int level = 1; level <= catalogue::LevelCount; ++level) {
      rows += Catalogue.Rows(QStringLiteral("SELECT IDNo, FolderName FROM ") + catalogue::LevelTable(level));
    }
    rows.sort();
    return rows;
  }
  void ExpectInStep() {
    QStringList nodes;
    for (int i = 2; i <= Tree.Count(); ++i)
      nodes << Tree.NodeAt(i)->Tag() + QLatin1Char('|') + Tree.NodeAt(i)->Text();
    nodes.sort();
    EXPECT_EQ(nodes, Rows());
  }
  // "photo@key", without the zeros at the end.
  QString Links() {
    QStringList links;
    for (const QString& row :
         Catalogue.Rows(QStringLiteral("SELECT PhotoID, IDNo FROM tblPhotoLinks ORDER BY IDNo"))) {
      QString key = row.section(QLatin1Char('|'), 1);
      while (key.endsWith(QLatin1String("0000"))) key.chop(SegmentLength);
      links << row.section(QLatin1Char('|'), 0, 0) + QLatin1Char('@') + key;
    }
    links.sort();
    return links.join(QLatin1Char(' '));
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
  Load({});
  On("", &FolderCommands::FolderAdd_Click);
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! New Folder)"));
  ExpectInStep();
  EXPECT_EQ(Views.Take(), QString());
  ASSERT_NE(Editor(), nullptr);
  QTest::keyClicks(Editor(), QStringLiteral("O'Hara"));
  EXPECT_EQ(Tree.SelectedItem()->Text(), QStringLiteral("New Folder"));
  QTest::keyClick(Editor(), Qt::Key_Return);
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! O'Hara)"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  EXPECT_EQ(Editor(), nullptr);
  On("O'Hara", &FolderCommands::FolderAdd_Click);
  QTest::keyClick(Editor(), Qt::Key_Escape);
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! O'Hara(! New Folder))"));
  EXPECT_EQ(Views.Take(), QString());
  ExpectInStep();
}

TEST_F(FolderCommandsTest, StoresTheNameThatWasTyped) {
  Load({QStringLiteral("Old"), QStringLiteral("Taken")});
  struct Case {
    const char* Name;
    QString Typed, Stored;
  };
  const QString old = QStringLiteral("Old");
  const QString longest(255, QChar(0x00E4));
  for (const Case& c : std::vector<Case>{{"unchanged", old, old},
                                         {"cleared", QString(), old},
                                         {"blanks", QStringLiteral("   "), QStringLiteral("   ")},
                                         {"quotes", Text("\"a\" 'b' ''"), Text("\"a\" 'b' ''")},
                                         {"emoji", Text("🏔 ü"), Text("🏔 ü")},
                                         {"another case", QStringLiteral("TAKEN"), QStringLiteral("TAKEN")},
                                         {"longest", longest + QLatin1Char('x'), longest},
                                         {"back", old, old}}) {
    SCOPED_TRACE(c.Name);
    Tree.Select(Tree.NodeAt(3));
    Commands.FolderRen_Click();
    Type(c.Typed);
    EXPECT_EQ(Tree.NodeAt(3)->Text(), c.Stored);
    EXPECT_EQ(Views.Take(), QStringLiteral("show"));
    ExpectInStep();
  }
  On("", &FolderCommands::FolderRen_Click);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(FolderCommandsTest, ATakenNameLeadsBackToTheEdit) {
  Load({QStringLiteral("Mine"), QStringLiteral("Taken")});
  const QStringList box(QStringLiteral("Error|Duplicate Folder Name!"));
  On("Mine", &FolderCommands::FolderRen_Click);
  for (const QString& taken : {QStringLiteral("Taken"), UnorganizedName()}) {
    EXPECT_EQ(test::AnswerBoxes([&] { Type(taken); }, {QMessageBox::Ok}), box);
  }
  // By the loss of the focus, and by a click on another folder, which then is no click on it.
  test::AnswerBoxes([&] { Type(QStringLiteral("Taken"), Qt::Key_Tab); }, {QMessageBox::Ok});
  ASSERT_TRUE(IsEditing());
  Editor()->insert(QStringLiteral("Taken"));
  test::AnswerBoxes(
      [&] {
        QTest::mouseClick(Tree.viewport(), Qt::LeftButton, {}, Tree.visualItemRect(Tree.NodeAt(4)).center());
      },
      {QMessageBox::Ok});
  EXPECT_EQ(Tree.SelectedItem()->Text(), QStringLiteral("Mine"));
  EXPECT_EQ(Views.Take(), QString());
  ASSERT_TRUE(IsEditing());
  Editor()->insert(QStringLiteral("Free"));
  QTest::keyClick(Editor(), Qt::Key_Down);  // moves nothing in the tree
  Other.setFocus();
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! Free Taken)"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  ExpectInStep();
}

// --- delete -----------------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, ADeletedFolderEmptiesIntoItsParent) {
  Load({QStringLiteral("A"), QStringLiteral("A/B"), QStringLiteral("A/B/C"), QStringLiteral("A/D"),
        QStringLiteral("E")});
  Catalogue.AddPhoto(1, QStringLiteral("in C"), {QStringLiteral("000100010001")});
  Catalogue.AddPhoto(2, QStringLiteral("in B and D"),
                     {QStringLiteral("00010001"), QStringLiteral("00010002")});
  Catalogue.AddPhoto(3, QStringLiteral("in A and E"), {QStringLiteral("0001"), QStringLiteral("0002")});
  const QString before = Spell();
  const QStringList boxes =
      test::AnswerBoxes([this] { On("A/B", &FolderCommands::FolderDel_Click); }, {QMessageBox::No});
  EXPECT_EQ(boxes, QStringList(QStringLiteral("Question|Are you sue to delete the folder B?")));
  EXPECT_EQ(Spell(), before);

  Delete("A/B");
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A(! D) E)"));
  EXPECT_EQ(Links(), QStringLiteral("1@0001 2@00010002 3@0001 3@0002"));
  EXPECT_EQ(Tree.SelectedItem(), Find(QStringLiteral("A")));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  ExpectInStep();
  Delete("A/D");
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A E)"));
  EXPECT_EQ(Links(), QStringLiteral("1@0001 2@0001 3@0001 3@0002"));
  // At the top the photo gets a link although it stands in another folder.
  Delete("A");
  EXPECT_EQ(Links(), QStringLiteral("1@ 2@ 3@ 3@0002"));
  Delete("E");
  EXPECT_EQ(Spell(), QStringLiteral("Photos"));
  EXPECT_EQ(Links(), QStringLiteral("1@ 2@ 3@"));
  ExpectInStep();
}

// --- cut, copy, paste -------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, ACopyHasTheStructureWithoutPhotos) {
  Load({QStringLiteral("A"), QStringLiteral("A/B"), QStringLiteral("A/C"), QStringLiteral("A/C/D"),
        QStringLiteral("E")});
  Delete("A/B");  // the numbers of the copy have no gap
  Catalogue.AddPhoto(1, QStringLiteral("in C"), {QStringLiteral("00010002")});
  Views.Take();
  Copy("A", "E");
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A(! C(! D)) E(! A(! C(! D))))"));
  EXPECT_EQ(Find(QStringLiteral("E/A/C/D"))->Tag(), QStringLiteral("0002000100010001"));
  EXPECT_EQ(Tree.SelectedItem(), Find(QStringLiteral("E/A")));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  EXPECT_FALSE(Commands.HasPending());
  Commands.FolderPaste_Click();  // once only
  Copy("E/A/C", "");
  Copy("C", "");
  Copy("C", "");
  EXPECT_EQ(Spell(),
            QStringLiteral("Photos(! A(! C(! D)) E(! A(! C(! D))) C(! D) Copy of C(! D) Copy of C(! D))"));
  EXPECT_EQ(Links(), QStringLiteral("1@00010002"));
  ExpectInStep();
}

TEST_F(FolderCommandsTest, AMoveLeavesThePhotosBehind) {
  Load({QStringLiteral("A"), QStringLiteral("A/B"), QStringLiteral("C"), QStringLiteral("C/B")});
  Catalogue.AddPhoto(1, QStringLiteral("in A/B"), {QStringLiteral("00010001")});
  Move("A/B", "");
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A C(! B) B)"));
  EXPECT_EQ(Links(), QStringLiteral("1@0001"));
  Move("B", "");  // in its own place
  EXPECT_EQ(Editor(), nullptr);
  ExpectInStep();
  Move("B", "C");
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A C(! B B))"));
  test::AnswerBoxes([this] { Type(QStringLiteral("B")); }, {QMessageBox::Ok});
  Type(QStringLiteral("B2"));
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A C(! B B2))"));
  EXPECT_FALSE(Find(QStringLiteral("C/B2"))->IsGrey());
  ExpectInStep();
}

TEST_F(FolderCommandsTest, CutAndCopyReplaceEachOther) {
  Load({QStringLiteral("A"), QStringLiteral("A/B"), QStringLiteral("C")});
  const auto grey = [this] {
    QStringList names;
    for (int i = 1; i <= Tree.Count(); ++i) {
      if (IsNodeCut(*Tree.NodeAt(i))) names << Tree.NodeAt(i)->Text();
    }
    return names.join(QLatin1Char(' '));
  };
  On("A", &FolderCommands::FolderCut_Click);
  EXPECT_EQ(grey(), QStringLiteral("A !UNORGANIZED B"));
  EXPECT_TRUE(Views.UndoVisible);
  Commands.FolderUndoCut_Click();
  EXPECT_EQ(grey(), QString());
  EXPECT_FALSE(Views.UndoVisible || Commands.HasPending());
  On("A", &FolderCommands::FolderCut_Click);
  On("C", &FolderCommands::FolderCopy_Click);
  EXPECT_EQ(grey(), QString());
  EXPECT_TRUE(Views.PasteEnabled && !Views.UndoVisible);
  On("A/B", &FolderCommands::FolderCut_Click);
  On("C", &FolderCommands::FolderCut_Click);
  On("", &FolderCommands::FolderPaste_Click);
  EXPECT_EQ(grey(), QStringLiteral("B"));  // for good
  EXPECT_EQ(Spell(), QStringLiteral("Photos(! A(! B) C)"));
  EXPECT_TRUE(Views.UndoVisible && !Views.PasteEnabled);
  Commands.FolderUndoCut_Click();
  EXPECT_TRUE(Views.UndoVisible);
  ExpectInStep();
}

TEST_F(FolderCommandsTest, NothingWaitsOnceItsFolderHasGone) {
  for (const auto pend : {&FolderCommands::FolderCut_Click, &FolderCommands::FolderCopy_Click}) {
    if (Tree.Count() == 0) Load({QStringLiteral("A"), QStringLiteral("A/B"), QStringLiteral("C")});
    On("A/B", pend);
    Delete("A");
    EXPECT_FALSE(Commands.HasPending());
    On("", &FolderCommands::FolderPaste_Click);
    Commands.FolderUndoCut_Click();
    EXPECT_EQ(Spell(), QStringLiteral("Photos(! C)"));
    for (const char* parent : {"", "A"}) {
      On(parent, &FolderCommands::FolderAdd_Click);
      Type(*parent == 0 ? QStringLiteral("A") : QStringLiteral("B"));
    }
    ExpectInStep();
    Delete("C");
    On("", &FolderCommands::FolderAdd_Click);
    Type(QStringLiteral("C"));
  }
}

// --- limits -----------------------------------------------------------------------------------------------

TEST_F(FolderCommandsTest, WhatCantBeDoneWritesNothing) {
  QStringList paths = {QStringLiteral("X"), QStringLiteral("X/Y"), QStringLiteral("1")};
  for (int level = 2; level <= 10; ++level) paths << paths.last() + QStringLiteral("/%1").arg(level);
  Load(paths);
  const QStringList rows = Rows();
  const QByteArray ninth = paths[paths.size() - 2].toLatin1();
  const QByteArray tenth = paths.last().toLatin1();
  const auto number = [](const std::function<void()>& command) {
    try {
      command();
    } catch (const platform::RuntimeError& error) {
      return error.Number();
    }
    return 0;
  };
  const QString before = Spell();
  for (const char* target : {"1/2", "1/2/3/4"}) {
    EXPECT_EQ(number([&] { Copy("1/2", target); }), platform::errOutOfStackSpace) << target;
    EXPECT_EQ(Spell(), before);
  }
  EXPECT_EQ(number([&] { Copy("X", ninth); }), platform::errNoSuchTable);
  EXPECT_EQ(number([&] { On(tenth, &FolderCommands::FolderAdd_Click); }), platform::errNoSuchTable);
  EXPECT_EQ(Rows(), rows);
}

}  // namespace
}  // namespace veldrin::folders
