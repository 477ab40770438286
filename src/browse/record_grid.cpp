#include "browse/record_grid.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace veldrin::browse {

namespace {

// All in pixels.
constexpr int RowHeight = 24;
constexpr int SelectorWidth = 16;
constexpr int ColumnWidths[] = {48, 50, 160, 146, 110, 240, 146};  // by what the columns hold

bool IsRowKey(int key) {
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

// Draws a row as selected where its record stands in SelBookmarks.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(catalogue::RecordList& data1, QTableView& grid)
      : QStyledItemDelegate(&grid), Data1(data1), Grid(grid) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
    const bool selected =
        Data1.SelBookmarks.Count() > 0 && Data1.SelBookmarks.Contains(Data1.BookmarkAt(index.row()));
    option->state.setFlag(QStyle::State_Selected, selected);
    if (!selected && index.row() == Grid.currentIndex().row()) {
      option->backgroundBrush = Grid.palette().color(QPalette::Highlight).lighter(190);
    }
  }

 private:
  catalogue::RecordList& Data1;
  QTableView& Grid;
};

// The selectors in front of the rows, with an arrow at the current one.
class RowSelectors : public QHeaderView {
 public:
  explicit RowSelectors(QTableView& grid) : QHeaderView(Qt::Vertical, &grid), Grid(grid) {}

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int row) const override {
    painter->save();  // The style leaves a clip behind.
    QHeaderView::paintSection(painter, rect, row);
    painter->restore();
    if (row != Grid.currentIndex().row()) return;
    const QPoint tip(rect.right() - 4, rect.center().y());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette().color(QPalette::WindowText));
    painter->drawPolygon(QPolygon({tip, tip + QPoint(-6, -5), tip + QPoint(-6, 5)}));
  }

 private:
  QTableView& Grid;
};

}  // namespace

RecordGrid::RecordGrid(catalogue::RecordList& data1, QWidget* parent)
    : QTableView(parent), Data1(data1), Model(data1), TheGridSelColor(palette().color(QPalette::Highlight)) {
  setObjectName(QStringLiteral("TDBGrid1"));
  setModel(&Model);
  setItemDelegate(new RowDelegate(Data1, *this));
  SetLook();
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& index) { CurrentRowChanged(index.row()); });
  connect(&Data1, &catalogue::RecordList::Reposition, this, &RecordGrid::Follow);
  connect(&Data1.SelBookmarks, &catalogue::SelBookmarkList::Changed, viewport(),
          qOverload<>(&QWidget::update));
}

void RecordGrid::SetLook() {
  setSelectionMode(QAbstractItemView::NoSelection);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setVerticalHeader(new RowSelectors(*this));
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(RowHeight);
  verticalHeader()->setFixedWidth(SelectorWidth);
  for (QHeaderView* header : {verticalHeader(), horizontalHeader()})
    header->viewport()->installEventFilter(this);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  for (int column = 0; column < 7; ++column) setColumnWidth(column, ColumnWidths[column]);
}

void RecordGrid::SetGridSelColor(QColor color) {
  if (this->palette().color(QPalette::Highlight) == color) return;
  QPalette palette = this->palette();
  palette.setColor(QPalette::Highlight, color);
  setPalette(palette);
}

// --- the current record -----------------------------------------------------------------------------------

void RecordGrid::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  // While it was covered rows may have changed.
  Model.Forget();
  Follow();
}

void RecordGrid::Follow() {
  const int position = Data1.AbsolutePosition();
  if (!isVisible() || position < 0) return;
  if (currentIndex().row() != position) MoveToRow(position);
  scrollTo(currentIndex());
}

void RecordGrid::MoveToRow(int row) {
  setCurrentIndex(Model.index(row, std::max(0, currentIndex().column())));
}

// The base class moves its current row by itself, as for a key, and forgets it with the old list.
void RecordGrid::CurrentRowChanged(int row) {
  if (!Extending) Anchor = std::max(0, row);
  if (isVisible() && row >= 0 && row != Data1.AbsolutePosition()) Data1.SetAbsolutePosition(row);
  viewport()->update();
  verticalHeader()->viewport()->update();
}

// --- the selection ----------------------------------------------------------------------------------------

void RecordGrid::SelectTo(int row) {
  const int anchor = std::min(Anchor, Data1.RecordCount() - 1);
  const int first = std::min(anchor, row);
  const int last = std::max(anchor, row);
  std::vector<int> bookmarks(last - first + 1);
  std::iota(bookmarks.begin(), bookmarks.end(), first);
  for (int& bookmark : bookmarks) bookmark = Data1.BookmarkAt(bookmark);
  Data1.SelBookmarks.Replace(std::move(bookmarks));
}

void RecordGrid::ToggleRow(int row) { Data1.SelBookmarks.Toggle(Data1.BookmarkAt(row)); }

void RecordGrid::PressRow(int row, Qt::KeyboardModifiers modifiers, bool onSelector) {
  const QScopedValueRollback extending(Extending, modifiers.testFlag(Qt::ShiftModifier));
  if (row < 0) return Data1.SelBookmarks.Clear();
  MoveToRow(row);
  if (Extending) return SelectTo(row);
  Anchor = row;
  if (modifiers.testFlag(Qt::ControlModifier)) return ToggleRow(row);
  if (onSelector) return SelectTo(row);
  Data1.SelBookmarks.Clear();
}

// --- mouse and keys ---------------------------------------------------------------------------------------

void RecordGrid::Press(const QMouseEvent& event, bool onSelector) {
  const int row = rowAt(event.pos().y());
  if (event.button() == Qt::RightButton) {
    // The commands of the menu act on the selection, otherwise on the current record: let that be this one.
    if (Data1.SelBookmarks.Count() == 0 && row >= 0) MoveToRow(row);
    Q_EMIT RecordMenuRequested();
  } else if (event.button() == Qt::LeftButton) {
    PressRow(row, event.modifiers(), onSelector);
    PressedAt.reset();
    Dragged = false;
    if (row >= 0 && !event.modifiers().testFlag(Qt::ControlModifier)) PressedAt = event.pos();
  }
}

// A hand that slips over the border of a row while it clicks selects nothing; one that comes back to where it
// began, nothing but that row.
void RecordGrid::Drag(const QMouseEvent& event) {
  if (!event.buttons().testFlag(Qt::LeftButton) || !PressedAt) return;
  const int row = rowAt(event.pos().y());
  const int way = (event.pos() - *PressedAt).manhattanLength();
  if (row < 0 || row == currentIndex().row()) return;
  if (!Dragged && way < QApplication::startDragDistance()) return;
  Dragged = true;
  const QScopedValueRollback extending(Extending, true);
  MoveToRow(row);
  SelectTo(row);
}

void RecordGrid::mousePressEvent(QMouseEvent* event) { Press(*event, false); }
void RecordGrid::mouseDoubleClickEvent(QMouseEvent* event) { Press(*event, false); }
void RecordGrid::mouseMoveEvent(QMouseEvent* event) { Drag(*event); }

// The headers: the selectors are pressed as the rows are, and the menu comes up everywhere.
bool RecordGrid::eventFilter(QObject* watched, QEvent* event) {
  const bool onSelector = watched == verticalHeader()->viewport();
  if (!onSelector && watched != horizontalHeader()->viewport())
    return QTableView::eventFilter(watched, event);
  const auto* mouse = dynamic_cast<QMouseEvent*>(event);
  if (mouse == nullptr) return false;
  const bool press =
      mouse->type() == QEvent::MouseButtonPress || mouse->type() == QEvent::MouseButtonDblClick;
  if (!onSelector) {
    if (press && mouse->button() == Qt::RightButton) Q_EMIT RecordMenuRequested();
    return false;
  }
  if (press) {
    setFocus(Qt::MouseFocusReason);
    Press(*mouse, true);
  } else if (mouse->type() == QEvent::MouseMove) {
    Drag(*mouse);
  }
  return true;
}

void RecordGrid::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const int row = currentIndex().row();
  const int last = Data1.RecordCount() - 1;
  if (key == Qt::Key_Space && row >= 0) return ToggleRow(row);
  if (key == Qt::Key_Escape && Data1.SelBookmarks.Count() > 0) return Data1.SelBookmarks.Clear();
  if (!IsRowKey(key) || last < 0) return QTableView::keyPressEvent(event);

  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  const QScopedValueRollback extending(Extending, shift);
  if (key == Qt::Key_Home || key == Qt::Key_End) {
    MoveToRow(key == Qt::Key_Home ? 0 : last);
  } else {
    QTableView::keyPressEvent(event);
  }
  if (shift) SelectTo(currentIndex().row());
}

}  // namespace veldrin::browse
