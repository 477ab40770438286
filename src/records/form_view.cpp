#include "records/form_view.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "base/dates.h"
#include "base/failure.h"
#include "catalogue/image_store.h"
#include "controls/busy_pointer.h"
#include "controls/caption_label.h"
#include "controls/entry_field.h"
#include "controls/error_box.h"
#include "controls/fitted_image.h"
#include "controls/named.h"

namespace veldrin::records {

using controls::FittedImage;
using engine::Value;

namespace {

const QString PhotoID = QStringLiteral("PhotoID");

QString TextOf(const Value& value) {
  return value.userType() == QMetaType::QDateTime ? base::FormatDate(value.toDateTime()) : value.toString();
}

}  // namespace

FormView::FormView(catalogue::RecordList& data1, const catalogue::Paths& paths, engine::DBEngine& engine,
                   QWidget* parent)
    : QWidget(parent), Data1(data1), ThePaths(paths), Engine(engine) {
  setObjectName(QStringLiteral("TabPannel(1)"));
  MakeImage();
  MakeFields();
  MakeNavigator();
  MakeButtons();
  Connect();
}

QPushButton& FormView::Button(const char* name) const {
  return controls::Get<QPushButton>(*this, QLatin1String(name));
}

void FormView::Connect() {
  for (FittedImage* image : FormImage)
    connect(image, &FittedImage::DblClick, this, &FormView::FormImage_DblClick);
  connect(&Button("SaveBttn"), &QPushButton::clicked, this, &FormView::SaveBttn_Click);
  connect(&Button("UndoBttn"), &QPushButton::clicked, this, &FormView::UndoBttn_Click);
}

void FormView::ShowFormRecord() {
  for (QLabel* label : {eRcdCount, eImageFile}) label->clear();
  for (controls::CaptionLabel* label : {eImageType, eDate}) label->SetCaption({});
  for (QLineEdit* field : {eTitle, eMadeBy}) field->clear();
  eDescription->clear();
  ShownPhotoID = 0;
  const int position = Data1.AbsolutePosition();
  if (position < 0) return;
  base::EndSilently([&] {
    Data1.Reread();
    const int photoId = Data1.Field(PhotoID).toInt();
    const QString imageType = Data1.Field(QStringLiteral("ImageType")).toString();
    const QString file = catalogue::ImageFileName(ThePaths, photoId, imageType);
    if (QFileInfo(file).isFile()) eImageFile->setText(file);
    ePhotoID->SetCaption(QString::number(photoId));
    eImageType->SetCaption(imageType);
    eTitle->setText(Data1.Field(QStringLiteral("Title")).toString());
    eDescription->setPlainText(Data1.Field(QStringLiteral("Description")).toString());
    eMadeBy->setText(Data1.Field(QStringLiteral("MadeBy")).toString());
    eDate->SetCaption(TextOf(Data1.Field(QStringLiteral("CreateDate"))));
    eRcdCount->setText(QStringLiteral("%1 of %2").arg(position + 1).arg(Data1.RecordCount()));
    ShownTexts = TypedTexts();
    ShownPhotoID = photoId;
  });
}

void FormView::ShowFormImage() {
  const bool shown = base::EndSilently([&] {
    FormImage[ShowImageIndex]->Load(eImageFile->text());
    FormImage[ShowImageIndex]->show();
    ShowImageIndex = (ShowImageIndex + 1) & 1;
    FormImage[ShowImageIndex]->hide();
  });
  if (shown) return;
  for (FittedImage* image : FormImage) image->hide();
}

// --- the navigator ----------------------------------------------------------------------------------------

void FormView::MoveAndShow(const std::function<void()>& move) {
  if (Data1.RecordCount() < 1) return;
  const catalogue::RepositionGuard guard(Data1);
  move();
  ShowFormRecord();
  ShowFormImage();
}

void FormView::First_Click() {
  MoveAndShow([&] { Data1.MoveFirst(); });
}

void FormView::Last_Click() {
  MoveAndShow([&] { Data1.MoveLast(); });
}

void FormView::Next_Click() {
  MoveAndShow([&] {
    Data1.MoveNext();
    if (Data1.Recordset().AtEOF()) Data1.MoveLast();
  });
}

void FormView::Previous_Click() {
  MoveAndShow([&] {
    Data1.MovePrevious();
    if (Data1.Recordset().BOF()) Data1.MoveFirst();
  });
}

// --- save -------------------------------------------------------------------------------------------------

FormView::Texts FormView::TypedTexts() const {
  return {eTitle->text(), controls::ExactText(*eDescription), eMadeBy->text()};
}

// Not through the list itself, which the other views show. What wasn't changed here isn't written: another
// machine may have changed it.
void FormView::WriteTexts(int photoId) {
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  const auto row =
      database->OpenRecordset(QStringLiteral("SELECT * FROM tblPhotos WHERE PhotoID = %1").arg(photoId));
  row->Edit();
  const auto write = [&row](const QString& name, const QString& shown, const QString& typed) {
    if (typed != shown) row->SetField(name, typed.isEmpty() ? Value() : Value(typed));
  };
  const Texts typed = TypedTexts();
  write(QStringLiteral("Title"), ShownTexts.Title, typed.Title);
  write(QStringLiteral("Description"), ShownTexts.Description, typed.Description);
  write(QStringLiteral("MadeBy"), ShownTexts.MadeBy, typed.MadeBy);
  row->Update();
}

void FormView::SaveBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  controls::TrapWithBox(this, [&] {
    const controls::BusyPointer busy;
    const int photoId = Data1.Field(PhotoID).toInt();
    // Empty fields of a record that couldn't be read are not its texts.
    if (photoId != ShownPhotoID)
      throw base::RuntimeError(base::errNoCurrentRecord, QStringLiteral("No current record."));
    WriteTexts(photoId);
    Data1.Refresh();
    Data1.FindFirst(QStringLiteral("PhotoID = %1").arg(photoId));
    ShowFormRecord();
    // The texts may have taken the photo out of the query: another record is the current one then.
    if (Data1.RecordCount() == 0 || Data1.Recordset().NoMatch()) ShowFormImage();
  });
  // Stored, but the list couldn't be read again.
  if (ShownPhotoID != 0 && Data1.RecordCount() == 0) ShowFormRecord();
}

}  // namespace veldrin::records
