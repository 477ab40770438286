#include "folders/folder_commands.h"

#include <QCoreApplication>
#include <utility>

#include "base/text_length.h"
#include "catalogue/schema.h"
#include "controls/busy_pointer.h"
#include "controls/msg_box.h"
#include "engine/sql_tokens.h"
#include "folders/change_boxes.h"
#include "folders/folder_nodes.h"
#include "folders/folder_rows.h"
#include "folders/folder_tree.h"

namespace veldrin::folders {

using controls::Node;
using engine::Database;

FolderCommands::FolderCommands(controls::TreeView& tvTreeView, FolderNavigation& navigation,
                               engine::DBEngine& engine, const catalogue::Paths& paths, base::TellWork tell)
    : Tree(tvTreeView), Navigation(navigation), Engine(engine), ThePaths(paths), Tell(std::move(tell)) {
  connect(&Tree, &controls::TreeView::AfterLabelEdit, this, &FolderCommands::tvTreeView_AfterLabelEdit);
  connect(&Tree, &controls::TreeView::LabelEditCancelled, this,
          &FolderCommands::tvTreeView_LabelEditCancelled);
  connect(&Tree, &controls::TreeView::NodeRemoved, this, [this](const Node* node) {
    if (ThePending && node == ThePending->Source) ThePending.reset();
    if (node == AddedNode) AddedNode = nullptr;
  });
}

// What a command writes is stored as a whole, or after an error not at all. The work answers whether the rows
// that it relies on are those that the tree shows. What keeps it from that is told; `deed` says from what.
template <class Work>
bool FolderCommands::InOneGroup(const QString& deed, Work&& work) {
  base::WorkReport report{QStringLiteral("folders"), deed, 0, {}};
  try {
    const controls::BusyPointer busy;
    const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
    if (database->WriteGroup([&] { return work(*database); })) report.Done = 1;
  } catch (const base::RuntimeError& error) {
    report.Failures.push_back({Tree.SelectedItem()->Text(), base::ReasonOf(error)});
  }
  const bool isChanged = report.Done == 0 && report.Failures.empty();
  isChanged ? TellFolderChanged(&Tree) : Tell(report);
  return report.Done == 1;
}

// --- add, rename, delete ----------------------------------------------------------------------------------

void FolderCommands::FolderAdd_Click() {
  const Node& parent = *Tree.SelectedItem();
  QString key;
  const bool written = InOneGroup(QStringLiteral("added"), [&](Database& database) {
    if (!RowIsAsShown(database, parent)) return false;
    key = FolderWriter(database).AddFolderRecord(GetNodeLevel(parent) + 1, NewFolderName(), parent.Tag());
    return true;
  });
  if (!written) return;
  AddUnorganizedNode(Tree);
  AddFolderNode(Tree);
  Tree.SelectedItem()->SetTag(key);
  AddedNode = Tree.SelectedItem();
  EditFolderName();
}

void FolderCommands::EditFolderName() {
  if (Tree.SelectedItem()->Index() != 1) Tree.StartLabelEdit();
}

// A new folder stands under its first name, and is the one selected: the list must be its own.
void FolderCommands::tvTreeView_LabelEditCancelled() {
  const controls::Node* added = std::exchange(AddedNode, nullptr);
  if (added != nullptr && added == Tree.SelectedItem()) Navigation.ShowAnew();
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
  bool isChanged = false;
  Cancel = !InOneGroup(QStringLiteral("renamed"), [&](Database& database) {
    isChanged = !RowIsAsShown(database, node);
    if (isChanged) return false;
    database.Execute(
        QStringLiteral("UPDATE %1 SET FolderName = '%2' WHERE IDNo = '%3'")
            .arg(catalogue::LevelTable(GetNodeLevel(node)), engine::QuoteSql(NewString), node.Tag()),
        engine::dbFailOnError);
    return true;
  });
  // What couldn't be stored is typed once.
  if (Cancel && !isChanged) return Tree.StartLabelEdit(NewString);
  AddedNode = nullptr;
  if (!Cancel) node.SetText(NewString);
  Navigation.ShowRenamed();
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
  Node* unorganized = nullptr;
  const bool deleted = InOneGroup(QStringLiteral("deleted"), [&](Database& database) {
    if (!SubtreeIsAsShown(database, node)) return false;
    unorganized = DeleteRows(database, node);
    return true;
  });
  if (!deleted) return;
  RemoveNodes(node, unorganized);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  Navigation.ShowAnew();
}

// The links first, while the keys are still there. Returns the "!UNORGANIZED" beside the node where it is
// left alone and so has gone as well; another machine may have put a folder there that the tree doesn't show.
Node* FolderCommands::DeleteRows(Database& database, const Node& node) {
  MoveLinksToParent(database, node);
  DeleteFolderRows(database, node);
  Node* unorganized = LastBeside(node);
  if (unorganized == nullptr || !IsOnlyRow(database, *unorganized)) return nullptr;
  DeleteFolderRows(database, *unorganized);
  return unorganized;
}

void FolderCommands::RemoveNodes(Node& node, Node* unorganized) {
  Tree.Remove(&node);
  if (unorganized != nullptr) Tree.Remove(unorganized);
}

// --- cut, copy, paste -------------------------------------------------------------------------------------

bool FolderCommands::TakesPaste(const Node& target) const {
  return ThePending && TakesCopyOf(target, *ThePending->Source);
}

void FolderCommands::SetPending(std::optional<Pending> pending) {
  ThePending = pending;
  Q_EMIT Changed();
}

// A folder that was cut before stays grey.
void FolderCommands::FolderCut_Click() {
  Node& node = *Tree.SelectedItem();
  SetNodeColor(node, true);
  UndoCutShown = true;
  SetPending(Pending{&node, true});
}

void FolderCommands::FolderCopy_Click() {
  FolderUndoCut_Click();
  SetPending(Pending{Tree.SelectedItem(), false});
}

void FolderCommands::FolderUndoCut_Click() {
  if (!ThePending || !ThePending->IsCut) return;
  SetNodeColor(*ThePending->Source, false);
  UndoCutShown = false;
  SetPending({});
}

void FolderCommands::FolderPaste_Click() {
  if (!ThePending) return;
  Node& source = *ThePending->Source;
  const bool isCut = ThePending->IsCut;
  Node& target = *Tree.SelectedItem();
  RequireOutside(target, source);
  const bool isFirst = target.Children() == 0;
  Node& pasted = CopyNodes(target);
  Node* unorganized = nullptr;
  const bool written = InOneGroup(QStringLiteral("pasted"), [&](Database& database) {
    if (!RowIsAsShown(database, target) || (isCut && !SubtreeIsAsShown(database, source))) return false;
    StoreFolders(database, pasted);
    if (isCut) unorganized = DeleteRows(database, source);
    return true;
  });
  if (!written) return TakeBackNode(Tree, pasted, isFirst);
  if (isCut) RemoveNodes(source, unorganized);
  SetPending({});
  Tree.Select(&pasted);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  Navigation.ShowAnew();
  // Compared now that the source has gone: a folder cut and pasted in the same place keeps its name. Last, so
  // that nothing takes away what is typed.
  QString own;
  if (isCut && IsDuplicateFolder(pasted, own)) Tree.StartLabelEdit();
}

Node& FolderCommands::CopyNodes(Node& target) {
  AddUnorganizedNode(Tree);
  Node& pasted = *Tree.AddCopy(&target, *ThePending->Source);
  QString own;
  if (IsDuplicateFolder(pasted, own) && !ThePending->IsCut)
    pasted.SetText(base::CutText(QStringLiteral("Copy of ") + pasted.Text(), controls::MaxLabelLength));
  return pasted;
}

}  // namespace veldrin::folders
