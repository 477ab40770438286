// The look of Form View: its controls and where they lie, in twips.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "controls/caption_label.h"
#include "controls/entry_field.h"
#include "controls/fitted_image.h"
#include "controls/navigator.h"
#include "controls/panel_size.h"
#include "controls/twips.h"
#include "records/field_length.h"
#include "records/form_view.h"

namespace veldrin::records {

using base::ToPixels;
using controls::MoveTwips;
using controls::Named;

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
constexpr int StepDistance = 365;  // from one left edge to the next
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
  QLabel* label = Named(new QLabel(text, this), name);
  label->setTextFormat(Qt::PlainText);
  MoveTwips(*label, left, top, width, height);
  return label;
}

controls::CaptionLabel* FormView::MakeValue(const char* name, const char* captionName, const char* caption,
                                            int left, int top, int width) {
  SetFontScale(
      *MakeLabel(captionName, QLatin1String(caption), left, top - CaptionHeight, width, CaptionHeight),
      CaptionScale);
  auto* value = Named(new controls::CaptionLabel(this), name);
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
  Field* field = Named(new Field(this), name);
  controls::InstallEntryManners(*field);
  MoveTwips(*field, left, top, width, height);
  label->setBuddy(field);
  return field;
}

void FormView::MakeImage() {
  FormImagePannel = Named(new QWidget(this), "FormImagePannel");
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

void FormView::MakeNavigator() {
  QLabel* title = MakeLabel("lblCountTitle", QStringLiteral("Record Count"), 10440, 600, 1455, 255);
  eRcdCount = MakeLabel("eRcdCount", {}, 10440, 880, 1455, 255);
  for (QLabel* label : {title, eRcdCount}) label->setAlignment(Qt::AlignCenter);
  const controls::NavigatorStep<FormView> steps[] = {
      {"First", "First Record", &FormView::First_Click},
      {"Previous", "Previous Record", &FormView::Previous_Click},
      {"Next", "Next Record", &FormView::Next_Click},
      {"Last", "Last Record", &FormView::Last_Click}};
  int left = 10440;
  for (QToolButton* button : controls::MakeNavigator<QToolButton>(*this, *this, steps)) {
    button->setAutoRepeat(true);
    MoveTwips(*button, left, 1200, StepWidth, StepWidth);
    left += StepDistance;
  }
}

void FormView::MakeButtons() {
  const auto make = [this](const char* name, const char* caption, int top) {
    MoveTwips(*Named(new QPushButton(QLatin1String(caption), this), name), ColumnLeft, top, ColumnWidth, 390);
  };
  make("SearchBttn(1)", "Search", 5760);
  make("GetSBttn", "Get Photo", 6270);
  make("EmailSBttn", "E-Mail Photo", 6780);
  make("SaveBttn", "Save", FirstRow);
  make("UndoBttn", "Undo", SecondRow);
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
