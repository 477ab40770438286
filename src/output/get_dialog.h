// The dialog that copies stored images into a directory of the user's choice.
#pragma once

#include <QDialog>
#include <QListWidget>
#include <functional>
#include <optional>

#include "controls/busy_pointer.h"
#include "controls/directory_chooser.h"

namespace veldrin::output {

/// `frmGet`. List1 is to be filled before it is shown.
class frmGet : public QDialog {
  Q_OBJECT

 public:
  /// From one path to another, as desktop::CopyFile does it.
  using CopyFunction = std::function<void(const QString& source, const QString& target)>;

  /// `lastGetDir` has the directory of the last successful copy, empty before the first: the dialog opens on
  /// it. Raises 76 when that has gone, and empties it, so that the next dialog opens on the user's pictures.
  frmGet(QString imageDir, QString& lastGetDir, QWidget* parent, CopyFunction copy);

  /// The names of the stored images, without a path. Belongs to the dialog.
  QListWidget& List1() const { return *TheList; }

 private:
  void Arrange();
  QWidget* MakePanel(const char* labelName, const char* caption, QWidget* content, QWidget* buddy);
  void Form_Load();

  /// At a copy that fails it says so, and the dialog stays.
  void OkBttn_Click();
  void CancelBttn_Click() { reject(); }

  QString ImageDir;
  QString& LastGetDir;
  CopyFunction Copy;
  QListWidget* TheList;
  controls::DirectoryChooser* Chooser;
  /// After a copy that went missing, until the dialog goes.
  std::optional<controls::BusyPointer> StillBusy;
};

}  // namespace veldrin::output
