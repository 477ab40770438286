// The Add New view, `TabPannel(2)`: picture files are chosen, dragged to the folder and stored with one
// title, maker and description.
#pragma once

#include <QWidget>

#include "base/work_report.h"
#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "engine/dao/db_engine.h"
#include "records/photo_storing.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace veldrin::controls {
class DirectoryChooser;
class FileListBox;
class Node;
class PictureLoader;
class TreeView;
}  // namespace veldrin::controls

namespace veldrin::pictures {
class Picture;
class PictureCache;
}  // namespace veldrin::pictures

namespace veldrin::records {
class DropTarget;
}  // namespace veldrin::records

namespace veldrin::records {

class NewImageBox;

class AddView : public QWidget {
  Q_OBJECT

 public:
  /// The references must outlive the view. `addPicturesDir`: where the choosers begin. `tell` takes what
  /// became of the files of a save.
  AddView(catalogue::RecordList& data1, controls::TreeView& tvTreeView, const catalogue::Paths& paths,
          engine::DBEngine& engine, QString addPicturesDir, controls::LongWork& work, base::TellWork tell,
          pictures::PictureCache& cache, QWidget* parent = nullptr);

  /// Fills the list of file types and sets the choosers; once, at the first call.
  void FillFileTypes();

 private:
  void BuildChoosers();
  void BuildDragArea();
  void BuildDataPanel();
  void Arrange();
  void Connect();

  void FileType_Click(int listIndex);
  void FileToSel_Click();
  void ImgFolder_DragDrop(const QString& source);
  void newSaveBttn_Click();
  void newCancelBttn_Click();

  void SetFileChoosers(bool enabled);
  void ShowNewImage();
  void TakeNewImage(const QString& file, const pictures::Picture& picture);
  void HideNewImage();
  QString CurrentFile() const;
  bool IsMultiSelect() const;
  bool IsFileSelected() const;
  void LeaveDataEntry(const QSet<QString>& left);
  /// Sets the number of the first that is stored; leaves it 0 where none is.
  base::WorkReport StoreSelectedFiles(const controls::Node& folder, int& first, QSet<QString>& left);

  catalogue::RecordList& Data1;
  controls::TreeView& Tree;
  const catalogue::Paths& ThePaths;
  engine::DBEngine& Engine;
  QString AddPicturesDir;
  controls::LongWork& Work;
  base::TellWork Tell;

  controls::DirectoryChooser* Choosers = nullptr;
  controls::FileListBox* FileToSel = nullptr;
  QComboBox* FileType = nullptr;
  QCheckBox* ChkRemove = nullptr;
  QLabel* LblImgToDrag = nullptr;
  NewImageBox* PicNew = nullptr;
  controls::PictureLoader* Loader = nullptr;
  QLabel* Arrow = nullptr;
  QLabel* LblDropFldr = nullptr;
  DropTarget* ImgFolder = nullptr;
  QLabel* Label22 = nullptr;
  QFrame* DataPanel = nullptr;
  QLineEdit* NTitle = nullptr;
  QPlainTextEdit* NDescription = nullptr;
  QLineEdit* NMadeBy = nullptr;
  QPushButton* NewSaveBttn = nullptr;
  QPushButton* NewCancelBttn = nullptr;
};

}  // namespace veldrin::records
