#include "browse/thumbnail_cells.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPixmap>

#include "catalogue/image_store.h"
#include "controls/twips.h"

namespace veldrin::browse {

using catalogue::ThumbnailBox;

namespace {

// All lengths in twips.
constexpr std::array<int, 3> ColumnLeft = {120, 2760, 5400};
constexpr std::array<int, 4> RowTop = {240, 2640, 5040, 7440};
constexpr int TitleHeight = 375;
constexpr int TitleBelowTop = 1940;

// In pixels. Half of a border lies outside of the cell, as far as the gap between two cells allows.
constexpr int MarkBorder = 20;
constexpr int MarkMargin = 6;
constexpr int FocusBorder = 6;
constexpr int FocusMargin = 3;

QString ArrayName(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

int TitleTop(int cell) {
  // The title of the third cell stands a little higher than the others.
  return cell == 2 ? 2160 : RowTop[cell / CellsPerRow] + TitleBelowTop;
}

ThumbCaption* MakeTitle(QWidget& panel) {
  auto* title = new ThumbCaption(&panel);
  title->setAlignment(Qt::AlignCenter);
  QPalette palette = title->palette();
  palette.setColor(QPalette::WindowText, FromBgr(0x0000FFFF));
  title->setPalette(palette);
  return title;
}

}  // namespace

PictureCell::PictureCell(QWidget* parent) : MouseReporter(parent) {
  // By tab and by program only: a click on the thumbnail acts when the button goes up.
  setFocusPolicy(Qt::TabFocus);
  setAutoFillBackground(true);
  setPalette(QPalette(Qt::black));
  hide();
}

void PictureCell::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (GotFocus) GotFocus();
}

void PictureCell::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (LostFocus) LostFocus();
}

ThumbnailCells::ThumbnailCells(QWidget& panel) {
  for (int i = 0; i < CellCount; ++i) {
    shpMark[i] = new Shape(MarkBorder, MarkMargin, MarkDesignColor, &panel);
    shpMark[i]->setObjectName(ArrayName("shpMark", i));
  }
  shpThumb = new Shape(FocusBorder, FocusMargin, DimmedColor, &panel);
  shpThumb->setObjectName(QStringLiteral("shpThumb"));

  for (int i = 0; i < CellCount; ++i) {
    const int left = ColumnLeft[i % CellsPerRow];
    ThumbTitle[i] = MakeTitle(panel);
    ThumbTitle[i]->setObjectName(ArrayName("ThumbTitle", i));
    controls::MoveTwips(*ThumbTitle[i], left, TitleTop(i), ThumbnailBox.Width, TitleHeight);

    picThumb[i] = new PictureCell(&panel);
    picThumb[i]->setObjectName(ArrayName("picThumb", i));
    controls::MoveTwips(*picThumb[i], left, RowTop[i / CellsPerRow], ThumbnailBox.Width, ThumbnailBox.Height);
    shpMark[i]->Surround(*picThumb[i]);

    ImgThumb[i] = new ThumbImage(picThumb[i]);
    ImgThumb[i]->setObjectName(ArrayName("ImgThumb", i));
    ImgThumb[i]->setScaledContents(true);
  }
  shpThumb->Surround(*picThumb[0]);
}

void ThumbnailCells::Clear(int cell) {
  picThumb[cell]->hide();
  shpMark[cell]->hide();
  ThumbTitle[cell]->SetCaption({});
}

void ThumbnailCells::ShowPicture(int cell, const pictures::Picture& thumbnail) {
  ThumbImage& image = *ImgThumb[cell];
  picThumb[cell]->show();
  image.setVisible(!thumbnail.IsEmpty());
  if (thumbnail.IsEmpty()) return;
  const pictures::TwipSize size = FitToBox(thumbnail, ThumbnailBox);
  image.setPixmap(QPixmap::fromImage(thumbnail.Image()));
  controls::MoveTwips(image, pictures::Centre(ThumbnailBox.Width, size.Width),
                      pictures::Centre(ThumbnailBox.Height, size.Height), size.Width, size.Height);
}

}  // namespace veldrin::browse
