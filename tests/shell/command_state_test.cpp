#include "shell/command_state.h"

#include <gtest/gtest.h>

namespace veldrin::shell {
namespace {

// The enabled commands, a letter each: Add Edit Del Rmv cUt Copy Paste aLl and the Searches and outputs.
std::string Spell(const RecordMenuState& state) {
  const bool enabled[] = {state.RecordAdd,   state.RecordEdit, state.RecordDel,
                          state.RecordRmv,   state.RecordCut,  state.RecordCopy,
                          state.RecordPaste, state.RecordAll,  state.Records};
  std::string text = "AEDRUCPLS";
  for (size_t i = 0; i < text.size(); ++i) text[i] = enabled[i] ? text[i] : '-';
  return text;
}

RecordMenuInput Node(int tab, bool records, bool root, bool children, bool unorganized, bool parentIsRoot) {
  return {tab, records, root, children, unorganized, parentIsRoot, false, false, false};
}

RecordMenuInput Pending(bool cut, bool copied, bool children, bool above) {
  return {BrowseTab, true, false, children, false, true, cut, copied, above};
}

TEST(RecordMenus, FollowTheNodeTheTabAndTheClipboard) {
  const std::tuple<const char*, RecordMenuInput, const char*> cases[] = {
      {"no records", Node(BrowseTab, false, false, false, false, true), "A--------"},
      {"root", Node(BrowseTab, true, true, true, false, false), "AED----LS"},
      {"root without folders", Node(BrowseTab, true, true, false, false, false), "AED----LS"},
      {"folder with subfolders", Node(BrowseTab, true, false, true, false, true), "AEDR---LS"},
      {"leaf", Node(BrowseTab, true, false, false, false, true), "AEDRUC-LS"},
      {"top unorganized", Node(BrowseTab, true, false, false, true, true), "AED-U--LS"},
      {"deeper unorganized", Node(BrowseTab, true, false, false, true, false), "AEDRU--LS"},
      {"form view", Node(FormTab, true, false, false, false, true), "A-DR----S"},
      {"add new", Node(AddTab, true, false, false, false, true), "-E------S"},
      {"image play", Node(PlayTab, true, false, false, false, true), "AE------S"},
      {"cut onto a leaf", Pending(true, false, false, false), "AEDRUCPLS"},
      {"cut onto a parent", Pending(true, false, true, false), "AEDR---LS"},
      {"cut isn't asked for the source", Pending(true, false, false, true), "AEDRUCPLS"},
      {"copy elsewhere", Pending(false, true, true, false), "AEDR--PLS"},
      {"copy onto a folder above", Pending(false, true, true, true), "AEDR---LS"}};
  for (const auto& [name, input, enabled] : cases) EXPECT_EQ(Spell(RecordMenusFor(input)), enabled) << name;
}

}  // namespace
}  // namespace veldrin::shell
