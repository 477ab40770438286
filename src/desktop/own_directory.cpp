#include "desktop/own_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSysInfo>

#include "base/runtime_error.h"

namespace veldrin::desktop {

namespace {

enum class Place { Free, Own, Taken };

Place Look(const QString& path) {
  struct stat status {};
  if (::lstat(QFile::encodeName(path).constData(), &status) != 0) return Place::Free;
  return S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() ? Place::Own : Place::Taken;
}

}  // namespace

void RequireOwnDirectory(QString directory) {
  // With its separator at the end the name of a link would stand for what the link leads to.
  while (directory.size() > 1 && directory.endsWith(QLatin1Char('/'))) directory.chop(1);
  struct stat status {};
  if (::lstat(QFile::encodeName(directory).constData(), &status) != 0) {
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(directory));
  }
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) {
    throw base::RuntimeError(base::errPermissionDenied,
                             QStringLiteral("Permission denied: %1").arg(directory));
  }
}

QString OwnDirectoryBelow(const QString& place, const QString& name) {
  QString path = place + QLatin1Char('/') + name;
  const Place plain = Look(path);
  if (plain == Place::Own) return path;
  // One that was made while the name was taken stays the user's, also when the name is free again.
  const QStringList suffixed = QDir(place).entryList({name + QStringLiteral("-*")}, QDir::Dirs, QDir::Name);
  for (const QString& found : suffixed) {
    QString own = place + QLatin1Char('/') + found;
    if (Look(own) == Place::Own) return own;
  }
  if (plain == Place::Free) return path;
  constexpr int hexadecimal = 16;
  return path + QLatin1Char('-') + QString::number(QRandomGenerator::system()->generate64(), hexadecimal);
}

QString OwnMark(const QByteArray& besides) {
  constexpr int length = 16;
  const QByteArray owner = QSysInfo::machineUniqueId() + QSysInfo::machineHostName().toUtf8() +
                           QByteArray::number(::getuid()) + besides;
  return QString::fromLatin1(QCryptographicHash::hash(owner, QCryptographicHash::Sha1).toHex().left(length));
}

}  // namespace veldrin::desktop
