#include "records/add_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <array>

#include "base/failure.h"
#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "controls/busy_pointer.h"
#include "controls/directory_chooser.h"
#include "controls/entry_field.h"
#include "controls/file_list.h"
#include "controls/picture_loader.h"
#include "controls/tree_view.h"
#include "folders/folder_keys.h"
#include "folders/folder_rows.h"
#include "records/control_drag.h"
#include "records/new_image_box.h"

namespace veldrin::records {

using base::ResumeNext;

namespace {

struct PictureType {
  const char* Name;
  const char* Pattern;
};

constexpr std::array<PictureType, 8> PictureTypes{{
    {"All File(", "*.bmp;*.dib;*.gif;*.jpg;*.pcd;*.pcx;*.tga"},
    {"Windows Bitmap(", "*.bmp"},
    {"Windows DIB(", "*.dib"},
    {"CompuServe(", "*.gif"},
    {"JPEG(", "*.jpg"},
    {"Kodak PhotoCD(", "*.pcd"},
    {"PC Paintbrush(", "*.pcx"},
    {"Targa(", "*.tga"},
}};

}  // namespace

AddView::AddView(catalogue::RecordList& data1, controls::TreeView& tvTreeView, const catalogue::Paths& paths,
                 engine::DBEngine& engine, QString addPicturesDir, controls::LongWork& work,
                 base::TellWork tell, pictures::PictureCache& cache, QWidget* parent)
    : QWidget(parent),
      Data1(data1),
      Tree(tvTreeView),
      ThePaths(paths),
      Engine(engine),
      AddPicturesDir(std::move(addPicturesDir)),
      Work(work),
      Tell(std::move(tell)) {
  setObjectName(QStringLiteral("TabPannel(2)"));
  BuildChoosers();
  BuildDragArea();
  BuildDataPanel();
  Arrange();
  Loader = new controls::PictureLoader(cache, *PicNew);
  Connect();
}

void AddView::Connect() {
  using controls::FileListBox;
  connect(FileType, &QComboBox::currentIndexChanged, this, &AddView::FileType_Click);
  connect(Choosers, &controls::DirectoryChooser::Change, this,
          [this] { FileToSel->SetPath(Choosers->Path()); });
  connect(FileToSel, &FileListBox::PathChange, this, &AddView::HideNewImage);
  connect(FileToSel, &FileListBox::PatternChange, this, &AddView::HideNewImage);
  connect(Loader, &controls::PictureLoader::Loaded, this, &AddView::TakeNewImage);
  connect(FileToSel, &FileListBox::Click, this, &AddView::FileToSel_Click);
  connect(ImgFolder, &DropTarget::DragDrop, this, &AddView::ImgFolder_DragDrop);
  connect(NewSaveBttn, &QPushButton::clicked, this, &AddView::newSaveBttn_Click);
  connect(NewCancelBttn, &QPushButton::clicked, this, &AddView::newCancelBttn_Click);
}

void AddView::FillFileTypes() {
  if (FileType->count() != 0) return;
  for (const PictureType& type : PictureTypes) {
    FileType->addItem(QLatin1String(type.Name) + QLatin1String(type.Pattern) + QLatin1Char(')'));
  }
  FileType->setCurrentIndex(0);
  ResumeNext([&] { Choosers->Drive1().SetDrive(AddPicturesDir); });
  ResumeNext([&] { Choosers->Dir1().SetPath(AddPicturesDir); });
}

void AddView::FileType_Click(int listIndex) {
  if (listIndex < 0 || listIndex >= static_cast<int>(PictureTypes.size())) {
    throw base::RuntimeError(base::errSubscriptOutOfRange, QStringLiteral("Subscript out of range"));
  }
  FileToSel->SetPattern(QLatin1String(PictureTypes[listIndex].Pattern));
}

void AddView::FileToSel_Click() { ShowNewImage(); }

bool AddView::IsMultiSelect() const {
  int selected = 0;
  for (int index = 0; index < FileToSel->ListCount(); ++index) {
    if (FileToSel->Selected(index) && ++selected > 1) return true;
  }
  return false;
}

bool AddView::IsFileSelected() const { return FileToSel->Selected(FileToSel->ListIndex()); }

QString AddView::CurrentFile() const {
  if (FileToSel->ListIndex() < 0) return {};
  return FileToSel->Path() + QLatin1Char('/') + FileToSel->List(FileToSel->ListIndex());
}

// Until the picture comes nothing can be dragged.
void AddView::ShowNewImage() {
  PicNew->HideImage();
  Loader->Load(CurrentFile());
}

void AddView::TakeNewImage(const QString& file, const pictures::Picture& picture) {
  if (picture.IsEmpty() || file != CurrentFile()) return;
  base::EndSilently([&] { PicNew->ShowImage(picture, IsMultiSelect(), !IsFileSelected()); });
}

void AddView::HideNewImage() {
  Loader->Load({});
  PicNew->HideImage();
}

// The drop is a gesture only: the folder that receives the photos is the one selected in the tree when they
// are saved.
void AddView::ImgFolder_DragDrop(const QString& source) {
  if (source != QLatin1String("picNew")) return;
  DataPanel->setVisible(true);
  SetFileChoosers(false);
  NTitle->setFocus();
}

void AddView::newCancelBttn_Click() {
  DataPanel->setVisible(false);
  SetFileChoosers(true);
  FileToSel->setFocus();
}

void AddView::SetFileChoosers(bool enabled) {
  Choosers->Dir1().setEnabled(enabled);
  Choosers->Drive1().setEnabled(enabled);
  FileToSel->setEnabled(enabled);
  FileType->setEnabled(enabled);
}

base::WorkReport AddView::StoreSelectedFiles(const controls::Node& folder, int& first, QSet<QString>& left) {
  PhotoBatch batch;
  batch.Directory = FileToSel->Path();
  for (int index = 0; index < FileToSel->ListCount(); ++index) {
    if (FileToSel->Selected(index)) batch.Names << FileToSel->List(index);
  }
  batch.LinkKey = folders::LinkKey(folder.Tag());
  batch.Title = NTitle->text();
  batch.Description = controls::ExactText(*NDescription);
  batch.MadeBy = NMadeBy->text();
  batch.RemoveSources = ChkRemove->isChecked();
  batch.FolderIsAsShown = [&folder](engine::Database& database) {
    return folders::RowIsAsShown(database, folder);
  };
  controls::Progress progress(Work, QStringLiteral("Storing Photos...."),
                              static_cast<int>(batch.Names.size()));
  base::WorkReport report{QStringLiteral("photos"), QStringLiteral("stored in ") + folder.Text(), 0, {}};
  for (const StoredFile& file : StorePhotos(ThePaths, Engine, batch, &progress)) {
    if (file.PhotoID != 0) ++report.Done;
    if (first == 0) first = file.PhotoID;
    if (!file.Failure.isEmpty()) report.Failures.push_back({file.Name, file.Failure});
    if (file.PhotoID == 0 && file.Failure.isEmpty()) left << file.Name;
  }
  report.Stopped = !left.isEmpty();
  return report;
}

// The texts stay for the next batch. Where nothing could be stored all stays, for another try.
void AddView::newSaveBttn_Click() {
  if (!Tree.EndLabelEdit()) return;
  base::WorkReport report;
  int first = 0;
  QSet<QString> left;
  {
    const controls::BusyPointer busy;
    report = StoreSelectedFiles(*Tree.SelectedItem(), first, left);
    ResumeNext([&] {
      Data1.Refresh();
      if (const int position = Data1.PositionOf(first); position >= 0) Data1.SetAbsolutePosition(position);
    });
    if (report.Done > 0 || report.IsAllDone()) LeaveDataEntry(left);
  }
  Tell(report);
}

// What a stop left is selected for another time.
void AddView::LeaveDataEntry(const QSet<QString>& left) {
  DataPanel->setVisible(false);
  SetFileChoosers(true);
  FileToSel->setFocus();
  FileToSel->Refresh();
  for (int index = 0; index < FileToSel->ListCount(); ++index) {
    if (left.contains(FileToSel->List(index))) FileToSel->item(index)->setSelected(true);
  }
  HideNewImage();
}

}  // namespace veldrin::records
