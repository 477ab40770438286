// The dialog that copies stored images into a directory of the user's choice.
#pragma once

#include <QDialog>
#include <QListWidget>
#include <QSet>
#include <functional>
#include <optional>

#include "base/work_report.h"
#include "catalogue/paths.h"
#include "controls/busy_pointer.h"
#include "controls/directory_chooser.h"
#include "controls/progress.h"

namespace veldrin::output {

/// `frmGet`. List1 is to be filled before it is shown.
class frmGet : public QDialog {
  Q_OBJECT

 public:
  /// From one path to another, as desktop::CopyStoredFile does it; called in another thread.
  using CopyFunction = std::function<void(const QString& source, const QString& target)>;

  /// The references must outlive the dialog. `lastGetDir` has the directory of the last successful copy,
  /// empty before the first: the dialog opens on it. Raises 76 when that has gone, and empties it, so that
  /// the next dialog opens on the user's pictures.
  frmGet(const catalogue::Paths& paths, QString& lastGetDir, controls::LongWork& work, QWidget* parent,
         CopyFunction copy);

  /// The names of the stored images, without a path. Belongs to the dialog.
  QListWidget& List1() const { return *TheList; }
  /// Asked before the copying: the files that still are those of the photos that were chosen. May be empty.
  std::function<QSet<QString>()> StillTheSame;

  /// What became of the files when OK was last pressed; nothing where it never was.
  const std::optional<base::WorkReport>& Report() const { return TheReport; }

 private:
  void Arrange();
  QWidget* MakePanel(const char* labelName, const char* caption, QWidget* content, QWidget* buddy);
  void Form_Load();

  /// At a copy that fails it says so, and the dialog stays. So it does at a directory of the program's own,
  /// where nothing is copied to.
  void OkBttn_Click();
  bool IsRefused(const QString& directory);
  /// Raises 53 where the copy isn't there in spite of all, otherwise what the copying raises.
  void CopyTo(const QString& target, const QString& name) const;
  /// Until one fails or the user stops it. Raises the failure.
  void CopyAll(const QStringList& names, const QString& directory);
  /// Takes away the names of photos that have changed, and tells them.
  void LeaveOutChanged(QStringList& names);
  /// The files behind the one that failed aren't tried.
  void NoteFailure(const QStringList& names, const QString& reason);
  void CancelBttn_Click() { reject(); }

  const catalogue::Paths& ThePaths;
  QString& LastGetDir;
  controls::LongWork& Work;
  CopyFunction Copy;
  QListWidget* TheList;
  controls::DirectoryChooser* Chooser;
  std::optional<base::WorkReport> TheReport;
  /// After a copy that went missing, until the dialog goes.
  std::optional<controls::BusyPointer> StillBusy;
};

}  // namespace veldrin::output
