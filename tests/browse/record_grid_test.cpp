#include "browse/record_grid.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTest>

#include "support/test_support.h"

namespace veldrin::browse {
namespace {

class RecordGridTest : public testing::Test {
 protected:
  RecordGridTest() : Data1(Catalogue.Engine()), Grid(Data1, nullptr) {
    Grid.resize(553, 300);
    Grid.show();
    Grid.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Grid));
  }

  // Photos 11 to 10 + `count`.
  void Open(int count) {
    for (int id = 11; id <= 10 + count; ++id) Catalogue.AddPhoto(id, QStringLiteral("Photo %1").arg(id), {});
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    FollowList();
  }

  void FollowList() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Grid.currentIndex().row() == Data1.AbsolutePosition(); }));
  }

  QPoint RowAt(int row) { return Grid.visualRect(Grid.model()->index(row, 2)).center(); }
  void Click(int row, Qt::KeyboardModifiers keys) {
    QTest::mouseClick(Grid.viewport(), Qt::LeftButton, keys, RowAt(row));
  }
  // Steps of "c3" (click on row 3), "s3" (on its selector), "d3" (drag to it) or a key, with ^ for Ctrl and +
  // for Shift in front.
  void Do(const QString& steps) {
    for (QString step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
      Qt::KeyboardModifiers keys;
      for (; step[0] == QLatin1Char('^') || step[0] == QLatin1Char('+'); step.remove(0, 1)) {
        keys |= step[0] == QLatin1Char('^') ? Qt::ControlModifier : Qt::ShiftModifier;
      }
      if (step[0].isLower()) {
        const int row = step.mid(1).toInt();
        if (step[0] == QLatin1Char('c')) Click(row, keys);
        if (step[0] == QLatin1Char('d')) Drag(row);
        if (step[0] == QLatin1Char('s')) {
          QTest::mouseClick(Grid.verticalHeader()->viewport(), Qt::LeftButton, keys,
                            QPoint(4, RowAt(row).y()));
        }
      } else {
        QTest::keyClick(&Grid, static_cast<Qt::Key>(QKeySequence(step)[0].key()), keys);
      }
    }
  }
  void Drag(int row) {
    QMouseEvent move(QEvent::MouseMove, RowAt(row), Grid.viewport()->mapToGlobal(RowAt(row)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Grid.viewport(), &move);
  }
  // "current row: selected photos"
  QString State() {
    QStringList selected;
    for (int i = 0; i < Data1.SelBookmarks.Count(); ++i) {
      Data1.SetBookmark(Data1.SelBookmarks[i]);
      selected << Data1.Field(QStringLiteral("PhotoID")).toString();
    }
    return QStringLiteral("%1: ").arg(Grid.currentIndex().row()) + selected.join(QLatin1Char(' '));
  }

  test::TestCatalogue Catalogue;
  catalogue::RecordList Data1;
  RecordGrid Grid;
};

struct SelectionCase {
  const char* Name;
  const char* Steps;
  const char* State;
};

class RecordGridSelection : public RecordGridTest, public testing::WithParamInterface<SelectionCase> {};

TEST_P(RecordGridSelection, GoesIntoSelBookmarks) {
  Open(9);
  Do(QLatin1String(GetParam().Steps));
  EXPECT_EQ(State(), QLatin1String(GetParam().State));
}

INSTANTIATE_TEST_SUITE_P(ByMouseAndKeys, RecordGridSelection,
                         testing::Values(SelectionCase{"AClickMovesOnly", "c3", "3: "},
                                         SelectionCase{"CtrlAddsInOrder", "^c3 ^c1 ^c5", "5: 14 12 16"},
                                         SelectionCase{"CtrlTakesAway", "^c3 ^c1 ^c3", "3: 12"},
                                         SelectionCase{"AClickEndsIt", "^c3 ^c1 c2", "2: "},
                                         SelectionCase{"ShiftUpwards", "c4 +c2", "2: 13 14 15"},
                                         SelectionCase{"ShiftKeepsItsAnchor", "c4 +c2 +c6", "6: 15 16 17"},
                                         SelectionCase{"ASelectorSelectsItsRow", "^c1 s3", "3: 14"},
                                         SelectionCase{"CtrlOnASelector", "s3 ^s5", "5: 14 16"},
                                         SelectionCase{"ADragSelectsAsItGoes", "c2 d5 d4", "4: 13 14 15"},
                                         SelectionCase{"KeysMoveOnly", "c2 Down Down Up", "3: "},
                                         SelectionCase{"ShiftAndKeys", "c2 +Down +Down +Up", "3: 13 14"},
                                         SelectionCase{"ShiftEnd", "c6 +End", "8: 17 18 19"},
                                         SelectionCase{"ShiftHome", "c1 +Home", "0: 11 12"},
                                         SelectionCase{"SpaceTogglesTheRow", "c2 Space Down Space Up Space",
                                                       "2: 14"},
                                         SelectionCase{"EscapeEndsIt", "^c3 ^c1 Esc", "1: "},
                                         SelectionCase{"PastTheEnd", "End Down +Down", "8: 19"}),
                         test::CaseName);

TEST_F(RecordGridTest, FollowsTheListAndMovesIt) {
  Open(9);
  Data1.SetAbsolutePosition(7);
  FollowList();
  Do(QStringLiteral("Up Up"));
  EXPECT_EQ(Data1.AbsolutePosition(), 5);
  Do(QStringLiteral("+Down"));
  Data1.Refresh();
  FollowList();
  Do(QStringLiteral("+Down"));
  EXPECT_EQ(State(), QStringLiteral("1: 11 12"));
}

TEST_F(RecordGridTest, TheRightButtonTakesTheRowUnlessSomeAreSelected) {
  Open(9);
  int menus = 0;
  QObject::connect(&Grid, &RecordGrid::RecordMenuRequested, [&menus] { ++menus; });
  QTest::mouseClick(Grid.viewport(), Qt::RightButton, {}, RowAt(4));
  EXPECT_EQ(State(), QStringLiteral("4: "));
  Do(QStringLiteral("^c1"));
  QTest::mouseClick(Grid.viewport(), Qt::RightButton, {}, RowAt(6));
  EXPECT_EQ(State(), QStringLiteral("1: 12"));
  EXPECT_EQ(menus, 2);
}

TEST_F(RecordGridTest, DrawsTheSelectionInItsColour) {
  Open(3);
  Do(QStringLiteral("^c2 Up"));
  const auto colourAt = [&](int row) {
    return Grid.viewport()->grab().toImage().pixelColor(2, RowAt(row).y() - 9);
  };
  EXPECT_EQ(colourAt(2), Grid.GridSelColor());
  EXPECT_NE(colourAt(1), colourAt(2));
  Grid.SetGridSelColor(Qt::gray);
  EXPECT_EQ(colourAt(2), QColor(Qt::gray));
  EXPECT_NE(Grid.GridSelColor(), QColor(Qt::gray));
}

TEST_F(RecordGridTest, AnEmptyListTakesEveryKeyAndClick) {
  Open(0);
  Do(QStringLiteral("Down +End Space Home +PgDown A"));
  QTest::mouseClick(Grid.viewport(), Qt::LeftButton, Qt::ShiftModifier, QPoint(30, 30));
  QTest::mouseClick(Grid.viewport(), Qt::RightButton, {}, QPoint(30, 30));
  EXPECT_EQ(State(), QStringLiteral("-1: "));
}

}  // namespace
}  // namespace veldrin::browse
