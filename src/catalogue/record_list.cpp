#include "catalogue/record_list.h"

#include <algorithm>

#include "base/runtime_error.h"

namespace veldrin::catalogue {

namespace {

// A walk through the whole catalogue must not end up with all of it in memory.
constexpr int MostLooks = 10'000;

// How long until rows are asked for again, in milliseconds.
constexpr int AfterLock = 250;
constexpr int AfterFailure = 1000;

}  // namespace

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

void SelBookmarkList::Toggle(int bookmark) {
  if (Add(bookmark)) return;
  Sorted.erase(std::lower_bound(Sorted.begin(), Sorted.end(), bookmark));
  std::erase(Bookmarks, bookmark);
  Q_EMIT Changed();
}

void SelBookmarkList::Replace(std::vector<int> bookmarks) {
  if (Bookmarks == bookmarks) return;
  Bookmarks = std::move(bookmarks);
  Sorted = Bookmarks;
  if (!std::is_sorted(Sorted.begin(), Sorted.end())) std::sort(Sorted.begin(), Sorted.end());
  Q_EMIT Changed();
}

engine::Value ListRows::Field(int index, const QString& name) const {
  return IsThere(index) ? Rows[index].at(engine::ColumnAt(Names, name)) : engine::Value();
}

RecordList::RecordList(engine::DBEngine& engine) : Engine(engine) {
  Later.setSingleShot(true);
  connect(&Later, &QTimer::timeout, this, &RecordList::ReadAgain);
}

RecordList::~RecordList() = default;

void RecordList::Read(std::optional<int> bookmark) {
  const auto database = Engine.OpenDatabase(DatabaseName);
  std::unique_ptr<engine::Recordset> read;
  int count = 0;
  database->Patiently([&] {
    read = database->OpenRecordset(RecordSource);
    // Reads the keys, and so raises what is wrong with the source.
    count = read->RecordCount();
  });
  if (bookmark && count > 0) {
    const int place = read->PositionOf(*bookmark);
    read->SetAbsolutePosition(place >= 0 ? place : std::clamp(AbsolutePosition(), 0, count - 1));
  }
  TheRecordset = std::move(read);
  Looks.clear();
  SelBookmarks.Clear();
  Q_EMIT Refreshed();
  Q_EMIT Reposition();
}

const engine::Recordset& RecordList::Recordset() const {
  if (!TheRecordset)
    throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
  return *TheRecordset;
}

void RecordList::SetAbsolutePosition(int position) {
  Recordset();
  TheRecordset->SetAbsolutePosition(position);
  Q_EMIT Reposition();
}

void RecordList::MoveNear(int position) {
  if (RecordCount() > 0) SetAbsolutePosition(std::clamp(position, 0, RecordCount() - 1));
}

bool RecordList::FindFirst(const QString& criteria) {
  Recordset();
  TheRecordset->FindFirst(criteria);
  if (TheRecordset->NoMatch()) return false;
  Q_EMIT Reposition();
  return true;
}

bool RecordList::FindNext(const QString& criteria) {
  Recordset();
  TheRecordset->FindNext(criteria);
  if (TheRecordset->NoMatch()) return false;
  Q_EMIT Reposition();
  return true;
}

PhotoLook ListRows::Look(int index) const {
  const auto text = [&](const char* name) { return Field(index, QLatin1String(name)).toString(); };
  return {text("ImageType"), Field(index, QStringLiteral("CreateDate")).toDateTime(),
          qHashMulti(0, text("Title"), text("MadeBy"), text("Description"))};
}

ListRows RecordList::FetchRows(int first, int count) const {
  try {
    return {Recordset().FieldNames(), Recordset().ReadRows(first, count)};
  } catch (const base::RuntimeError& error) {
    if (error.Number() == base::errLocked) Later.start(AfterLock);
    if (error.Number() == base::errEngine) Later.start(AfterFailure);
    throw;
  }
}

ListRows RecordList::ReadRows(int first, int count) const {
  Recordset();
  TheRecordset->Reread();  // Field tells the same as the rows that are shown.
  ListRows rows = FetchRows(first, count);
  if (Looks.size() > MostLooks) erase_if(Looks, [this](auto at) { return !SelBookmarks.Contains(at.key()); });
  for (int i = 0; i < rows.Count(); ++i) {
    if (!rows.IsThere(i)) continue;
    Looks[BookmarkAt(first + i)] = rows.Look(i);
  }
  return rows;
}

void RecordList::SelectAll() {
  std::vector<int> all;
  all.reserve(RecordCount());
  for (int k = 0; k < SelBookmarks.Count(); ++k) all.push_back(SelBookmarks[k]);
  for (int position = 0; position < RecordCount(); ++position) {
    const int bookmark = BookmarkAt(position);
    if (!SelBookmarks.Contains(bookmark)) all.push_back(bookmark);
  }
  SelBookmarks.Replace(std::move(all));
}

Choice RecordList::Chosen(bool selectionCounts) const {
  Choice choice;
  const auto add = [&](int bookmark) {
    const auto look = Looks.constFind(bookmark);
    choice.Photos.push_back({bookmark, look == Looks.cend() ? std::nullopt : std::optional(*look)});
  };
  if (RecordCount() == 0) return choice;
  choice.IsSelection = selectionCounts && SelBookmarks.Count() > 0;
  if (!choice.IsSelection) {
    add(Bookmark());
    return choice;
  }
  choice.Photos.reserve(SelBookmarks.Count());
  for (int i = 0; i < SelBookmarks.Count(); ++i) add(SelBookmarks[i]);
  return choice;
}

}  // namespace veldrin::catalogue
