#include "base/failure.h"

#include <QLoggingCategory>

namespace veldrin::base {

namespace {

Q_LOGGING_CATEGORY(PassedOver, "veldrin.passed_over", QtFatalMsg)

}  // namespace

QString ErrorCodeText(const RuntimeError& error) {
  return QStringLiteral("Error Code: %1 %2").arg(error.Number()).arg(error.Description());
}

void LogPassedOver(const char* what, const std::source_location& where) {
  qCWarning(PassedOver, "%s:%u, %s: %s", where.file_name(), where.line(), where.function_name(), what);
}

}  // namespace veldrin::base
