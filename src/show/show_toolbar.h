// The buttons of the show, in its window and on the whole screen.
#pragma once

#include <QAction>
#include <QToolBar>

#include "show/show_state.h"

namespace veldrin::show {

/// `tbarShow`. Its buttons are the actions `tbarShow(4)` to `tbarShow(19)`, all enabled at first.
class ShowToolbar : public QToolBar {
  Q_OBJECT

 public:
  ShowToolbar(ShowWindow window, QWidget* parent);

  QAction& Button(int number) const;
  void SetShowButtons(const ShowSettings& settings);

 Q_SIGNALS:
  void ButtonClick(int button);

 private:
  void MakeButtons(ShowWindow window);
};

}  // namespace veldrin::show
