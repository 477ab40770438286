#include "platform/failure.h"

#include "platform/msg_box.h"

namespace veldrin::platform {

QString ErrorCodeText(const RuntimeError& error) {
  return QStringLiteral("Error Code: %1 %2").arg(error.Number()).arg(error.Description());
}

void ShowErrorBox(QWidget* parent, const RuntimeError& error) {
  MsgBox(parent, ErrorCodeText(error), vbCritical, QStringLiteral("Error"));
}

}  // namespace veldrin::platform
