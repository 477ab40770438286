#include "browse/thumbnail_page.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "base/failure.h"
#include "catalogue/image_store.h"
#include "controls/navigator.h"
#include "controls/panel_size.h"
#include "controls/twips.h"
#include "pictures/picture.h"

namespace veldrin::browse {

using base::EndSilently;
using base::ResumeNext;

namespace {

// Whether it was made for a screen as fine as there is. Rounding takes a pixel.
bool IsFine(const pictures::Picture& thumbnail) {
  const double ratio = ThumbnailSupply::PixelRatio();
  const QSize pixels = thumbnail.Image().size();
  return pixels.width() + 1 >= base::ToPixels(catalogue::ThumbnailBox.Width) * ratio ||
         pixels.height() + 1 >= base::ToPixels(catalogue::ThumbnailBox.Height) * ratio;
}

constexpr int NotchOfWheel = 120;  // eighths of a degree, as the event has them

}  // namespace

ThumbnailPage::ThumbnailPage(catalogue::RecordList& data1, engine::DBEngine& engine,
                             const catalogue::Paths& paths, QWidget* tab)
    : QWidget(tab),
      Data1(data1),
      ThePaths(paths),
      Cells(*this),
      Supply(data1, engine, paths),
      Scroll(controls::Named(new QScrollBar(Qt::Vertical, this), "ThumbVScroll")),
      TheMarkColor(Cells.shpMark[0]->BorderColor()) {
  setObjectName(QStringLiteral("ThumbPannel"));
  setAutoFillBackground(true);
  setPalette(QPalette(QColor(0x4f, 0x6d, 0x8c)));
  controls::MoveTwips(*this, 0, 0, controls::ListWidth, controls::PanelHeight);
  connect(&Supply, &ThumbnailSupply::Made, this, &ThumbnailPage::ShowMade);
  connect(&Supply, &ThumbnailSupply::Returned, this, &ThumbnailPage::Redraw);
  MakeScroll();
  for (int i = 0; i < CellCount; ++i) ConnectCell(i);
  MakeButtons();
  hide();
  connect(&Data1, &catalogue::RecordList::Refreshed, this, [this] {
    Shown.fill(0);  // No cell shows what it showed.
    InitThumbScroll();
  });
  connect(&Data1, &catalogue::RecordList::Reposition, this, &ThumbnailPage::Follow);
  connect(&Data1, &catalogue::RecordList::ReadAgain, this, [this] {
    if (isVisible() && !IsRead) Redraw();
  });
  connect(&Data1.SelBookmarks, &catalogue::SelBookmarkList::Changed, this, &ThumbnailPage::ShowMarks);
}

void ThumbnailPage::ConnectCell(int cell) {
  PictureCell& box = *Cells.picThumb[cell];
  box.GotFocus = [this, cell] { picThumb_GotFocus(cell); };
  box.LostFocus = [this] { picThumb_LostFocus(); };
  // The black margin of a thumbnail is as good as the thumbnail.
  const auto reports = [this, cell](auto& control) {
    control.MouseDown = [this, cell](QMouseEvent* event) { ImgThumb_MouseDown(cell, *event); };
    control.MouseUp = [this, cell, &control](QMouseEvent* event) { ImgThumb_MouseUp(cell, control, *event); };
  };
  reports(box);
  reports(*Cells.ImgThumb[cell]);
  Cells.ThumbTitle[cell]->MouseDown = [this, cell](QMouseEvent* event) {
    ThumbTitle_MouseDown(cell, *event);
  };
}

void ThumbnailPage::MakeScroll() {
  Scroll->setFocusPolicy(Qt::NoFocus);
  Scroll->setSingleStep(1);
  Scroll->setPageStep(1);
  Scroll->setEnabled(false);
  Scroll->installEventFilter(this);
  controls::MoveTwips(*Scroll, 8040, 0, 255, 9615);
  connect(Scroll, &QScrollBar::actionTriggered, this, &ThumbnailPage::ThumbVScroll_Action);
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

// --- following the list -----------------------------------------------------------------------------------

void ThumbnailPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) ShowFromCurrentRecord();
}

// Nobody waits for the pictures of a page that is left.
void ThumbnailPage::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous()) return;
  Supply.LeavePage();
}

void ThumbnailPage::Follow() {
  SyncThumbScroll();
  if (!isVisible()) return;
  const int cell = CurThumbCell();
  const bool onPage =
      Data1.RecordCount() > 0 && cell >= 0 && cell < CellCount && Shown[cell] == Data1.Bookmark();
  if (onPage) return MoveFrame();
  const bool isNew = Shown == decltype(Shown){};
  isNew ? ShowFromCurrentRecord() : ShowThumbnails(PageStart);
}

void ThumbnailPage::ShowThumbnails(int start) {
  const int position = Data1.AbsolutePosition();
  PageStart = std::max(0, position < start || position >= start + CellCount ? position : start);
  FillPage();
}

void ThumbnailPage::ShowFromCurrentRecord() {
  ShowThumbnails(Data1.AbsolutePosition());
  if (Data1.RecordCount() >= 1) FocusCell(0);
}

void ThumbnailPage::ShowMarks() {
  for (int i = 0; i < CellCount; ++i) {
    Cells.shpMark[i]->setVisible(Shown[i] != 0 && Data1.SelBookmarks.Contains(Shown[i]));
  }
}

bool ThumbnailPage::HasFocusInside() const {
  const QWidget* focus = window()->focusWidget();
  return focus == this || (focus != nullptr && isAncestorOf(focus));
}

// The focus, if a cell has it, goes with the frame; on a page without records it stays on the page.
void ThumbnailPage::MoveFrame() {
  const bool focused = HasFocusInside();
  Cells.shpThumb->setVisible(Data1.RecordCount() > 0);
  if (Data1.RecordCount() == 0) {
    if (focused) setFocus();
    return;
  }
  PictureCell& cell = *Cells.picThumb[CurThumbCell()];
  Cells.shpThumb->Surround(cell);
  if (focused && window()->focusWidget() != &cell) cell.setFocus();
  Cells.shpThumb->SetBorderColor(cell.hasFocus() ? FocusColor : DimmedColor);
}

// --- drawing ----------------------------------------------------------------------------------------------

// The cells that show a record first, then the frame, and only then the others go: a cell that had the focus
// would give it to any other control.
void ThumbnailPage::FillPage() {
  const int count = std::clamp(Data1.RecordCount() - PageStart, 0, CellCount);
  catalogue::ListRows rows;
  IsRead = ResumeNext([&] { rows = Data1.ReadRows(PageStart, count); });
  const auto isThere = [&rows](int i) { return i < rows.Count() && rows.IsThere(i); };
  std::deque<ThumbnailMaker::Wish> missing;
  for (int i = 0; i < count; ++i) {
    Shown[i] = Data1.BookmarkAt(PageStart + i);
    Cells.ThumbTitle[i]->SetCaption(
        QStringLiteral("%1: ").arg(Shown[i]) +
        (isThere(i) ? rows.Field(i, QStringLiteral("Title")).toString() : QString()));
    pictures::Picture thumbnail;
    EndSilently([&] {
      if (isThere(i)) thumbnail = pictures::LoadPicture(ThumbFileName(ThePaths, Shown[i]));
    });
    Cells.ShowPicture(i, thumbnail);
    // One that can't be loaded is made anew, also one for a screen that was coarser.
    if (isThere(i) && !IsFine(thumbnail))
      missing.push_back({Shown[i], rows.Field(i, QStringLiteral("ImageType")).toString()});
  }
  std::fill(Shown.begin() + count, Shown.end(), 0);
  ShowMarks();
  MoveFrame();
  for (int i = count; i < CellCount; ++i) Cells.Clear(i);
  Supply.ShowPage(PageStart, std::move(missing));
}

void ThumbnailPage::ShowMade(int photoId, const pictures::Picture& thumbnail) {
  for (int i = 0; i < CellCount; ++i) {
    if (Shown[i] == photoId) Cells.ShowPicture(i, thumbnail);
  }
}

// --- keys, buttons, wheel ---------------------------------------------------------------------------------

// The page is drawn by following the move.
void ThumbnailPage::GoTo(PagePlace place) {
  if (place != Place()) {
    PageStart = place.Start;
    Data1.SetAbsolutePosition(place.Position());
  }
  FocusCell(place.Cell);
}

void ThumbnailPage::FocusCell(int cell) {
  PictureCell& picture = *Cells.picThumb[cell];
  picture.setFocus();
  // A window that isn't active remembers the focus and sends no event.
  if (!picture.hasFocus()) picThumb_GotFocus(cell);
}

void ThumbnailPage::TakeFocus() {
  if (Data1.RecordCount() > 0) FocusCell(CurThumbCell());
}

void ThumbnailPage::picThumb_GotFocus(int cell) {
  if (Shown[cell] == 0) return;
  if (Data1.Bookmark() != Shown[cell]) EndSilently([&] { Data1.SetBookmark(Shown[cell]); });
  MoveFrame();
}

// Keys that are released elsewhere are not waited for.
void ThumbnailPage::picThumb_LostFocus() {
  Cells.shpThumb->SetBorderColor(DimmedColor);
  const QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr || !isAncestorOf(focus)) KeysDown.clear();
}

void ThumbnailPage::keyPressEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat()) KeysDown.insert(event->key());
  QWidget::keyPressEvent(event);
}

// A key counts where it went down here; one that brought the focus here belongs to where it went down.
void ThumbnailPage::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat() && KeysDown.erase(event->key()) > 0) picThumb_KeyUp(event->key());
}

void ThumbnailPage::picThumb_KeyUp(int key) {
  const int count = Data1.RecordCount();
  if (count == 0) return;
  switch (key) {
    case Qt::Key_Right:
      return GoTo(MoveRight(Place(), count));
    case Qt::Key_Left:
      return GoTo(MoveLeft(Place()));
    case Qt::Key_Down:
      return GoTo(MoveDown(Place(), count));
    case Qt::Key_Up:
      return GoTo(MoveUp(Place()));
    case Qt::Key_PageDown:
      return GoTo(MovePageDown(Place(), count));
    case Qt::Key_PageUp:
      return GoTo(MovePageUp(Place()));
    case Qt::Key_Home:
      return bttnFirst_Click();
    case Qt::Key_End:
      return bttnLast_Click();
    default:
      return;
  }
}

void ThumbnailPage::bttnFirst_Click() {
  if (Data1.AbsolutePosition() >= 1) GoTo({0, 0});
}

void ThumbnailPage::bttnLast_Click() {
  if (Data1.RecordCount() >= 1) GoTo(LastPlace(Data1.RecordCount()));
}

void ThumbnailPage::wheelEvent(QWheelEvent* event) {
  event->accept();
  WheelTurn += event->angleDelta().y();
  const int rows = -WheelTurn / NotchOfWheel;
  WheelTurn %= NotchOfWheel;
  if (rows != 0 && Data1.RecordCount() > 0) GoTo(TurnRows(Place(), rows, Data1.RecordCount()));
}

// --- the scroll bar ---------------------------------------------------------------------------------------

void ThumbnailPage::InitThumbScroll() {
  const bool enabled = Data1.RecordCount() > CellCount;
  Scroll->setEnabled(enabled);
  if (enabled) Scroll->setRange(0, ScrollMax(Data1.RecordCount()));
  SyncThumbScroll();
}

void ThumbnailPage::SyncThumbScroll() {
  if (Scroll->isEnabled()) Scroll->setValue((Data1.AbsolutePosition() + 1) / CellsPerRow);
}

// What the user does with the bar: a step is a key, anything else goes to its row. The bar then stands where
// the list does.
void ThumbnailPage::ThumbVScroll_Action(int action) {
  switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
    case QAbstractSlider::SliderPageStepAdd:
      picThumb_KeyUp(Qt::Key_Down);
      break;
    case QAbstractSlider::SliderSingleStepSub:
    case QAbstractSlider::SliderPageStepSub:
      picThumb_KeyUp(Qt::Key_Up);
      break;
    default: {
      const auto position = ScrollPosition(Scroll->sliderPosition(), Data1.RecordCount());
      position ? GoTo({*position, 0}) : ShowFromCurrentRecord();
    }
  }
  SyncThumbScroll();
}

bool ThumbnailPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QWidget::eventFilter(watched, event);
  wheelEvent(static_cast<QWheelEvent*>(event));
  return true;
}

// --- the selection and the mouse --------------------------------------------------------------------------

void ThumbnailPage::SetMarkColor(QColor color) {
  for (Shape* mark : Cells.shpMark) mark->SetBorderColor(color);
}

// The commands of the menu are for the photo under the pointer.
void ThumbnailPage::ImgThumb_MouseDown(int cell, const QMouseEvent& event) {
  PressedPhoto = Shown[cell];
  if (PressedPhoto == 0) return;
  if (event.button() == Qt::RightButton) {
    FocusCell(cell);
    Q_EMIT RecordMenuRequested();
  }
}

void ThumbnailPage::ImgThumb_MouseUp(int cell, const QWidget& control, const QMouseEvent& event) {
  // The button that opened the menu selects nothing; nor does one that went down on another photo, or on a
  // list that has gone.
  if (event.button() == Qt::RightButton || Shown[cell] == 0 || Shown[cell] != PressedPhoto) return;
  constexpr auto shiftKeys = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
  const bool inside = control.rect().contains(event.pos());
  if ((event.modifiers() & shiftKeys) == Qt::ControlModifier) {
    // The focus may end the naming of a new folder, whose list comes then.
    FocusCell(cell);
    if (Shown[cell] == PressedPhoto) Data1.SelBookmarks.Toggle(PressedPhoto);
    return;
  }
  Data1.SelBookmarks.Clear();
  if (event.button() == Qt::LeftButton && inside) FocusCell(cell);
}

// A click on a title selects nothing; its menu is for the photo that it names.
void ThumbnailPage::ThumbTitle_MouseDown(int cell, const QMouseEvent& event) {
  if (event.button() != Qt::RightButton) return;
  if (Shown[cell] != 0) FocusCell(cell);
  Q_EMIT RecordMenuRequested();
}

void ThumbnailPage::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) Q_EMIT RecordMenuRequested();
}

}  // namespace veldrin::browse
