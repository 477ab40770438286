#include "records/form_view.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <utility>

#include "base/dates.h"
#include "base/failure.h"
#include "catalogue/chosen_photos.h"
#include "catalogue/image_store.h"
#include "controls/busy_pointer.h"
#include "controls/caption_label.h"
#include "controls/entry_field.h"
#include "controls/error_box.h"
#include "controls/fitted_image.h"
#include "controls/named.h"
#include "controls/picture_loader.h"
#include "engine/dao/transaction.h"

namespace veldrin::records {

using controls::FittedImage;
using engine::Value;

namespace {

QString TextOf(const Value& value) {
  return value.userType() == QMetaType::QDateTime ? base::FormatDate(value.toDateTime()) : value.toString();
}

}  // namespace

FormView::FormView(catalogue::RecordList& data1, const catalogue::Paths& paths, engine::DBEngine& engine,
                   pictures::PictureCache& cache, QWidget* parent)
    : QWidget(parent), Data1(data1), ThePaths(paths), Engine(engine) {
  setObjectName(QStringLiteral("TabPannel(1)"));
  MakeImage();
  Loader = new controls::PictureLoader(cache, *FormImagePannel);
  MakeFields();
  MakeNavigator();
  MakeButtons();
  Connect();
}

QPushButton& FormView::Button(const char* name) const {
  return controls::Get<QPushButton>(*this, QLatin1String(name));
}

void FormView::Connect() {
  for (FittedImage* image : FormImage) {
    connect(image, &FittedImage::DblClick, this, &FormView::FormImage_DblClick);
    connect(image, &FittedImage::Outgrown, Loader, &controls::PictureLoader::Load);
  }
  connect(Loader, &controls::PictureLoader::Loaded, this, &FormView::TakeImage);
  connect(&Button("SaveBttn"), &QPushButton::clicked, this, &FormView::SaveBttn_Click);
  connect(&Button("UndoBttn"), &QPushButton::clicked, this, &FormView::UndoBttn_Click);
  connect(&Data1, &catalogue::RecordList::Reposition, this, &FormView::Follow);
  connect(&Data1, &catalogue::RecordList::ReadAgain, this, [this] {
    if (!IsRead) Follow();
  });
}

void FormView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  HideImages();  // They may be of another list.
  Follow();
}

void FormView::Follow() {
  if (!isVisible()) return;
  const int former = ShownPhotoID;
  ShowFormRecord();
  // The texts that were stored have changed nothing of the image.
  if (!IsSaving || ShownPhotoID != former) ShowFormImage();
}

void FormView::ShowFormRecord() {
  for (QLabel* label : {eRcdCount, eImageFile}) label->clear();
  for (controls::CaptionLabel* label : {eImageType, eDate}) label->SetCaption({});
  for (QLineEdit* field : {eTitle, eMadeBy}) field->clear();
  eDescription->clear();
  ShownPhotoID = 0;
  IsRead = true;
  SetReadOnly(false);
  const int position = Data1.AbsolutePosition();
  if (position < 0) return;
  // Also of a record that can't be read: it is the one that a command would be for.
  ePhotoID->SetCaption(QString::number(Data1.Bookmark()));
  IsRead = base::EndSilently([&] {
    const catalogue::ListRows row = Data1.ReadRows(position, 1);
    if (!row.IsThere(0)) return;
    const auto field = [&row](const char* name) { return row.Field(0, QLatin1String(name)); };
    const int photoId = field("PhotoID").toInt();
    const QString imageType = field("ImageType").toString();
    const QString file = catalogue::ImageFileName(ThePaths, photoId, imageType);
    if (QFileInfo(file).isFile()) eImageFile->setText(file);
    eImageType->SetCaption(imageType);
    eTitle->setText(field("Title").toString());
    eDescription->setPlainText(field("Description").toString());
    eMadeBy->setText(field("MadeBy").toString());
    eDate->SetCaption(TextOf(field("CreateDate")));
    eRcdCount->setText(QStringLiteral("%1 of %2").arg(position + 1).arg(Data1.RecordCount()));
    ShownTexts = TypedTexts();
    ShownPhotoID = photoId;
  });
  SetReadOnly(!IsRead);
}

// What is typed over a record that is still to come would be lost.
void FormView::SetReadOnly(bool readOnly) {
  for (QLineEdit* field : {eTitle, eMadeBy}) field->setReadOnly(readOnly);
  eDescription->setReadOnly(readOnly);
}

// The next one that way is prepared, too.
void FormView::ShowFormImage() {
  const QString file = eImageFile->text();
  if (file.isEmpty()) HideImages();
  Loader->Load(file);
  const int place = Data1.AbsolutePosition();
  const int next = place + (place < std::exchange(FormerPlace, place) ? -1 : 1);
  QString nextFile;
  base::EndSilently([&] { nextFile = ImageFileAt(Data1, ThePaths, next); });
  Loader->Prepare(nextFile);
}

void FormView::TakeImage(const QString& file, const pictures::Picture& picture) {
  if (picture.IsEmpty()) return HideImages();
  FormImage[ShowImageIndex]->SetPicture(file, picture);
  FormImage[ShowImageIndex]->show();
  ShowImageIndex = (ShowImageIndex + 1) & 1;
  FormImage[ShowImageIndex]->hide();
}

void FormView::HideImages() {
  for (FittedImage* image : FormImage) image->hide();
}

// --- the navigator ----------------------------------------------------------------------------------------

void FormView::First_Click() { Data1.MoveNear(0); }
void FormView::Last_Click() { Data1.MoveNear(Data1.RecordCount() - 1); }
void FormView::Next_Click() { Data1.MoveNear(Data1.AbsolutePosition() + 1); }
void FormView::Previous_Click() { Data1.MoveNear(Data1.AbsolutePosition() - 1); }

// --- save -------------------------------------------------------------------------------------------------

FormView::Texts FormView::TypedTexts() const {
  return {eTitle->text(), controls::ExactText(*eDescription), eMadeBy->text()};
}

// Not through the list itself, which the other views show.
catalogue::ChosenPhoto FormView::WriteTexts(int photoId) {
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  const Texts typed = TypedTexts();
  const std::vector<catalogue::ChosenPhoto> shown = Data1.Chosen(false).Photos;
  std::vector<catalogue::ChosenPhoto> written{{photoId, {}}};
  database->WriteGroup([&] {
    WriteRow(*database, shown, typed);
    NoteLooks(*database, written);
    return true;
  });
  ShownTexts = typed;
  return written.front();
}

void FormView::WriteRow(engine::Database& database, const std::vector<catalogue::ChosenPhoto>& photo,
                        const Texts& typed) const {
  const auto checked = catalogue::CheckChosen(database, photo);
  if (!checked.Changed.empty())
    throw base::RuntimeError(base::errDataChanged, catalogue::ChangedPhotosText(checked.Changed));
  const auto row = database.OpenRecordset(
      QStringLiteral("SELECT * FROM tblPhotos WHERE PhotoID = %1").arg(photo.front().PhotoID));
  row->Edit();
  const auto write = [&row](const QString& name, const QString& former, const QString& text) {
    if (text != former) row->SetField(name, text.isEmpty() ? Value() : Value(text));
  };
  write(QStringLiteral("Title"), ShownTexts.Title, typed.Title);
  write(QStringLiteral("Description"), ShownTexts.Description, typed.Description);
  write(QStringLiteral("MadeBy"), ShownTexts.MadeBy, typed.MadeBy);
  row->Update();
}

void FormView::SaveBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  controls::TrapWithBox(this, [&] {
    const controls::BusyPointer busy;
    const int photoId = Data1.Bookmark();
    // Empty fields of a record that couldn't be read are not its texts.
    if (photoId != ShownPhotoID)
      throw base::RuntimeError(base::errNoCurrentRecord, QStringLiteral("No current record."));
    Q_EMIT Saved(WriteTexts(photoId));
    const QScopedValueRollback saving(IsSaving, true);
    Data1.RefreshAt(photoId);
  });
}

}  // namespace veldrin::records
