#include "engine/dao/errors.h"

#include <sqlite3.h>

namespace veldrin::engine {

namespace {

int NumberOf(const SQLite::Exception& error, const QString& message) {
  switch (error.getErrorCode()) {
    case SQLITE_CONSTRAINT:
      return error.getExtendedErrorCode() == SQLITE_CONSTRAINT_CHECK ? base::errFieldTooSmall
                                                                     : base::errDuplicateKey;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return base::errLocked;
    case SQLITE_READONLY:
      return base::errReadOnly;
    case SQLITE_FULL:
      return base::errDiskFull;
    case SQLITE_CANTOPEN:
      return base::errNoSuchFile;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return base::errUnrecognizedFormat;
    default:
      break;
  }
  if (message.startsWith(QLatin1String("no such table"))) return base::errNoSuchTable;
  if (message.startsWith(QLatin1String("no such column"))) return base::errTooFewParameters;
  if (message.contains(QLatin1String("syntax error")) ||
      message.startsWith(QLatin1String("incomplete input"))) {
    return base::errSyntax;
  }
  return base::errEngine;
}

}  // namespace

base::RuntimeError FromSqlite(const SQLite::Exception& error) {
  const QString message = QString::fromUtf8(error.what());
  return {NumberOf(error, message), message};
}

}  // namespace veldrin::engine
