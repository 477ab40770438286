// Image View: the list of records as a page of twelve thumbnails, with its keys, its scroll bar and the
// selection.
#pragma once

#include <QPushButton>
#include <QScrollBar>
#include <QWidget>
#include <array>
#include <set>
#include <vector>

#include "browse/thumbnail_cells.h"
#include "browse/thumbnail_supply.h"
#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "engine/dao/db_engine.h"

namespace veldrin::browse {

/// `ThumbPannel`. Cell i shows the record at PageStart plus i, an empty box with its caption where its image
/// can't be read; the frame is on the current record. While it is visible it follows the list: a new list is
/// shown from its current record on, and so is a record that isn't on the page. Thumbnails that have to be
/// made come as they are ready; then those of the pages before and after are made. Shows nothing of an error.
class ThumbnailPage : public QWidget {
  Q_OBJECT

 public:
  /// The page and its four buttons belong to `tab`.
  ThumbnailPage(catalogue::RecordList& data1, engine::DBEngine& engine, const catalogue::Paths& paths,
                QWidget* tab);

  /// The cell that shows the current record, while the page is visible and the list isn't empty.
  int CurThumbCell() const { return Data1.AbsolutePosition() - PageStart; }
  QColor MarkColor() const { return TheMarkColor; }
  QScrollBar& ThumbVScroll() { return *Scroll; }
  /// Whether all pictures of the page stand, and those beside it are prepared.
  bool IsComplete() const { return Supply.IsComplete(); }

  /// Fills the page from a position of the list, or from the current record where that would not be on it.
  void ShowThumbnails(int start);
  /// The page from the current record on, which gets the focus.
  void ShowFromCurrentRecord();
  /// The same page again.
  void Redraw() { ShowThumbnails(PageStart); }
  /// Gives a cell the focus, by which its record becomes the current one.
  void FocusCell(int cell);
  /// Gives the focus to the current record's cell, if there is one.
  void TakeFocus();

  void SetMarkColor(QColor color);

  /// Shows or hides the buttons by which the page is moved, which stand outside of it.
  void SetButtonsVisible(bool visible);

  void bttnFirst_Click();
  void bttnPrevious_Click() { picThumb_KeyUp(Qt::Key_Left); }
  void bttnNext_Click() { picThumb_KeyUp(Qt::Key_Right); }
  void bttnLast_Click();

 Q_SIGNALS:
  /// The Record menu is to be shown at the pointer.
  void RecordMenuRequested();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ConnectCell(int cell);
  void MakeScroll();
  void MakeButtons();

  void picThumb_GotFocus(int cell);
  void picThumb_LostFocus();
  void picThumb_KeyUp(int key);
  void ImgThumb_MouseDown(int cell, const QMouseEvent& event);
  void ImgThumb_MouseUp(int cell, const QWidget& control, const QMouseEvent& event);
  void ThumbTitle_MouseDown(int cell, const QMouseEvent& event);
  void ThumbVScroll_Action(int action);
  void InitThumbScroll();
  void SyncThumbScroll();

  void Follow();
  void ShowMarks();
  void MoveFrame();
  void GoTo(PagePlace place);
  PagePlace Place() const { return {PageStart, CurThumbCell()}; }
  bool HasFocusInside() const;

  void FillPage();
  void ShowMade(int photoId, const pictures::Picture& thumbnail);

  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  ThumbnailCells Cells;
  ThumbnailSupply Supply;
  bool IsRead = true;  ///< all rows of the page
  QScrollBar* Scroll;
  std::array<QPushButton*, 4> Buttons{};

  int PageStart = 0;
  /// The photo that each cell shows; 0 for none. What a click on a cell means.
  std::array<int, CellCount> Shown{};
  QColor TheMarkColor;
  int PressedPhoto = 0;    ///< the photo on which a mouse button went down
  std::set<int> KeysDown;  ///< pressed on the page and not yet released
  int WheelTurn = 0;       ///< in eighths of a degree, as far as it gave no whole row
};

}  // namespace veldrin::browse
