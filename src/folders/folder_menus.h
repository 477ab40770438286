// What of the Folder menu is enabled, as a pure function of the tree's and the clipboard's state.
#pragma once

namespace veldrin::folders {

struct FolderMenuInput {
  bool IsRoot = false;
  bool IsUnorganized = false;
  bool IsCut = false;       ///< the selected node is grey
  bool IsDeepest = false;   ///< on the last level that the catalogue has
  bool TakesPaste = false;  ///< a folder was cut or copied, and the selected node can take it
  bool UndoCutShown = false;
};

struct FolderMenuState {
  bool FolderAdd = false;
  bool FolderRen = false;
  bool FolderDel = false;
  bool FolderCut = false;
  bool FolderCopy = false;
  bool FolderPaste = false;
  bool FolderUndoCut = false;  ///< visible, with the line below it
};

constexpr FolderMenuState FolderMenusFor(const FolderMenuInput& input) {
  const bool changeable = !input.IsRoot && !input.IsUnorganized && !input.IsCut;
  const bool takesFolders = !input.IsUnorganized && !input.IsCut && !input.IsDeepest;
  return {takesFolders,      changeable, changeable, changeable, changeable, takesFolders && input.TakesPaste,
          input.UndoCutShown};
}

}  // namespace veldrin::folders
