// The dialog that copies files into the music directory and deletes them from it.
#pragma once

#include <QDialog>
#include <QStandardPaths>

#include "base/work_report.h"
#include "controls/directory_chooser.h"
#include "controls/file_list.h"

class QPushButton;

namespace veldrin::show {

/// Lists the user's music directory at first.
class frmAudio : public QDialog {
  Q_OBJECT

 public:
  /// `musicList` is read anew when the dialog goes, so that the show plays what there is then.
  frmAudio(controls::FileListBox& musicList, QString musicDir, QWidget* parent,
           QString audioDir = QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
  ~frmAudio() override;

 private:
  void Form_Load();
  void Arrange();
  QWidget* MakeList(const char* listName, const char* labelName, const char* caption,
                    controls::FileListBox*& list);
  QPushButton* MakeButton(const char* name, const char* caption, void (frmAudio::*handler)());

  /// Goes on behind a copy that fails, and tells of it in a box.
  void AddBttn_Click();
  void Add(const QString& file, const QString& name, base::WorkReport& report);
  /// Passes over what can't be deleted.
  void RmvBttn_Click();
  void CloseBttn_Click() { accept(); }

  controls::FileListBox& MusicList;
  QString MusicDir;
  QString AudioDir;
  controls::DirectoryChooser* Choosers;
  controls::FileListBox* FileToSel = nullptr;
  controls::FileListBox* FileToPlay = nullptr;
};

}  // namespace veldrin::show
