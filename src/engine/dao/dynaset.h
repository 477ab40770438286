// A recordset that holds the keys of its rows and reads a row when it is looked at: a million rows cost four
// bytes each. The rows stand in the order of their keys.
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "engine/dao/connection.h"
#include "engine/dao/recordset.h"

namespace veldrin::engine {

/// Where the keys of a statement's rows come from.
struct KeySource {
  QString Table;   ///< the table whose rows the statement shows
  QString Key;     ///< its numeric primary key; empty when it has none, and rows can only be added then
  QString KeySql;  ///< SQLite: gives the keys, in any order and perhaps several times
  bool Unchecked;  ///< the keys come from another table and may lack a row in Table
};

/// Takes apart "T", "SELECT T.* FROM T WHERE ..." and "SELECT * FROM T WHERE ...", where T is a table or a
/// stored query that joins a table with its links. Nothing when the statement has another shape.
std::optional<KeySource> FindKeySource(Connection& connection, const QString& sql);

class Dynaset : public Recordset {
 public:
  Dynaset(std::shared_ptr<Connection> connection, KeySource source);

  int RecordCount() const override { return static_cast<int>(Keys().size()); }
  QStringList FieldNames() const override { return Names; }
  int BookmarkAt(int position) const override { return Keys()[static_cast<size_t>(position)]; }
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

  const std::vector<int>& Keys() const;
  void LoadColumns();
  void RemoveKeysWithoutRow(std::vector<int>& keys) const;
  std::vector<int> ReadKeys(const QString& sqliteSql) const;
  void BindChanges(SQLite::Statement& statement) const;
  void Insert();
  QString BuildInsert() const;
  void Write();

  std::shared_ptr<Connection> TheConnection;
  KeySource Source;
  QStringList Names;
  std::vector<bool> IsDate;
  std::vector<int> Sizes;  ///< of text columns in characters, 0 for the others
  mutable std::optional<std::vector<int>> TheKeys;
  Writing State = Writing::None;
  std::map<int, Value> Changes;  ///< by column

  // One row after the other is added with the same columns.
  std::vector<int> InsertedColumns;
  QString InsertSql;
};

}  // namespace veldrin::engine
