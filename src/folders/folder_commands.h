// The commands of the Folder menu. Each changes the nodes of the tree and their rows together.
#pragma once

#include <QObject>

#include "catalogue/paths.h"
#include "controls/tree_view.h"
#include "engine/dao/db_engine.h"
#include "folders/folder_navigation.h"

namespace veldrin::folders {

/// All commands act on the selected folder; what of them it allows is the menu's affair. Errors of the
/// catalogue are raised, and leave the rows as they were.
class FolderCommands : public QObject {
 public:
  FolderCommands(controls::TreeView& tvTreeView, FolderNavigation& navigation, FolderViews& views,
                 engine::DBEngine& engine, const catalogue::Paths& paths);

  /// Whether a folder was cut or copied and waits for the paste.
  bool HasPending() const { return FolderCutNode != nullptr || FolderCopyNode != nullptr; }

  /// Adds a folder "New Folder" and lets the user name it.
  void FolderAdd_Click();
  void FolderRen_Click() { EditFolderName(); }
  /// Asks, then deletes the subtree. Its photos go to the parent.
  void FolderDel_Click();

  void FolderCut_Click();
  void FolderCopy_Click();
  void FolderUndoCut_Click();
  /// Repeats the pending folder and those below it under the selected one, without photos. A folder that was
  /// cut goes from its old place as by FolderDel_Click. Raises 28 for a copy pasted into itself.
  void FolderPaste_Click();

  void EditFolderName();
  /// Stores the name that was typed, or shows that it is taken and lets the user type again.
  void tvTreeView_AfterLabelEdit(bool& Cancel, QString& NewString);

 private:
  template <class Work>
  void InOneGroup(Work&& work);
  controls::Node& PasteNodes(const controls::Node& source, bool isCopy);
  void RemoveFolder(engine::Database& database, controls::Node& node);
  void TakeBackCut();
  void Refresh(const controls::Node& node);
  void tvTreeView_LabelEditCancelled();

  controls::TreeView& Tree;
  FolderNavigation& Navigation;
  FolderViews& Views;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  // One of them at most.
  controls::Node* FolderCutNode = nullptr;
  controls::Node* FolderCopyNode = nullptr;
  /// The folder that was added last, until its first name is settled.
  const controls::Node* AddedNode = nullptr;
};

}  // namespace veldrin::folders
