#include "browse/thumbnail_page.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include "catalogue/image_store.h"
#include "support/test_support.h"

namespace veldrin::browse {
namespace {

using test::TestCatalogue;

class ThumbnailPageTest : public testing::Test {
 protected:
  ThumbnailPageTest() : Data1(Catalogue.Engine()), Page(Data1, Catalogue.Engine(), Catalogue.Paths(), &Tab) {
    Tab.resize(829, 654);
    Tab.show();
    Tab.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Tab));
  }

  // Photos 1 to `count` with small pictures.
  void Open(int count) {
    for (int id = 1; id <= count; ++id) {
      Catalogue.AddPhoto(id, QStringLiteral("Photo %1").arg(id), {}, QSize(40 + id, 60));
    }
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    Page.InitThumbScroll();
    Page.show();
    Page.ShowFromCurrentRecord();
  }

  template <class Control>
  Control* Cell(const char* name, int index) {
    return Page.findChild<Control*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
  }
  PictureCell* Picture(int index) { return Cell<PictureCell>("picThumb", index); }
  QString Title(int index) { return Cell<ThumbCaption>("ThumbTitle", index)->Caption(); }
  bool Marked(int index) { return !Cell<platform::Shape>("shpMark", index)->isHidden(); }
  platform::Shape* FocusFrame() { return Page.findChild<platform::Shape*>(QStringLiteral("shpThumb")); }
  void Click(int index, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(Cell<ThumbImage>("ImgThumb", index), Qt::LeftButton, keys);
  }
  // Presses a key on the cell that has the focus.
  void Press(Qt::Key key, int times = 1) {
    for (int i = 0; i < times; ++i) QTest::keyClick(QApplication::focusWidget(), key);
  }
  // "start+cell of count", and the titles' invariant: cell i shows the record at start + i.
  std::string State() {
    const int start = Data1.AbsolutePosition() - Page.CurThumbCell();
    for (int i = 0; i < CellCount; ++i) {
      const bool filled = start + i < Data1.RecordCount();
      EXPECT_EQ(!Picture(i)->isHidden(), filled) << "cell " << i;
      EXPECT_EQ(Title(i).section(QLatin1Char(':'), 0, 0),
                filled ? QString::number(start + i + 1) : QString());
    }
    return std::to_string(start) + "+" + std::to_string(Page.CurThumbCell());
  }

  TestCatalogue Catalogue;
  QWidget Tab;
  catalogue::RecordList Data1;
  ThumbnailPage Page;
};

TEST_F(ThumbnailPageTest, MakesAndShowsTheThumbnailsOfAShortPage) {
  Catalogue.AddPhoto(1, QStringLiteral("It's <b>bold</b>"), {}, QSize(100, 400));
  Catalogue.Execute({QStringLiteral("INSERT INTO tblPhotos (PhotoID, ImageType) VALUES(7, 'jpg')")});
  test::WritePicture(catalogue::ImageFileName(Catalogue.Paths(), 7, QStringLiteral("jpg")),
                     QSize(4000, 1000));
  Open(0);
  EXPECT_EQ(Title(0), QStringLiteral("1: It's <b>bold</b>"));
  EXPECT_EQ(Title(1), QStringLiteral("7: "));
  EXPECT_EQ(Picture(2)->isHidden(), true);
  // A portrait fills the height and stands in the middle; a wide picture fills the width.
  EXPECT_EQ(Cell<ThumbImage>("ImgThumb", 0)->geometry(), QRect(68, 0, 32, 129));
  EXPECT_EQ(Cell<ThumbImage>("ImgThumb", 1)->geometry(), QRect(0, 43, 169, 42));
  EXPECT_EQ(QImage(catalogue::ThumbFileName(Catalogue.Paths(), 7)).size(), QSize(169, 42));
  EXPECT_FALSE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, AnEmptyListClearsThePageAndKeepsTheHandlersStill) {
  Open(3);
  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos")});
  Data1.Refresh();
  Page.ShowThumbnails(0);
  for (int i = 0; i < CellCount; ++i) {
    EXPECT_TRUE(Picture(i)->isHidden());
    EXPECT_EQ(Title(i), QString());
  }
  EXPECT_TRUE(FocusFrame()->isHidden());
  EXPECT_TRUE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, APhotoWithoutImageCutsThePageShort) {
  Open(5);
  QDir(Catalogue.Paths().ThumbDir).removeRecursively();
  QDir().mkpath(Catalogue.Paths().ThumbDir);
  QFile::remove(catalogue::ImageFileName(Catalogue.Paths(), 3, QStringLiteral("jpg")));
  Catalogue.Execute({QStringLiteral("UPDATE tblPhotos SET Title = 'New'")});
  Data1.Refresh();
  Page.ShowThumbnails(0);
  EXPECT_EQ(Title(1), QStringLiteral("2: New"));
  EXPECT_EQ(Title(2), QStringLiteral("3: Photo 3"));  // what it showed before
  EXPECT_EQ(Title(3), QStringLiteral("4: Photo 4"));
  EXPECT_EQ(Data1.AbsolutePosition(), 2);
  EXPECT_TRUE(FocusFrame()->isHidden());
  EXPECT_FALSE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, MovesByKeys) {
  struct Step {
    Qt::Key Key;
    int Times;
    const char* State;
  };
  Open(25);
  for (const Step& step : std::vector<Step>{{Qt::Key_Right, 11, "0+11"},
                                            {Qt::Key_Right, 1, "1+11"},
                                            {Qt::Key_Down, 1, "4+11"},
                                            {Qt::Key_Up, 3, "4+2"},
                                            {Qt::Key_Up, 1, "1+2"},
                                            {Qt::Key_Up, 1, "0+2"},
                                            {Qt::Key_Up, 1, "0+2"},
                                            {Qt::Key_PageDown, 1, "12+0"},
                                            {Qt::Key_PageDown, 1, "13+0"},
                                            {Qt::Key_Left, 1, "12+0"},
                                            {Qt::Key_End, 1, "13+11"},
                                            {Qt::Key_PageDown, 1, "13+0"},
                                            {Qt::Key_PageUp, 1, "1+0"},
                                            {Qt::Key_Home, 1, "0+0"},
                                            {Qt::Key_A, 1, "0+0"}}) {
    Press(step.Key, step.Times);
    EXPECT_EQ(State(), step.State) << "after key " << step.Key;
  }
}

TEST_F(ThumbnailPageTest, TheNextButtonStopsBeforeTheLastRecord) {
  Open(13);
  Page.bttnLast_Click();
  EXPECT_EQ(State(), "1+11");
  Page.bttnFirst_Click();
  for (int i = 0; i < 20; ++i) Page.bttnNext_Click();
  EXPECT_EQ(State(), "0+11");
  Page.bttnPrevious_Click();
  EXPECT_EQ(State(), "0+10");
}

TEST_F(ThumbnailPageTest, TheScrollBarMovesByRowsAndJumps) {
  Open(40);
  QScrollBar& scroll = Page.ThumbVScroll();
  EXPECT_EQ(scroll.maximum(), 13);
  scroll.triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(State(), "0+3");
  scroll.setValue(8);
  EXPECT_EQ(State(), "24+0");
  EXPECT_EQ(scroll.value(), 8);
  Press(Qt::Key_Home);
  EXPECT_EQ(scroll.value(), 0);
}

TEST_F(ThumbnailPageTest, TwelveRecordsNeedNoScrollBar) {
  Open(12);
  EXPECT_FALSE(Page.ThumbVScroll().isEnabled());
}

TEST_F(ThumbnailPageTest, TheMouseSelects) {
  Open(14);
  Click(4);
  EXPECT_EQ(State(), "0+4");
  EXPECT_EQ(Data1.SelBookmarks.Count(), 0);
  Click(4, Qt::ControlModifier);
  Click(6, Qt::ControlModifier);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(State(), "2+0");
  EXPECT_TRUE(Marked(2));
  EXPECT_TRUE(Marked(4));
  EXPECT_FALSE(Marked(6));
  Click(11, Qt::ControlModifier);
  EXPECT_EQ(Data1.SelBookmarks.Count(), 3);
  Click(4, Qt::ControlModifier);
  EXPECT_EQ(Data1.SelBookmarks.Count(), 2);
  EXPECT_FALSE(Marked(4));
  EXPECT_TRUE(Marked(2));
  Click(0, Qt::ControlModifier | Qt::ShiftModifier);  // not Ctrl alone: a plain click
  EXPECT_EQ(Data1.SelBookmarks.Count(), 0);
  EXPECT_FALSE(Marked(2));
  EXPECT_EQ(State(), "2+0");
}

TEST_F(ThumbnailPageTest, SelectAllMarksEveryRecordOnce) {
  Open(14);
  Click(3, Qt::ControlModifier);
  Page.RecordAll_Click();
  EXPECT_EQ(Data1.SelBookmarks.Count(), 14);
  EXPECT_EQ(State(), "3+0");
  EXPECT_TRUE(Marked(0));
  EXPECT_TRUE(Marked(10));
  EXPECT_FALSE(Data1.SuppressReposition);
}

TEST_F(ThumbnailPageTest, APlainPressTakesTheGreyFromTheMarks) {
  Open(2);
  Page.SetMarkColor(DimmedColor);
  QTest::mousePress(Cell<ThumbImage>("ImgThumb", 0), Qt::RightButton);
  EXPECT_TRUE(Page.MarksAreDimmed());
  Click(0, Qt::ControlModifier);
  EXPECT_FALSE(Page.MarksAreDimmed());
}

TEST_F(ThumbnailPageTest, TheFrameIsRedWithTheFocusAndGreyWithout) {
  Open(2);
  EXPECT_EQ(FocusFrame()->BorderColor(), FocusColor);
  Picture(0)->clearFocus();
  EXPECT_EQ(FocusFrame()->BorderColor(), DimmedColor);
}

}  // namespace
}  // namespace veldrin::browse
