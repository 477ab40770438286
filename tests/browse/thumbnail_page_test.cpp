#include "browse/thumbnail_page.h"

#include <QDir>

#include "browse/page_arithmetic.h"
#include "catalogue/image_store.h"
#include "support/catalogue_list.h"

namespace veldrin::browse {
namespace {

struct ThumbnailPageTest : testing::Test, test::CatalogueList {
  // Photos 1 to `count` with small pictures.
  void Open(int count) {
    for (int id = 1; id <= count; ++id) Catalogue.AddPhoto(id, "Photo", {}, QSize(40, 60));
    Window.resize(829, 654);
    Window.show();
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
    CatalogueList::Open();
    Page.show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Page.IsComplete(); }));
  }

  // "start+cell"
  std::string State() {
    const int start = Data1.AbsolutePosition() - Page.CurThumbCell();
    return std::to_string(start) + "+" + std::to_string(Page.CurThumbCell());
  }

  ThumbnailPage Page{Data1, Catalogue.Engine(), Catalogue.Paths(), &Window};
};

// The journey walks over all that a page shows.
TEST_F(ThumbnailPageTest, AThumbnailThatIsDamagedOrCantBeStoredIsShownAllTheSame) {
  Open(2);
  const QString damaged = catalogue::ThumbFileName(Catalogue.Paths(), 1);
  test::WriteFile(damaged, "BM");
  const QString taken = catalogue::ThumbFileName(Catalogue.Paths(), 2);
  ASSERT_TRUE(QFile::remove(taken) && QDir().mkdir(taken));
  Page.Redraw();
  EXPECT_TRUE(QTest::qWaitFor([this] { return Page.IsComplete(); }));
  for (const char* image : {"ImgThumb(0)", "ImgThumb(1)"})
    EXPECT_FALSE(Page.findChild<ThumbImage*>(image)->isHidden()) << image;
  EXPECT_NE(test::ReadFile(damaged), "BM") << "a damaged one is made anew";
}

TEST_F(ThumbnailPageTest, BarWheelAndKeysMoveByTheirSteps) {
  Open(40);
  QScrollBar& scroll = Page.ThumbVScroll();
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
  const std::pair<Qt::Key, const char*> keys[] = {
      {Qt::Key_Home, "0+0"},      {Qt::Key_Right, "0+1"},  {Qt::Key_Down, "0+4"},  {Qt::Key_Left, "0+3"},
      {Qt::Key_PageDown, "12+0"}, {Qt::Key_PageUp, "0+0"}, {Qt::Key_End, "28+11"}, {Qt::Key_Up, "28+8"}};
  for (const auto& [key, state] : keys) {
    QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_EQ(State(), state) << key;
  }
  // A key counts where it went down, also when another one moves the focus meanwhile.
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up}) QTest::keyPress(QApplication::focusWidget(), key);
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Left})
    QTest::keyRelease(QApplication::focusWidget(), key);
  EXPECT_EQ(State(), "28+4");
}

TEST_F(ThumbnailPageTest, WhatACellNoLongerShowsIsNeitherSelectedNorMarked) {
  Open(30);
  QWidget& picture = *Page.findChild<ThumbImage*>("ImgThumb(4)");
  Data1.SelBookmarks.Add(7);
  QTest::mousePress(&picture, Qt::LeftButton);
  Data1.SetAbsolutePosition(12);
  QTest::mouseRelease(&picture, Qt::LeftButton);
  EXPECT_TRUE(Data1.SelBookmarks.Contains(7));
  Data1.SetAbsolutePosition(24);
  Data1.SelBookmarks.Add(20);
  EXPECT_TRUE(Page.findChild<Shape*>("shpMark(7)")->isHidden());
  Data1.SetAbsolutePosition(26);
  EXPECT_TRUE(Page.findChild<PictureCell*>("picThumb(2)")->hasFocus()) << "it goes with the frame";
  Data1.SetAbsolutePosition(0);
  // The focus that a click brings may be followed by another list.
  QObject::connect(&Data1, &catalogue::RecordList::Reposition, &picture, [this] {
    if (Data1.RecordCount() == 30) CatalogueList::Open(" WHERE PhotoID > 12");
  });
  QTest::mouseClick(&picture, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(Data1.SelBookmarks.Count(), 0);
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
