// What the list of records holds: the selected folder and the query criteria, as SQL.
#pragma once

#include <QString>
#include <functional>

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

/// What SetRecordSource asks of the views that depend on the list.
class RecordViews {
 public:
  virtual ~RecordViews() = default;
  /// Whether the preview is on; switching it on shows the current record.
  virtual bool PreviewIsOn() const = 0;
  virtual void SetPreview(bool on) = 0;
  virtual void SetSliderMax(int recordCount) = 0;
  virtual void InitThumbScroll() = 0;
};

/// Tells the key of the selected folder; empty for the whole catalogue.
using SelectedFolder = std::function<QString()>;

/// The one place where the list of records changes.
class RecordSource {
 public:
  RecordSource(RecordList& data1, SelectedFolder folder, engine::DBEngine& engine, const Paths& paths,
               RecordViews& views)
      : Data1(data1), Folder(std::move(folder)), Engine(engine), ThePaths(paths), Views(views) {}

  Criteria Query;
  /// The SQL last given to the list.
  QString RecordSourceSql;

  /// Empties the criteria; the list stays as it is.
  void ClearQuery() { Query = Criteria{}; }

  /// Reads the list for the selected folder and the criteria, and brings the dependent controls up to date.
  /// The list then stands on its first record or is empty. Raises the error of criteria that the engine can't
  /// read.
  void SetRecordSource();

 private:
  void SetActiveFolder(const QString& key);

  RecordList& Data1;
  SelectedFolder Folder;
  engine::DBEngine& Engine;
  const Paths& ThePaths;
  RecordViews& Views;
};

}  // namespace veldrin::catalogue
