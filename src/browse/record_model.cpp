#include "browse/record_model.h"

#include <algorithm>

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
    Forget();
    endResetModel();
  });
  connect(&Data1, &catalogue::RecordList::Reposition, this, [this] {
    if (ReadFailed) Forget();
  });
  connect(&Data1, &catalogue::RecordList::ReadAgain, this, [this] {
    if (!ReadFailed || rowCount({}) == 0) return;
    Forget();
    Q_EMIT dataChanged(index(0, 0), index(rowCount({}) - 1, columnCount({}) - 1));
  });
}

void RecordModel::Forget() {
  Rows = {};
  ReadFailed = false;
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Data1.RecordCount();
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(GridColumns().size());
}

// A row that has gone shows empty.
engine::Value RecordModel::Field(int row, int column) const {
  const bool known = row >= FirstRow && row < FirstRow + Rows.Count();
  // Rows that can't be read, as while another machine writes, show empty until the user moves on: asking for
  // them cell by cell would wait for each.
  if (!known && !ReadFailed) {
    FirstRow = std::max(0, row - RowsBefore);
    const int count = std::min(RowsPerPage, Data1.RecordCount() - FirstRow);
    Rows = {};
    ReadFailed = !base::ResumeNext([&] { Rows = Data1.ReadRows(FirstRow, count); });
  }
  const int at = row - FirstRow;
  if (at < 0 || at >= Rows.Count()) return {};
  return Rows.Field(at, QLatin1String(GridColumns()[column].DataField));
}

QVariant RecordModel::TextOf(const QModelIndex& index) const {
  const engine::Value value = Field(index.row(), index.column());
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
