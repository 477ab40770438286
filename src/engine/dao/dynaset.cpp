#include "engine/dao/dynaset.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/runtime_error.h"
#include "base/text_length.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

using base::RuntimeError;

Dynaset::Dynaset(std::shared_ptr<OpenedCatalogue> catalogue, KeySource source)
    : Catalogue(std::move(catalogue)), Source(std::move(source)) {}

const std::vector<int>& Dynaset::Keys() const {
  if (TheKeys) return *TheKeys;
  if (Source.Key.isEmpty()) {
    throw RuntimeError(base::errReadOnly, QStringLiteral("Rows of %1 can only be added.").arg(Source.Table));
  }
  TheKeys = Catalogue->ReadKeys(Source);
  return *TheKeys;
}

std::vector<std::vector<Value>> Dynaset::ReadRows(int first, int count) const {
  const std::vector<int>& keys = Keys();
  const std::span wanted(keys.data() + first, count);
  const Dialect& dialect = TheSession().Sql();
  const bool one = count == 1;
  const QString sql = QStringLiteral("SELECT * FROM %1 WHERE ").arg(Source.Table) +
                      (one ? Source.Key + QStringLiteral(" = ?") : dialect.IsOneOf(Source.Key));
  auto read =
      TheSession().Rows(sql, std::array<Value, 1>{one ? Value(wanted[0]) : Value(dialect.ListOf(wanted))});
  const qsizetype key = ColumnAt(read.Names, Source.Key);
  std::vector<std::vector<Value>> rows(count);
  for (auto& row : read.Rows) {
    const auto at = std::lower_bound(wanted.begin(), wanted.end(), row[key].toInt());
    rows[at - wanted.begin()] = std::move(row);
  }
  return rows;
}

int Dynaset::PositionOf(int bookmark) const {
  const auto at = std::lower_bound(Keys().begin(), Keys().end(), bookmark);
  return at != Keys().end() && *at == bookmark ? static_cast<int>(at - Keys().begin()) : -1;
}

// Rows whose keys lie close together are looked through in one go: in the whole catalogue that is one scan.
// In a folder whose photos are far apart they are looked up some at a time, at first a few, since the match
// may be near. A row that came after the list was read, or stands in another folder, has a key but no place
// in the list.
int Dynaset::FindPosition(const QString& criteria, int from) const {
  constexpr qint64 near = 8;  // A row that is passed over costs so much less than one that is sought.
  constexpr int shortRun = 64;
  constexpr int mostAtOnce = 4096;
  const Dialect& dialect = TheSession().Sql();
  const QString select = QStringLiteral("SELECT %1.%2 FROM %1 WHERE ").arg(Source.Table, Source.Key);
  const QString rest = QStringLiteral(" AND %1 ORDER BY %2.%3 LIMIT 256")
                           .arg(TranslateCondition(criteria, dialect), Source.Table, Source.Key);
  const QString between =
      select + QStringLiteral("%1.%2 BETWEEN ? AND ?").arg(Source.Table, Source.Key) + rest;
  const QString among = select + dialect.IsOneOf(Source.Table + QLatin1Char('.') + Source.Key) + rest;
  const std::vector<int>& keys = Keys();
  const int count = RecordCount();
  int position = -1;
  // The first of the keys that has a place in the list.
  const auto place = [&](const std::vector<int>& found) {
    for (size_t i = 0; i < found.size() && position < 0; ++i) position = PositionOf(found[i]);
    return position >= 0;
  };
  const auto look = [&](Session& session) {
    int atOnce = shortRun;
    for (int first = std::min(from, count); first < count;) {
      int last = first + 1;
      while (last < count && qint64(keys[last]) - keys[last - 1] <= near) ++last;
      if (last - first < shortRun) {
        last = std::min(first + atOnce, count);
        const QString list = session.Sql().ListOf(std::span(keys.data() + first, last - first));
        if (place(session.Keys(among, std::array<Value, 1>{list}))) return;
        atOnce = std::min(2 * atOnce, mostAtOnce);
        first = last;
        continue;
      }
      const std::vector<int> found = session.Keys(between, std::array<Value, 2>{keys[first], keys[last - 1]});
      if (place(found)) return;
      first = found.empty()
                  ? last
                  : static_cast<int>(std::upper_bound(keys.begin(), keys.end(), found.back()) - keys.begin());
    }
  };
  Catalogue->Patiently([&] { Catalogue->ReadBeside(look); });
  return position;
}

FieldType Dynaset::TypeOf(const QString& name) const {
  const qsizetype column = ColumnOf(name);
  if (Columns().IsDate[column]) return dbDate;
  return Columns().Sizes[column] > 0 ? dbText : dbLong;
}

void Dynaset::AddNew() {
  State = Writing::Added;
  Changes.clear();
}

void Dynaset::Edit() {
  RequireCurrent();
  State = Writing::Edited;
  Changes.clear();
}

void Dynaset::SetField(const QString& name, const Value& value) {
  if (State == Writing::None)
    throw RuntimeError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
  const qsizetype column = ColumnOf(name);
  const int size = Columns().Sizes[column];
  if (size > 0 && base::TextLength(value.toString()) > size) {
    throw RuntimeError(
        base::errFieldTooSmall,
        QStringLiteral("The field is too small to accept the amount of data you attempted to add."));
  }
  Changes[static_cast<int>(column)] = value;
}

// A field that was set twice has its last value.
QStringList Dynaset::ChangedColumns() const {
  QStringList names;
  for (const auto& [column, value] : Changes) names << Columns().Names[column];
  return names;
}

std::vector<Value> Dynaset::ChangedValues() const {
  std::vector<Value> values;
  for (const auto& [column, value] : Changes) values.push_back(value);
  return values;
}

void Dynaset::Update() {
  if (State == Writing::Added) {
    TheSession().Execute(InsertSql(TheSession().Sql(), Source.Table, ChangedColumns(), Clashes::Fail),
                         ChangedValues());
  } else if (State == Writing::Edited && !Changes.empty()) {
    WriteRow(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %3 = ?")
                 .arg(Source.Table, ChangedColumns().join(QStringLiteral(" = ?, ")), Source.Key),
             ChangedValues());
  }
  State = Writing::None;
  Moved();
}

void Dynaset::Delete() {
  RequireCurrent();
  WriteRow(QStringLiteral("DELETE FROM %1 WHERE %2 = ?").arg(Source.Table, Source.Key), {});
  Moved();
}

// What another command or another machine deleted can't be written any more.
void Dynaset::WriteRow(const QString& sql, std::vector<Value> values) {
  values.emplace_back(Bookmark());
  if (TheSession().Execute(sql, values) == 0)
    throw RuntimeError(base::errRecordDeleted, QStringLiteral("Record is deleted."));
}

}  // namespace veldrin::engine
