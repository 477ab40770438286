#include "controls/dir_list.h"
#include "shell/main_window_fixture.h"

namespace veldrin::shell {
namespace {

TEST_F(MainWindowTest, StartsWithTheWholeCatalogueAndSwitchesViewsByMenuAndToolbar) {
  const QString all =
      "tbarToolBar(12) tbarToolBar(13) tbarToolBar(15) tbarToolBar(17) tbarToolBar(20) tbarToolBar(22) "
      "RecordQuery RecordSearch FileWeb FileGet";
  const std::tuple<const char*, int, int, QString> steps[] = {
      {"MainImage", ImageViewCode, BrowseTab, all},
      {"tbarToolBar(4)", FormViewCode, FormTab,
       "tbarToolBar(12) tbarToolBar(13) tbarToolBar(15) tbarToolBar(22) RecordQuery "
       "RecordSearch FileGet"},
      {"MainAdd", AddNewCode, AddTab, "tbarToolBar(22)"},
      {"MainPlay", ImagePlayCode, PlayTab, "tbarToolBar(12) tbarToolBar(22) RecordQuery"},
      {"tbarToolBar(1)", DataViewCode, BrowseTab, all}};
  EXPECT_EQ(Tree().SelectedItem(), Tree().Root());
  for (const auto& [command, view, tab, visible] : steps) {
    EXPECT_TRUE(Action(command).isEnabled()) << command;
    Choose(command);
    EXPECT_EQ(Get<QStackedWidget>("SSTab1").currentIndex(), tab) << command;
    EXPECT_EQ(Get("bttnNext").isHidden(), view == DataViewCode) << command;
    EXPECT_EQ(Those(all.split(' '), &QAction::isVisible), visible) << command;
    EXPECT_FALSE(Get<QAction>(QStringLiteral("tbarToolBar(%1)").arg(view)).isEnabled()) << command;
  }
}

TEST_F(MainWindowTest, TheMenusFollowTheFolderAndTheTab) {
  const auto enabled = [&] {
    return Those(
        {"FolderAdd", "FolderRen", "RecordDel", "RecordRmv", "RecordCut", "RecordCopy", "ReportList"},
        &QAction::isEnabled);
  };
  EXPECT_EQ(enabled(), "FolderAdd RecordDel ReportList");
  ClickFolder(Italy);
  EXPECT_EQ(enabled(), "FolderAdd FolderRen RecordDel RecordRmv RecordCut RecordCopy ReportList");
  Choose("MainPlay");
  EXPECT_EQ(enabled(), "FolderAdd FolderRen ReportList");
  ClickFolder(TopUnorganized);
  Choose("MainData");
  EXPECT_EQ(enabled(), "");
  // An edit that is open ends with the window.
  const QString workFile = Catalogue.Paths().WorkFile;
  ClickFolder(Home);
  Choose("FolderRen");
  EXPECT_EQ(Window->focusWidget()->parent(), Tree().viewport());
  Window.reset();
  EXPECT_FALSE(QFileInfo::exists(workFile));
}

}  // namespace
}  // namespace veldrin::shell
