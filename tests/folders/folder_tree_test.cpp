#include "folders/folder_tree.h"

#include <gtest/gtest.h>

#include "folders/folder_keys.h"
#include "folders/folder_writer.h"
#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::folders {
namespace {

using platform::Node;
using platform::TreeView;
using test::TestCatalogue;

QString Add(TestCatalogue& catalogue, int level, const QString& name, const QString& parent) {
  return AddFolderRecord(catalogue.Engine(), catalogue.Paths().WorkFile, level, name, parent);
}

// The tree as "text=tag(children...)".
QString Spell(const Node& node) {
  QStringList children;
  for (const Node* child = node.Child(); child != nullptr; child = child->Next()) children << Spell(*child);
  const QString inside =
      children.isEmpty() ? QString() : QLatin1Char('(') + children.join(QLatin1Char(' ')) + QLatin1Char(')');
  return node.Text() + QLatin1Char('=') + node.Tag() + inside;
}

TEST(FolderTree, AnEmptyCatalogueHasTheRootAlone) {
  TestCatalogue catalogue;
  TreeView tree;
  LoadFolderTree(tree, catalogue.Engine(), catalogue.Paths().WorkFile);
  EXPECT_EQ(Spell(*tree.Root()), QStringLiteral("Photos="));
  EXPECT_EQ(tree.SelectedItem(), tree.Root());
}

TEST(FolderTree, HandsOutKeysBelowEachParent) {
  TestCatalogue catalogue;
  EXPECT_EQ(Add(catalogue, 1, QStringLiteral("O'Hara"), {}), QStringLiteral("0001"));
  EXPECT_EQ(catalogue.Rows(QStringLiteral("SELECT IDNo, FolderName FROM tblLevel1")),
            QStringList({QStringLiteral("0000|!UNORGANIZED"), QStringLiteral("0001|O'Hara")}));
  EXPECT_EQ(Add(catalogue, 1, QStringLiteral("Second"), {}), QStringLiteral("0002"));
  EXPECT_EQ(Add(catalogue, 2, QStringLiteral("Below"), QStringLiteral("0001")), QStringLiteral("00010001"));
  EXPECT_EQ(Add(catalogue, 2, QStringLiteral("Beside"), QStringLiteral("0002")), QStringLiteral("00020001"));
  EXPECT_EQ(Add(catalogue, 2, QStringLiteral("Next"), QStringLiteral("0001")), QStringLiteral("00010002"));
  // The number of a last folder that went is given out again, one in the middle is not.
  catalogue.Execute({QStringLiteral("DELETE FROM tblLevel1 WHERE IDNo = '0002'"),
                     QStringLiteral("DELETE FROM tblLevel2 WHERE IDNo = '00010001'")});
  EXPECT_EQ(Add(catalogue, 1, QStringLiteral("Again"), {}), QStringLiteral("0002"));
  EXPECT_EQ(Add(catalogue, 2, QStringLiteral("Third"), QStringLiteral("0001")), QStringLiteral("00010003"));
}

// Another machine may have left rows below a key that is handed out again.
TEST(FolderTree, OneWriterNumbersASubtreeBehindRowsLeftThere) {
  TestCatalogue catalogue;
  catalogue.Execute(
      {QStringLiteral("INSERT INTO tblLevel3 (IDNo, FolderName) VALUES('000100020005', 'left')")});
  const auto database = catalogue.Engine().OpenDatabase(catalogue.Paths().WorkFile);
  FolderWriter writer(*database);
  QStringList keys;
  const auto add = [&](int level, const char* parent) {
    keys << writer.AddFolderRecord(level, QStringLiteral("new"), QLatin1String(parent));
  };
  add(1, "");
  add(2, "0001");
  add(3, "00010001");
  add(2, "0001");
  add(3, "00010002");
  EXPECT_EQ(keys.join(QLatin1Char(' ')), QStringLiteral("0001 00010001 000100010001 00010002 000100020006"));
}

TEST(FolderTree, LoadsTheLevelsInOrderOfNames) {
  TestCatalogue catalogue;
  for (const char* name : {"zebra", "Apple", "ärger", "banana"})
    Add(catalogue, 1, QString::fromUtf8(name), {});
  Add(catalogue, 2, QStringLiteral("child"), QStringLiteral("0002"));
  TreeView tree;
  LoadFolderTree(tree, catalogue.Engine(), catalogue.Paths().WorkFile);
  EXPECT_EQ(Spell(*tree.Root()),
            QString::fromUtf8(
                "Photos=(!UNORGANIZED=0000 Apple=0002(!UNORGANIZED=00020000 child=00020001) banana=0004 "
                "zebra=0001 ärger=0003)"));
  EXPECT_EQ(tree.SelectedItem(), tree.Root());
  EXPECT_EQ(tree.NodeAt(4)->Text(), QStringLiteral("!UNORGANIZED"));  // depth first
}

TEST(FolderTree, EndsAtTheTenthLevel) {
  TestCatalogue catalogue;
  QString key;
  for (int level = 1; level <= 10; ++level) key = Add(catalogue, level, QStringLiteral("Level"), key);
  EXPECT_EQ(key.size(), 40);
  try {
    Add(catalogue, 11, QStringLiteral("Too deep"), key);
    FAIL() << "an eleventh level was made";
  } catch (const platform::RuntimeError& error) {
    EXPECT_EQ(error.Number(), platform::errNoSuchTable);
  }
  TreeView tree;
  LoadFolderTree(tree, catalogue.Engine(), catalogue.Paths().WorkFile);
  EXPECT_EQ(tree.Count(), 21);
  EXPECT_EQ(GetNodeLevel(*tree.NodeAt(21)), 10);
}

TEST(FolderTree, TheTenThousandthFolderMeetsTheLimitOfTheFormat) {
  TestCatalogue catalogue;
  catalogue.Execute({QStringLiteral("INSERT INTO tblLevel1 (IDNo, FolderName) VALUES('9999', 'Last')")});
  EXPECT_EQ(Add(catalogue, 1, QStringLiteral("One more"), {}), QStringLiteral("10000"));
  EXPECT_EQ(Add(catalogue, 1, QStringLiteral("And more"), {}), QStringLiteral("10000"));
  EXPECT_EQ(catalogue.Rows(QStringLiteral("SELECT FolderName FROM tblLevel1 WHERE IDNo = '10000'")),
            QStringList(QStringLiteral("One more")));
}

TEST(FolderTree, KnowsTheFoldersAboveASource) {
  TreeView tree;
  Node* root = tree.Add(nullptr, QStringLiteral("Photos"));
  Node* topLoose = tree.Add(root, UnorganizedName());
  Node* a = tree.Add(root, QStringLiteral("A"));
  Node* aLoose = tree.Add(a, UnorganizedName());
  Node* source = tree.Add(a, QStringLiteral("Source"));
  Node* below = tree.Add(source, UnorganizedName());
  Node* deep = tree.Add(source, QStringLiteral("Deep"));
  Node* b = tree.Add(root, QStringLiteral("B"));
  for (const Node* target : {root, topLoose, a, aLoose, below}) {
    EXPECT_TRUE(IsAboveFolder(*target, *source)) << target->Text().toStdString() << target->Index();
  }
  for (const Node* target : {source, deep, b}) EXPECT_FALSE(IsAboveFolder(*target, *source));
  // As a last child the pseudo-folder isn't found.
  tree.Remove(deep);
  EXPECT_FALSE(IsAboveFolder(*below, *source));
}

TEST(FolderKeys, PadLinkKeysToTheirWidth) {
  EXPECT_EQ(LinkKey(QString()), QString(40, QLatin1Char('0')));
  EXPECT_EQ(LinkKey(QStringLiteral("00030012")), QStringLiteral("0003001200000000000000000000000000000000"));
  EXPECT_EQ(PadKey(12345, 4), QStringLiteral("12345"));
}

}  // namespace
}  // namespace veldrin::folders
