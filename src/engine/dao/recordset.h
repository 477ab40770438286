// A list of rows with a current row.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "engine/dao/table_def.h"
#include "engine/dao/value.h"

namespace veldrin::engine {

enum RecordsetType { dbOpenDynaset = 2, dbOpenSnapshot = 4 };

/// The position runs from -1 (before the first row, BOF) to RecordCount (behind the last, EOF). A recordset
/// opens on its first row. Moving and reading without a current row raises 3021.
class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual int RecordCount() const = 0;
  virtual QStringList FieldNames() const = 0;

  bool BOF() const { return Position < 0 || RecordCount() == 0; }
  // `EOF` is a macro of the C library.
  bool AtEOF() const { return Position >= RecordCount(); }

  /// 0 based; -1 without a current row.
  int AbsolutePosition() const { return BOF() || AtEOF() ? -1 : Position; }
  void SetAbsolutePosition(int position);

  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  /// Identifies the current row for as long as the recordset is open.
  int Bookmark() const;
  void SetBookmark(int bookmark);
  /// The bookmark of the row at a position within the list.
  virtual int BookmarkAt(int position) const { return position; }
  /// The position of a bookmark; -1 when no row has it.
  virtual int PositionOf(int bookmark) const { return bookmark; }

  /// Forgets what was read of the current row, so that the next Field reads it anew.
  void Reread() { Moved(); }

  /// The current row's field; 3265 for a name that isn't there.
  Value Field(const QString& name) const;

  /// A field's type by its name; 3265 for a name that isn't there. A snapshot doesn't know it and raises
  /// 3027.
  virtual FieldType TypeOf(const QString& name) const;

  /// Moves to the first row that meets the criteria, the text of a WHERE clause, or sets NoMatch and stays.
  void FindFirst(const QString& criteria) { Find(criteria, 0); }
  /// The same from the row behind the current one on.
  void FindNext(const QString& criteria) { Find(criteria, Position + 1); }
  bool NoMatch() const { return TheNoMatch; }

  /// Writing: AddNew or Edit, then SetField, then Update. SetField raises 3163 for a text that is too long.
  /// AddNew and Update leave the current row where it is. A snapshot raises 3027.
  virtual void AddNew();
  virtual void Edit();
  virtual void SetField(const QString& name, const Value& value);
  virtual void Update();
  /// Deletes the current row, which stays current, as a row that can't be read, until the next move.
  virtual void Delete();

  /// Reads `count` rows from `first` on without moving; a row that has gone is an empty vector.
  virtual std::vector<std::vector<Value>> ReadRows(int first, int count) const = 0;

 protected:
  /// The position of the first row at `from` or behind it that meets the criteria; -1 when none does.
  virtual int FindPosition(const QString& criteria, int from) const = 0;
  void RequireCurrent() const;
  /// A field's place; 3265 for a name that isn't there.
  qsizetype ColumnOf(const QString& name) const;
  /// Called by every move, so that the current row is read afresh.
  virtual void Moved() const { CurrentRow.clear(); }

 private:
  void MoveTo(int position);
  void Find(const QString& criteria, int from);

  int Position = 0;
  bool TheNoMatch = false;
  mutable std::vector<Value> CurrentRow;
};

}  // namespace veldrin::engine
