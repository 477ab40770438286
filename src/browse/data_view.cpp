#include "browse/data_view.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "catalogue/image_store.h"
#include "platform/failure.h"
#include "platform/panel_size.h"
#include "platform/twips.h"

namespace veldrin::browse {

using catalogue::TwipSize;
using platform::EndSilently;
using platform::MoveTwips;

namespace {

constexpr TwipSize PreviewBox{3855, 2895};
constexpr int RowHeight = 24;  // pixels

// Draws a row as selected where its record stands in SelBookmarks: the grid keeps no selection of its own.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(catalogue::RecordList& data1, QTableView& grid)
      : QStyledItemDelegate(&grid), Data1(data1), Grid(grid) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
    const bool selected = Data1.SelBookmarks.Count() > 0 && Data1.SelBookmarks.Contains(BookmarkOf(index));
    option->state.setFlag(QStyle::State_Selected, selected);
    if (!selected && index.row() == Grid.currentIndex().row()) {
      option->backgroundBrush = Grid.palette().color(QPalette::Highlight).lighter(190);
    }
  }

 private:
  static int BookmarkOf(const QModelIndex& index) { return index.siblingAtColumn(0).data().toInt(); }

  catalogue::RecordList& Data1;
  QTableView& Grid;
};

}  // namespace

DataView::DataView(catalogue::RecordList& data1, const catalogue::Paths& paths, QWidget* parent)
    : QWidget(parent), Data1(data1), ThePaths(paths), Model(data1) {
  setObjectName(QStringLiteral("TabPannel(0)"));
  MakeGrid();
  MakePreview();
  MakeButtons();
  // Many moves of one event make one move of the grid.
  Follow.setSingleShot(true);
  connect(&Data1, &catalogue::RecordList::Reposition, &Follow, qOverload<>(&QTimer::start));
  connect(&Follow, &QTimer::timeout, this, &DataView::FollowRecord);
  connect(&Data1.SelBookmarks, &catalogue::SelBookmarkList::Changed, Grid->viewport(),
          qOverload<>(&QWidget::update));
}

void DataView::MakeGrid() {
  Grid = new QTableView(this);
  Grid->setObjectName(QStringLiteral("TDBGrid1"));
  Grid->setModel(&Model);
  Grid->setItemDelegate(new RowDelegate(Data1, *Grid));
  Grid->setSelectionMode(QAbstractItemView::NoSelection);
  Grid->setSelectionBehavior(QAbstractItemView::SelectRows);
  Grid->setShowGrid(false);
  Grid->setAlternatingRowColors(true);
  Grid->setWordWrap(false);
  Grid->verticalHeader()->hide();
  Grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  Grid->verticalHeader()->setDefaultSectionSize(RowHeight);
  Grid->horizontalHeader()->setHighlightSections(false);
  Grid->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  const int widths[] = {52, 50, 160, 146, 110, 240, 146};  // pixels, by what the columns hold
  for (int column = 0; column < 7; ++column) Grid->setColumnWidth(column, widths[column]);
  MoveTwips(*Grid, 0, 0, platform::BrowserWidth, platform::PanelHeight);
  Grid->viewport()->installEventFilter(this);
  connect(Grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& row) {
            if (row.isValid() && row.row() != Data1.AbsolutePosition()) Data1.SetAbsolutePosition(row.row());
            Grid->viewport()->update();
          });
}

void DataView::MakePreview() {
  auto* panel = new QFrame(this);
  panel->setObjectName(QStringLiteral("OnOffPannel"));
  panel->setFrameShape(QFrame::StyledPanel);
  MoveTwips(*panel, 8400, 120, 3855, 735);
  auto* title = new QLabel(QStringLiteral("IMAGE PREVIEW"), panel);
  title->setObjectName(QStringLiteral("lblPreview"));
  title->setAlignment(Qt::AlignCenter);
  MoveTwips(*title, 0, 45, 3855, 270);
  PreviewOn = new QRadioButton(QStringLiteral("On"), panel);
  PreviewOff = new QRadioButton(QStringLiteral("Off"), panel);
  PreviewOn->setObjectName(QStringLiteral("PreviewOption(0)"));
  PreviewOff->setObjectName(QStringLiteral("PreviewOption(1)"));
  // A little higher than its text needs, so that the button's circle isn't cut.
  MoveTwips(*PreviewOn, 720, 330, 732, 270);
  MoveTwips(*PreviewOff, 2640, 330, 732, 270);
  connect(PreviewOn, &QRadioButton::toggled, this, [this](bool on) { PreviewOption_Click(on ? 0 : 1); });

  picPreview = new QWidget(this);
  picPreview->setObjectName(QStringLiteral("picPreview"));
  picPreview->setAutoFillBackground(true);
  picPreview->setPalette(QPalette(Qt::black));
  MoveTwips(*picPreview, 8400, 1080, PreviewBox.Width, PreviewBox.Height);
  ImgPreview = new QLabel(picPreview);
  ImgPreview->setObjectName(QStringLiteral("ImgPreview"));
  ImgPreview->setScaledContents(true);
  ImgPreview->hide();

  auto* info = new QLabel(QStringLiteral("DOUBLE CLICK ON THE IMAGE TO VIEW, EDIT OR PRINT"), this);
  info->setObjectName(QStringLiteral("lblInfo"));
  info->setAlignment(Qt::AlignCenter);
  info->setWordWrap(true);
  QFont small = info->font();
  small.setPointSizeF(small.pointSizeF() * 0.8);
  info->setFont(small);
  MoveTwips(*info, 8400, 4005, 3855, 450);

  Navigator = new DataNavigator(Data1, this);
  MoveTwips(*Navigator, 9120, 6720, 2295, 372);
}

void DataView::MakeButtons() {
  struct Place {
    const char* Name;
    const char* Caption;
    int Column;  // 0 left, 1 right, 2 both
    int Row;
  };
  static const Place places[] = {{"ViewBttn", "&View/Edit/Print Image", 2, 0},
                                 {"RefreshBttn", "Re&fresh", 0, 1},
                                 {"ResetBttn", "&Reset", 1, 1},
                                 {"QueryBttn", "&Query", 0, 2},
                                 {"SearchBttn(0)", "&Search", 1, 2},
                                 {"GetMBttn", "&Get Photo(s)", 0, 3},
                                 {"EmailMBttn", "E-Mail", 1, 3},
                                 {"WebBttn", "Make &Web", 0, 4},
                                 {"PrintBttn", "Print &Report", 1, 4}};
  for (const Place& place : places) {
    auto* button = new QPushButton(QLatin1String(place.Caption), this);
    button->setObjectName(QLatin1String(place.Name));
    MoveTwips(*button, place.Column == 1 ? 10380 : 8400, 4515 + 435 * place.Row,
              place.Column == 2 ? 3855 : 1875, 390);
  }
}

// --- the grid ---------------------------------------------------------------------------------------------

void DataView::FollowRecord() {
  const int position = Data1.AbsolutePosition();
  if (position < 0 || Grid->currentIndex().row() == position) return;
  const int column = std::max(0, Grid->currentIndex().column());
  Grid->setCurrentIndex(Model.index(position, column));
}

QColor DataView::GridSelColor() const { return Grid->palette().color(QPalette::Highlight); }

void DataView::SetGridSelColor(QColor color) {
  QPalette palette = Grid->palette();
  palette.setColor(QPalette::Highlight, color);
  Grid->setPalette(palette);
}

void DataView::SetContentHeight(int pixels) { Grid->resize(Grid->width(), pixels); }

bool DataView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
    Q_EMIT RecordMenuRequested();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

// --- the counter and the preview --------------------------------------------------------------------------

void DataView::Data1_Reposition() {
  if (Data1.SuppressReposition) return;
  if (Data1.RecordCount() < 1) {
    Navigator->SetCaption(QStringLiteral("   No Record"));
  } else {
    Navigator->SetCaption(
        QStringLiteral("   %1 of %2").arg(Data1.AbsolutePosition() + 1).arg(Data1.RecordCount()));
  }
  if (PreviewOn->isChecked()) PreviewOption_Click(0);
}

void DataView::PreviewOption_Click(int index) {
  ImgPreview->hide();
  if (Data1.RecordCount() != 0 && index == 0) ShowPreview();
}

void DataView::ShowPreview() {
  EndSilently([&] {
    const QString file = catalogue::ImageFileName(ThePaths, Data1.Field(QStringLiteral("PhotoID")).toInt(),
                                                  Data1.Field(QStringLiteral("ImageType")).toString());
    const platform::Picture picture = catalogue::LoadPictureForBox(file, PreviewBox, devicePixelRatioF());
    ImgPreview->setPixmap(QPixmap::fromImage(picture.Image()));
    const TwipSize size = catalogue::FitToBox(picture, PreviewBox);
    MoveTwips(*ImgPreview, catalogue::Centre(PreviewBox.Width, size.Width),
              catalogue::Centre(PreviewBox.Height, size.Height), size.Width, size.Height);
    ImgPreview->show();
  });
}

}  // namespace veldrin::browse
