#include "engine/dao/value.h"

#include <algorithm>

namespace veldrin::engine {

namespace {

const QString Form = QStringLiteral("yyyy-MM-dd HH:mm:ss");

// The number of so many digits at a place; -1 where other characters stand.
int NumberAt(const QString& text, qsizetype at, qsizetype digits) {
  int number = 0;
  for (const QChar character : QStringView(text).mid(at, digits)) {
    if (character < QLatin1Char('0') || character > QLatin1Char('9')) return -1;
    number = number * 10 + character.digitValue();
  }
  return number;
}

}  // namespace

qsizetype ColumnAt(const QStringList& names, const QString& name) {
  const auto at = std::ranges::find_if(
      names, [&](const QString& other) { return other.compare(name, Qt::CaseInsensitive) == 0; });
  return at == names.end() ? -1 : at - names.begin();
}

QString DateToStore(const QDateTime& date) { return date.toString(Form); }

// By place: reading by a form would take longer than all else that a row needs.
QDateTime DateFromStore(const QString& text) {
  const QDate day(NumberAt(text, 0, 4), NumberAt(text, 5, 2), NumberAt(text, 8, 2));
  const QTime time(NumberAt(text, 11, 2), NumberAt(text, 14, 2), NumberAt(text, 17, 2));
  return {day, time, Qt::UTC};
}

}  // namespace veldrin::engine
