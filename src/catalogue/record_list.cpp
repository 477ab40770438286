#include "catalogue/record_list.h"

#include <algorithm>

#include "base/runtime_error.h"

namespace veldrin::catalogue {

bool SelBookmarkList::Contains(int bookmark) const {
  return std::binary_search(Sorted.begin(), Sorted.end(), bookmark);
}

bool SelBookmarkList::Add(int bookmark) {
  const auto place = std::lower_bound(Sorted.begin(), Sorted.end(), bookmark);
  if (place != Sorted.end() && *place == bookmark) return false;
  Sorted.insert(place, bookmark);
  Bookmarks.push_back(bookmark);
  Q_EMIT Changed();
  return true;
}

void SelBookmarkList::Remove(int index) {
  Sorted.erase(std::lower_bound(Sorted.begin(), Sorted.end(), (*this)[index]));
  Bookmarks.erase(Bookmarks.begin() + index);
  Q_EMIT Changed();
}

int SelBookmarkList::IndexOf(int bookmark) const {
  const auto found = std::find(Bookmarks.begin(), Bookmarks.end(), bookmark);
  return found == Bookmarks.end() ? -1 : static_cast<int>(found - Bookmarks.begin());
}

void SelBookmarkList::Replace(std::vector<int> bookmarks) {
  if (Bookmarks == bookmarks) return;
  Bookmarks = std::move(bookmarks);
  Sorted = Bookmarks;
  if (!std::is_sorted(Sorted.begin(), Sorted.end())) std::sort(Sorted.begin(), Sorted.end());
  Q_EMIT Changed();
}

RecordList::~RecordList() = default;

void RecordList::Refresh() {
  TheRecordset.reset();
  SelBookmarks.Clear();
  try {
    TheRecordset = Engine.OpenDatabase(DatabaseName)->OpenRecordset(RecordSource);
    TheRecordset->RecordCount();  // Reads the keys, and so raises what is wrong with the source.
  } catch (const base::RuntimeError&) {
    TheRecordset.reset();
    Q_EMIT Refreshed();
    throw;
  }
  Q_EMIT Refreshed();
  Q_EMIT Reposition();
}

engine::Recordset& RecordList::Recordset() const {
  if (!TheRecordset)
    throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
  return *TheRecordset;
}

void RecordList::SetAbsolutePosition(int position) {
  Recordset().SetAbsolutePosition(position);
  Q_EMIT Reposition();
}

void RecordList::MoveFirst() {
  Recordset().MoveFirst();
  Q_EMIT Reposition();
}

void RecordList::MoveLast() {
  Recordset().MoveLast();
  Q_EMIT Reposition();
}

void RecordList::MoveNext() {
  Recordset().MoveNext();
  Q_EMIT Reposition();
}

void RecordList::MovePrevious() {
  Recordset().MovePrevious();
  Q_EMIT Reposition();
}

void RecordList::FindFirst(const QString& criteria) {
  Recordset().FindFirst(criteria);
  if (!Recordset().NoMatch()) Q_EMIT Reposition();
}

void RecordList::FindNext(const QString& criteria) {
  Recordset().FindNext(criteria);
  if (!Recordset().NoMatch()) Q_EMIT Reposition();
}

void RecordList::SetBookmark(int bookmark) {
  Recordset().SetBookmark(bookmark);
  Q_EMIT Reposition();
}

}  // namespace veldrin::catalogue
