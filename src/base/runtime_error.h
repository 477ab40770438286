// The one exception type of the program: an error has a number, by which code tells errors apart, and a
// description for people.
#pragma once

#include <QString>
#include <exception>

namespace veldrin::base {

/// Numbers customary for run-time and data engine errors.
enum ErrorNumber : int {
  errOverflow = 6,
  errOutOfMemory = 7,
  errSubscriptOutOfRange = 9,
  errTypeMismatch = 13,
  errOutOfStackSpace = 28,
  errFileNotFound = 53,
  errDeviceIO = 57,
  errPathFileAccess = 75,
  errDeviceUnavailable = 68,
  errDiskFull = 61,
  errPermissionDenied = 70,
  errPathNotFound = 76,
  errObjectNotSet = 91,
  errInvalidPropertyValue = 380,
  errCantCreateObject = 429,
  errInvalidPicture = 481,
  errNoCurrentRecord = 3021,
  errDuplicateKey = 3022,
  errNoSuchFile = 3024,
  errReadOnly = 3027,
  errWorkgroupFileMissing = 3028,
  errNotAValidAccount = 3029,
  errBadPath = 3044,
  errCanceled = 3059,
  errTooFewParameters = 3061,
  errSyntax = 3075,
  errNoSuchTable = 3078,
  errRecordDeleted = 3167,
  errDataChanged = 3197,
  errFieldTooSmall = 3163,
  errLocked = 3260,
  errItemNotFound = 3265,
  errUnrecognizedFormat = 3343,
  errEngine = 3146,
};

class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, QString description)
      : TheNumber(number),
        TheDescription(std::move(description)),
        What(QStringLiteral("%1 %2").arg(number).arg(TheDescription).toStdString()) {}

  int Number() const { return TheNumber; }
  const QString& Description() const { return TheDescription; }
  const char* what() const noexcept override { return What.c_str(); }

 private:
  int TheNumber;
  QString TheDescription;
  std::string What;
};

}  // namespace veldrin::base
