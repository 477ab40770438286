#include "find/search_dialog.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "controls/named.h"
#include "find/dialog_layout.h"

namespace veldrin::find {

using controls::Named;

namespace {

constexpr double SidePadding = 120;
constexpr double PanelsWidth = 3492;
constexpr double PanelsHeight = 492;
constexpr double ButtonsTop = 1680;
constexpr double ButtonsWidth = 972;
constexpr double ButtonsHeight = 372;
constexpr double EntryLeft = 1200;
constexpr double EntryWidth = 2172;

}  // namespace

int FindInList(const QComboBox& list, const QString& value) {
  for (int i = 0; i < list.count(); ++i) {
    if (list.itemText(i) == value) return i;
  }
  return -1;
}

frmSearch::frmSearch(SearchValues& owner, const QStringList& fields, QWidget* parent)
    : QDialog(parent),
      Owner(owner),
      FldName(Named(new QComboBox(MakePanel("SSPanel1", "   Field Name:", 240)), "FldName")),
      MatchVal(Named(new QLineEdit(MakePanel("SSPanel2", "   Match Value:", 960)), "MatchVal")) {
  setObjectName(QStringLiteral("frmSearch"));
  setWindowTitle(QStringLiteral("Find"));
  for (QWidget* entry : std::initializer_list<QWidget*>{FldName, MatchVal}) {
    MoveInDialog(*entry, EntryLeft, 96, EntryWidth, 300);
    entry->parentWidget()->findChild<QLabel*>()->setBuddy(entry);
  }
  MakeButton("FindBttn", "&Find...", 120, &frmSearch::FindBttn_Click);
  MakeButton("NextBttn", "Find &Next", 1320, &frmSearch::NextBttn_Click);
  MakeButton("CancelBttn", "&Cancel", 2640, &frmSearch::CancelBttn_Click);
  setFixedSize(DialogPixels(PanelsWidth + 2 * SidePadding),
               DialogPixels(ButtonsTop + ButtonsHeight + 2 * SidePadding));
  Form_Load(fields);
}

QFrame* frmSearch::MakePanel(const char* name, const char* caption, double top) {
  QFrame* panel = Named(new QFrame(this), name);
  panel->setFrameShape(QFrame::StyledPanel);
  MoveInDialog(*panel, SidePadding, top, PanelsWidth, PanelsHeight);
  auto* label = new QLabel(QLatin1String(caption), panel);
  MoveInDialog(*label, 0, 0, EntryLeft, PanelsHeight);
  return panel;
}

void frmSearch::MakeButton(const char* name, const char* text, double left, void (frmSearch::*click)()) {
  QPushButton* button = Named(new QPushButton(QLatin1String(text), this), name);
  MoveInDialog(*button, left, ButtonsTop, ButtonsWidth, ButtonsHeight);
  connect(button, &QPushButton::clicked, this, click);
}

void frmSearch::Form_Load(const QStringList& fields) {
  FldName->addItems(fields);
  const int last = FindInList(*FldName, Owner.FldName);
  FldName->setCurrentIndex(last < 0 ? 0 : last);
  MatchVal->setText(Owner.MatchVal);
  MatchVal->selectAll();
  if (const QWidget* over = parentWidget()) {
    move(over->x() + (over->width() - width()) / 2, over->y() + (over->height() - height()) / 2);
  }
}

void frmSearch::Leave(SearchMode mode) {
  Owner.FldName = FldName->currentText();
  Owner.MatchVal = MatchVal->text();
  FindMode = mode;
  accept();
}

}  // namespace veldrin::find
