// The list of records as the rows of a grid: a page of rows is read when one of them is looked at.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "catalogue/record_list.h"

namespace veldrin::browse {

struct GridColumn {
  const char* Heading;
  const char* DataField;
};

/// The grid's columns, in order; also the fields in which a record can be looked for.
const std::vector<GridColumn>& GridColumns();

/// The names of their fields.
QStringList GridFields();

class RecordModel : public QAbstractTableModel {
 public:
  explicit RecordModel(catalogue::RecordList& data1);

  /// Reads anew what is shown next.
  void Forget();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  engine::Value Field(int row, int column) const;
  QVariant TextOf(const QModelIndex& index) const;

  catalogue::RecordList& Data1;
  mutable int FirstRow = 0;
  mutable bool ReadFailed = false;
  mutable catalogue::ListRows Rows;
};

}  // namespace veldrin::browse
