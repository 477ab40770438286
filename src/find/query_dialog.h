// The dialog in which the query criteria are entered, laid out as the formula that they are.
#pragma once

#include <QDialog>
#include <QString>

#include "catalogue/record_source.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace veldrin::find {

/// An empty text, or a date as ParseDate reads it: what stands between the signs of an SQL text later.
bool IsValidDate(const QString& value);

/// `frmQry`. Opens with the criteria given, but for the image type and the title, which are to be entered
/// anew each time. OK replaces the criteria by what the dialog holds; nothing else touches them.
class frmQry : public QDialog {
  Q_OBJECT

 public:
  explicit frmQry(catalogue::Criteria& criteria, QWidget* parent = nullptr);

  /// Whether the dialog was left by OK.
  bool QryAccepted = false;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* MakeField(const char* name, double left, double top, double width);
  QLabel* MakeLabel(const char* name, const char* text, double left, double top, double width);
  QPushButton* MakeButton(const char* name, const char* text, double left, double top, double width);
  void MakeFields();
  void MakeDates();
  void MakeButtons();
  void Fill();
  void SetOperator(int index, int op);
  int Operator(int index) const;

  bool CheckDate(int index);
  void qCrtDate_LostFocus(int index);
  void DateBttn_Click(int index);
  void ClearBttn_Click();
  void OkBttn_Click();
  void CancelBttn_Click() { reject(); }

  catalogue::Criteria& Criteria;
  bool Checking = false;
  QWidget* Picture1;
  QLineEdit* qImage = nullptr;
  QLineEdit* qTitle = nullptr;
  QLineEdit* qMadeBy = nullptr;
  QLineEdit* qDescription = nullptr;
  QLineEdit* qCrtDate[2] = {};
  QLabel* qCmpDate[2] = {};  ///< hidden; the index of the comparison as decimal text
  QPushButton* DateBttn[2] = {};
};

}  // namespace veldrin::find
