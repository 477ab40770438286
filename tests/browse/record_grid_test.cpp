#include "browse/record_grid.h"

#include <QHeaderView>

#include "support/catalogue_list.h"

namespace veldrin::browse {
namespace {

struct RecordGridTest : testing::Test, test::CatalogueList {
  RecordGridTest() {
    Grid.resize(553, 300);
    Grid.show();
    Grid.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Grid));
    for (int id = 11; id < 20; ++id) Catalogue.AddPhoto(id, "Photo", {});
  }

  QPoint RowAt(int row) { return Grid.visualRect(Grid.model()->index(row, 2)).center(); }
  // Steps of "c3" (click on row 3), "s3" (on its selector), "d3" (drag to it) or a key, with ^ for Ctrl and +
  // for Shift in front.
  void Do(const QString& steps) {
    for (QString step : steps.split(' ')) {
      Qt::KeyboardModifiers keys;
      for (; step[0] == '^' || step[0] == '+'; step.remove(0, 1)) {
        keys |= step[0] == '^' ? Qt::ControlModifier : Qt::ShiftModifier;
      }
      const QPoint point = RowAt(step.mid(1).toInt());
      if (step[0] == 'c') {
        QTest::mouseClick(Grid.viewport(), Qt::LeftButton, keys, point);
      } else if (step[0] == 's') {
        QTest::mouseClick(Grid.verticalHeader()->viewport(), Qt::LeftButton, keys, QPoint(4, point.y()));
      } else if (step[0] == 'd') {
        QMouseEvent move(QEvent::MouseMove, point, QCursor::pos(), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Grid.viewport(), &move);
      } else {
        QTest::keyClick(&Grid, QKeySequence(step)[0].key(), keys);
      }
    }
  }
  // "current row: selected photos"
  QString State() {
    QString state = QStringLiteral("%1:").arg(Grid.currentIndex().row());
    for (int i = 0; i < Data1.SelBookmarks.Count(); ++i) {
      state += QStringLiteral(" %1").arg(Data1.SelBookmarks[i]);
    }
    return state;
  }

  RecordGrid Grid{Data1, nullptr};
};

TEST_F(RecordGridTest, MouseAndKeysGoIntoSelBookmarks) {
  const std::pair<const char*, const char*> cases[] = {
      {"^c3 ^c1 ^c3", "3: 12"},
      {"^c3 ^c1 c2", "2:"},
      {"c4 +c2 +c6", "6: 15 16 17"},
      {"^c1 s3", "3: 14"},
      {"c2 d5 d4", "4: 13 14 15"},
      {"c2 d5 d2", "2: 13"},
      {"c2 +Down +Down +Up", "3: 13 14"},
      {"c6 +End", "8: 17 18 19"},
      {"c2 Space Down Space Up Space", "2: 14"},
      {"^c3 ^c1 Esc", "1:"},
      {"End Down +Down", "8: 19"},
  };
  for (const auto& [steps, state] : cases) {
    Open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Grid.currentIndex().row() == 0; }));
    Do(steps);
    EXPECT_EQ(State(), state) << steps;
  }
  const auto title = [this] { return Grid.currentIndex().siblingAtColumn(2).data(); };
  EXPECT_EQ(title(), "Photo");
  Grid.hide();
  Catalogue.Execute({"UPDATE tblPhotos SET Title = 'theirs'"});
  Grid.show();
  EXPECT_EQ(title(), "theirs") << "changed while it was covered";
}

}  // namespace
}  // namespace veldrin::browse
