#include "base/failure.h"

namespace veldrin::base {

QString ErrorCodeText(const RuntimeError& error) {
  return QStringLiteral("Error Code: %1 %2").arg(error.Number()).arg(error.Description());
}

}  // namespace veldrin::base
