#include "platform/dao/errors.h"

#include <sqlite3.h>

namespace veldrin::platform {

namespace {

int NumberOf(const SQLite::Exception& error, const QString& message) {
  switch (error.getErrorCode()) {
    case SQLITE_CONSTRAINT:
      return error.getExtendedErrorCode() == SQLITE_CONSTRAINT_CHECK ? errFieldTooSmall : errDuplicateKey;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return errLocked;
    case SQLITE_READONLY:
      return errReadOnly;
    case SQLITE_FULL:
      return errDiskFull;
    case SQLITE_CANTOPEN:
      return errNoSuchFile;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return errUnrecognizedFormat;
    default:
      break;
  }
  if (message.startsWith(QLatin1String("no such table"))) return errNoSuchTable;
  if (message.startsWith(QLatin1String("no such column"))) return errTooFewParameters;
  if (message.contains(QLatin1String("syntax error")) ||
      message.startsWith(QLatin1String("incomplete input"))) {
    return errSyntax;
  }
  return errEngine;
}

}  // namespace

RuntimeError FromSqlite(const SQLite::Exception& error) {
  const QString message = QString::fromUtf8(error.what());
  return {NumberOf(error, message), message};
}

}  // namespace veldrin::platform
