#include "shell/command_state.h"

namespace veldrin::shell {

namespace {

bool PasteEnabled(const RecordMenuInput& input) {
  if (input.RecordsCut) return !input.NodeHasChildren;
  return input.RecordsCopied && !input.NodeIsAboveSource;
}

}  // namespace

Tab TabOfView(int view) {
  switch (view) {
    case FormViewCode:
      return FormTab;
    case AddNewCode:
      return AddTab;
    case ImagePlayCode:
      return PlayTab;
    default:
      return BrowseTab;
  }
}

ViewMenuState ViewMenusFor(int view) {
  switch (view) {
    case FormViewCode:
      return {true, true, true, false};
    case AddNewCode:
      return {false, false, false, false};
    case ImagePlayCode:
      return {true, false, false, false};
    default:
      return {true, true, true, true};
  }
}

RecordMenuState RecordMenusFor(const RecordMenuInput& input) {
  RecordMenuState state;
  const bool records = input.HasRecords;
  const bool topUnorganized = input.NodeIsUnorganized && input.ParentIsRoot;
  const bool leaf = !input.NodeIsRoot && !input.NodeHasChildren;
  state.RecordAdd = true;
  state.RecordEdit = state.RecordDel = state.RecordAll = state.Records = records;
  state.RecordRmv = records && !input.NodeIsRoot && !topUnorganized;
  state.RecordCut = records && leaf;
  state.RecordCopy = records && leaf && !input.NodeIsUnorganized;
  state.RecordPaste = PasteEnabled(input);
  state.RecordUndoCut = input.UndoCutShown;

  if (input.ShownTab > BrowseTab) state.RecordAll = state.RecordCut = state.RecordCopy = false;
  if (input.ShownTab == FormTab) state.RecordEdit = false;
  if (input.ShownTab == AddTab) state.RecordAdd = state.RecordDel = state.RecordRmv = false;
  if (input.ShownTab == PlayTab) state.RecordDel = state.RecordRmv = false;
  return state;
}

}  // namespace veldrin::shell
