// Hands out the keys of new folders and writes their rows.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <map>

#include "engine/dao/database.h"

namespace veldrin::folders {

/// Writes one folder or thousands: a parent's last key is asked for once, and for all parents below the first
/// folder written once a level, since as a rule nothing stands there. So nobody else may write folders while
/// a writer is in use.
class FolderWriter {
 public:
  explicit FolderWriter(engine::Database& database) : TheDatabase(database) {}

  /// Writes the row of a new folder below a parent and returns its key. The first folder below a parent
  /// brings the row of the parent's "!UNORGANIZED" with it. Raises the engine's errors, 3078 below the tenth
  /// level.
  QString AddFolderRecord(int level, const QString& name, const QString& parentKey);
  /// The same for one folder or more of a parent, in this order.
  QStringList AddFolderRecords(int level, const QStringList& names, const QString& parentKey);

 private:
  QString& LastKey(int level, const QString& parentKey);
  bool HasNoneInFirst(int level);
  QString FindLast(int level, const QString& parentKey);

  engine::Database& TheDatabase;
  QHash<QString, QString> LastKeys;  ///< by parent; empty below one without rows
  QString FirstKey;
  std::map<int, bool> NoneInFirst;  ///< by level
};

}  // namespace veldrin::folders
