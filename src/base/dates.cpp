#include "base/dates.h"

#include <QRegularExpression>

namespace veldrin::base {

namespace {

// Years of two digits lie between 1930 and 2029.
constexpr int FirstShortYear = 30;

// The locale's short form with a year of four digits: what is shown is what is meant when it is read again.
QString LongYearForm(const QLocale& locale) {
  QString form = locale.dateFormat(QLocale::ShortFormat).simplified();
  if (!form.contains(QLatin1String("yyyy"))) form.replace(QLatin1String("yy"), QLatin1String("yyyy"));
  return form;
}

// The locale's short form with seconds.
QString SecondsForm(const QLocale& locale) {
  QString form = locale.timeFormat(QLocale::ShortFormat).simplified();
  const qsizetype minutes = form.indexOf(QLatin1String("mm"));
  if (minutes > 0 && !form.contains(QLatin1Char('s'))) {
    form.insert(minutes + 2, form.mid(minutes - 1, 1) + QLatin1String("ss"));
  }
  return form;
}

// Forms of scripts written from the right hold marks of direction, which nobody types.
QString WithoutMarks(QString text) {
  static const QRegularExpression marks(QStringLiteral("[\u200E\u200F\u061C]"));
  return text.remove(marks);
}

// The text with the year of two digits that stands where the form has its year written in full; the text
// itself where there is none. Qt would take such a year for one of the twentieth century, which lacks
// 2/29/00.
QString WithCentury(QString text, const QString& form, const QLocale& locale) {
  static const QRegularExpression number(QStringLiteral("(?<!\\d)\\d+"),
                                         QRegularExpression::UseUnicodePropertiesOption);
  const bool yearIsLast = form.indexOf(QLatin1Char('y')) > form.indexOf(QLatin1Char('d'));
  QRegularExpressionMatch found;
  yearIsLast ? void(text.lastIndexOf(number, -1, &found)) : void(text.indexOf(number, 0, &found));
  if (found.capturedLength() != 2) return text;
  QLocale plain = locale;
  plain.setNumberOptions(QLocale::OmitGroupSeparator);
  const int year = locale.toInt(found.captured());
  const int full = year + (year < FirstShortYear ? 2000 : 1900);
  return text.replace(found.capturedStart(), 2, plain.toString(full));
}

std::optional<QDate> ParseDay(const QString& text, const QLocale& locale) {
  // Days and months count with and without a leading zero.
  static const QRegularExpression twoDigits(QStringLiteral("(?<![dM])(d|M)\\1(?!\\1)"));
  const QString local = WithoutMarks(LongYearForm(locale).replace(twoDigits, QStringLiteral("\\1")));
  for (const QString& form : {local, QStringLiteral("yyyy-M-d"), QStringLiteral("M/d/yyyy")}) {
    const QDate day = locale.toDate(text, form);
    if (day.isValid() && day.year() >= 100 && day.year() <= 9999) return day;
  }
  const QDate day = locale.toDate(WithCentury(text, local, locale), local);
  return day.isValid() ? std::optional(day) : std::nullopt;
}

std::optional<QTime> ParseTime(const QString& text, const QLocale& locale) {
  for (const QString& form : {QStringLiteral("H:mm:ss"), QStringLiteral("H:mm"), QStringLiteral("h:mm:ss AP"),
                              QStringLiteral("h:mm AP")}) {
    const QTime time = QLocale::c().toTime(text, form);
    if (time.isValid()) return time;
  }
  for (const QString& form : {locale.timeFormat(QLocale::ShortFormat).simplified(), SecondsForm(locale)}) {
    const QTime time = locale.toTime(text, form);
    if (time.isValid()) return time;
  }
  return std::nullopt;
}

}  // namespace

std::optional<QDateTime> ParseDate(const QString& text, const QLocale& locale) {
  const QString trimmed = WithoutMarks(text).simplified();
  if (const auto day = ParseDay(trimmed, locale)) return QDateTime(*day, QTime(0, 0), Qt::UTC);
  // A locale's date may hold blanks itself, so the time is looked for behind each of them.
  for (qsizetype blank = trimmed.indexOf(QLatin1Char(' ')); blank > 0;
       blank = trimmed.indexOf(QLatin1Char(' '), blank + 1)) {
    const auto day = ParseDay(trimmed.left(blank), locale);
    const auto time = ParseTime(trimmed.mid(blank + 1), locale);
    if (day && time) return QDateTime(*day, *time, Qt::UTC);
  }
  return std::nullopt;
}

QString FormatDate(const QDateTime& date, const QLocale& locale) {
  QString day = locale.toString(date.date(), LongYearForm(locale));
  const QTime time = date.time();
  if (time == QTime(0, 0)) return day;
  const QString form =
      time.second() == 0 ? locale.timeFormat(QLocale::ShortFormat).simplified() : SecondsForm(locale);
  return day + QLatin1Char(' ') + locale.toString(time, form);
}

}  // namespace veldrin::base
