// Filing the selected records in another folder: a cut or a copy notes them, a paste links them there.
#pragma once

#include <QObject>
#include <optional>
#include <vector>

#include "base/work_report.h"
#include "catalogue/chosen_photos.h"
#include "catalogue/paths.h"
#include "catalogue/record_source.h"
#include "controls/tree_view.h"
#include "engine/dao/db_engine.h"

namespace veldrin::records {

/// No image file and no row of tblPhotos is touched. After an error the catalogue is as it was before the
/// command, and what was pending is so still.
class RecordClipboard : public QObject {
  Q_OBJECT

 public:
  /// The references must outlive the object; boxes stand over the tree's window, and `tell` takes what became
  /// of the photos that are filed.
  RecordClipboard(catalogue::RecordList& data1, controls::TreeView& tvTreeView,
                  catalogue::RecordSource& source, engine::DBEngine& engine, const catalogue::Paths& paths,
                  base::TellWork tell);

  bool IsCutPending() const { return ThePending && ThePending->IsCut; }
  /// The folder that the records of a pending copy were selected in; null when no copy is pending.
  const controls::Node* CopySource() const;
  bool UndoCutIsShown() const { return UndoCutShown; }

  void RecordCopy_Click() { Take(false); }
  void RecordCut_Click() { Take(true); }
  /// Drops a pending cut.
  void RecordUndoCut_Click();
  /// Files the pending records at the selected folder; once. A photo that isn't any more what was selected is
  /// left out, and a box tells of it. A folder that isn't what the tree shows is left alone likewise.
  void RecordPaste_Click();
  /// Photos that have been deleted are pending no more.
  void Forget(const std::vector<int>& photos);
  /// The user has changed a photo, which may be pending.
  void Renew(const catalogue::ChosenPhoto& renewed);

 Q_SIGNALS:
  /// Something else is cut or copied.
  void Changed();
  /// The selection is to be seen as cut, or no longer.
  void SelectionGrey(bool grey);
  void Pasted();

 private:
  struct Pending {
    const controls::Node* Source;  ///< the folder in which the records were selected
    bool IsCut;
    std::vector<catalogue::ChosenPhoto> Photos;
  };

  void Take(bool isCut);
  void SetGrey(bool grey);
  std::optional<catalogue::CheckedPhotos> LinkPending(const controls::Node& target) const;
  bool LinkPending(engine::Database& database, const controls::Node& target,
                   catalogue::CheckedPhotos& checked) const;
  void tvTreeView_NodeRemoved(const controls::Node* node);

  catalogue::RecordList& Data1;
  controls::TreeView& Tree;
  catalogue::RecordSource& Source;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  base::TellWork Tell;

  std::optional<Pending> ThePending;
  bool UndoCutShown = false;
  bool IsGrey = false;
};

}  // namespace veldrin::records
