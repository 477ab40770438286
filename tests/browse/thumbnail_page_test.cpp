#include "browse/thumbnail_page.h"

#include <QDir>

#include "browse/page_arithmetic.h"
#include "catalogue/image_store.h"
#include "support/test_support.h"

namespace veldrin::browse {
namespace {

struct ThumbnailPageTest : testing::Test {
  void Add(int first, int last) {
    for (int id = first; id <= last; ++id) Catalogue.AddPhoto(id, "Photo", {}, QSize(40, 60));
  }
  // Photos 1 to `count` with small pictures.
  void Open(int count) {
    Add(1, count);
    Tab.resize(829, 654);
    Tab.show();
    Tab.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Tab));
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = "SELECT tblPhotos.* FROM tblPhotos";
    Data1.Refresh();
    Page.show();
  }

  template <class Control>
  Control& Cell(const char* name, int index) {
    return *Page.findChild<Control*>(QStringLiteral("%1(%2)").arg(name).arg(index));
  }
  QString Title(int index) { return Cell<ThumbCaption>("ThumbTitle", index).Caption(); }
  // The selected ones of the page's cells.
  std::string Marked() {
    std::string marked;
    for (int i = 0; i < CellCount; ++i) {
      if (!Cell<Shape>("shpMark", i).isHidden()) marked += " " + std::to_string(i);
    }
    return marked;
  }
  void Click(int index, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(&Cell<ThumbImage>("ImgThumb", index), Qt::LeftButton, keys);
  }
  // Presses a key on the cell that has the focus.
  void Press(Qt::Key key, int times = 1) {
    for (int i = 0; i < times; ++i) QTest::keyClick(QApplication::focusWidget(), key);
  }
  // "start+cell", with the titles' invariant: cell i shows the record at start + i.
  std::string State() {
    const int start = Data1.AbsolutePosition() - Page.CurThumbCell();
    for (int i = 0; i < CellCount; ++i) {
      const bool filled = start >= 0 && start + i < Data1.RecordCount();
      EXPECT_EQ(!Cell<PictureCell>("picThumb", i).isHidden(), filled) << "cell " << i;
      EXPECT_EQ(Title(i).section(':', 0, 0), filled ? QString::number(start + i + 1) : "");
    }
    return std::to_string(start) + "+" + std::to_string(Page.CurThumbCell());
  }

  test::TestCatalogue Catalogue;
  QWidget Tab;
  catalogue::RecordList Data1{Catalogue.Engine()};
  ThumbnailPage Page{Data1, Catalogue.Engine(), Catalogue.Paths(), &Tab};
};

TEST_F(ThumbnailPageTest, APhotoWithoutImageIsAnEmptyCellWithItsCaption) {
  Open(5);
  Click(2);
  for (int id = 1; id <= 4; ++id) QFile::remove(catalogue::ThumbFileName(Catalogue.Paths(), id));
  QFile::remove(catalogue::ImageFileName(Catalogue.Paths(), 3, "jpg"));
  const QString damaged = catalogue::ThumbFileName(Catalogue.Paths(), 5);
  test::WriteFile(damaged, "BM");
  // Thumbnails that can't be stored are shown all the same.
  QDir().mkdir(catalogue::ThumbFileName(Catalogue.Paths(), 4));
  Catalogue.Execute({"UPDATE tblPhotos SET Title = 'It''s <b>new</b>'",
                     "UPDATE tblPhotos SET Title = Null WHERE PhotoID = 2"});
  Page.Redraw();
  EXPECT_EQ(Title(0), "1: It's <b>new</b>");
  EXPECT_EQ(Title(1), "2: ");
  EXPECT_EQ(State(), "0+2");
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Cell<ThumbImage>("ImgThumb", i).isHidden(), i == 2) << i;
  EXPECT_NE(test::ReadFile(damaged), "BM") << "a damaged one is made anew";
  Catalogue.AddPhoto(6, {}, {}, QSize(4, 4));
  QFile::copy(catalogue::ImageFileName(Catalogue.Paths(), 6, "jpg"),
              catalogue::ImageFileName(Catalogue.Paths(), 3, "jpg"));
  Page.Redraw();
  EXPECT_FALSE(Cell<ThumbImage>("ImgThumb", 2).isHidden());
}

TEST_F(ThumbnailPageTest, TheScrollBarMovesByRowsAndJumps) {
  Open(12);
  QScrollBar& scroll = Page.ThumbVScroll();
  EXPECT_FALSE(scroll.isEnabled());
  Add(13, 40);
  Data1.Refresh();
  EXPECT_EQ(scroll.maximum(), 13);
  scroll.triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(State(), "0+3");
  scroll.setSliderPosition(2);  // as by a drag, from row to row
  EXPECT_EQ(State(), "6+0");
  scroll.setSliderPosition(8);
  EXPECT_EQ(State(), "24+0");
  QWheelEvent turn({50, 50}, Page.mapToGlobal(QPointF(50, 50)), {}, {0, 240}, {}, {}, Qt::NoScrollPhase,
                   false);
  QCoreApplication::sendEvent(&Page, &turn);
  EXPECT_EQ(State(), "18+0");
  EXPECT_EQ(scroll.value(), 6);
  Press(Qt::Key_Home);
  EXPECT_EQ(scroll.value(), 0);
}

TEST_F(ThumbnailPageTest, TheMouseSelects) {
  Open(14);
  Click(4);
  EXPECT_EQ(State(), "0+4");
  QTest::mousePress(&Cell<ThumbImage>("ImgThumb", 0), Qt::RightButton);
  EXPECT_EQ(State(), "0+0") << "the menu is for the photo under the pointer";
  Click(4, Qt::ControlModifier);
  Click(6, Qt::ControlModifier);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(State(), "2+0");
  EXPECT_EQ(Marked(), " 2 4");
  Click(0, Qt::ControlModifier | Qt::ShiftModifier);  // not Ctrl alone: a plain click
  EXPECT_EQ(Marked(), "");
  QTest::mousePress(&Cell<ThumbCaption>("ThumbTitle", 3), Qt::RightButton);
  QTest::mouseClick(&Cell<PictureCell>("picThumb", 3), Qt::LeftButton, Qt::ControlModifier, QPoint(1, 1));
  EXPECT_EQ(State() + Marked(), "2+3 3") << "a black margin is as good as the picture";
}

// A key counts where it went down, also when another one moves the focus meanwhile.
TEST_F(ThumbnailPageTest, KeysThatOverlapCountBoth) {
  Open(5);
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down}) QTest::keyPress(QApplication::focusWidget(), key);
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Right})
    QTest::keyRelease(QApplication::focusWidget(), key);
  EXPECT_EQ(State(), "0+4");
}

TEST(PageArithmetic, MovesAsTheKeySays) {
  const std::tuple<const char*, PagePlace, PagePlace> cases[] = {
      {"right at the edge scrolls by one", MoveRight({0, 11}, 14), {1, 11}},
      {"right never scrolls to the last record", MoveRight({0, 11}, 13), {0, 11}},
      {"right stays on the last record", MoveRight({12, 0}, 13), {12, 0}},
      {"left at the edge scrolls by one", MoveLeft({20, 0}), {19, 0}},
      {"left on the first record stays", MoveLeft({0, 0}), {0, 0}},
      {"down stops with the last record in the last cell", MoveDown({0, 11}, 13), {1, 11}},
      {"down goes to no empty cell", MoveDown({0, 3}, 6), {0, 3}},
      {"down on a full last page stays", MoveDown({0, 9}, 12), {0, 9}},
      {"down that would pass the last record does nothing", MoveDown({12, 9}, 22), {12, 9}},
      {"up scrolls by what is left", MoveUp({2, 1}), {0, 1}},
      {"page down by what is left", MovePageDown({0, 5}, 14), {2, 0}},
      {"page down on the last page goes to the first cell", MovePageDown({0, 5}, 12), {0, 0}},
      {"page down on a short page goes to the first cell", MovePageDown({20, 2}, 25), {20, 0}},
      {"page up on the first page goes to the first cell", MovePageUp({0, 5}), {0, 0}},
      {"the wheel keeps the cell", TurnRows({0, 5}, 2, 20), {6, 5}},
      {"and stops at the ends", TurnRows({2, 5}, -2, 20), {0, 5}},
      {"the end of a short list", LastPlace(5), {0, 4}},
  };
  for (const auto& [name, place, expected] : cases) {
    EXPECT_EQ(std::pair(place.Start, place.Cell), std::pair(expected.Start, expected.Cell)) << name;
  }
  EXPECT_EQ(ScrollMax(13), 4);
  EXPECT_EQ(ScrollMax(1'000'000), 32767) << "the bar counts in sixteen bits";
  EXPECT_EQ(ScrollPosition(10922, 99'999), 32766);
  EXPECT_EQ(ScrollPosition(10923, 99'999), std::nullopt);
  EXPECT_EQ(ScrollPosition(4, 12), std::nullopt);
}

}  // namespace
}  // namespace veldrin::browse
