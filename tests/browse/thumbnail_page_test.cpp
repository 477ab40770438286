#include "browse/thumbnail_page.h"

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
    Page.InitThumbScroll();
    Page.show();
    Page.ShowFromCurrentRecord();
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
  bool FrameIsHidden() { return Page.findChild<Shape*>("shpThumb")->isHidden(); }
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

TEST_F(ThumbnailPageTest, AnEmptyListClearsThePageAndKeepsTheHandlersStill) {
  Open(3);
  Catalogue.Execute({"DELETE FROM tblPhotos"});
  Data1.Refresh();
  Page.ShowThumbnails(0);
  EXPECT_EQ(State(), "-1+0");
  EXPECT_TRUE(FrameIsHidden());
  EXPECT_TRUE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, APhotoWithoutImageCutsThePageShort) {
  Open(5);
  for (int id = 1; id <= 5; ++id) QFile::remove(catalogue::ThumbFileName(Catalogue.Paths(), id));
  QFile::remove(catalogue::ImageFileName(Catalogue.Paths(), 3, "jpg"));
  Catalogue.Execute({"UPDATE tblPhotos SET Title = 'It''s <b>new</b>'",
                     "UPDATE tblPhotos SET Title = Null WHERE PhotoID = 2"});
  Data1.Refresh();
  Page.ShowThumbnails(0);
  EXPECT_EQ(Title(0), "1: It's <b>new</b>");
  EXPECT_EQ(Title(1), "2: ");
  EXPECT_EQ(Title(2), "3: Photo");  // what it showed before
  EXPECT_EQ(Title(3), "4: Photo");
  EXPECT_EQ(Data1.AbsolutePosition(), 2);
  EXPECT_TRUE(FrameIsHidden());
  EXPECT_FALSE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, MovesByKeys) {
  const std::tuple<Qt::Key, int, const char*> steps[] = {
      {Qt::Key_Right, 11, "0+11"}, {Qt::Key_Right, 1, "1+11"}, {Qt::Key_Down, 1, "4+11"},
      {Qt::Key_Up, 3, "4+2"},      {Qt::Key_Up, 2, "0+2"},     {Qt::Key_PageDown, 1, "12+0"},
      {Qt::Key_Left, 1, "11+0"},   {Qt::Key_End, 1, "13+11"},  {Qt::Key_PageDown, 1, "13+0"},
      {Qt::Key_PageUp, 1, "1+0"},  {Qt::Key_Home, 1, "0+0"},   {Qt::Key_A, 1, "0+0"}};
  Open(25);
  for (const auto& [key, times, state] : steps) {
    Press(key, times);
    EXPECT_EQ(State(), state) << "after key " << key;
  }
}

TEST_F(ThumbnailPageTest, TheScrollBarMovesByRowsAndJumps) {
  Open(12);
  QScrollBar& scroll = Page.ThumbVScroll();
  EXPECT_FALSE(scroll.isEnabled());
  Add(13, 40);
  Data1.Refresh();
  Page.InitThumbScroll();
  EXPECT_EQ(scroll.maximum(), 13);
  scroll.triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(State(), "0+3");
  scroll.setValue(8);
  EXPECT_EQ(State(), "24+0");
  Press(Qt::Key_Home);
  EXPECT_EQ(scroll.value(), 0);
}

TEST_F(ThumbnailPageTest, TheMouseSelects) {
  Open(14);
  Click(4);
  EXPECT_EQ(State(), "0+4");
  Page.SetMarkColor(DimmedColor);
  QTest::mousePress(&Cell<ThumbImage>("ImgThumb", 0), Qt::RightButton);
  EXPECT_TRUE(Page.MarksAreDimmed());
  Click(4, Qt::ControlModifier);
  EXPECT_FALSE(Page.MarksAreDimmed());
  Click(6, Qt::ControlModifier);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(State(), "2+0");
  EXPECT_EQ(Marked(), " 2 4");
  Click(11, Qt::ControlModifier);
  Click(4, Qt::ControlModifier);
  EXPECT_EQ(Data1.SelBookmarks.Count(), 2);
  EXPECT_EQ(Marked(), " 2 11");
  Click(0, Qt::ControlModifier | Qt::ShiftModifier);  // not Ctrl alone: a plain click
  EXPECT_EQ(Data1.SelBookmarks.Count(), 0);
  EXPECT_EQ(Marked(), "");
  Click(3, Qt::ControlModifier);
  Page.RecordAll_Click();
  EXPECT_EQ(Data1.SelBookmarks.Count(), 14);
  EXPECT_EQ(State(), "5+0");
  EXPECT_EQ(Marked(), " 0 1 2 3 4 5 6 7 8");
}

using Scroll = PageMove::Scroll;

TEST(PageArithmetic, MovesAsTheKeySays) {
  const std::tuple<const char*, PageMove, PageMove> cases[] = {
      {"right at the edge scrolls by one", MoveRight(11, 11, 14), {Scroll{12, 1}, 11}},
      {"right never scrolls to the last record", MoveRight(11, 11, 13), {{}, 11}},
      {"right on the last record stays", MoveRight(11, 12, 13), {{}, 11}},
      {"left at the edge scrolls by one", MoveLeft(0, 20), {Scroll{19, 19}, 0}},
      {"left on the first record stays", MoveLeft(0, 0), {{}, 0}},
      {"down stops with the last record in the last cell", MoveDown(11, 11, 13), {Scroll{12, 1}, 11}},
      {"down on a full last page stays", MoveDown(9, 9, 12), {{}, 9}},
      {"down that would pass the last record does nothing", MoveDown(9, 21, 22), {{}, 9}},
      {"up scrolls by what is left", MoveUp(1, 3), {Scroll{1, 0}, 1}},
      {"page down by what is left", MovePageDown(5, 5, 14), {Scroll{2, 2}, 0}},
      {"page down on the last page goes to the first cell", MovePageDown(5, 5, 12), {{}, 0}},
      {"page down on a short page goes to the first cell", MovePageDown(2, 22, 25), {{}, 0}},
      {"page up on the first page goes to the first cell", MovePageUp(5, 5), {{}, 0}},
  };
  for (const auto& [name, move, expected] : cases) EXPECT_EQ(move, expected) << name;
  EXPECT_EQ(ScrollMax(13), 4);
  EXPECT_EQ(ScrollMax(1'000'000), 32767) << "the bar counts in sixteen bits";
  EXPECT_EQ(ScrollPosition(10922), 32766);
  EXPECT_EQ(ScrollPosition(10923), std::nullopt);
}

// Whatever keys are pressed from whatever page, the current record and its cell stay within the list.
TEST(PageArithmetic, WalksEveryListWithoutLeavingIt) {
  for (int count : {1, 2, 5, 11, 12, 13, 14, 22, 25, 40}) {
    for (int at = 0; at < count; ++at) {
      for (int cell = 0; cell < CellCount && cell <= at; ++cell) {
        for (const PageMove& move :
             {MoveRight(cell, at, count), MoveLeft(cell, at), MoveDown(cell, at, count), MoveUp(cell, at),
              MovePageDown(cell, at, count), MovePageUp(cell, at)}) {
          const auto [position, start] = move.Page.value_or(Scroll{0, 0});
          ASSERT_TRUE(0 <= start && start <= position && position < count && position - start < CellCount)
              << count << ' ' << at << ' ' << cell;
        }
      }
    }
  }
}

}  // namespace
}  // namespace veldrin::browse
