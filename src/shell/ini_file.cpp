#include "shell/ini_file.h"

// The values are bytes to the parser; Qt converts them.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <QFile>
#include <QSaveFile>

namespace veldrin::shell {

namespace {

constexpr bool IsUtf8 = true;

// The parser ends at a zero byte, which only a damaged file has; the lines behind it are of use all the same.
QByteArray ReadBytes(const QString& name) {
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().replace('\0', ' ');
}

bool Load(CSimpleIniA& ini, const QByteArray& bytes) {
  return ini.LoadData(bytes.constData(), bytes.size()) >= 0;
}

// The comments behind the last value, which the parser has nothing to hang on.
QByteArray TrailingComments(const QByteArray& bytes) {
  QByteArrayList lines = bytes.split('\n');
  QByteArrayList comments;
  while (!lines.isEmpty()) {
    const QByteArray line = lines.takeLast().trimmed();
    if (line.isEmpty()) continue;
    if (!line.startsWith(';') && !line.startsWith('#')) break;
    comments.prepend(line);
  }
  // A file of comments alone keeps them as its head.
  return lines.isEmpty() || comments.isEmpty() ? QByteArray() : comments.join('\n') + '\n';
}

QString CutTo(const QString& value, int length) {
  if (value.size() <= length) return value;
  return value.left(value[length - 1].isHighSurrogate() ? length - 1 : length);
}

}  // namespace

QString GetPrivateProfileString(const QString& section, const QString& key, const QString& file, int size) {
  CSimpleIniA ini(IsUtf8);
  ini.SetQuotes(true);
  ini.SetMultiKey(true);  // Of equal keys the first counts.
  if (!Load(ini, ReadBytes(file))) return {};
  return CutTo(QString::fromUtf8(ini.GetValue(section.toUtf8().constData(), key.toUtf8().constData(), "")),
               size - 1);
}

bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& file) {
  // A file that can't be read keeps its other keys.
  if (QFile::exists(file) && !QFile(file).open(QIODevice::ReadOnly)) return false;
  const QByteArray bytes = ReadBytes(file);
  CSimpleIniA ini(IsUtf8);
  ini.SetSpaces(false);
  ini.SetMultiKey(true);
  if (!Load(ini, bytes)) return false;
  constexpr bool replaceAll = true;
  ini.SetValue(section.toUtf8().constData(), key.toUtf8().constData(), value.toUtf8().constData(), nullptr,
               replaceAll);
  std::string text;
  if (ini.Save(text) < 0) return false;

  QSaveFile out(file);
  if (!out.open(QIODevice::WriteOnly)) return false;
  out.write(QByteArray::fromStdString(text));
  out.write(TrailingComments(bytes));
  return out.commit();
}

}  // namespace veldrin::shell
