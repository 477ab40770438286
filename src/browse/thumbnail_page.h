// Image View: the list of records as a page of twelve thumbnails, with its keys, its scroll bar and the
// selection.
#pragma once

#include <QPushButton>
#include <QScrollBar>
#include <QWidget>
#include <array>
#include <vector>

#include "browse/thumbnail_cells.h"
#include "browse/thumbnail_maker.h"
#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "engine/dao/db_engine.h"

namespace veldrin::browse {

/// `ThumbPannel`. Cell i shows the record at the page's start plus i; the start is the current record's
/// position less CurThumbCell. Shows nothing of an error: a photo without a readable image ends the page at
/// its cell.
class ThumbnailPage : public QWidget {
  Q_OBJECT

 public:
  /// The page and its four buttons belong to `tab`.
  ThumbnailPage(catalogue::RecordList& data1, engine::DBEngine& engine, const catalogue::Paths& paths,
                QWidget* tab);

  /// The cell that shows the current record.
  int CurThumbCell() const { return TheCurThumbCell; }
  QColor MarkColor() const { return TheMarkColor; }
  QScrollBar& ThumbVScroll() { return *Scroll; }

  /// Fills the page from a position of the list. The current record stays; it is taken to stand at `start`'s
  /// page. The focus frame is not moved: who wants it elsewhere calls FocusCell.
  void ShowThumbnails(int start);
  /// What a change of the list asks for while the page shows: the page from the current record on, which gets
  /// the focus.
  void ShowFromCurrentRecord();
  /// The same page again.
  void Redraw() { ShowThumbnails(Data1.AbsolutePosition() - TheCurThumbCell); }
  /// Gives a cell the focus, by which its record becomes the current one.
  void FocusCell(int cell);

  void InitThumbScroll();
  void SyncThumbScroll();

  void ReloadSelPositions();
  void AddSelectedRecord();
  void RemoveSelectedRecord();
  /// Select All.
  void RecordAll_Click();

  void SetMarkColor(QColor color);
  bool MarksAreDimmed() const;

  /// Shows or hides the buttons by which the page is moved, which stand outside of it.
  void SetButtonsVisible(bool visible);

  void bttnFirst_Click();
  void bttnPrevious_Click() { picThumb_KeyUp(TheCurThumbCell, Qt::Key_Left); }
  void bttnNext_Click() { picThumb_KeyUp(TheCurThumbCell, Qt::Key_Right); }
  void bttnLast_Click();

 Q_SIGNALS:
  /// The Record menu is to be shown at the pointer.
  void RecordMenuRequested();

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void ConnectCell(int cell);
  void MakeButtons();

  void picThumb_GotFocus(int cell);
  void picThumb_LostFocus();
  void picThumb_KeyUp(int cell, int key);
  void ImgThumb_MouseDown(const QMouseEvent& event);
  void ImgThumb_MouseUp(int cell, const QMouseEvent& event);
  void ThumbVScroll_Change();

  void FillPage(int start);
  void FillCell(int cell, engine::Database& database, ThumbnailMaker& maker);
  void BeginMissing(int start, ThumbnailMaker& maker) const;
  void MoveToCell(int cell);
  void ToggleSelection(int cell);
  void ClearSelection();
  bool IsSelected(int position) const;
  void ShowRecordMenu(const QMouseEvent& event);

  catalogue::RecordList& Data1;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  ThumbnailCells Cells;
  QScrollBar* Scroll;
  std::array<QPushButton*, 4> Buttons{};

  int TheCurThumbCell = 0;
  int ThumbScrollValue = 0;
  QColor TheMarkColor;
  /// The position of each entry of SelBookmarks; only looked at while there is one.
  std::vector<int> SelPositions;
};

}  // namespace veldrin::browse
