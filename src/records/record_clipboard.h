// Filing the selected records in another folder: a cut or a copy stages them, a paste links them there.
#pragma once

#include <QObject>

#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "catalogue/record_source.h"
#include "controls/tree_view.h"
#include "engine/dao/db_engine.h"

namespace veldrin::records {

/// What the clipboard asks of the views and menus.
class ClipboardViews {
 public:
  virtual ~ClipboardViews() = default;
  /// Shows the selection of grid and thumbnails in the grey of a cut, or in its normal colours.
  virtual void SetSelectionGrey(bool grey) = 0;
  virtual void EnableRecordPaste(bool enabled) = 0;
  /// Shows or hides `RecordUndoCut` and its separator.
  virtual void ShowRecordUndoCut(bool visible) = 0;
  /// The list was read anew: the view that shows it draws its current record.
  virtual void ShowFolderRecords() = 0;
  virtual void SetRecordMenus() = 0;
};

/// No image file and no row of tblPhotos is touched. Errors of the data engine are not handled; the catalogue
/// is then as it was before the command.
class RecordClipboard : public QObject {
 public:
  RecordClipboard(catalogue::RecordList& data1, controls::TreeView& tvTreeView,
                  catalogue::RecordSource& source, engine::DBEngine& engine, const catalogue::Paths& paths,
                  ClipboardViews& views);

  bool IsCutPending() const { return RecordCutIndex != nullptr; }
  /// The folder that the records of a pending copy were selected in; null when no copy is pending.
  const controls::Node* CopySource() const { return RecordCopyIndex; }

  void RecordCopy_Click();
  void RecordCut_Click();
  /// Drops a pending cut; what was staged stays in its table until the next use.
  void RecordUndoCut_Click();
  /// Files the staged records at the selected folder. One staging pastes once.
  void RecordPaste_Click();

 private:
  bool StageSelection();
  void LinkStaged(const controls::Node& target);
  void tvTreeView_NodeRemoved(const controls::Node* node);

  catalogue::RecordList& Data1;
  controls::TreeView& Tree;
  catalogue::RecordSource& Source;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  ClipboardViews& Views;

  // The folder in which the records were staged; at most one of the two is set.
  const controls::Node* RecordCutIndex = nullptr;
  const controls::Node* RecordCopyIndex = nullptr;
};

}  // namespace veldrin::records
