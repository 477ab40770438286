#include "find/query_dialog.h"

#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

#include "base/dates.h"
#include "controls/entry_field.h"
#include "controls/msg_box.h"
#include "controls/named.h"
#include "find/dialog_layout.h"

namespace veldrin::find {

using catalogue::CompareOpText;
using controls::Named;

namespace {

constexpr double FieldHeight = 288;
constexpr double LabelHeight = 216;
constexpr double ButtonHeight = 372;
constexpr double FirstRow = 240;
constexpr double SecondRow = 840;
constexpr double ButtonRow = 1320;
constexpr double ButtonWidth = 1215;
constexpr double PanelWidth = 7215;
constexpr double PanelHeight = ButtonRow + ButtonHeight;
constexpr double Margin = 180;

// No text of a catalogue has this character, and none of SQL may.
QString TextOf(const QLineEdit& field) { return field.text().remove(QChar::Null); }

}  // namespace

bool IsValidDate(const QString& value) { return value.isEmpty() || base::ParseDate(value).has_value(); }

frmQry::frmQry(catalogue::Criteria& criteria, QWidget* parent)
    : QDialog(parent), Criteria(criteria), Picture1(Named(new QWidget(this), "Picture1")) {
  setObjectName(QStringLiteral("frmQry"));
  setWindowTitle(QStringLiteral("Query"));
  MoveInDialog(*Picture1, Margin, Margin, PanelWidth, PanelHeight);
  MakeFields();
  MakeDates();
  MakeButtons();
  Fill();
  setFixedSize(DialogPixels(PanelWidth + 2 * Margin), DialogPixels(PanelHeight + 2 * Margin));
  qImage->setFocus();
}

QLineEdit* frmQry::MakeField(const char* name, double left, double top, double width) {
  QLineEdit* field = Named(new QLineEdit(Picture1), name);
  controls::InstallEntryManners(*field);
  MoveInDialog(*field, left, top, width, FieldHeight);
  return field;
}

QLabel* frmQry::MakeLabel(const char* name, const char* text, double left, double top, double width) {
  QLabel* label = Named(new QLabel(QLatin1String(text), Picture1), name);
  MoveInDialog(*label, left, top, width, LabelHeight);
  return label;
}

// A click on a button doesn't leave the field that is being filled: its date is looked at by OK, or when the
// user goes to another field.
QPushButton* frmQry::MakeButton(const char* name, const char* text, double left, double top, double width) {
  QPushButton* button = Named(new QPushButton(QLatin1String(text), Picture1), name);
  button->setFocusPolicy(Qt::TabFocus);
  MoveInDialog(*button, left, top, width, top == ButtonRow ? ButtonHeight : FieldHeight);
  return button;
}

void frmQry::MakeFields() {
  qImage = MakeField("qImage", 0, FirstRow, 855);
  qTitle = MakeField("qTitle", 840, FirstRow, 3135);
  qMadeBy = MakeField("qMadeBy", 0, SecondRow, 1815);
  qDescription = MakeField("qDescription", 1800, SecondRow, 5415);
  MakeLabel("lblImage", "Image", 0, FirstRow - LabelHeight, 855)->setBuddy(qImage);
  MakeLabel("Label2", "Title", 840, FirstRow - LabelHeight, 3135)->setBuddy(qTitle);
  MakeLabel("lblPhotoID", "Made By", 0, SecondRow - LabelHeight, 1815)->setBuddy(qMadeBy);
  MakeLabel("lblDescription", "Description", 1800, SecondRow - LabelHeight, 5415)->setBuddy(qDescription);
}

// First date, operator, the word Date, operator, second date.
void frmQry::MakeDates() {
  const double dateLeft[] = {3960, 6120};
  const double buttonLeft[] = {4920, 5760};
  MakeLabel("lblCrt", "Create", 3960, FirstRow - LabelHeight, 3132)->setAlignment(Qt::AlignCenter);
  QLabel* date = MakeLabel("Label1", "Date", 5280, FirstRow, 492);
  date->setAlignment(Qt::AlignCenter);
  date->resize(date->width(), DialogPixels(FieldHeight));
  for (const int i : {0, 1}) {
    qCrtDate[i] = MakeField(i == 0 ? "qCrtDate(0)" : "qCrtDate(1)", dateLeft[i], FirstRow, 972);
    qCrtDate[i]->setAccessibleName(i == 0 ? QStringLiteral("First date") : QStringLiteral("Second date"));
    qCrtDate[i]->installEventFilter(this);
    DateBttn[i] = MakeButton(i == 0 ? "DateBttn(0)" : "DateBttn(1)", "=", buttonLeft[i], FirstRow, 372);
    DateBttn[i]->setToolTip(QStringLiteral("Click for another comparison"));
    connect(DateBttn[i], &QPushButton::clicked, this, [this, i] { DateBttn_Click(i); });
    qCmpDate[i] = Named(new QLabel(Picture1), i == 0 ? "qCmpDate(0)" : "qCmpDate(1)");
    qCmpDate[i]->hide();
  }
}

void frmQry::MakeButtons() {
  QPushButton* ok = MakeButton("OkBttn", "&OK", 720, ButtonRow, ButtonWidth);
  QPushButton* cancel = MakeButton("CancelBttn", "&Cancel", 3000, ButtonRow, ButtonWidth);
  QPushButton* clear = MakeButton("ClearBttn", "C&lear", 5280, ButtonRow, ButtonWidth);
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &frmQry::OkBttn_Click);
  connect(cancel, &QPushButton::clicked, this, &frmQry::CancelBttn_Click);
  connect(clear, &QPushButton::clicked, this, &frmQry::ClearBttn_Click);
  // Tab goes as the formula reads.
  QWidget* last = nullptr;
  for (QWidget* next :
       std::initializer_list<QWidget*>{qImage, qTitle, qCrtDate[0], DateBttn[0], DateBttn[1], qCrtDate[1],
                                       qMadeBy, qDescription, ok, cancel, clear}) {
    if (last != nullptr) setTabOrder(last, next);
    last = next;
  }
}

void frmQry::Fill() {
  qCrtDate[0]->setText(Criteria.QryDate1);
  qCrtDate[1]->setText(Criteria.QryDate2);
  qDescription->setText(Criteria.QryDescription);
  qMadeBy->setText(Criteria.QryMadeBy);
  SetOperator(0, Criteria.QryOp1);
  SetOperator(1, Criteria.QryOp2);
}

void frmQry::SetOperator(int index, int op) {
  qCmpDate[index]->setText(QString::number(op));
  DateBttn[index]->setText(CompareOpText(op));
}

int frmQry::Operator(int index) const { return qCmpDate[index]->text().toInt(); }

// --- the dates --------------------------------------------------------------------------------------------

// Behind the change of focus, which a box in its midst would disturb. Another program's window that comes up
// in front and the field's own menu don't count.
bool frmQry::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const int index = watched == qCrtDate[0] ? 0 : 1;
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
      QMetaObject::invokeMethod(
          this, [this, index] { qCrtDate_LostFocus(index); }, Qt::QueuedConnection);
    }
  }
  return QDialog::eventFilter(watched, event);
}

bool frmQry::CheckDate(int index) {
  if (IsValidDate(qCrtDate[index]->text())) return true;
  const QScopedValueRollback<bool> checking(Checking, true);
  controls::MsgBox(this, QStringLiteral("Invalid date value!"), controls::vbInformation,
                   QStringLiteral("Error"));
  qCrtDate[index]->setFocus();
  return false;
}

// A field that has the focus again was looked at by OK meanwhile.
void frmQry::qCrtDate_LostFocus(int index) {
  if (isVisible() && !Checking && focusWidget() != qCrtDate[index]) CheckDate(index);
}

void frmQry::DateBttn_Click(int index) {
  SetOperator(index, (Operator(index) + 1) % catalogue::CompareOpCount);
}

// --- the buttons ------------------------------------------------------------------------------------------

void frmQry::ClearBttn_Click() {
  for (const int i : {0, 1}) {
    qCrtDate[i]->clear();
    SetOperator(i, 0);
  }
  for (QLineEdit* field : {qImage, qTitle, qDescription, qMadeBy}) field->clear();
}

void frmQry::OkBttn_Click() {
  if (!CheckDate(0) || !CheckDate(1)) return;
  Criteria.QryDate1 = TextOf(*qCrtDate[0]);
  Criteria.QryDate2 = TextOf(*qCrtDate[1]);
  Criteria.QryOp1 = Operator(0);
  Criteria.QryOp2 = Operator(1);
  Criteria.QryImageType = TextOf(*qImage);
  Criteria.QryTitle = TextOf(*qTitle);
  Criteria.QryDescription = TextOf(*qDescription);
  Criteria.QryMadeBy = TextOf(*qMadeBy);
  QryAccepted = true;
  accept();
}

}  // namespace veldrin::find
