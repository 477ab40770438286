// The data engine: the account with which database files are opened, and their opening.
#pragma once

#include <QString>
#include <memory>

#include "engine/dao/database.h"

namespace veldrin::engine {

constexpr int dbUseJet = 2;

class DBEngine {
 public:
  DBEngine();
  ~DBEngine();
  DBEngine(const DBEngine&) = delete;
  DBEngine& operator=(const DBEngine&) = delete;

  int DefaultType = dbUseJet;
  QString DefaultUser;
  QString DefaultPassword;
  /// Path of the workgroup file, which knows the accounts that may open databases.
  QString SystemDB;
  /// How many milliseconds a statement waits for another machine's lock before it raises 3260.
  int LockTimeout = 5000;
  /// Who waits for it longer than that: asked where a command begins and ends its group of writes and where a
  /// list is read or looked through, never for the rows that a window shows. None tries once.
  Patience Patient;

  /// Runs a long read in another thread and returns when it has ended; `stop` ends it early, with 3059. None
  /// reads in the caller's own.
  Aside Beside;

  /// Opens an existing file, shared and read-write. All who open the same file share one session, which stays
  /// open: to open a file and its links costs more than most commands do. Raises 3028 or 3029 when the
  /// workgroup file is missing or refuses the default account, 3024, 3044 or 3343 when the file is missing or
  /// isn't a database.
  std::unique_ptr<Database> OpenDatabase(const QString& name);

  /// The next OpenDatabase begins anew, without the links and queries of the file opened before.
  void Forget() { Opened.reset(); }

 private:
  void LogOn();

  std::shared_ptr<OpenedCatalogue> Opened;
  QString LoggedOn;
};

}  // namespace veldrin::engine
