// The one reading of dates that people type or that stand in SQL texts, and the one way to show them.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <optional>

namespace veldrin::base {

/// Reads the locale's short form, ISO ("2001-12-31") and month/day/year ("12/31/2001"), each with an optional
/// time of day behind a blank. Years count from 100 to 9999; in the locale's form a year of two digits lies
/// between 1930 and 2029.
std::optional<QDateTime> ParseDate(const QString& text, const QLocale& locale = QLocale());

/// The locale's short form with a year of four digits; the time only when it isn't midnight, its seconds only
/// when they aren't zero. ParseDate reads it back to the second.
QString FormatDate(const QDateTime& date, const QLocale& locale = QLocale());

}  // namespace veldrin::base
