// The dialog in which the field and the value to look for are chosen.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

class QComboBox;
class QFrame;
class QLineEdit;

namespace veldrin::find {

/// What was looked for last; the dialog opens with it.
struct SearchValues {
  QString FldName;
  QString MatchVal;
};

/// The index of the first entry equal to the value; -1 if there is none.
int FindInList(const QComboBox& list, const QString& value);

/// `frmSearch`. Find and Find Next write the values; Cancel leaves them alone.
class frmSearch : public QDialog {
  Q_OBJECT

 public:
  enum SearchMode { Cancelled = 0, Find = 1, FindNext = 2 };

  /// `fields`: the names of the grid's fields, in its order.
  frmSearch(SearchValues& owner, const QStringList& fields, QWidget* parent = nullptr);

  SearchMode FindMode = Cancelled;

 private:
  QFrame* MakePanel(const char* name, const char* caption, double top);
  void MakeButton(const char* name, const char* text, double left, void (frmSearch::*click)());
  void Form_Load(const QStringList& fields);
  void Leave(SearchMode mode);
  void FindBttn_Click() { Leave(Find); }
  void NextBttn_Click() { Leave(FindNext); }
  void CancelBttn_Click() { reject(); }

  SearchValues& Owner;
  QComboBox* FldName;
  QLineEdit* MatchVal;
};

}  // namespace veldrin::find
