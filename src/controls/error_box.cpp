#include "controls/error_box.h"

#include "base/failure.h"
#include "controls/msg_box.h"

namespace veldrin::controls {

void ShowErrorBox(QWidget* parent, const base::RuntimeError& error) {
  MsgBox(parent, base::ErrorCodeText(error), vbCritical, QStringLiteral("Error"));
}

}  // namespace veldrin::controls
