// The grid of the list: the user moves through the records and selects some of them.
#pragma once

#include <QTableView>
#include <optional>

#include "browse/record_model.h"
#include "catalogue/record_list.h"

namespace veldrin::browse {

/// `TDBGrid1`. Its current row is the current record, which it follows while it is visible. The selection is
/// SelBookmarks alone, which other views change as well: a click on a row ends it, a click on the selector in
/// front of the row selects that row, Ctrl adds or takes away a row, and Shift or a drag selects all rows
/// from the last one on; so do the keys, with Space for one row.
class RecordGrid : public QTableView {
  Q_OBJECT

 public:
  /// The list must outlive the grid.
  RecordGrid(catalogue::RecordList& data1, QWidget* parent);

  /// The colour of selected rows at load; SetGridSelColor writes the one in use.
  QColor GridSelColor() const { return TheGridSelColor; }
  void SetGridSelColor(QColor color);

  // Would read every record of the list for a letter typed.
  void keyboardSearch(const QString&) override {}

 Q_SIGNALS:
  /// The Record menu is to be shown at the pointer.
  void RecordMenuRequested();

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SetLook();
  void Follow();
  void CurrentRowChanged(int row);
  void MoveToRow(int row);
  void SelectTo(int row);
  void ToggleRow(int row);
  void PressRow(int row, Qt::KeyboardModifiers modifiers, bool onSelector);
  void Press(const QMouseEvent& event, bool onSelector);
  void Drag(const QMouseEvent& event);

  catalogue::RecordList& Data1;
  RecordModel Model;
  QColor TheGridSelColor;
  int Anchor = 0;          ///< the row from which Shift selects
  bool Extending = false;  ///< while a move keeps the anchor
  bool Dragged = false;    ///< since the button went down
  /// Where a drag may begin; none after a press that picks single rows.
  std::optional<QPoint> PressedAt;
};

}  // namespace veldrin::browse
