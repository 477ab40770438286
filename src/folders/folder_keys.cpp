#include "folders/folder_keys.h"

#include "catalogue/schema.h"

namespace veldrin::folders {

QString PadKey(int value, int width) {
  return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

QString UnorganizedKey(const QString& parentKey) { return parentKey + PadKey(0, SegmentLength); }

QString LinkKey(const QString& folderKey) { return folderKey.leftJustified(LinkKeyLength, QLatin1Char('0')); }

int LevelOfKey(const QString& folderKey) { return static_cast<int>(folderKey.size()) / SegmentLength; }

QString BuildLevelSql(int level, const QString& parentKey) {
  const QString below = level == 1 ? QString() : QStringLiteral("WHERE IDNo Like '%1*' ").arg(parentKey);
  return QStringLiteral("SELECT IDNo, FolderName FROM %1 %2ORDER BY FolderName")
      .arg(catalogue::LevelTable(level), below);
}

}  // namespace veldrin::folders
