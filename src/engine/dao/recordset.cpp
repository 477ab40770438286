#include "engine/dao/recordset.h"

#include "base/runtime_error.h"

namespace veldrin::engine {

namespace {

[[noreturn]] void RefuseWriting() {
  throw base::RuntimeError(base::errReadOnly,
                           QStringLiteral("Cannot update. Database or object is read-only."));
}

}  // namespace

void Recordset::MoveTo(int position) {
  Position = position;
  Moved();
}

void Recordset::RequireCurrent() const {
  if (AbsolutePosition() < 0)
    throw base::RuntimeError(base::errNoCurrentRecord, QStringLiteral("No current record."));
}

void Recordset::SetAbsolutePosition(int position) {
  if (position < 0 || position >= RecordCount()) {
    throw base::RuntimeError(base::errNoCurrentRecord, QStringLiteral("No current record."));
  }
  MoveTo(position);
}

void Recordset::MoveFirst() { SetAbsolutePosition(0); }

void Recordset::MoveLast() { SetAbsolutePosition(RecordCount() - 1); }

void Recordset::MoveNext() {
  if (AtEOF()) RequireCurrent();
  MoveTo(Position + 1);
}

void Recordset::MovePrevious() {
  if (BOF()) RequireCurrent();
  MoveTo(Position - 1);
}

int Recordset::Bookmark() const {
  RequireCurrent();
  return BookmarkAt(Position);
}

void Recordset::SetBookmark(int bookmark) { SetAbsolutePosition(PositionOf(bookmark)); }

Value Recordset::Field(const QString& name) const {
  RequireCurrent();
  const qsizetype column = ColumnOf(name);
  if (CurrentRow.empty()) {
    CurrentRow = ReadRows(Position, 1).front();
    if (CurrentRow.empty())
      throw base::RuntimeError(base::errRecordDeleted, QStringLiteral("Record is deleted."));
  }
  return CurrentRow[column];
}

qsizetype Recordset::ColumnOf(const QString& name) const {
  const qsizetype column = ColumnAt(FieldNames(), name);
  if (column < 0) {
    throw base::RuntimeError(base::errItemNotFound,
                             QStringLiteral("Item not found in this collection: %1").arg(name));
  }
  return column;
}

FieldType Recordset::TypeOf(const QString&) const {
  throw base::RuntimeError(base::errReadOnly,
                           QStringLiteral("Operation is not supported for this type of object."));
}

void Recordset::Find(const QString& criteria, int from) {
  const int position = FindPosition(criteria, from);
  TheNoMatch = position < 0;
  if (!TheNoMatch) MoveTo(position);
}

void Recordset::AddNew() { RefuseWriting(); }
void Recordset::Edit() { RefuseWriting(); }
void Recordset::SetField(const QString&, const Value&) { RefuseWriting(); }
void Recordset::Update() { RefuseWriting(); }
void Recordset::Delete() { RefuseWriting(); }

}  // namespace veldrin::engine
