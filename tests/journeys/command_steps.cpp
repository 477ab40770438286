#include <QApplication>
#include <algorithm>

#include "catalogue/image_store.h"
#include "journeys/journey_steps.h"

namespace veldrin::test {

namespace {

constexpr int MostFolders = 26;
constexpr int DeepestFolder = 7 * 4;  // characters of a key

void UndoCut(std::optional<JourneyModel::Pending>& pending) {
  if (pending && pending->IsCut) pending.reset();
}

// --- records ----------------------------------------------------------------------------------------------

void ClickPhoto(Walk& walk, int number, Qt::KeyboardModifiers keys, Qt::MouseButton button) {
  const auto& screen = walk.On();
  if (walk.Before.Page) {
    QWidget& cell = *screen.Cells[number % browse::CellCount];
    walk.Click(cell, cell.rect().center(), keys, button);
  } else {
    walk.Click(*screen.Grid.viewport(), QPoint(30, 12 + number % 10 * 24), keys, button);
  }
}

// Sometimes from the menu that the mouse brings up on a photo, sometimes after one was marked and another
// one made the current.
bool ChooseForRecords(Walk& walk, const char* command, int a) {
  if (a % 3 != 2 && walk.Before.Tab == shell::BrowseTab) {
    if (a % 3 == 0) {
      ClickPhoto(walk, a / 3, {}, Qt::RightButton);
    } else if (!walk.Before.Naming) {
      ClickPhoto(walk, a / 3, Qt::ControlModifier, Qt::LeftButton);
      walk.Key(a % 2 == 0 ? Qt::Key_Up : Qt::Key_Down);
    }
    QCoreApplication::processEvents();
    walk.Look();
  }
  return walk.Choose(command);
}

void DeleteRecords(Walk& walk, int a, int b) {
  const bool sure = b % 3 != 0;
  walk.AnswerBox("This option will delete", sure ? QMessageBox::Yes : QMessageBox::No, false);
  if (!ChooseForRecords(walk, "RecordDel", a) || !sure) return;
  walk.ExpectOn(walk.Pointed(), [](JourneyModel& model, int photo) { model.Delete(photo); });
}

void RemoveRecords(Walk& walk, int a, int b) {
  const bool sure = b % 3 != 0;
  walk.AnswerBox("This option will remove", sure ? QMessageBox::Yes : QMessageBox::No, false);
  if (!ChooseForRecords(walk, "RecordRmv", a) || !sure) return;
  if (walk.IsForeign(walk.Model.Selected)) walk.ExpectAt({walk.Model.Selected}, [](JourneyModel&) {});
  walk.ExpectOn(walk.Pointed(), [](JourneyModel& model, int photo) { model.Remove(photo); });
}

void CutOrCopyRecords(Walk& walk, int a, int b) {
  if (walk.Before.Naming) return;
  const bool cut = b % 2 == 0;
  if (!ChooseForRecords(walk, cut ? "RecordCut" : "RecordCopy", a)) return;
  walk.Outcome().Stage(walk.Before.Selected, cut);
  walk.ExpectSelection(walk.Before.Selected);
}

void UndoRecordCut(Walk& walk, int a, int) {
  if (ChooseForRecords(walk, "RecordUndoCut", a)) UndoCut(walk.Outcome().PendingRecords);
}

void PasteRecords(Walk& walk, int a, int) {
  const std::optional<JourneyModel::Pending> pending = walk.Model.PendingRecords;
  const bool chosen = a % 2 == 0 ? walk.Choose("FolderRcdPaste") : ChooseForRecords(walk, "RecordPaste", a);
  if (!chosen || !pending) return;
  walk.ExpectAt({walk.Model.Selected, pending->Source}, [&](JourneyModel& model) {
    // A photo that another machine made of a number is not the one that was cut.
    std::erase_if(model.Staged, [&](int photo) { return !model.Rows.contains(photo); });
    model.PasteRecords();
  });
}

// --- folders ----------------------------------------------------------------------------------------------

QLineEdit* Editor(Walk& walk) { return walk.On().Tree.viewport()->findChild<QLineEdit*>(); }

// Types a name and leaves the field open, or ends with it.
void TypeName(Walk& walk, int a, int b) {
  QLineEdit* editor = Editor(walk);
  if (editor == nullptr || !editor->isVisible()) return;
  const bool open = b % 4 == 0;
  const bool kept = b % 4 != 1;
  QString typed = QStringLiteral("f%1").arg(a);
  if (!open && b % 5 == 0) typed.clear();
  if (!open && b % 5 == 1)
    typed = std::next(walk.Model.Folders.begin(), a % std::ssize(walk.Model.Folders))->second;
  editor->selectAll();
  QTest::keyClick(editor, Qt::Key_Delete);
  QTest::keyClicks(editor, typed);
  if (open) return;
  JourneyModel renamed = walk.Model;
  const bool there = renamed.Folders.contains(walk.Before.Folder);
  if (kept && (walk.TreeIsOld || (there && !renamed.Rename(typed))))
    walk.AnswerBox("Duplicate Folder Name!", QMessageBox::Ok, !walk.TreeIsOld);
  walk.ExpectAt({walk.Before.Folder}, [&](JourneyModel& model) {
    if (kept) model.Rename(typed);
  });
  QTest::keyClick(editor, kept ? Qt::Key_Return : Qt::Key_Escape);
}

bool HasRoom(const Walk& walk) { return walk.Model.Folders.size() < MostFolders; }

void AddFolder(Walk& walk, int, int) {
  if (!HasRoom(walk) || walk.Before.Folder.size() >= DeepestFolder || !walk.Choose("FolderAdd")) return;
  walk.ExpectAt({walk.Before.Folder}, [](JourneyModel& model) { model.Add("New Folder"); });
}

void RenameFolder(Walk& walk, int, int) { walk.Choose("FolderRen"); }

void DeleteFolder(Walk& walk, int, int b) {
  const bool sure = b % 4 != 0;
  const QString folder = walk.Before.Folder;
  walk.AnswerBox("Are you sue to delete the folder", sure ? QMessageBox::Yes : QMessageBox::No, false);
  if (!walk.Choose("FolderDel") || !sure) return;
  walk.ExpectAt({folder}, [&](JourneyModel& model) {
    model.RemoveFolder(folder);
    model.ClearQuery();
  });
}

void CutOrCopyFolder(Walk& walk, int a, int) {
  const bool cut = a % 2 == 0;
  if (walk.Choose(cut ? "FolderCut" : "FolderCopy")) walk.Outcome().CutOrCopy(cut);
}

void UndoFolderCut(Walk& walk, int, int) {
  if (walk.Choose("FolderUndoCut")) UndoCut(walk.Outcome().PendingFolder);
}

void PasteFolder(Walk& walk, int, int) {
  const std::optional<JourneyModel::Pending> pending = walk.Model.PendingFolder;
  if (!pending || !HasRoom(walk)) return;
  const QString& folder = walk.Before.Folder;
  const bool intoItself = folder.startsWith(pending->Source);
  qsizetype depth = 0;
  for (const QString& node : walk.Model.Nodes(pending->Source)) depth = std::max(depth, node.size());
  if (folder.size() + depth - pending->Source.size() >= DeepestFolder) return;
  // A key may stand for two folders there.
  if (intoItself && walk.TreeIsOld) return;
  if (!walk.Choose("FolderPaste") || intoItself) return;
  walk.MayRenumber();
  walk.ExpectAt({folder, pending->Source}, [](JourneyModel& model) {
    model.Paste();
    model.ClearQuery();
  });
}

}  // namespace

std::span<const StepKind> CommandSteps() {
  static const StepKind kinds[] = {
      STEP(DeleteRecords, 5),   STEP(RemoveRecords, 5), STEP(CutOrCopyRecords, 6),
      STEP(UndoRecordCut, 1),   STEP(PasteRecords, 5),  {"TypeName", 8, TypeName, true},
      STEP(AddFolder, 3),       STEP(RenameFolder, 2),  STEP(DeleteFolder, 2),
      STEP(CutOrCopyFolder, 3), STEP(UndoFolderCut, 1), STEP(PasteFolder, 3)};
  return kinds;
}

}  // namespace veldrin::test
