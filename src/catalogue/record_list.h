// The one list of records that all views show, with its current record and its selection.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
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
  /// False when the record is selected already.
  bool Add(int bookmark);
  /// Selects a record, or unselects it where it is selected.
  void Toggle(int bookmark);
  void Clear() { Replace({}); }
  /// These records instead, each given once.
  void Replace(std::vector<int> bookmarks);

 Q_SIGNALS:
  void Changed();

 private:
  std::vector<int> Bookmarks;
  std::vector<int> Sorted;  ///< the same, for the look-up
};

/// What tells a photo from another one that has its number, and a row from what another machine has made of
/// it. Type and date never change while a photo is in the catalogue, its texts may.
struct PhotoLook {
  QString ImageType;
  QDateTime CreateDate;
  size_t Texts = 0;     ///< a hash of title, maker and description
  bool IsThere = true;  ///< otherwise there was no row
  bool operator==(const PhotoLook&) const = default;
};

/// A photo as the user pointed at it.
struct ChosenPhoto {
  int PhotoID = 0;
  /// As it was when a view last showed it; nothing for a photo that was selected and never shown.
  std::optional<PhotoLook> Look;
};

/// What a command acts on.
struct Choice {
  std::vector<ChosenPhoto> Photos;
  bool IsSelection = false;  ///< otherwise it is the current record
};

/// Tells what the command that is given now acts on; to be asked before any question to the user.
using Chooser = std::function<Choice()>;

/// Some rows of the list, read together.
class ListRows {
 public:
  ListRows() = default;
  ListRows(QStringList names, std::vector<std::vector<engine::Value>> rows)
      : Names(std::move(names)), Rows(std::move(rows)) {}

  int Count() const { return static_cast<int>(Rows.size()); }
  /// False for a row that has been deleted since the list was read.
  bool IsThere(int index) const { return !Rows[static_cast<size_t>(index)].empty(); }
  /// A field of a row by its name; Null in a row that isn't there.
  engine::Value Field(int index, const QString& name) const;
  /// Of a row with all fields of tblPhotos but LastModifyDate, which the program itself keeps up to date.
  PhotoLook Look(int index) const;

 private:
  QStringList Names;
  std::vector<std::vector<engine::Value>> Rows;
};

/// `Data1`: the records of the current folder and query, the current one among them and the selected ones.
/// Keeps keys only; rows are read when they are looked at. All who show records follow its signals, and
/// nobody moves it but to make another record the current one.
class RecordList : public QObject {
  Q_OBJECT

 public:
  explicit RecordList(engine::DBEngine& engine);
  ~RecordList() override;

  QString DatabaseName;
  QString RecordSource;

  /// Reads the list anew from RecordSource, empties the selection and stands on the first record. Raises the
  /// error of a source that can't be read; all is as it was then.
  void Refresh() { Read({}); }
  /// The same, and stands on a record, or where it isn't in the list any more, at the place where it stood.
  void RefreshAt(int bookmark) { Read(bookmark); }

  int RecordCount() const { return TheRecordset ? TheRecordset->RecordCount() : 0; }
  /// The current record, from 0 on; -1 exactly while the list is empty.
  int AbsolutePosition() const { return TheRecordset ? TheRecordset->AbsolutePosition() : -1; }

  // Each move emits Reposition, also one that ends where it began. Raise 3021 for a place or a record that
  // isn't in the list.
  void SetAbsolutePosition(int position);
  void SetBookmark(int bookmark) { SetAbsolutePosition(PositionOf(bookmark)); }
  /// To the nearest place within the list; nothing happens in an empty one.
  void MoveNear(int position);
  /// Moves to the first record that meets the criteria, the text of a WHERE clause; false, and no move, where
  /// none does.
  bool FindFirst(const QString& criteria);
  /// The same from the record behind the current one on.
  bool FindNext(const QString& criteria);

  int Bookmark() const { return Recordset().Bookmark(); }
  int BookmarkAt(int position) const { return Recordset().BookmarkAt(position); }
  /// -1 for a bookmark that isn't in the list.
  int PositionOf(int bookmark) const { return TheRecordset ? TheRecordset->PositionOf(bookmark) : -1; }

  /// A field of the current record, 3167 when its row has gone.
  engine::Value Field(const QString& name) const { return Recordset().Field(name); }
  /// Reads rows that are going to be shown, `count` from `first` on, all within the list. Where another
  /// machine's lock refuses that (3260), ReadAgain follows.
  ListRows ReadRows(int first, int count) const;
  /// The same of a row whose texts won't be shown: how the photo looks isn't noted.
  ListRows ReadForImage(int position) const { return FetchRows(position, 1); }
  /// ReadAgain is to come.
  bool AwaitsRows() const { return Later.isActive(); }

  SelBookmarkList SelBookmarks;
  /// Selects every record. What is selected already stays in front, as if they were added one by one.
  void SelectAll();

  /// What a command acts on: the selected records in their order; the current one where nothing is selected
  /// or the selection doesn't count; none in an empty list.
  Choice Chosen(bool selectionCounts) const;

  /// For reading what the operations above don't give. Raises 91 before the first Refresh.
  const engine::Recordset& Recordset() const;

 Q_SIGNALS:
  /// The list was read anew; Reposition follows.
  void Refreshed();
  /// Another record is the current one, or the same one is to be shown anew.
  void Reposition();
  /// Rows that a lock kept from being read may be there now: who shows them empty asks again.
  void ReadAgain();

 private:
  ListRows FetchRows(int first, int count) const;
  void Read(std::optional<int> bookmark);

  engine::DBEngine& Engine;
  std::unique_ptr<engine::Recordset> TheRecordset;
  mutable QTimer Later;
  mutable QHash<int, PhotoLook> Looks;  ///< of the rows shown since the list was read
};

}  // namespace veldrin::catalogue
