#include "find/query.h"

#include "find/query_dialog.h"

namespace veldrin::find {

using catalogue::CompareOpText;
using catalogue::Criteria;

QStringList DescribeQuery(const Criteria& criteria) {
  QStringList lines;
  const auto add = [&lines](const char* name, const QString& value) {
    if (!value.isEmpty()) lines << QLatin1String(name) + QLatin1String(": ") + value;
  };
  add("Image", criteria.QryImageType);
  add("Title", criteria.QryTitle);
  add("Description", criteria.QryDescription);
  add("Made By", criteria.QryMadeBy);
  // As it stands in the dialog.
  QString dates = QStringLiteral("Date");
  if (!criteria.QryDate1.isEmpty()) {
    dates.prepend(criteria.QryDate1 + QLatin1Char(' ') + CompareOpText(criteria.QryOp1) + QLatin1Char(' '));
  }
  if (!criteria.QryDate2.isEmpty()) {
    dates += QLatin1Char(' ') + CompareOpText(criteria.QryOp2) + QLatin1Char(' ') + criteria.QryDate2;
  }
  if (!criteria.QryDate1.isEmpty() || !criteria.QryDate2.isEmpty()) lines << dates;
  return lines;
}

void Query::QueryBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  frmQry dialog(Source.Query, &Window);
  dialog.exec();
  if (!dialog.QryAccepted) return;
  Source.SetRecordSource();
}

void Query::RecordQuery_Click() {
  Hold([this] { QueryBttn_Click(); });
}

}  // namespace veldrin::find
