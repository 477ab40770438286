#include "folders/folder_writer.h"

#include <algorithm>
#include <vector>

#include "catalogue/schema.h"
#include "folders/folder_keys.h"

namespace veldrin::folders {

QString FolderWriter::AddFolderRecord(int level, const QString& name, const QString& parentKey) {
  return AddFolderRecords(level, {name}, parentKey).front();
}

QStringList FolderWriter::AddFolderRecords(int level, const QStringList& names, const QString& parentKey) {
  std::vector<engine::Value> rows;
  rows.reserve(2 * (static_cast<size_t>(names.size()) + 1));
  QString& last = LastKey(level, parentKey);
  if (last.isEmpty()) {
    last = UnorganizedKey(parentKey);
    rows.insert(rows.end(), {last, UnorganizedName()});
  }
  QStringList keys;
  keys.reserve(names.size());
  for (const QString& name : names) {
    keys << parentKey + PadKey(QStringView(last).right(SegmentLength).toInt() + 1, SegmentLength);
    rows.insert(rows.end(), {keys.last(), name});
    // As texts: behind 9999 the last key stays the last.
    last = std::max(last, keys.last());
  }
  // The same key comes again where a parent has no number left. The row that has it stays.
  TheDatabase.Insert(catalogue::LevelTable(level), {QStringLiteral("IDNo"), QStringLiteral("FolderName")},
                     rows);
  if (FirstKey.isEmpty()) FirstKey = keys.front();
  return keys;
}

QString& FolderWriter::LastKey(int level, const QString& parentKey) {
  const auto known = LastKeys.find(parentKey);
  if (known != LastKeys.end()) return *known;
  const bool inFirst = !FirstKey.isEmpty() && parentKey.startsWith(FirstKey);
  return *LastKeys.insert(parentKey,
                          inFirst && HasNoneInFirst(level) ? QString() : FindLast(level, parentKey));
}

// Asked before the first row is written there.
bool FolderWriter::HasNoneInFirst(int level) {
  const auto known = NoneInFirst.find(level);
  if (known != NoneInFirst.end()) return known->second;
  return NoneInFirst[level] = FindLast(level, FirstKey).isEmpty();
}

QString FolderWriter::FindLast(int level, const QString& parentKey) {
  const QString below = level == 1 ? QString() : QStringLiteral(" WHERE IDNo LIKE '%1*'").arg(parentKey);
  const auto last = TheDatabase.OpenRecordset(
      QStringLiteral("SELECT Max(IDNo) AS ID FROM %1%2").arg(catalogue::LevelTable(level), below),
      engine::dbOpenSnapshot);
  return last->Field(QStringLiteral("ID")).toString();
}

}  // namespace veldrin::folders
