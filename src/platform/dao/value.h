// What a field holds: an invalid QVariant for Null, otherwise an int, a QString or a QDateTime.
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace veldrin::platform {

using Value = QVariant;

inline bool IsNull(const Value& value) { return !value.isValid(); }

/// A date as it stands in the catalogue: "2001-12-31 10:15:00", in local time, without fractions of a second.
QString DateToStore(const QDateTime& date);
QDateTime DateFromStore(const QString& text);

}  // namespace veldrin::platform
