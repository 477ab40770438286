#include <QApplication>
#include <QMenu>
#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>

#include "journeys/journey_steps.h"
#include "show/show_toolbar.h"

namespace veldrin::test {

namespace {

constexpr Qt::Key RowKeys[] = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,       Qt::Key_Down,
                               Qt::Key_Home, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End};
Qt::Key RowKey(int number) { return RowKeys[number % std::size(RowKeys)]; }

std::vector<int> Toggled(std::vector<int> numbers, int number) {
  if (std::erase(numbers, number) == 0) numbers.push_back(number);
  return numbers;
}

void Drag(const QWidget& control, QPoint from, QPoint to) {
  QWindow* window = control.window()->windowHandle();
  const QPoint corner = control.mapTo(control.window(), QPoint());
  QTest::mousePress(window, Qt::LeftButton, {}, corner + from);
  QTest::mouseMove(window, corner + to);
  QTest::mouseRelease(window, Qt::LeftButton, {}, corner + to);
}

// --- thumbnails -------------------------------------------------------------------------------------------

// The black margin of a thumbnail is as good as the thumbnail.
void ClickThumb(Walk& walk, int a, int b) {
  const auto cell = a % browse::CellCount;
  const CellOnScreen& seen = walk.Before.Cells[cell];
  if (!walk.Before.Page || !seen.Shown) return;
  QWidget& box = *walk.On().Cells[cell];
  const bool right = b % 8 == 6;
  const bool ctrl = b % 8 >= 3 && b % 8 <= 5;
  const QPoint place = b % 3 == 0 ? QPoint(1, 1) : box.rect().center();
  if (!walk.Click(box, place, ctrl ? Qt::ControlModifier : Qt::NoModifier,
                  right ? Qt::RightButton : Qt::LeftButton))
    return;
  walk.LeaveMenu();
  const int number = seen.Caption.section(u':', 0, 0).toInt();
  walk.ExpectSelection(right  ? walk.Before.Selected
                       : ctrl ? Toggled(walk.Before.Selected, number)
                              : std::vector<int>());
  if (!walk.Before.Naming) walk.ExpectCurrent(number);
}

// A click on a title selects nothing; the menu is for the photo that it names.
void ClickCaption(Walk& walk, int a, int b) {
  const auto cell = a % browse::CellCount;
  const bool right = b % 2 == 0;
  QWidget& caption = *walk.On().Captions[cell];
  if (!walk.Before.Page ||
      !walk.Click(caption, caption.rect().center(), {}, right ? Qt::RightButton : Qt::LeftButton))
    return;
  walk.LeaveMenu();
  walk.ExpectSelection(walk.Before.Selected);
  const CellOnScreen& seen = walk.Before.Cells[cell];
  if (right && seen.Shown && !walk.Before.Naming)
    walk.ExpectCurrent(seen.Caption.section(u':', 0, 0).toInt());
}

void TurnPage(Walk& walk, int a, int) {
  const char* const buttons[] = {"bttnFirst", "bttnPrevious", "bttnNext", "bttnLast"};
  if (walk.Click(buttons[a % 4])) walk.ExpectSelection(walk.Before.Selected);
}

void DragScroll(Walk& walk, int a, int) {
  QScrollBar& scroll = walk.On().Scroll;
  if (!walk.Before.Page || !scroll.isEnabled()) return;
  QStyleOptionSlider option;
  option.initFrom(&scroll);
  option.orientation = Qt::Vertical;
  option.maximum = scroll.maximum();
  option.pageStep = scroll.pageStep();
  option.sliderPosition = option.sliderValue = scroll.value();
  const QRect thumb =
      scroll.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &scroll);
  if (!walk.InSight(scroll, thumb.center())) return;
  Drag(scroll, thumb.center(), QPoint(thumb.center().x(), a % scroll.height()));
  walk.ExpectSelection(walk.Before.Selected);
}

void Wheel(Walk& walk, int a, int b) {
  QWidget* const targets[] = {&walk.On().Scroll, walk.On().Cells[b % 12], walk.On().Grid.viewport(),
                              &walk.On().Slider, walk.On().Tree.viewport()};
  QWidget& target = *targets[a % 5];
  if (!walk.InSight(target, target.rect().center())) return;
  const QPoint place = target.rect().center();
  QWheelEvent event(place, target.mapToGlobal(place), {}, QPoint(0, b % 2 == 0 ? 120 : -120), Qt::NoButton,
                    {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&target, &event);
}

// --- keys -------------------------------------------------------------------------------------------------

void PressRowKey(Walk& walk, int a, int b) {
  if (walk.Before.Naming) return;
  walk.Key(RowKey(a), b % 4 == 0 ? Qt::ShiftModifier : Qt::NoModifier);
}

void PressTwoKeys(Walk& walk, int a, int b) {
  if (walk.Before.Naming) return;
  for (const auto action : {QTest::Press, QTest::Release})
    for (const Qt::Key key : {RowKey(a), RowKey(b)})
      if (QApplication::focusWidget() != nullptr) QTest::keyEvent(action, QApplication::focusWidget(), key);
}

void PressTab(Walk& walk, int a, int) {
  a % 2 == 0 ? walk.Key(Qt::Key_Tab) : walk.Key(Qt::Key_Backtab, Qt::ShiftModifier);
}

// --- the grid and the navigator ---------------------------------------------------------------------------

std::optional<QPoint> PlaceOfRow(Walk& walk, int number) {
  const auto& grid = walk.On().Grid;
  const int top = std::max(0, grid.rowAt(0));
  const int rows = std::min<int>(static_cast<int>(walk.Before.List.size()) - top, 20);
  if (walk.Before.Tab != shell::BrowseTab || walk.Before.Page || rows <= 0) return {};
  const int row = top + number % rows;
  const QPoint place(30, grid.rowViewportPosition(row) + grid.rowHeight(row) / 2);
  if (!walk.InSight(*grid.viewport(), place)) return {};
  return place;
}

void ClickRow(Walk& walk, int a, int b) {
  const auto place = PlaceOfRow(walk, a);
  if (!place) return;
  const int row = walk.On().Grid.rowAt(place->y());
  const int number = walk.Before.List[row];
  QWidget& rows = *walk.On().Grid.viewport();
  const Qt::KeyboardModifiers keys[] = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                        Qt::ShiftModifier};
  const bool right = b % 9 == 8;
  walk.Click(rows, *place, right ? Qt::NoModifier : keys[b % 4], right ? Qt::RightButton : Qt::LeftButton);
  walk.LeaveMenu();
  if (right) walk.ExpectSelection(walk.Before.Selected);
  if (!right && b % 4 == 2) walk.ExpectSelection(Toggled(walk.Before.Selected, number));
  // The menu is for the marked ones, where there are any.
  if (!walk.Before.Naming && !(right && !walk.Before.Selected.empty())) walk.ExpectCurrent(number);
}

void DragRows(Walk& walk, int a, int b) {
  const auto from = PlaceOfRow(walk, a);
  const auto to = PlaceOfRow(walk, b);
  if (!from || !to) return;
  Drag(*walk.On().Grid.viewport(), *from, *to);
}

void PressSpaceInGrid(Walk& walk, int a, int) {
  if (QApplication::focusWidget() == &walk.On().Grid && !walk.Before.Naming)
    walk.Key(a % 3 == 0 ? Qt::Key_Escape : Qt::Key_Space);
}

void SelectAll(Walk& walk, int a, int) {
  const bool byKey = a % 2 == 0;
  if (byKey) {
    if (walk.Before.Naming || walk.Before.Tab != shell::BrowseTab) return;
    if (qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr) return;
    if (!Child<QAction>(walk.On().Window, "RecordAll").isEnabled()) return;
    walk.Key(Qt::Key_A, Qt::ControlModifier);
  } else if (!walk.Choose("RecordAll")) {
    return;
  }
  walk.ExpectSelection(walk.Before.List);
}

void Navigate(Walk& walk, int a, int) {
  auto& navigator = Child(walk.On().Window, "Data1");
  const auto buttons = navigator.findChildren<QAbstractButton*>();
  if (walk.Click(*buttons[a % buttons.size()])) walk.ExpectSelection(walk.Before.Selected);
}

void NavigateForm(Walk& walk, int a, int) {
  const char* const buttons[] = {"First", "Previous", "Next", "Last"};
  if (walk.Before.Tab == shell::FormTab) walk.Click(buttons[a % 4]);
}

// --- folders ----------------------------------------------------------------------------------------------

std::vector<controls::Node*> NodesInSight(const Walk& walk) {
  std::vector<controls::Node*> nodes;
  auto& tree = walk.On().Tree;
  for (int i = 1; i <= tree.Count(); ++i)
    if (walk.InSight(*tree.viewport(), tree.visualItemRect(tree.NodeAt(i)).center()))
      nodes.push_back(tree.NodeAt(i));
  return nodes;
}

void ClickFolder(Walk& walk, int a, int b) {
  const auto nodes = NodesInSight(walk);
  if (nodes.empty()) return;
  auto& tree = walk.On().Tree;
  const QRect place = tree.visualItemRect(nodes[a % nodes.size()]);
  if (b % 10 < 8) {
    walk.Click(*tree.viewport(), place.center(), {}, b % 10 == 7 ? Qt::RightButton : Qt::LeftButton);
  } else {
    const QPoint arrow(place.left() - tree.indentation() / 2, place.center().y());
    if (arrow.x() > 0) walk.Click(*tree.viewport(), arrow);
  }
  walk.LeaveMenu();
}

void OpenBranch(Walk& walk, int a, int) {
  const auto nodes = NodesInSight(walk);
  if (nodes.empty() || walk.Before.Naming) return;
  auto& tree = walk.On().Tree;
  const QRect place = tree.visualItemRect(nodes[a % nodes.size()]);
  QTest::mouseDClick(tree.window()->windowHandle(), Qt::LeftButton, {},
                     tree.viewport()->mapTo(tree.window(), place.center()));
}

void PressTreeKey(Walk& walk, int a, int b) {
  if (walk.Before.Naming) return;
  auto& tree = walk.On().Tree;
  if (!tree.hasFocus() && !walk.Click(*tree.viewport(), tree.visualItemRect(tree.currentItem()).center()))
    return;
  const Qt::Key letters[] = {Qt::Key_T, Qt::Key_H, Qt::Key_E, Qt::Key_Exclam, Qt::Key_Asterisk};
  walk.Key(b % 5 == 0 ? letters[a % 5] : RowKey(a));
}

void SearchFolder(Walk& walk, int a, int b) {
  auto& field = Child<QLineEdit>(walk.On().Window, "txtFldrSearch");
  if (walk.Before.Naming || !walk.Click(field)) return;
  auto& tree = walk.On().Tree;
  const bool none = b % 6 == 0;
  const QString name = none ? "nowhere" : tree.NodeAt(1 + a % tree.Count())->Text();
  field.selectAll();
  walk.Type(name);
  if (none) walk.AnswerBox("The folder can't be found!", QMessageBox::Ok);
  b % 2 == 0 ? walk.Key(Qt::Key_Return) : static_cast<void>(walk.Click("bttnGo"));
}

// --- views ------------------------------------------------------------------------------------------------

void SwitchView(Walk& walk, int a, int b) {
  const int views[] = {shell::DataViewCode, shell::ImageViewCode, shell::ImageViewCode, shell::FormViewCode,
                       shell::AddNewCode,   shell::ImagePlayCode, shell::DataViewCode,  shell::ImageViewCode};
  walk.ShowView(views[a % 8], b % 2 == 0);
}

void SwitchPreview(Walk& walk, int a, int) {
  walk.Click(a % 3 == 0 ? "PreviewOption(1)" : "PreviewOption(0)");
}

void Refresh(Walk& walk, int a, int) {
  a % 2 == 0 ? walk.Key(Qt::Key_F5) : static_cast<void>(walk.Click("RefreshBttn"));
}

void Reset(Walk& walk, int, int) {
  // A name that is refused stops it.
  if (walk.Click("ResetBttn") && (!walk.Before.Naming || walk.Refreshes > 0)) walk.Model.ClearQuery();
}

// --- the show ---------------------------------------------------------------------------------------------

QToolBar& ShowBar(const Walk& walk) {
  return Child<QToolBar>(Child(walk.On().Window, "TabPannel(3)"), "tbarShow");
}

void PressShowButton(Walk& walk, int a, int) {
  const int buttons[] = {show::PlayForward, show::PlayBackward, show::StopPlay, show::PausePlay,
                         show::StepForward, show::StepBackward, show::PlayOnce, show::PlayRepeat};
  if (walk.Before.Tab != shell::PlayTab) return;
  auto& bar = ShowBar(walk);
  auto& action = Child<QAction>(bar, QStringLiteral("tbarShow(%1)").arg(buttons[a % 8]));
  if (action.isEnabled()) walk.Click(*bar.widgetForAction(&action));
}

void Tick(QObject& window) {
  auto& timer = Child<QTimer>(window, "Timer1");
  timer.setInterval(3'600'000);
  if (!timer.isActive()) return;
  timer.stop();
  QMetaObject::invokeMethod(&timer, "timeout");
}

void TickShow(Walk& walk, int a, int) {
  for (int i = 0; i <= a % 3; ++i) {
    Tick(walk.On().Window);
    QCoreApplication::processEvents();
  }
}

void MoveSlider(Walk& walk, int a, int) {
  QSlider& slider = walk.On().Slider;
  walk.Click(slider, QPoint(a % std::max(1, slider.width()), slider.height() / 2));
}

void ShowFullScreen(Walk& walk, int a, int b) {
  if (walk.Before.Tab != shell::PlayTab) return;
  walk.OnDialog("frmPic", [&walk, a, b](QDialog& dialog) {
    for (int i = 0; i < a % 4; ++i) Tick(dialog);
    if (b % 3 == 0) QTest::keyClick(&dialog, Qt::Key_Space);
    if (b % 2 == 0) {
      QTest::keyClick(&dialog, Qt::Key_Escape);
    } else {
      QTest::mouseDClick(&dialog, Qt::LeftButton, {}, QPoint(5, 5));
    }
  });
  auto& bar = ShowBar(walk);
  walk.Click(*bar.widgetForAction(
      &Child<QAction>(bar, QStringLiteral("tbarShow(%1)").arg(int(show::PlayFullScreen)))));
}

}  // namespace

std::span<const StepKind> ViewSteps() {
  static const StepKind kinds[] = {
      STEP(ClickThumb, 16),  STEP(ClickCaption, 2),  STEP(TurnPage, 4),         STEP(DragScroll, 3),
      STEP(Wheel, 4),        STEP(PressRowKey, 14),  STEP(PressTwoKeys, 3),     STEP(PressTab, 4),
      STEP(ClickRow, 12),    STEP(DragRows, 3),      STEP(PressSpaceInGrid, 3), STEP(SelectAll, 2),
      STEP(Navigate, 6),     STEP(NavigateForm, 6),  STEP(ClickFolder, 12),     STEP(OpenBranch, 2),
      STEP(PressTreeKey, 4), STEP(SearchFolder, 2),  STEP(SwitchView, 14),      STEP(SwitchPreview, 2),
      STEP(Refresh, 3),      STEP(Reset, 2),         STEP(PressShowButton, 8),  STEP(TickShow, 6),
      STEP(MoveSlider, 3),   STEP(ShowFullScreen, 1)};
  return kinds;
}

}  // namespace veldrin::test
