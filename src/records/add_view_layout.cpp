// The look of the Add New view: its controls and where they lie.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QVBoxLayout>

#include "base/units.h"
#include "controls/directory_chooser.h"
#include "controls/entry_field.h"
#include "controls/file_list.h"
#include "controls/named.h"
#include "controls/panel_size.h"
#include "records/add_view.h"
#include "records/control_drag.h"
#include "records/field_length.h"
#include "records/new_image_box.h"

namespace veldrin::records {

using controls::Named;

namespace {

// All in pixels.
constexpr int Margin = 12;
constexpr int Gap = 8;
constexpr int ChooserWidth = 260;
constexpr QSize PreviewSize(364, 360);
constexpr int FolderPixels = 96;
constexpr int ArrowPixels = 22;
constexpr int DescriptionHeight = 84;

// A list whose current entry ends in dots where it is too long; the open list shows the entries whole.
class DottedComboBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

  void showPopup() override {
    const int scrollBar = view()->verticalScrollBar()->sizeHint().width();
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + scrollBar);
    QComboBox::showPopup();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room.width() - 4);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
  }
};

QLabel* MakeHeading(QWidget* parent, const char* name, const char* text) {
  auto* label = Named(new QLabel(QLatin1String(text), parent), name);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

QPixmap ThemePixmap(const QWidget& widget, const QString& name, int size) {
  return QIcon::fromTheme(name).pixmap(QSize(size, size), widget.devicePixelRatioF());
}

void AddField(QGridLayout& grid, int row, const char* name, const char* text, QWidget* field) {
  auto* caption = Named(new QLabel(QLatin1String(text), field->parentWidget()), name);
  caption->setBuddy(field);
  grid.addWidget(caption, row, 0, Qt::AlignRight | (row == 1 ? Qt::AlignTop : Qt::AlignVCenter));
  grid.addWidget(field, row, 1);
}

}  // namespace

void AddView::BuildChoosers() {
  Choosers = new controls::DirectoryChooser(this);
  FileToSel = Named(new controls::FileListBox(this), "FileToSel");
  FileType = Named(new DottedComboBox(this), "FileType");
  FileType->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  ChkRemove = Named(new QCheckBox(QStringLiteral("Remove File(s) After Stored"), this), "chkRemove");
}

void AddView::BuildDragArea() {
  LblImgToDrag = MakeHeading(this, "lblImgToDrag", "IMAGE(S) TO DRAG");
  PicNew = new NewImageBox(this);
  PicNew->setFixedSize(PreviewSize);
  Arrow = new QLabel(this);
  Arrow->setPixmap(ThemePixmap(*this, QStringLiteral("arrow-right"), ArrowPixels));
  LblDropFldr = MakeHeading(this, "lblDropFldr", "DROP TO FOLDER");
  ImgFolder = Named(new DropTarget(this), "ImgFolder");
  ImgFolder->setPixmap(ThemePixmap(*this, QStringLiteral("folder-pictures"), FolderPixels));
  ImgFolder->setMinimumSize(FolderPixels + 8, FolderPixels + 8);
  Label22 =
      Named(new QLabel(QStringLiteral("To store the photo(s), drag the picture(s) and drop it/them over "
                                      "the folder."),
                       this),
            "Label22");
  Label22->setWordWrap(true);
}

void AddView::BuildDataPanel() {
  DataPanel = Named(new QFrame(this), "DataPanel");
  DataPanel->setFrameShape(QFrame::StyledPanel);
  NTitle = Named(new QLineEdit(DataPanel), "nTitle");
  NDescription = Named(new QPlainTextEdit(DataPanel), "nDescription");
  NDescription->setFixedHeight(DescriptionHeight);
  NMadeBy = Named(new QLineEdit(DataPanel), "nMadeBy");
  controls::LimitText(*NTitle, TitleLength);
  controls::LimitText(*NDescription, DescriptionLength);
  controls::LimitText(*NMadeBy, MadeByLength);
  controls::InstallEntryManners(*NTitle);
  controls::InstallEntryManners(*NDescription);
  controls::InstallEntryManners(*NMadeBy);
  NewSaveBttn = Named(new QPushButton(QStringLiteral("&Save"), DataPanel), "newSaveBttn");
  NewCancelBttn = Named(new QPushButton(QStringLiteral("&Cancel"), DataPanel), "newCancelBttn");

  auto* grid = new QGridLayout(DataPanel);
  AddField(*grid, 0, "Label25", "Title:   ", NTitle);
  AddField(*grid, 1, "Label24", "Description:   ", NDescription);
  AddField(*grid, 2, "Label23", "Made By:   ", NMadeBy);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(NewSaveBttn);
  buttons->addWidget(NewCancelBttn);
  grid->addLayout(buttons, 3, 0, 1, 2);

  // The room stays free while the panel is hidden, so that nothing jumps.
  QSizePolicy policy = DataPanel->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  DataPanel->setSizePolicy(policy);
  DataPanel->hide();
}

void AddView::Arrange() {
  auto* files = new QVBoxLayout;
  files->setSpacing(Gap);
  files->addWidget(Choosers, 4);
  files->addWidget(FileToSel, 5);
  files->addWidget(FileType);
  files->addWidget(ChkRemove);

  auto* drag = new QGridLayout;
  drag->setSpacing(Gap);
  drag->addWidget(LblImgToDrag, 0, 0);
  drag->addWidget(PicNew, 1, 0);
  drag->addWidget(Arrow, 1, 1, Qt::AlignCenter);
  drag->addWidget(LblDropFldr, 0, 2, Qt::AlignHCenter);
  drag->addWidget(ImgFolder, 1, 2, Qt::AlignCenter);
  drag->setColumnStretch(2, 1);

  auto* right = new QVBoxLayout;
  right->setSpacing(Gap);
  right->addLayout(drag);
  right->addWidget(Label22);
  right->addWidget(DataPanel);
  right->addStretch();

  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(Margin, Margin, Margin, Margin);
  columns->setSpacing(2 * Gap);
  Choosers->setFixedWidth(ChooserWidth);
  FileToSel->setFixedWidth(ChooserWidth);
  FileType->setFixedWidth(ChooserWidth);
  columns->addLayout(files);
  columns->addLayout(right, 1);
  resize(base::ToPixels(controls::PanelWidth), base::ToPixels(controls::PanelHeight));
}

}  // namespace veldrin::records
