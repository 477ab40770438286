// The box that tells what the program is.
#pragma once

#include <QDialog>

namespace veldrin::shell {

class frmAbout : public QDialog {
  Q_OBJECT

 public:
  explicit frmAbout(QWidget* parent = nullptr);

 private:
  void Form_Load();
  void cmdOK_Click() { accept(); }
};

}  // namespace veldrin::shell
