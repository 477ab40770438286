// The character set of the pages that are written.
#pragma once

#include <QByteArray>
#include <QString>

namespace veldrin::output {

/// The text in Windows-1252, which browsers take a page of no stated character set for. A character outside
/// it becomes a decimal character reference.
QByteArray ToCodePage(const QString& text);

}  // namespace veldrin::output
