#include "folders/folders_fixture.h"

namespace veldrin::folders {
namespace {

class FolderBrowserTest : public FoldersTest {
 protected:
  FolderBrowserTest() { Load("Alpha Alpha/Same Beta Beta/Same"); }
  void Go(const char* name) {
    Search.setText(name);
    Browser.bttnGo_Click();
  }
};

TEST_F(FolderBrowserTest, AFolderIsShownOnceAndDropsTheQuery) {
  Source.Query.QryTitle = "x";
  Click("Alpha");
  EXPECT_EQ(Source.Query, catalogue::Criteria{});
  Click("Alpha");
  EXPECT_EQ(Views.Take(), "show");
  QTest::keyClick(&Tree, Qt::Key_Down);
  Click("Beta");
  EXPECT_EQ(Views.Take(), "show");
  Click("Beta", Qt::RightButton);
  EXPECT_EQ(Views.Take(), "popup");
  Click("Alpha", Qt::RightButton);
  EXPECT_EQ(Selected(), "Alpha");
  EXPECT_EQ(Views.Take(), "show popup");
  QTest::mouseClick(Tree.viewport(), Qt::RightButton, {}, QPoint(100, 390));
  EXPECT_EQ(Views.Take(), "");
}

TEST_F(FolderBrowserTest, TheSearchTakesTheFirstWholeNameInAnyCase) {
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

}  // namespace
}  // namespace veldrin::folders
