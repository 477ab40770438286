#include "folders/folder_commands.h"

#include <QCoreApplication>
#include <utility>

#include "base/text_length.h"
#include "catalogue/schema.h"
#include "controls/busy_pointer.h"
#include "controls/msg_box.h"
#include "engine/dao/transaction.h"
#include "engine/sql_tokens.h"
#include "folders/folder_nodes.h"
#include "folders/folder_rows.h"
#include "folders/folder_tree.h"

namespace veldrin::folders {

using controls::Node;
using engine::Database;

FolderCommands::FolderCommands(controls::TreeView& tvTreeView, FolderNavigation& navigation,
                               FolderViews& views, engine::DBEngine& engine, const catalogue::Paths& paths)
    : Tree(tvTreeView), Navigation(navigation), Views(views), Engine(engine), ThePaths(paths) {
  connect(&Tree, &controls::TreeView::AfterLabelEdit, this, &FolderCommands::tvTreeView_AfterLabelEdit);
  connect(&Tree, &controls::TreeView::LabelEditCancelled, this,
          &FolderCommands::tvTreeView_LabelEditCancelled);
  connect(&Tree, &controls::TreeView::NodeRemoved, this, [this](const Node* node) {
    if (node == FolderCutNode) FolderCutNode = nullptr;
    if (node == FolderCopyNode) FolderCopyNode = nullptr;
    if (node == AddedNode) AddedNode = nullptr;
  });
}

// What a command writes is stored as a whole, or after an error not at all.
template <class Work>
void FolderCommands::InOneGroup(Work&& work) {
  const controls::BusyPointer busy;
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  engine::Transaction group(*database);
  work(*database);
  group.Commit();
}

void FolderCommands::Refresh(const Node& node) {
  Navigation.LastNodeIndex = -1;
  Navigation.tvTreeView_NodeClick(node);
}

// --- add, rename, delete ----------------------------------------------------------------------------------

void FolderCommands::FolderAdd_Click() {
  const bool isFirst = Tree.SelectedItem()->Children() == 0;
  AddUnorganizedNode(Tree);
  AddFolderNode(Tree);
  Node& added = *Tree.SelectedItem();
  try {
    InOneGroup([&added](Database& database) {
      added.SetTag(
          FolderWriter(database).AddFolderRecord(GetNodeLevel(added), added.Text(), added.Parent()->Tag()));
    });
  } catch (...) {
    TakeBackNode(Tree, added, isFirst);
    throw;
  }
  AddedNode = &added;
  EditFolderName();
}

void FolderCommands::EditFolderName() {
  if (Tree.SelectedItem()->Index() != 1) Tree.StartLabelEdit();
}

// A new folder stands under its first name, and is the one selected: the list must be its own.
void FolderCommands::tvTreeView_LabelEditCancelled() {
  const controls::Node* added = std::exchange(AddedNode, nullptr);
  if (added != nullptr && added == Tree.SelectedItem()) Refresh(*added);
}

void FolderCommands::tvTreeView_AfterLabelEdit(bool& Cancel, QString& NewString) {
  Node& node = *Tree.SelectedItem();
  if (IsDuplicateFolder(node, NewString)) {
    Cancel = true;
    controls::MsgBox(&Tree, QStringLiteral("Duplicate Folder Name!"), controls::vbInformation,
                     QStringLiteral("Error"));
    return EditFolderName();
  }
  // No name clashes with a key; one that the catalogue has no room for must not be shown as if it were
  // stored.
  Engine.OpenDatabase(ThePaths.WorkFile)
      ->Execute(QStringLiteral("UPDATE %1 SET FolderName = '%2' WHERE IDNo = '%3'")
                    .arg(catalogue::LevelTable(GetNodeLevel(node)), engine::QuoteSql(NewString), node.Tag()),
                engine::dbFailOnError);
  AddedNode = nullptr;
  node.SetText(NewString);
  Refresh(node);
}

void FolderCommands::FolderDel_Click() {
  Node& node = *Tree.SelectedItem();
  if (node.Index() == 1) return;
  const QString question =
      QStringLiteral("Are you sue to delete the folder ") + node.Text() + QLatin1Char('?');
  if (controls::MsgBox(&Tree, question, controls::vbYesNo | controls::vbQuestion | controls::vbDefaultButton2,
                       QStringLiteral("Question")) != controls::vbYes) {
    return;
  }
  const Node& parent = *node.Parent();
  InOneGroup([&](Database& database) { RemoveFolder(database, node); });
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  Refresh(parent);
}

// The keys must be there while the links move, so the nodes go after them.
void FolderCommands::RemoveFolder(Database& database, Node& node) {
  Node& parent = *node.Parent();
  MoveLinksToParent(database, node);
  DeleteFolderNodes(database, Tree, node);
  if (parent.Children() == 1 && IsUnorganized(*parent.Child())) {
    DeleteFolderNodes(database, Tree, *parent.Child());
  }
}

// --- cut, copy, paste -------------------------------------------------------------------------------------

// A folder that was cut before stays grey.
void FolderCommands::FolderCut_Click() {
  FolderCutNode = Tree.SelectedItem();
  FolderCopyNode = nullptr;
  SetNodeColor(*FolderCutNode, true);
  Views.ShowFolderUndoCut(true);
  Views.SetFolderMenus();
}

void FolderCommands::FolderCopy_Click() {
  if (FolderCutNode != nullptr) TakeBackCut();
  FolderCopyNode = Tree.SelectedItem();
  Views.EnableFolderPaste(true);
}

void FolderCommands::FolderUndoCut_Click() {
  if (FolderCutNode == nullptr) return;
  TakeBackCut();
  Views.SetFolderMenus();
}

void FolderCommands::TakeBackCut() {
  SetNodeColor(*FolderCutNode, false);
  FolderCutNode = nullptr;
  Views.ShowFolderUndoCut(false);
}

void FolderCommands::FolderPaste_Click() {
  if (!HasPending()) return;
  const bool isCut = FolderCutNode != nullptr;
  Node& source = isCut ? *FolderCutNode : *FolderCopyNode;
  RequireOutside(*Tree.SelectedItem(), source);
  const bool isFirst = Tree.SelectedItem()->Children() == 0;
  Node& pasted = PasteNodes(source, !isCut);
  try {
    InOneGroup([&](Database& database) {
      StoreFolders(database, pasted);
      if (isCut) RemoveFolder(database, source);
    });
  } catch (...) {
    TakeBackNode(Tree, pasted, isFirst);
    throw;
  }
  if (isCut) Views.EnableFolderPaste(false);
  FolderCutNode = nullptr;
  FolderCopyNode = nullptr;
  Tree.Select(&pasted);
  // Compared now that the source has gone: a folder cut and pasted in the same place keeps its name.
  QString own;
  if (isCut && IsDuplicateFolder(pasted, own)) Tree.StartLabelEdit();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  Refresh(pasted);
}

Node& FolderCommands::PasteNodes(const Node& source, bool isCopy) {
  AddUnorganizedNode(Tree);
  Node& pasted = *Tree.AddCopy(Tree.SelectedItem(), source);
  QString own;
  if (IsDuplicateFolder(pasted, own) && isCopy)
    pasted.SetText(base::CutText(QStringLiteral("Copy of ") + pasted.Text(), controls::MaxLabelLength));
  return pasted;
}

}  // namespace veldrin::folders
