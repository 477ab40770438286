// What a field holds: an invalid QVariant for Null, otherwise an int, a QString or a QDateTime.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace veldrin::engine {

using Value = QVariant;

/// A column's place by its name, without regard to case; -1 for one that isn't there.
qsizetype ColumnAt(const QStringList& names, const QString& name);

inline bool IsNull(const Value& value) { return !value.isValid(); }

/// A date as it stands in the catalogue: "2001-12-31 10:15:00", the time of day where it was taken, without
/// fractions of a second. In memory it is a UTC date of the same digits: a local one can't have every time,
/// since a clock that is put forward leaves some out.
QString DateToStore(const QDateTime& date);
QDateTime DateFromStore(const QString& text);

}  // namespace veldrin::engine
