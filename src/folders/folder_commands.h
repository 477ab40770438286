// The commands of the Folder menu. Each changes the nodes of the tree and their rows together.
#pragma once

#include <QObject>
#include <optional>

#include "base/work_report.h"
#include "catalogue/paths.h"
#include "controls/tree_view.h"
#include "engine/dao/db_engine.h"
#include "folders/folder_navigation.h"

namespace veldrin::folders {

/// All commands act on the selected folder; what of them it allows is the menu's affair. The rows are written
/// first, and the nodes follow. A folder whose rows are no longer what the tree shows is left alone, and a
/// box tells why. Errors of the catalogue are told as well, and leave rows and nodes as they were.
class FolderCommands : public QObject {
  Q_OBJECT

 public:
  /// `tell` takes what became of the folder.
  FolderCommands(controls::TreeView& tvTreeView, FolderNavigation& navigation, engine::DBEngine& engine,
                 const catalogue::Paths& paths, base::TellWork tell);

  /// Whether something is cut or copied that can be pasted there.
  bool TakesPaste(const controls::Node& target) const;
  bool UndoCutIsShown() const { return UndoCutShown; }

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

 Q_SIGNALS:
  /// Something else is cut or copied.
  void Changed();

 private:
  struct Pending {
    controls::Node* Source;
    bool IsCut;
  };

  template <class Work>
  bool InOneGroup(const QString& deed, Work&& work);
  controls::Node& CopyNodes(controls::Node& target);
  static controls::Node* DeleteRows(engine::Database& database, const controls::Node& node);
  void RemoveNodes(controls::Node& node, controls::Node* unorganized);
  void SetPending(std::optional<Pending> pending);
  void tvTreeView_LabelEditCancelled();

  controls::TreeView& Tree;
  FolderNavigation& Navigation;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  base::TellWork Tell;
  std::optional<Pending> ThePending;
  bool UndoCutShown = false;
  /// The folder that was added last, until its first name is settled.
  const controls::Node* AddedNode = nullptr;
};

}  // namespace veldrin::folders
