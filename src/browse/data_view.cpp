#include "browse/data_view.h"

#include <QFrame>
#include <QShowEvent>
#include <utility>

#include "base/failure.h"
#include "catalogue/image_store.h"
#include "controls/named.h"
#include "controls/panel_size.h"
#include "controls/twips.h"

namespace veldrin::browse {

using controls::MoveTwips;
using controls::Named;

namespace {

constexpr int NoteMargin = 6;  // pixels

}  // namespace

DataView::DataView(catalogue::RecordList& data1, const catalogue::Paths& paths, pictures::PictureCache& cache,
                   QWidget* parent)
    : QWidget(parent), Data1(data1), ThePaths(paths), Grid(new RecordGrid(data1, this)) {
  setObjectName(QStringLiteral("TabPannel(0)"));
  MoveTwips(*Grid, 0, 0, controls::ListWidth, controls::PanelHeight);
  MakePreview();
  Loader = new controls::PictureLoader(cache, *picPreview);
  connect(Loader, &controls::PictureLoader::Loaded, this, &DataView::TakePreview);
  connect(ImgPreview, &controls::FittedImage::Outgrown, Loader, &controls::PictureLoader::Load);
  MakeButtons();
  MakeQueryNote();
  connect(&Data1, &catalogue::RecordList::Reposition, this, &DataView::Data1_Reposition);
  connect(&Data1, &catalogue::RecordList::ReadAgain, this, [this] {
    if (!IsRead) Data1_Reposition();
  });
}

void DataView::MakePreview() {
  QFrame* panel = Named(new QFrame(this), "OnOffPannel");
  panel->setFrameShape(QFrame::StyledPanel);
  MoveTwips(*panel, 8400, 120, 3855, 735);
  QLabel* title = Named(new QLabel(QStringLiteral("IMAGE PREVIEW"), panel), "lblPreview");
  title->setAlignment(Qt::AlignCenter);
  MoveTwips(*title, 0, 45, 3855, 270);
  PreviewOn = Named(new QRadioButton(QStringLiteral("On"), panel), "PreviewOption(0)");
  PreviewOff = Named(new QRadioButton(QStringLiteral("Off"), panel), "PreviewOption(1)");
  // A little higher than its text needs, so that the button's circle isn't cut.
  MoveTwips(*PreviewOn, 720, 330, 732, 270);
  MoveTwips(*PreviewOff, 2640, 330, 732, 270);
  connect(PreviewOn, &QRadioButton::toggled, this, [this](bool on) { PreviewOption_Click(on ? 0 : 1); });

  picPreview = Named(new QWidget(this), "picPreview");
  picPreview->setAutoFillBackground(true);
  picPreview->setPalette(QPalette(Qt::black));
  MoveTwips(*picPreview, 8400, 1080, 3855, 2895);
  ImgPreview = new controls::FittedImage(QStringLiteral("ImgPreview"), *picPreview);
  connect(ImgPreview, &controls::FittedImage::DblClick, this, &DataView::ImgPreview_DblClick);

  QLabel* info =
      Named(new QLabel(QStringLiteral("DOUBLE CLICK ON THE IMAGE TO VIEW, EDIT OR PRINT"), this), "lblInfo");
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
    MoveTwips(*Named(new QPushButton(QLatin1String(place.Caption), this), place.Name),
              place.Column == 1 ? 10380 : 8400, 4515 + 435 * place.Row, place.Column == 2 ? 3855 : 1875, 390);
  }
}

void DataView::MakeQueryNote() {
  lblQuery = Named(new QLabel(this), "lblQuery");
  lblQuery->setTextFormat(Qt::PlainText);
  lblQuery->setFrameShape(QFrame::StyledPanel);
  lblQuery->setMargin(NoteMargin);
  lblQuery->setAutoFillBackground(true);
  lblQuery->setBackgroundRole(QPalette::ToolTipBase);
  lblQuery->setForegroundRole(QPalette::ToolTipText);
  MoveTwips(*lblQuery, 8400, 7755, 3855, 300);
  lblQuery->hide();
}

void DataView::SetQueryNote(const QStringList& lines) {
  lblQuery->setVisible(!lines.isEmpty());
  QStringList shown = QStringList(QStringLiteral("A query holds. Reset ends it.")) + lines;
  lblQuery->setToolTip(QStringLiteral("<qt>%1</qt>")
                           .arg(shown.join(QLatin1Char('\n'))
                                    .toHtmlEscaped()
                                    .replace(QLatin1Char('\n'), QLatin1String("<br>"))));
  const int room = lblQuery->contentsRect().width() - 2 * NoteMargin;
  for (QString& line : shown) {
    line = lblQuery->fontMetrics().elidedText(line.simplified(), Qt::ElideRight, room);
  }
  lblQuery->setText(shown.join(QLatin1Char('\n')));
  lblQuery->resize(lblQuery->width(), lblQuery->sizeHint().height());
}

QPushButton& DataView::Button(const char* name) const {
  return controls::Get<QPushButton>(*this, QLatin1String(name));
}

void DataView::SetContentHeight(int pixels) { Grid->resize(Grid->width(), pixels); }

// --- the counter and the preview --------------------------------------------------------------------------

void DataView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  ImgPreview->hide();  // It may be of another list.
  Data1_Reposition();
}

void DataView::Data1_Reposition() {
  if (!isVisible()) return;
  if (Data1.RecordCount() < 1) {
    Navigator->SetCaption(QStringLiteral("   No Record"));
  } else {
    Navigator->SetCaption(
        QStringLiteral("   %1 of %2").arg(Data1.AbsolutePosition() + 1).arg(Data1.RecordCount()));
  }
  if (PreviewOn->isChecked()) PreviewOption_Click(0);
}

void DataView::PreviewOption_Click(int index) {
  if (Data1.RecordCount() != 0 && index == 0) return ShowPreview();
  Loader->Load({});
  ImgPreview->hide();
}

// The next one that way is prepared, too.
void DataView::ShowPreview() {
  const int place = Data1.AbsolutePosition();
  const int next = place + (place < std::exchange(FormerPlace, place) ? -1 : 1);
  QString file;
  QString nextFile;
  IsRead = base::EndSilently([&] { file = ImageFileAt(Data1, ThePaths, place); });
  if (IsRead) base::EndSilently([&] { nextFile = ImageFileAt(Data1, ThePaths, next); });
  if (file.isEmpty()) ImgPreview->hide();
  Loader->Load(file);
  Loader->Prepare(nextFile);
}

void DataView::TakePreview(const QString& file, const pictures::Picture& picture) {
  if (!picture.IsEmpty()) ImgPreview->SetPicture(file, picture);
  ImgPreview->setVisible(!picture.IsEmpty());
}

}  // namespace veldrin::browse
