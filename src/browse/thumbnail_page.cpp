#include "browse/thumbnail_page.h"

#include <QFileInfo>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "browse/external_viewer.h"
#include "catalogue/image_store.h"
#include "controls/navigator.h"
#include "controls/panel_size.h"
#include "controls/twips.h"
#include "pictures/picture.h"

namespace veldrin::browse {

using base::EndSilently;
using base::ResumeNext;

namespace {

const QString PhotoIDField = QStringLiteral("PhotoID");
const QString ImageTypeField = QStringLiteral("ImageType");

}  // namespace

ThumbnailPage::ThumbnailPage(catalogue::RecordList& data1, engine::DBEngine& engine,
                             const catalogue::Paths& paths, QWidget* tab)
    : QWidget(tab),
      Data1(data1),
      Engine(engine),
      ThePaths(paths),
      Cells(*this),
      Scroll(controls::Named(new QScrollBar(Qt::Vertical, this), "ThumbVScroll")),
      TheMarkColor(Cells.shpMark[0]->BorderColor()) {
  setObjectName(QStringLiteral("ThumbPannel"));
  setAutoFillBackground(true);
  setPalette(QPalette(QColor(0x4f, 0x6d, 0x8c)));
  controls::MoveTwips(*this, 0, 0, controls::ListWidth, controls::PanelHeight);

  Scroll->setFocusPolicy(Qt::NoFocus);
  Scroll->setSingleStep(1);
  Scroll->setPageStep(1);
  controls::MoveTwips(*Scroll, 8040, 0, 255, 9615);
  connect(Scroll, &QScrollBar::valueChanged, this, &ThumbnailPage::ThumbVScroll_Change);

  for (int i = 0; i < CellCount; ++i) ConnectCell(i);
  MakeButtons();
  hide();
}

void ThumbnailPage::ConnectCell(int cell) {
  connect(Cells.picThumb[cell], &PictureCell::GotFocus, this, [this, cell] { picThumb_GotFocus(cell); });
  connect(Cells.picThumb[cell], &PictureCell::LostFocus, this, [this] { picThumb_LostFocus(); });
  connect(Cells.picThumb[cell], &PictureCell::KeyUp, this,
          [this, cell](int key) { picThumb_KeyUp(cell, key); });
  Cells.ImgThumb[cell]->MouseDown = [this](QMouseEvent* event) { ImgThumb_MouseDown(*event); };
  Cells.ImgThumb[cell]->MouseUp = [this, cell](QMouseEvent* event) { ImgThumb_MouseUp(cell, *event); };
  Cells.ThumbTitle[cell]->MouseDown = [this](QMouseEvent* event) { ShowRecordMenu(*event); };
}

void ThumbnailPage::MakeButtons() {
  const controls::NavigatorStep<ThumbnailPage> steps[] = {
      {"bttnFirst", "First Page", &ThumbnailPage::bttnFirst_Click},
      {"bttnPrevious", "Previous Photo", &ThumbnailPage::bttnPrevious_Click},
      {"bttnNext", "Next Photo", &ThumbnailPage::bttnNext_Click},
      {"bttnLast", "Last Page", &ThumbnailPage::bttnLast_Click}};
  Buttons = controls::MakeNavigator<QPushButton>(*parentWidget(), *this, steps);
  for (int i = 0; i < 4; ++i) controls::MoveTwips(*Buttons[i], 8400 + 990 * i, 7215, 885, 420);
  SetButtonsVisible(false);
}

void ThumbnailPage::SetButtonsVisible(bool visible) {
  for (QPushButton* button : Buttons) button->setVisible(visible);
}

// --- drawing ----------------------------------------------------------------------------------------------

void ThumbnailPage::ShowThumbnails(int start) {
  Data1.SuppressReposition = true;
  Cells.HideFrames();
  if (Data1.RecordCount() == 0) {
    for (int i = 0; i < CellCount; ++i) Cells.Clear(i);
    return;  // With no records nothing can move, and the handlers are kept still until a routine clears the
             // guard.
  }
  EndSilently([&] { FillPage(start); });
  Data1.SuppressReposition = false;
}

// An error leaves the cells from the failing one on, the current record and the frame as they are at that
// moment.
void ThumbnailPage::FillPage(int start) {
  const int saved = Data1.AbsolutePosition();
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  ThumbnailMaker maker(ThePaths, devicePixelRatioF());
  BeginMissing(start, maker);
  for (int i = 0; i < CellCount; ++i) {
    if (start + i >= Data1.RecordCount()) {
      Cells.Clear(i);
      continue;
    }
    Data1.SetAbsolutePosition(start + i);
    FillCell(i, *database, maker);
  }
  Data1.SetAbsolutePosition(saved);
  TheCurThumbCell = saved - start;
  Cells.shpThumb->show();
}

void ThumbnailPage::BeginMissing(int start, ThumbnailMaker& maker) const {
  if (start < 0) return;
  const int count = std::min(CellCount, Data1.RecordCount() - start);
  if (count <= 1) return;
  const QStringList names = Data1.Recordset().FieldNames();
  const auto photoIdAt = engine::ColumnAt(names, PhotoIDField);
  const auto imageTypeAt = engine::ColumnAt(names, ImageTypeField);
  for (const auto& row : Data1.Recordset().ReadRows(start, count)) {
    if (row.empty()) continue;
    const int photoId = row.at(photoIdAt).toInt();
    if (!QFileInfo::exists(ThumbFileName(ThePaths, photoId)))
      maker.Begin(photoId, row.at(imageTypeAt).toString());
  }
}

void ThumbnailPage::FillCell(int cell, engine::Database& database, ThumbnailMaker& maker) {
  const int photoId = Data1.Field(PhotoIDField).toInt();
  const bool made = maker.Finish(photoId);
  const QString thumbnail = ThumbFileName(ThePaths, photoId);
  const bool there = QFileInfo::exists(thumbnail);
  RefreshCheckedPhoto(database, ThePaths, photoId);
  // A thumbnail that was there and has gone was thrown away by the check; one that could not be made is not
  // tried twice.
  if (!QFileInfo::exists(thumbnail) && (there || !made)) {
    CreateThumbnail(ThePaths, photoId, Data1.Field(ImageTypeField).toString(), devicePixelRatioF());
  }
  const pictures::Picture picture = pictures::LoadPicture(thumbnail);
  const pictures::TwipSize size = FitToBox(picture, catalogue::ThumbnailBox);
  Cells.ShowPicture(cell, picture.Image(), size.Width, size.Height);
  Cells.ThumbTitle[cell]->SetCaption(QStringLiteral("%1: ").arg(photoId) +
                                     Data1.Field(QStringLiteral("Title")).toString());
  Cells.picThumb[cell]->show();
  if (IsSelected(Data1.AbsolutePosition())) Cells.shpMark[cell]->show();
}

void ThumbnailPage::ShowFromCurrentRecord() {
  ShowThumbnails(Data1.AbsolutePosition());
  if (Data1.RecordCount() >= 1) FocusCell(0);
}

void ThumbnailPage::FocusCell(int cell) {
  PictureCell& picture = *Cells.picThumb[cell];
  picture.setFocus();
  // A window that isn't active remembers the focus and sends no event.
  if (!picture.hasFocus()) picThumb_GotFocus(cell);
}

// --- keys -------------------------------------------------------------------------------------------------

void ThumbnailPage::MoveToCell(int cell) {
  if (cell == TheCurThumbCell) return;
  Data1.SetAbsolutePosition(Data1.AbsolutePosition() + cell - TheCurThumbCell);
  TheCurThumbCell = cell;
}

void ThumbnailPage::picThumb_GotFocus(int cell) {
  EndSilently([&] {
    Cells.shpThumb->Surround(*Cells.picThumb[cell]);
    Cells.shpThumb->SetBorderColor(FocusColor);
    MoveToCell(cell);
  });
}

void ThumbnailPage::picThumb_LostFocus() { Cells.shpThumb->SetBorderColor(DimmedColor); }

void ThumbnailPage::picThumb_KeyUp(int cell, int key) {
  if (Data1.SuppressReposition) return;
  const int position = Data1.AbsolutePosition();
  const int count = Data1.RecordCount();
  PageMove move;
  switch (key) {
    case Qt::Key_Right:
      move = MoveRight(cell, position, count);
      break;
    case Qt::Key_Left:
      move = MoveLeft(cell, position);
      break;
    case Qt::Key_Down:
      move = MoveDown(cell, position, count);
      break;
    case Qt::Key_Up:
      move = MoveUp(cell, position);
      break;
    case Qt::Key_PageDown:
      move = MovePageDown(cell, position, count);
      break;
    case Qt::Key_PageUp:
      move = MovePageUp(cell, position);
      break;
    case Qt::Key_Home:
      return bttnFirst_Click();
    case Qt::Key_End:
      return bttnLast_Click();
    default:
      return;
  }
  if (move.Page) {
    Data1.SetAbsolutePosition(move.Page->Position);
    ShowThumbnails(move.Page->Start);
  }
  if (!Cells.picThumb[move.Target]->isHidden()) FocusCell(move.Target);
  SyncThumbScroll();
}

void ThumbnailPage::bttnFirst_Click() {
  if (Data1.AbsolutePosition() < 1) return;
  Data1.SetAbsolutePosition(0);
  ShowThumbnails(0);
  FocusCell(0);
  SyncThumbScroll();
}

void ThumbnailPage::bttnLast_Click() {
  if (Data1.RecordCount() < 1) return;
  const int last = Data1.RecordCount() - 1;
  const int cell = LastCell(Data1.RecordCount());
  Data1.SetAbsolutePosition(last);
  ShowThumbnails(last - cell);
  FocusCell(cell);
  SyncThumbScroll();
}

// --- the scroll bar ---------------------------------------------------------------------------------------

void ThumbnailPage::InitThumbScroll() {
  if (Data1.RecordCount() <= CellCount) {
    Scroll->setEnabled(false);
    return;
  }
  Scroll->setEnabled(true);
  {
    // A smaller range changes the value on its own; the one change that counts is the one to 0.
    const QSignalBlocker blocker(Scroll);
    Scroll->setRange(0, ScrollMax(Data1.RecordCount()));
  }
  Scroll->setValue(0);
  ThumbScrollValue = 0;
}

void ThumbnailPage::SyncThumbScroll() {
  // Set first, so that the change of the scroll bar finds no difference.
  ThumbScrollValue = (Data1.AbsolutePosition() + 1) / CellsPerRow;
  if (ThumbScrollValue <= Scroll->maximum()) Scroll->setValue(ThumbScrollValue);
}

void ThumbnailPage::ThumbVScroll_Change() {
  const int value = Scroll->value();
  ResumeNext([&] {
    if (Data1.SuppressReposition) return;
    const int rows = value - ThumbScrollValue;
    if (rows == 0) return;
    if (rows == 1) return picThumb_KeyUp(TheCurThumbCell, Qt::Key_Down);
    if (rows == -1) return picThumb_KeyUp(TheCurThumbCell, Qt::Key_Up);
    ResumeNext([&] {
      if (const auto position = ScrollPosition(value)) Data1.SetAbsolutePosition(*position);
    });
    ShowThumbnails(Data1.AbsolutePosition());
    FocusCell(0);
  });
  ThumbScrollValue = Scroll->value();
}

// --- the selection ----------------------------------------------------------------------------------------

bool ThumbnailPage::IsSelected(int position) const {
  if (Data1.SelBookmarks.Count() == 0) return false;
  return std::find(SelPositions.begin(), SelPositions.end(), position) != SelPositions.end();
}

void ThumbnailPage::ReloadSelPositions() {
  const int count = Data1.SelBookmarks.Count();
  SelPositions.resize(count);
  for (int k = 0; k < count; ++k) {
    SelPositions[k] = Data1.PositionOf(Data1.SelBookmarks[k]);
  }
}

void ThumbnailPage::AddSelectedRecord() {
  if (!Data1.SelBookmarks.Add(Data1.Bookmark())) return;
  SelPositions.resize(Data1.SelBookmarks.Count());
  SelPositions.back() = Data1.AbsolutePosition();
}

void ThumbnailPage::RemoveSelectedRecord() {
  const auto end = SelPositions.begin() + Data1.SelBookmarks.Count();
  const auto found = std::find(SelPositions.begin(), end, Data1.AbsolutePosition());
  if (found == end) return;
  Data1.SelBookmarks.Remove(static_cast<int>(found - SelPositions.begin()));
  SelPositions.erase(found);
}

// What is selected already stays in front, as if the records were added one by one.
void ThumbnailPage::RecordAll_Click() {
  if (Data1.RecordCount() == 0) return;
  std::vector<int> all;
  all.reserve(Data1.RecordCount());
  for (int k = 0; k < Data1.SelBookmarks.Count(); ++k) all.push_back(Data1.SelBookmarks[k]);
  for (int position = 0; position < Data1.RecordCount(); ++position) {
    const int bookmark = Data1.BookmarkAt(position);
    if (!Data1.SelBookmarks.Contains(bookmark)) all.push_back(bookmark);
  }
  Data1.SelBookmarks.Replace(std::move(all));
  ReloadSelPositions();
  if (!isHidden()) ShowFromCurrentRecord();
}

void ThumbnailPage::ClearSelection() {
  if (Data1.SelBookmarks.Count() == 0) return;
  for (Shape* mark : Cells.shpMark) mark->hide();
  Data1.SelBookmarks.Clear();
}

void ThumbnailPage::ToggleSelection(int cell) {
  Shape& mark = *Cells.shpMark[cell];
  MoveToCell(cell);
  if (mark.isHidden()) {
    AddSelectedRecord();
    mark.show();
  } else {
    RemoveSelectedRecord();
    mark.hide();
  }
}

void ThumbnailPage::SetMarkColor(QColor color) {
  for (Shape* mark : Cells.shpMark) mark->SetBorderColor(color);
}

bool ThumbnailPage::MarksAreDimmed() const { return Cells.shpMark[0]->BorderColor() == DimmedColor; }

// --- the mouse --------------------------------------------------------------------------------------------

void ThumbnailPage::ShowRecordMenu(const QMouseEvent& event) {
  if (event.button() == Qt::RightButton) Q_EMIT RecordMenuRequested();
}

void ThumbnailPage::ImgThumb_MouseDown(const QMouseEvent& event) {
  if (event.button() == Qt::RightButton) return ShowRecordMenu(event);
  if (MarksAreDimmed()) SetMarkColor(TheMarkColor);
}

void ThumbnailPage::ImgThumb_MouseUp(int cell, const QMouseEvent& event) {
  // The button that opened the menu selects nothing.
  if (event.button() == Qt::RightButton) return;
  constexpr auto shiftKeys = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
  if ((event.modifiers() & shiftKeys) == Qt::ControlModifier) {
    ToggleSelection(cell);
  } else {
    ClearSelection();
  }
  const bool inside = Cells.ImgThumb[cell]->rect().contains(event.pos());
  if (event.button() == Qt::LeftButton && inside) FocusCell(cell);
}

void ThumbnailPage::mousePressEvent(QMouseEvent* event) { ShowRecordMenu(*event); }

}  // namespace veldrin::browse
