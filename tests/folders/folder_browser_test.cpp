#include "folders/folder_browser.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QTest>

#include "folders/fake_views.h"
#include "folders/folder_menus.h"
#include "folders/folder_tree.h"
#include "support/test_support.h"

namespace veldrin::folders {
namespace {

using platform::Node;

class FolderBrowserTest : public testing::Test {
 protected:
  FolderBrowserTest()
      : Data1(Catalogue.Engine()),
        Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Browser(Tree, Search, Source, Views) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    for (const char* name : {"Alpha", "Beta"}) {
      AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, 1, QLatin1String(name), {});
    }
    for (const char* key : {"0001", "0002"}) {
      AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, 2, QStringLiteral("Same"),
                      QLatin1String(key));
    }
    LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
    Tree.resize(200, 400);
    Tree.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&Tree));
    Views.Take();
  }

  Node* Find(const char* path) {
    Node* node = Tree.Root();
    for (const QString& name : QString::fromLatin1(path).split(QLatin1Char('/'))) {
      node = node->Child();
      while (node->Text() != name) node = node->Next();
    }
    return node;
  }
  void Click(const Node* node, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(Tree.viewport(), button, {}, Tree.visualItemRect(node).center());
  }
  QString Selected() { return Tree.SelectedItem()->Text(); }
  void Go(const char* name) {
    Search.setText(QLatin1String(name));
    Browser.bttnGo_Click();
  }

  test::TestCatalogue Catalogue;
  platform::TreeView Tree;
  QLineEdit Search;
  catalogue::RecordList Data1;
  FakeViews Views;
  catalogue::RecordSource Source;
  FolderBrowser Browser;
};

TEST_F(FolderBrowserTest, AClickOnTheShownFolderCostsNothing) {
  Click(Find("Alpha"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  Click(Find("Alpha"));
  EXPECT_EQ(Views.Take(), QString());
  Click(Find("Beta"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
}

TEST_F(FolderBrowserTest, AFolderDropsTheQuery) {
  Source.Query.QryTitle = QStringLiteral("x");
  Click(Find("Alpha"));
  EXPECT_EQ(Source.Query, catalogue::Criteria{});
  EXPECT_EQ(Source.RecordSourceSql, QStringLiteral("SELECT qryPhotos.* FROM qryPhotos"));
}

TEST_F(FolderBrowserTest, TheKeyboardMovesAndNotesWhereItCameToRest) {
  Click(Find("Alpha"));
  Views.Take();
  QTest::keyClick(&Tree, Qt::Key_Down);
  EXPECT_EQ(Selected(), QStringLiteral("Beta"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  Click(Find("Beta"));
  EXPECT_EQ(Views.Take(), QString());
}

TEST_F(FolderBrowserTest, AKeyBackToTheFolderBeforeAClickShowsIt) {
  Click(Find("Alpha"));
  QTest::keyClick(&Tree, Qt::Key_Home);
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  EXPECT_EQ(Views.Take(), QStringLiteral("show show"));
}

TEST_F(FolderBrowserTest, APressThatMovesOnSelectsNothingMore) {
  QTest::mousePress(Tree.viewport(), Qt::LeftButton, {}, Tree.visualItemRect(Find("Alpha")).center());
  QMouseEvent move(QEvent::MouseMove, Tree.visualItemRect(Find("Beta")).center(), QCursor::pos(),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(Tree.viewport(), &move);
  QTest::mouseRelease(Tree.viewport(), Qt::LeftButton, {}, Tree.visualItemRect(Find("Beta")).center());
  EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
}

TEST_F(FolderBrowserTest, ARightClickSelectsAndOpensTheMenu) {
  Click(Find("Beta"), Qt::RightButton);
  EXPECT_EQ(Selected(), QStringLiteral("Beta"));
  EXPECT_EQ(Views.Take(), QStringLiteral("show popup"));
  Click(Find("Beta"), Qt::RightButton);
  EXPECT_EQ(Views.Take(), QStringLiteral("popup"));
  QTest::mouseClick(Tree.viewport(), Qt::RightButton, {}, QPoint(100, 390));
  EXPECT_EQ(Views.Take(), QString());
  EXPECT_EQ(Selected(), QStringLiteral("Beta"));
}

TEST_F(FolderBrowserTest, OpeningABranchSelectsNothing) {
  Click(Find("Alpha"));
  Views.Take();
  const QRect beta = Tree.visualItemRect(Find("Beta"));
  QTest::mouseClick(Tree.viewport(), Qt::LeftButton, {}, QPoint(beta.left() - 8, beta.center().y()));
  EXPECT_TRUE(Find("Beta")->isExpanded());
  EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
  EXPECT_EQ(Views.Take(), QString());
}

TEST_F(FolderBrowserTest, TheSearchTakesTheFirstWholeNameInAnyCase) {
  Go("SAME");
  EXPECT_EQ(Tree.SelectedItem(), Find("Alpha/Same"));
  EXPECT_TRUE(Find("Alpha")->isExpanded());
  EXPECT_EQ(Views.Take(), QStringLiteral("show"));
  Go("!unorganized");
  EXPECT_EQ(Tree.SelectedItem(), Find("!UNORGANIZED"));
  Go("photos");
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  Views.Take();
  Go("");
  EXPECT_EQ(Views.Take(), QString());
}

TEST_F(FolderBrowserTest, ASearchThatLandsOnTheNotedFolderLeavesTheView) {
  Click(Find("Alpha"));
  QTest::keyClick(&Tree, Qt::Key_Shift);  // the release notes the selection
  Go("beta");
  Views.Take();
  Go("alpha");
  EXPECT_EQ(Selected(), QStringLiteral("Alpha"));
  EXPECT_EQ(Views.Take(), QString());
}

TEST_F(FolderBrowserTest, TellsThatAFolderIsntThere) {
  Click(Find("Beta"));
  const QStringList boxes = test::AnswerBoxes([this] { Go("sam"); }, {QMessageBox::Ok});
  EXPECT_EQ(boxes, QStringList(QStringLiteral("Folder Search|The folder can't be found!")));
  EXPECT_EQ(Selected(), QStringLiteral("Beta"));
}

TEST(FolderMenus, FollowTheNodeAndTheClipboard) {
  struct Case {
    const char* Name;
    FolderMenuInput Input;
    bool Add, Change, Paste;
  };
  for (const Case& c :
       std::vector<Case>{{"root", {true, false, false, false}, true, false, false},
                         {"root with a folder pending", {true, false, false, true}, true, false, true},
                         {"folder", {false, false, false, false}, true, true, false},
                         {"folder with one pending", {false, false, false, true}, true, true, true},
                         {"unorganized", {false, true, false, true}, false, false, false},
                         {"cut", {false, false, true, true}, false, false, false}}) {
    const FolderMenuState state = SetFolderMenus(c.Input);
    EXPECT_EQ(state.FolderAdd, c.Add) << c.Name;
    EXPECT_EQ(state.FolderRen, c.Change) << c.Name;
    EXPECT_EQ(state.FolderDel, c.Change) << c.Name;
    EXPECT_EQ(state.FolderCut, c.Change) << c.Name;
    EXPECT_EQ(state.FolderCopy, c.Change) << c.Name;
    EXPECT_EQ(state.FolderPaste, c.Paste) << c.Name;
  }
}

}  // namespace
}  // namespace veldrin::folders
