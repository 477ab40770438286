// The window of the start: it is on screen while the program loads and for a second after.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

class QAbstractButton;

namespace veldrin::shell {

/// Shows itself by Show, loads as soon as it is painted, and then unloads itself: after a second, at a key or
/// at a click on its picture. Then, and only then, the main window is shown. After a load that failed it is
/// out of sight at once, and the main window is shown a second later all the same.
class frmSplash : public QWidget {
  Q_OBJECT

 public:
  /// `load` returns whether all went well. Both are called once.
  frmSplash(std::function<bool()> load, std::function<void()> showMain);

  /// Puts it in the middle of the screen.
  void Show();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Form_Load();
  void Form_Activate();
  void Form_KeyPress() { Unload(); }
  void Image1_Click() { Unload(); }
  void Timer1_Timer() { Unload(); }
  void Form_Unload();
  void Unload();
  void ActivateOnce();

  std::function<bool()> Load;
  std::function<void()> ShowMain;
  QTimer Timer1;
  QAbstractButton* Image1;
  bool Activated = false;
};

}  // namespace veldrin::shell
