// The search: goes to the next record of the list whose field matches a value, and filters nothing.
#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <utility>

#include "catalogue/record_list.h"
#include "find/search_dialog.h"

namespace veldrin::find {

/// The criterion of a search: a text is contained, a date is the same day, a number is equal. Raises 3075 for
/// a value that is no date or no number, whatever else it may say to the engine.
QString SearchCriterion(const QString& field, engine::FieldType type, const QString& value);

class RecordSearch {
 public:
  /// The references must outlive the object; `window` has the dialog and the boxes. `fields`: the names of
  /// the grid's fields, in its order. `searched` is called after each search, found or not.
  RecordSearch(catalogue::RecordList& data1, QStringList fields, std::function<void()> searched,
               QWidget& window)
      : Data1(data1), Fields(std::move(fields)), Searched(std::move(searched)), Window(window) {}

  /// The command of both buttons: looks for a record, and tells when there is none. Does nothing on an empty
  /// list.
  void SearchBttn_Click();

 private:
  enum Result { NotSearched = -1, NoMatch = 0, Found = 1 };
  Result FindRecord();
  bool MoveToMatch(frmSearch::SearchMode mode);

  catalogue::RecordList& Data1;
  QStringList Fields;
  std::function<void()> Searched;
  QWidget& Window;
  SearchValues Last;  ///< `FldName` and `MatchVal`, kept from one search to the next
};

}  // namespace veldrin::find
