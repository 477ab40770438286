#include "find/find_record.h"

#include <QRegularExpression>

#include "base/dates.h"
#include "controls/error_box.h"
#include "controls/msg_box.h"
#include "engine/sql_tokens.h"

namespace veldrin::find {

using base::RuntimeError;
using engine::FieldType;

namespace {

bool IsNumber(const QString& text) {
  static const QRegularExpression number(QStringLiteral(R"(^\s*[+-]?[0-9]+(\.[0-9]+)?\s*$)"));
  return number.match(text).hasMatch();
}

}  // namespace

QString SearchCriterion(const QString& field, FieldType type, const QString& value) {
  if (type == engine::dbText) {
    return QStringLiteral("[%1] LIKE '*%2*'").arg(field, engine::QuoteSql(value));
  }
  if (type == engine::dbDate) {
    QString criterion = QStringLiteral("DateValue([%1]) = #%2#").arg(field, value);
    if (base::ParseDate(value)) return criterion;
    throw RuntimeError(base::errSyntax,
                       QStringLiteral("Syntax error in date in query expression '%1'.").arg(criterion));
  }
  QString criterion = QStringLiteral("[%1] = %2").arg(field, value);
  if (IsNumber(value)) return criterion;
  throw RuntimeError(base::errSyntax,
                     QStringLiteral("Syntax error in query expression '%1'.").arg(criterion));
}

bool RecordSearch::MoveToMatch(frmSearch::SearchMode mode) {
  const FieldType type = Data1.Recordset().TypeOf(Last.FldName);
  const QString criterion = SearchCriterion(Last.FldName, type, Last.MatchVal);
  return mode == frmSearch::Find ? Data1.FindFirst(criterion) : Data1.FindNext(criterion);
}

RecordSearch::Result RecordSearch::FindRecord() {
  Result result = NotSearched;
  controls::TrapWithBox(&Window, [&] {
    frmSearch dialog(Last, Fields, &Window);
    dialog.exec();
    if (Last.MatchVal.isEmpty() || dialog.FindMode == frmSearch::Cancelled) return;
    result = MoveToMatch(dialog.FindMode) ? Found : NoMatch;
  });
  return result;
}

void RecordSearch::SearchBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  const Result result = FindRecord();
  if (result == NotSearched) return;
  if (result == NoMatch) {
    controls::MsgBox(&Window, QStringLiteral("Record not fund!"), controls::vbInformation,
                     QStringLiteral("Information"));
  }
  Searched();
}

}  // namespace veldrin::find
