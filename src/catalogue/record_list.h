// The one list of records that all views show, with its current record and its selection.
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <vector>

#include "engine/dao/db_engine.h"

namespace veldrin::catalogue {

/// The selected records, by bookmark, each once, in the order in which they were selected. A photo's bookmark
/// is its PhotoID: the list of records is one of keys.
class SelBookmarkList : public QObject {
  Q_OBJECT

 public:
  int Count() const { return static_cast<int>(Bookmarks.size()); }
  int operator[](int index) const { return Bookmarks[static_cast<size_t>(index)]; }
  bool Contains(int bookmark) const;
  /// The place of a bookmark in the list; -1 where it isn't selected.
  int IndexOf(int bookmark) const;
  /// False when the record is selected already.
  bool Add(int bookmark);
  void Remove(int index);
  void Clear() { Replace({}); }
  /// These records instead, each given once.
  void Replace(std::vector<int> bookmarks);

 Q_SIGNALS:
  void Changed();

 private:
  std::vector<int> Bookmarks;
  std::vector<int> Sorted;  ///< the same, for the look-up
};

/// `Data1`: the recordset of the current folder and query. Keeps keys only; a row is read when it is looked
/// at.
class RecordList : public QObject {
  Q_OBJECT

 public:
  explicit RecordList(engine::DBEngine& engine) : Engine(engine) {}
  ~RecordList() override;

  QString DatabaseName;
  QString RecordSource;

  /// True while a routine walks the list or moves a scroll bar or a directory list itself, so that the
  /// handlers of those changes keep still: a guard against synchronous events, not a lock.
  bool SuppressReposition = false;

  /// Reads the list anew from RecordSource and stands on its first record. Empties the selection. Raises the
  /// error of a source that can't be read; the list is empty then.
  void Refresh();

  /// For reading: moves go through the operations below. Raises 91 before the first Refresh and after one
  /// that failed; the list counts as empty then.
  engine::Recordset& Recordset() const;

  // The recordset's operations; each move emits Reposition.
  int RecordCount() const { return TheRecordset ? TheRecordset->RecordCount() : 0; }
  int AbsolutePosition() const { return TheRecordset ? TheRecordset->AbsolutePosition() : -1; }
  void SetAbsolutePosition(int position);
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  void FindFirst(const QString& criteria);
  void FindNext(const QString& criteria);
  int Bookmark() const { return Recordset().Bookmark(); }
  void SetBookmark(int bookmark);
  int BookmarkAt(int position) const { return Recordset().BookmarkAt(position); }
  /// -1 for a bookmark that isn't in the list.
  int PositionOf(int bookmark) const { return Recordset().PositionOf(bookmark); }
  void Reread() { Recordset().Reread(); }
  engine::Value Field(const QString& name) const { return Recordset().Field(name); }

  SelBookmarkList SelBookmarks;

 Q_SIGNALS:
  /// The list was read anew.
  void Refreshed();
  /// The current record changed; also emitted while SuppressReposition is set.
  void Reposition();

 private:
  engine::DBEngine& Engine;
  std::unique_ptr<engine::Recordset> TheRecordset;
};

/// Sets SuppressReposition for as long as it lives.
class RepositionGuard {
 public:
  explicit RepositionGuard(RecordList& list) : List(list) { List.SuppressReposition = true; }
  ~RepositionGuard() { List.SuppressReposition = false; }
  RepositionGuard(const RepositionGuard&) = delete;
  RepositionGuard& operator=(const RepositionGuard&) = delete;

 private:
  RecordList& List;
};

}  // namespace veldrin::catalogue
