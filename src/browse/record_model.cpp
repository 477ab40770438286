#include "browse/record_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/dates.h"
#include "base/failure.h"

namespace veldrin::browse {

namespace {

constexpr int RowsPerPage = 64;
constexpr int RowsBefore = 12;  // The grid asks from its top row on, and is mostly moved by a few rows.

}  // namespace

const std::vector<GridColumn>& GridColumns() {
  static const std::vector<GridColumn> columns = {{"ID No.", "PhotoID"},
                                                  {"Image", "ImageType"},
                                                  {"Title", "Title"},
                                                  {"Create Date", "CreateDate"},
                                                  {"Made By", "MadeBy"},
                                                  {"Description", "Description"},
                                                  {"Last Modify Date", "LastModifyDate"}};
  return columns;
}

QStringList GridFields() {
  QStringList fields;
  for (const GridColumn& column : GridColumns()) fields << QLatin1String(column.DataField);
  return fields;
}

RecordModel::RecordModel(catalogue::RecordList& data1) : Data1(data1) {
  connect(&Data1, &catalogue::RecordList::Refreshed, this, [this] {
    beginResetModel();
    Rows.clear();
    endResetModel();
  });
  connect(&Data1, &catalogue::RecordList::Reposition, this, [this] {
    if (std::exchange(ReadFailed, false)) Rows.clear();
  });
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Data1.RecordCount();
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(GridColumns().size());
}

// A row that has gone shows empty.
const engine::Value& RecordModel::Field(int row, int column) const {
  static const engine::Value null;
  if (row < FirstRow || row >= FirstRow + std::ssize(Rows)) {
    FirstRow = std::max(0, row - RowsBefore);
    // Rows that can't be read, as while another machine writes, show empty until the user moves on: asking
    // for them cell by cell would wait for each.
    const int count = std::min(RowsPerPage, Data1.RecordCount() - FirstRow);
    Rows.assign(count, {});
    ReadFailed = !base::ResumeNext([&] {
      Rows = Data1.Recordset().ReadRows(FirstRow, count);
      Names = Data1.Recordset().FieldNames();
    });
  }
  const int at = row - FirstRow;
  if (at >= std::ssize(Rows) || Rows[at].empty()) return null;
  return Rows[at].at(engine::ColumnAt(Names, QLatin1String(GridColumns()[column].DataField)));
}

QVariant RecordModel::TextOf(const QModelIndex& index) const {
  const engine::Value& value = Field(index.row(), index.column());
  if (value.userType() == QMetaType::QDateTime) return base::FormatDate(value.toDateTime());
  return value.userType() == QMetaType::QString ? QVariant(value.toString().simplified()) : value;
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole) return TextOf(index);
  if (role == Qt::ToolTipRole && index.column() == 5) {
    const QString text = Field(index.row(), index.column()).toString();
    return text.isEmpty() ? QVariant() : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
  }
  if (role == Qt::TextAlignmentRole && index.column() == 0)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(GridColumns()[section].Heading);
}

}  // namespace veldrin::browse
