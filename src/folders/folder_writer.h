// Hands out the keys of new folders and writes their rows.
#pragma once

#include <QHash>
#include <QString>
#include <map>
#include <memory>

#include "engine/dao/database.h"

namespace veldrin::folders {

/// Writes one folder or thousands: what one row needs prepared serves for all, and a parent's last key is
/// asked for once. Below the first folder that was written there is nothing yet as a rule: one question there
/// serves for all parents of a level. So nobody else may write folders while a writer is in use.
class FolderWriter {
 public:
  explicit FolderWriter(engine::Database& database) : TheDatabase(database) {}

  /// Writes the row of a new folder below a parent and returns its key. The first folder below a parent
  /// brings the row of the parent's "!UNORGANIZED" with it. Raises the engine's errors, 3078 below the tenth
  /// level.
  QString AddFolderRecord(int level, const QString& name, const QString& parentKey);

 private:
  QString& LastKey(int level, const QString& parentKey);
  bool HasNoneInFirst(int level);
  QString FindLast(int level, const QString& parentKey);
  void Insert(int level, const QString& key, const QString& name);

  engine::Database& TheDatabase;
  std::map<int, std::unique_ptr<engine::Recordset>> Tables;  ///< by level
  QHash<QString, QString> LastKeys;                          ///< by parent; empty below one without rows
  QString FirstKey;
  std::map<int, bool> NoneInFirst;  ///< by level
};

}  // namespace veldrin::folders
