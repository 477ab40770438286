// The message box.
#pragma once

#include <QString>

class QWidget;

namespace veldrin::controls {

/// Buttons, icon and default button, to be joined with |.
enum MsgBoxStyle : int {
  vbOKOnly = 0,
  vbYesNo = 4,
  vbCritical = 16,
  vbQuestion = 32,
  vbExclamation = 48,
  vbInformation = 64,
  vbDefaultButton2 = 256,
};

enum MsgBoxResult : int { vbOK = 1, vbYes = 6, vbNo = 7 };

/// Shows a modal box with plain text, in which a carriage return ends a line, and returns the button pressed;
/// a closed Yes/No box counts as No. An empty title stands for the application's.
int MsgBox(QWidget* parent, const QString& prompt, int style = vbOKOnly, const QString& title = {});

}  // namespace veldrin::controls
