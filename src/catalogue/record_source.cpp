#include "catalogue/record_source.h"

#include <QStringList>

#include "base/failure.h"
#include "base/runtime_error.h"
#include "engine/sql_tokens.h"

namespace veldrin::catalogue {

using engine::QuoteSql;

namespace {

bool PointsUp(int index) { return CompareOpText(index).startsWith(QLatin1Char('>')); }
bool PointsDown(int index) { return CompareOpText(index).startsWith(QLatin1Char('<')); }

QString DateClause(const Criteria& criteria) {
  const QString second =
      QStringLiteral("DateValue(CreateDate) %1 #%2#").arg(CompareOpText(criteria.QryOp2), criteria.QryDate2);
  if (criteria.QryDate1.isEmpty()) return criteria.QryDate2.isEmpty() ? QString() : second;

  const QString first =
      QStringLiteral("(#%1# %2 DateValue(CreateDate)").arg(criteria.QryDate1, CompareOpText(criteria.QryOp1));
  if (criteria.QryDate2.isEmpty()) return first + QLatin1Char(')');
  const bool sameWay = (PointsUp(criteria.QryOp1) && PointsUp(criteria.QryOp2)) ||
                       (PointsDown(criteria.QryOp1) && PointsDown(criteria.QryOp2));
  return first + (sameWay ? QStringLiteral(" AND ") : QStringLiteral(" OR ")) + second + QLatin1Char(')');
}

}  // namespace

QString CompareOpText(int index) {
  if (index < 0) return {};
  static const QStringList texts = {QStringLiteral("="), QStringLiteral("<"), QStringLiteral("<="),
                                    QStringLiteral(">"), QStringLiteral(">=")};
  return texts[index % CompareOpCount];
}

QString BuildQueryClause(const Criteria& criteria) {
  QStringList clauses;
  if (!criteria.QryImageType.isEmpty()) {
    clauses << QStringLiteral("ImageType = '%1'").arg(criteria.QryImageType);
  }
  if (!criteria.QryTitle.isEmpty())
    clauses << QStringLiteral("Title Like '*%1*'").arg(QuoteSql(criteria.QryTitle));
  if (!criteria.QryDescription.isEmpty()) {
    clauses << QStringLiteral("Description Like '*%1*'").arg(QuoteSql(criteria.QryDescription));
  }
  if (!criteria.QryMadeBy.isEmpty())
    clauses << QStringLiteral("MadeBy = '%1'").arg(QuoteSql(criteria.QryMadeBy));
  if (const QString dates = DateClause(criteria); !dates.isEmpty()) clauses << dates;
  return clauses.isEmpty() ? QString() : QStringLiteral(" WHERE ") + clauses.join(QStringLiteral(" AND "));
}

void RecordSource::SetActiveFolder(const QString& key) {
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  database->Execute(QStringLiteral("UPDATE ActFolder SET IDNo = '%1', Length = %2").arg(key).arg(key.size()));
}

void RecordSource::SetRecordSource() {
  const QString folder = Folder();
  const QString former = Data1.RecordSource;
  try {
    if (!folder.isEmpty()) SetActiveFolder(folder);
    Data1.RecordSource = (folder.isEmpty() ? QStringLiteral("SELECT tblPhotos.* FROM tblPhotos")
                                           : QStringLiteral("SELECT qryPhotos.* FROM qryPhotos")) +
                         BuildQueryClause(Query);
    Data1.Refresh();
  } catch (const base::RuntimeError&) {
    Data1.RecordSource = former;
    Query = ShownQuery;
    if (!ShownFolder.isEmpty()) base::ResumeNext([this] { SetActiveFolder(ShownFolder); });
    throw;
  }
  ShownQuery = Query;
  ShownFolder = folder;
}

void RecordSource::SetRecordSource(base::WorkReport& report) {
  try {
    SetRecordSource();
  } catch (const base::RuntimeError& error) {
    report.Failures.push_back({QStringLiteral("The list couldn't be read anew"), base::ReasonOf(error)});
  }
}

}  // namespace veldrin::catalogue
