// A recordset that holds the keys of its rows and reads a row when it is looked at: a million rows cost four
// bytes each. The rows stand in the order of their keys.
#pragma once

#include <map>
#include <memory>

#include "engine/dao/recordset.h"
#include "engine/opened_catalogue.h"

namespace veldrin::engine {

class Dynaset : public Recordset {
 public:
  /// Raises 3078 for a table that isn't there.
  Dynaset(std::shared_ptr<OpenedCatalogue> catalogue, KeySource source);

  int RecordCount() const override { return static_cast<int>(Keys().size()); }
  QStringList FieldNames() const override { return Columns().Names; }
  int BookmarkAt(int position) const override { return Keys()[position]; }
  int PositionOf(int bookmark) const override;
  FieldType TypeOf(const QString& name) const override;
  void AddNew() override;
  void Edit() override;
  void SetField(const QString& name, const Value& value) override;
  void Update() override;
  void Delete() override;
  std::vector<std::vector<Value>> ReadRows(int first, int count) const override;

 protected:
  int FindPosition(const QString& criteria, int from) const override;

 private:
  enum class Writing { None, Added, Edited };

  Session& TheSession() const { return *Catalogue->TheSession(); }
  const TableColumns& Columns() const { return TheSession().ColumnsOf(Source.Table); }
  const std::vector<int>& Keys() const;
  QStringList ChangedColumns() const;
  std::vector<Value> ChangedValues() const;
  void WriteRow(const QString& sql, std::vector<Value> values);

  std::shared_ptr<OpenedCatalogue> Catalogue;
  KeySource Source;
  mutable KeyList TheKeys;  ///< null until they are asked for
  Writing State = Writing::None;
  std::map<int, Value> Changes;  ///< by column
};

}  // namespace veldrin::engine
