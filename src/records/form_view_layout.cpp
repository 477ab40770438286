// The look of Form View: its controls and where they lie, in twips.
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "controls/caption_label.h"
#include "controls/entry_field.h"
#include "controls/fitted_image.h"
#include "controls/panel_size.h"
#include "controls/twips.h"
#include "records/field_length.h"
#include "records/form_view.h"

namespace veldrin::records {

using base::ToPixels;
using controls::MoveTwips;

namespace {

constexpr int ImageHeight = 7215;
constexpr int LeastImageHeight = 3000;
constexpr int CaptionHeight = 225;
constexpr int FieldHeight = 285;
constexpr int FirstRow = 8160;
constexpr int SecondRow = 8760;
constexpr int ColumnLeft = 10560;
constexpr int ColumnWidth = 1455;
constexpr int StepWidth = 360;
// The controls from here on keep their distance to the lower edge of the image.
constexpr int LowerPart = 5500;

// A control's property: its place in a window high enough for the whole form.
const char* const DesignTop = "DesignTop";

constexpr double CaptionScale = 0.75;
constexpr double ValueScale = 0.8;  // so that a date with its time has room

void SetFontScale(QLabel& label, double scale) {
  QFont font = label.font();
  font.setPointSizeF(font.pointSizeF() * scale);
  label.setFont(font);
}

}  // namespace

QLabel* FormView::MakeLabel(const char* name, const QString& text, int left, int top, int width, int height) {
  auto* label = new QLabel(text, this);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  MoveTwips(*label, left, top, width, height);
  return label;
}

controls::CaptionLabel* FormView::MakeValue(const char* name, const char* captionName, const char* caption,
                                            int left, int top, int width) {
  SetFontScale(
      *MakeLabel(captionName, QLatin1String(caption), left, top - CaptionHeight, width, CaptionHeight),
      CaptionScale);
  auto* value = new controls::CaptionLabel(this);
  value->setObjectName(QLatin1String(name));
  value->setFrameShape(QFrame::StyledPanel);
  value->setMargin(3);
  SetFontScale(*value, ValueScale);
  MoveTwips(*value, left, top, width, FieldHeight);
  return value;
}

template <class Field>
Field* FormView::MakeField(const char* name, const char* captionName, const char* caption, int left, int top,
                           int width, int height) {
  QLabel* label =
      MakeLabel(captionName, QLatin1String(caption), left, top - CaptionHeight, width, CaptionHeight);
  SetFontScale(*label, CaptionScale);
  auto* field = new Field(this);
  field->setObjectName(QLatin1String(name));
  controls::InstallEntryManners(*field);
  MoveTwips(*field, left, top, width, height);
  label->setBuddy(field);
  return field;
}

void FormView::MakeImage() {
  FormImagePannel = new QWidget(this);
  FormImagePannel->setObjectName(QStringLiteral("FormImagePannel"));
  FormImagePannel->setAutoFillBackground(true);
  FormImagePannel->setPalette(QPalette(Qt::black));
  MoveTwips(*FormImagePannel, 360, 360, 9615, ImageHeight);
  for (int i = 0; i < 2; ++i) {
    FormImage[i] = new controls::FittedImage(QStringLiteral("FormImage(%1)").arg(i), *FormImagePannel);
  }
  QLabel* info =
      MakeLabel("lblFormViewInfo", QStringLiteral("Double Click on the Image to View, Edit, or Print"), 360,
                360 + ImageHeight + 30, 9615, CaptionHeight);
  info->setAlignment(Qt::AlignCenter);
  SetFontScale(*info, CaptionScale);
  // What ShowFormImage loads; the user sees the picture.
  eImageFile = MakeLabel("eImageFile", {}, 0, 0, 0, 0);
  eImageFile->hide();
}

void FormView::MakeFields() {
  eTitle = MakeField<QLineEdit>("eTitle", "lblTitle", "TITLE", 600, FirstRow, 5535, FieldHeight);
  controls::LimitText(*eTitle, TitleLength);
  eMadeBy = MakeField<QLineEdit>("eMadeBy", "lblMadeBy", "MADE BY", 6120, FirstRow, 1695, FieldHeight);
  controls::LimitText(*eMadeBy, MadeByLength);
  eDate = MakeValue("eDate", "lblDate", "DATE", 7800, FirstRow, 1935);
  ePhotoID = MakeValue("ePhotoID", "lblPhotoID", "PHOTO ID", 600, SecondRow, 1095);
  eImageType = MakeValue("eImageType", "lblImage", "IMAGE", 1680, SecondRow, 975);
  eDescription =
      MakeField<QPlainTextEdit>("eDescription", "lblDesc", "DESCRIPTION", 2640, SecondRow, 7095, 765);
  controls::LimitText(*eDescription, DescriptionLength);
  // Tab goes as the eye does.
  setTabOrder(eTitle, eMadeBy);
  setTabOrder(eMadeBy, eDescription);
}

QToolButton* FormView::MakeStep(const char* name, const char* icon, const QString& tip, int left) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setIcon(QIcon::fromTheme(QLatin1String(icon)));
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setAutoRepeat(true);
  MoveTwips(*button, left, 1200, StepWidth, StepWidth);
  return button;
}

void FormView::MakeNavigator() {
  QLabel* title = MakeLabel("lblCountTitle", QStringLiteral("Record Count"), 10440, 600, 1455, 255);
  eRcdCount = MakeLabel("eRcdCount", {}, 10440, 880, 1455, 255);
  for (QLabel* label : {title, eRcdCount}) label->setAlignment(Qt::AlignCenter);
  First = MakeStep("First", "go-first", QStringLiteral("First Record"), 10440);
  Previous = MakeStep("Previous", "go-previous", QStringLiteral("Previous Record"), 10805);
  Next = MakeStep("Next", "go-next", QStringLiteral("Next Record"), 11170);
  Last = MakeStep("Last", "go-last", QStringLiteral("Last Record"), 11535);
}

void FormView::MakeButtons() {
  const auto make = [this](const char* name, const char* caption, int top) {
    auto* button = new QPushButton(QLatin1String(caption), this);
    button->setObjectName(QLatin1String(name));
    MoveTwips(*button, ColumnLeft, top, ColumnWidth, 390);
    return button;
  };
  make("SearchBttn(1)", "Search", 5760);
  make("GetSBttn", "Get Photo", 6270);
  make("EmailSBttn", "E-Mail Photo", 6780);
  SaveBttn = make("SaveBttn", "Save", FirstRow);
  UndoBttn = make("UndoBttn", "Undo", SecondRow);
  for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    control->setProperty(DesignTop, control->y());
  }
}

// In a window too low for the whole form the image gives way, and what stands below it moves up.
void FormView::resizeEvent(QResizeEvent*) {
  const int missing = std::clamp(ToPixels(controls::PanelHeight) - height(), 0,
                                 ToPixels(ImageHeight) - ToPixels(LeastImageHeight));
  FormImagePannel->resize(FormImagePannel->width(), ToPixels(ImageHeight) - missing);
  for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const int top = control->property(DesignTop).toInt();
    if (top > ToPixels(LowerPart)) control->move(control->x(), top - missing);
  }
}

}  // namespace veldrin::records
