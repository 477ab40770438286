#include "engine/sqlite/errors.h"

#include <sqlite3.h>

namespace veldrin::engine {

namespace {

int NumberOf(const SQLite::Exception& error) {
  switch (error.getErrorCode()) {
    case SQLITE_CONSTRAINT:
      return error.getExtendedErrorCode() == SQLITE_CONSTRAINT_CHECK ? base::errFieldTooSmall
                                                                     : base::errDuplicateKey;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return base::errLocked;
    case SQLITE_INTERRUPT:
      return base::errCanceled;
    case SQLITE_READONLY:
      return base::errReadOnly;
    case SQLITE_FULL:
      return base::errDiskFull;
    case SQLITE_CANTOPEN:
      return base::errNoSuchFile;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return base::errUnrecognizedFormat;
    case SQLITE_FORMAT:
      return base::errSyntax;  // Like on a number
    default:
      return base::errEngine;
  }
}

}  // namespace

base::RuntimeError FromSqlite(const SQLite::Exception& error) {
  if (error.getExtendedErrorCode() == SQLITE_READONLY)
    return {base::errReadOnly, QStringLiteral("The catalogue is open for reading alone.")};
  if (error.getExtendedErrorCode() == SQLITE_READONLY_ROLLBACK)
    return {
        base::errReadOnly,
        QStringLiteral("Another program left a change of the catalogue unfinished. It is undone by the next "
                       "program that opens the catalogue for writing, from a machine where its locks hold.")};
  if (NumberOf(error) == base::errLocked)
    return {base::errLocked, QStringLiteral("Another machine is using the catalogue.")};
  if (NumberOf(error) == base::errCanceled)
    return {base::errCanceled, QStringLiteral("Operation canceled by user.")};
  return {NumberOf(error), QString::fromUtf8(error.what())};
}

}  // namespace veldrin::engine
