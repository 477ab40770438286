// Image Play: the area of the picture show, its slider and its buttons.
#pragma once

#include <QLabel>
#include <QSlider>
#include <QWidget>

#include "pictures/picture_cache.h"
#include "show/show_stage.h"

namespace veldrin::show {

/// The panel of the fourth tab.
class ImagePlay : public QWidget {
  Q_OBJECT

 public:
  ImagePlay(const ShowParts& parts, pictures::PictureCache& cache, QWidget* parent);

  QSlider& Slider1() { return *Slider; }
  /// A button of `tbarShow` by its number.
  QAction& Button(int number) const { return Stage->Toolbar().Button(number); }
  void SetShowButtons() { Stage->SetShowButtons(); }
  void tbarShow_ButtonClick(int button) { TheShow().tbarShow_ButtonClick(button); }
  /// The show itself, to be held while a dialog is open.
  PictureShow& TheShow() { return Stage->Show(); }

 Q_SIGNALS:
  /// The music was switched on or off, perhaps on the whole screen.
  void MusicSwitched();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PlayFullScreen();
  void Slider1_Action();
  void MakeControls();
  void PlaceControls();

  ShowParts Parts;
  pictures::PictureCache& Cache;
  QLabel* lblShow;
  QWidget* picScreen;
  QSlider* Slider;
  ShowStage* Stage;
  bool SliderHeld = false;  ///< by the mouse, whose moves count when it lets go
};

}  // namespace veldrin::show
