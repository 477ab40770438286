// A recordset that holds all its rows and can't be written. For short lists and single values.
#pragma once

#include "engine/dao/recordset.h"
#include "engine/session.h"

namespace veldrin::engine {

class Snapshot : public Recordset {
 public:
  explicit Snapshot(RowSet rows) : Set(std::move(rows)) {}

  int RecordCount() const override { return static_cast<int>(Set.Rows.size()); }
  QStringList FieldNames() const override { return Set.Names; }
  std::vector<std::vector<Value>> ReadRows(int first, int count) const override;

 protected:
  int FindPosition(const QString& criteria, int from) const override;

 private:
  RowSet Set;
};

}  // namespace veldrin::engine
