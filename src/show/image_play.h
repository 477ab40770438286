// Image Play: the area of the picture show, its slider and its buttons.
#pragma once

#include <QAction>
#include <QLabel>
#include <QSlider>
#include <QToolBar>
#include <QWidget>

#include "show/show_state.h"

namespace veldrin::show {

/// The panel of the fourth tab.
class ImagePlay : public QWidget {
 public:
  ImagePlay(ShowSettings& settings, QWidget* parent);

  QSlider& Slider1() { return *Slider; }
  /// A button of `tbarShow` by its number.
  QAction& Button(int number) const;
  /// Sets the buttons from the settings.
  void SetShowButtons();

 private:
  void MakeToolbar();

  ShowSettings& Settings;
  QWidget* picScreen;
  QSlider* Slider;
  QToolBar* tbarShow;
};

}  // namespace veldrin::show
