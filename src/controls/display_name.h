// A file's name as one line of a list.
#pragma once

#include <QString>

namespace veldrin::controls {

/// The name with a replacement character for each line break, control character and mark that turns the
/// direction of the text. For showing only: the file is opened under its true name.
inline QString DisplayName(QString name) {
  for (QChar& character : name) {
    const char16_t code = character.unicode();
    const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool breaks = code == 0x2028 || code == 0x2029 || character.category() == QChar::Other_Control;
    if (turns || breaks) character = QChar::ReplacementCharacter;
  }
  return name;
}

/// The order of file and directory names: without regard to case; names that differ in nothing else by their
/// case.
inline bool NameComesBefore(const QString& a, const QString& b) {
  const int order = a.compare(b, Qt::CaseInsensitive);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace veldrin::controls
