#include "controls/msg_box.h"

#include <QGuiApplication>
#include <QMessageBox>

namespace veldrin::controls {

namespace {

QMessageBox::Icon IconOf(int style) {
  switch (style & 0x70) {
    case vbCritical:
      return QMessageBox::Critical;
    case vbQuestion:
      return QMessageBox::Question;
    case vbExclamation:
      return QMessageBox::Warning;
    case vbInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

}  // namespace

int MsgBox(QWidget* parent, const QString& prompt, int style, const QString& title) {
  const bool question = (style & 0xF) == vbYesNo;
  QString text = prompt;
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  QMessageBox box(IconOf(style), title.isEmpty() ? QGuiApplication::applicationDisplayName() : title, text,
                  question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, parent);
  // Folder names and error texts stand in prompts: what looks like markup in them is text.
  box.setTextFormat(Qt::PlainText);
  if (question) {
    box.setDefaultButton((style & vbDefaultButton2) != 0 ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? vbYes : vbNo;
  }
  box.exec();
  return vbOK;
}

}  // namespace veldrin::controls
