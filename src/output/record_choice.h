// The records that a command works on: the selected ones, or the current one.
#pragma once

#include <functional>
#include <optional>

#include "catalogue/record_list.h"

namespace veldrin::output {

/// What the commands ask of the views.
class OutputViews {
 public:
  virtual ~OutputViews() = default;
  virtual bool FormViewIsShown() const = 0;
};

/// False where the current record alone is meant: with nothing selected, and in Form View.
bool SelectionCounts(const catalogue::RecordList& data1, const OutputViews& views);

/// Sets SuppressReposition for as long as it lives. In the end the record is current that was at first.
class ListWalk {
 public:
  explicit ListWalk(catalogue::RecordList& data1);
  ~ListWalk();
  ListWalk(const ListWalk&) = delete;
  ListWalk& operator=(const ListWalk&) = delete;

 private:
  catalogue::RecordList& Data1;
  catalogue::RepositionGuard Guard;
  std::optional<int> Bookmark;
};

/// Makes the first `count` selected records the current one in turn, in the order of the selection and with
/// SuppressReposition set, and calls `visit` at each. The record that was current is current again in the
/// end. An error ends the walk where it is: that record stays current and SuppressReposition set.
void VisitSelected(catalogue::RecordList& data1, int count, const std::function<void()>& visit);

/// The bare name of the current record's stored image.
QString StoredName(const catalogue::RecordList& data1);

}  // namespace veldrin::output
