// What the list of records holds: the selected folder and the query criteria, as SQL.
#pragma once

#include <QString>
#include <functional>

#include "base/work_report.h"
#include "catalogue/paths.h"
#include "catalogue/record_list.h"

namespace veldrin::catalogue {

/// The query criteria; an empty text is a criterion that isn't set. The operators are indexes of
/// CompareOpText.
struct Criteria {
  QString QryImageType;
  QString QryTitle;
  QString QryDescription;
  QString QryMadeBy;
  QString QryDate1;
  QString QryDate2;
  int QryOp1 = 0;
  int QryOp2 = 0;

  bool operator==(const Criteria&) const = default;
};

constexpr int CompareOpCount = 5;

/// "=", "<", "<=", ">" and ">=" for 0 to 4; the index counts modulo 5, a negative one gives an empty text.
QString CompareOpText(int index);

/// The tail " WHERE ..." of a statement on photos; empty when no criterion is set. The first date stands on
/// the left of its comparison and the second on the right, so that one operator in both means a range.
QString BuildQueryClause(const Criteria& criteria);

/// Tells the key of the selected folder; empty for the whole catalogue.
using SelectedFolder = std::function<QString()>;

/// The one place where it is decided what the list holds.
class RecordSource {
 public:
  RecordSource(RecordList& data1, SelectedFolder folder, engine::DBEngine& engine, const Paths& paths)
      : Data1(data1), Folder(std::move(folder)), Engine(engine), ThePaths(paths) {}

  Criteria Query;

  /// Empties the criteria; the list stays as it is.
  void ClearQuery() { Query = Criteria{}; }

  /// Reads the list for the selected folder and the criteria. The list then stands on its first record or is
  /// empty. Raises the error of criteria that the engine can't read; list and criteria are then what they
  /// were when it was last read.
  void SetRecordSource();
  /// The same after work on photos: a list that can't be read stays, and the report tells why.
  void SetRecordSource(base::WorkReport& report);

 private:
  void SetActiveFolder(const QString& key);

  RecordList& Data1;
  SelectedFolder Folder;
  engine::DBEngine& Engine;
  const Paths& ThePaths;
  // What the list was last read for.
  Criteria ShownQuery;
  QString ShownFolder;
};

}  // namespace veldrin::catalogue
