#include "base/failure.h"

#include <QLoggingCategory>

namespace veldrin::base {

namespace {

Q_LOGGING_CATEGORY(PassedOver, "veldrin.passed_over", QtFatalMsg)

}  // namespace

QString ErrorCodeText(const RuntimeError& error) {
  return QStringLiteral("Error Code: %1 %2").arg(error.Number()).arg(error.Description());
}

void LogPassedOver(const char* what, CallPlace where) {
  qCWarning(PassedOver, "%s:%d: %s", where.File, where.Line, what);
}

}  // namespace veldrin::base
