#include <QMouseEvent>

#include "folders/folder_menus.h"
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
  EXPECT_EQ(Views.Take(), "show");
  Click("Alpha");
  EXPECT_EQ(Views.Take(), "");
  QTest::keyClick(&Tree, Qt::Key_Down);
  EXPECT_EQ(Selected(), "Beta");
  EXPECT_EQ(Views.Take(), "show");
  Click("Beta");
  EXPECT_EQ(Views.Take(), "");
  QTest::keyClick(&Tree, Qt::Key_Home);
  Click("Alpha");
  QTest::keyClick(&Tree, Qt::Key_Home);  // back to where the click came from
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  EXPECT_EQ(Views.Take(), "show show show");
}

TEST_F(FolderNavigationTest, APressThatMovesOnAndTheOpeningOfABranchSelectNothingMore) {
  QTest::mousePress(Tree.viewport(), Qt::LeftButton, {}, PointOf("Alpha"));
  QMouseEvent move(QEvent::MouseMove, PointOf("Beta"), QCursor::pos(), Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(Tree.viewport(), &move);
  QTest::mouseRelease(Tree.viewport(), Qt::LeftButton, {}, PointOf("Beta"));
  const QRect beta = Tree.visualItemRect(Find("Beta"));
  QTest::mouseClick(Tree.viewport(), Qt::LeftButton, {}, QPoint(beta.left() - 8, beta.center().y()));
  EXPECT_TRUE(Find("Beta")->isExpanded());
  EXPECT_EQ(Selected(), "Alpha");
  EXPECT_EQ(Views.Take(), "show");
}

TEST_F(FolderNavigationTest, ARightClickSelectsAndOpensTheMenu) {
  Click("Beta", Qt::RightButton);
  EXPECT_EQ(Selected(), "Beta");
  EXPECT_EQ(Views.Take(), "show popup");
  Click("Beta", Qt::RightButton);
  EXPECT_EQ(Views.Take(), "popup");
  QTest::mouseClick(Tree.viewport(), Qt::RightButton, {}, QPoint(100, 390));
  EXPECT_EQ(Views.Take(), "");
}

TEST_F(FolderNavigationTest, TheSearchTakesTheFirstWholeNameInAnyCase) {
  Go("SAME");
  EXPECT_EQ(Tree.SelectedItem(), Find("Alpha/Same"));
  EXPECT_TRUE(Find("Alpha")->isExpanded());
  EXPECT_EQ(Views.Take(), "show");
  Go("photos");
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  Go("");
  EXPECT_EQ(test::AnswerBoxes([this] { Go("sam"); }, {QMessageBox::Ok}),
            QStringList("Folder Search|The folder can't be found!"));
  EXPECT_EQ(Tree.SelectedItem(), Tree.Root());
  EXPECT_EQ(Views.Take(), "show");
  QTest::keyClick(&Tree, Qt::Key_Shift);  // the release notes the selection
  Go("beta");
  Go("photos");
  EXPECT_EQ(Views.Take(), "show") << "a search that lands on the noted folder leaves the view";
}

TEST(FolderMenus, FollowTheNodeAndTheClipboard) {
  const auto enabled = [](const FolderMenuInput& input) {
    const FolderMenuState state = FolderMenusFor(input);
    return std::vector{state.FolderAdd, state.FolderRen,  state.FolderDel,
                       state.FolderCut, state.FolderCopy, state.FolderPaste};
  };
  using Those = std::vector<bool>;
  EXPECT_EQ(enabled({.IsRoot = true}), Those({true, false, false, false, false, false}));
  EXPECT_EQ(enabled({.IsRoot = true, .FolderPending = true}),
            Those({true, false, false, false, false, true}));
  EXPECT_EQ(enabled({}), Those({true, true, true, true, true, false}));
  EXPECT_EQ(enabled({.FolderPending = true}), Those(6, true));
  EXPECT_EQ(enabled({.IsUnorganized = true, .FolderPending = true}), Those(6, false));
  EXPECT_EQ(enabled({.IsCut = true, .FolderPending = true}), Those(6, false));
}

}  // namespace
}  // namespace veldrin::folders
