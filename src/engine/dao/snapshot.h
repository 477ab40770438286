// A recordset that holds all its rows and can't be written. For short lists and single values.
#pragma once

#include "engine/dao/connection.h"
#include "engine/dao/recordset.h"

namespace veldrin::engine {

class Snapshot : public Recordset {
 public:
  Snapshot(Connection& connection, const QString& sql);

  int RecordCount() const override { return static_cast<int>(Rows.size()); }
  QStringList FieldNames() const override { return Names; }
  std::vector<std::vector<Value>> ReadRows(int first, int count) const override;

 protected:
  int FindPosition(const QString& criteria, int from) const override;

 private:
  QStringList Names;
  std::vector<std::vector<Value>> Rows;
};

}  // namespace veldrin::engine
