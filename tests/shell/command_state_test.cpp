#include "shell/command_state.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

#include "shell/layout.h"

namespace veldrin::shell {
namespace {

// The enabled commands, a letter each: Add Edit Del Rmv cUt Copy Paste aLl and the Searches and outputs.
std::string Spell(const RecordMenuState& state) {
  std::string text;
  const auto add = [&](bool enabled, char letter) { text += enabled ? letter : '-'; };
  add(state.RecordAdd, 'A');
  add(state.RecordEdit, 'E');
  add(state.RecordDel, 'D');
  add(state.RecordRmv, 'R');
  add(state.RecordCut, 'U');
  add(state.RecordCopy, 'C');
  add(state.RecordPaste, 'P');
  add(state.RecordAll, 'L');
  add(state.Records, 'S');
  return text;
}

struct RecordCase {
  const char* Name;
  RecordMenuInput Input;
  const char* Enabled;
};

class RecordMenus : public testing::TestWithParam<RecordCase> {};

TEST_P(RecordMenus, Follow) { EXPECT_EQ(Spell(SetRecordMenus(GetParam().Input)), GetParam().Enabled); }

RecordMenuInput Node(int tab, bool records, bool root, bool children, bool unorganized, bool parentIsRoot) {
  return {tab, records, root, children, unorganized, parentIsRoot, false, false, false};
}

RecordMenuInput Pending(bool cut, bool copied, bool children, bool above) {
  return {0, true, false, children, false, true, cut, copied, above};
}

INSTANTIATE_TEST_SUITE_P(
    States, RecordMenus,
    testing::Values(RecordCase{"NoRecords", Node(0, false, false, false, false, true), "A--------"},
                    RecordCase{"Root", Node(0, true, true, true, false, false), "AED----LS"},
                    RecordCase{"RootWithoutFolders", Node(0, true, true, false, false, false), "AED----LS"},
                    RecordCase{"FolderWithSubfolders", Node(0, true, false, true, false, true), "AEDR---LS"},
                    RecordCase{"Leaf", Node(0, true, false, false, false, true), "AEDRUC-LS"},
                    RecordCase{"TopUnorganized", Node(0, true, false, false, true, true), "AED-U--LS"},
                    RecordCase{"DeeperUnorganized", Node(0, true, false, false, true, false), "AEDRU--LS"},
                    RecordCase{"FormView", Node(1, true, false, false, false, true), "A-DR----S"},
                    RecordCase{"AddNew", Node(2, true, false, false, false, true), "-E------S"},
                    RecordCase{"ImagePlay", Node(3, true, false, false, false, true), "AE------S"},
                    RecordCase{"CutOntoALeaf", Pending(true, false, false, false), "AEDRUCPLS"},
                    RecordCase{"CutOntoAParent", Pending(true, false, true, false), "AEDR---LS"},
                    RecordCase{"CutIsNotAskedForTheSource", Pending(true, false, false, true), "AEDRUCPLS"},
                    RecordCase{"CopyElsewhere", Pending(false, true, true, false), "AEDR--PLS"},
                    RecordCase{"CopyOntoAFolderAbove", Pending(false, true, true, true), "AEDR---LS"}),
    test::CaseName);

struct LayoutCase {
  const char* Name;
  float Asked;
  double Width;
  float Position;
  double MainLeft, MainWidth;
};

class Layouts : public testing::TestWithParam<LayoutCase> {};

TEST_P(Layouts, KeepThePanesTheirLeastWidths) {
  float position = GetParam().Asked;
  const MainLayout layout = ArrangeMainWindow(position, GetParam().Width, 10404);
  EXPECT_FLOAT_EQ(position, GetParam().Position);
  EXPECT_DOUBLE_EQ(layout.MainLeft, GetParam().MainLeft);
  EXPECT_DOUBLE_EQ(layout.MainWidth, GetParam().MainWidth);
  EXPECT_DOUBLE_EQ(layout.PaneHeight, 9804);
}

INSTANTIATE_TEST_SUITE_P(Windows, Layouts,
                         testing::Values(LayoutCase{"Design", 2760, 15240, 2760, 2800, 12440},
                                         LayoutCase{"DraggedToTheLeft", 500, 15240, 1500, 1540, 13700},
                                         LayoutCase{"DraggedToTheRight", 14740, 15240, 13740, 13780, 1460},
                                         LayoutCase{"TooNarrowForBoth", 1500, 2400, 900, 940, 1460}),
                         test::CaseName);

TEST(Layout, TheDragBarStaysFromTheEdges) {
  EXPECT_EQ(DragBarLeft(-100, 15240), 500);
  EXPECT_EQ(DragBarLeft(3000, 15240), 3000);
  EXPECT_EQ(DragBarLeft(15000, 15240), 14740);
}

}  // namespace
}  // namespace veldrin::shell
