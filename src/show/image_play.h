// Image Play: the area of the picture show, its slider and its buttons.
#pragma once

#include <QLabel>
#include <QSlider>
#include <QWidget>

#include "show/picture_pair.h"
#include "show/picture_show.h"
#include "show/picture_timer.h"
#include "show/show_toolbar.h"

namespace veldrin::show {

/// The panel of the fourth tab.
class ImagePlay : public QWidget, private ShowSurface {
  Q_OBJECT

 public:
  ImagePlay(const ShowParts& parts, QWidget* parent);

  QSlider& Slider1() { return *Slider; }
  /// A button of `tbarShow` by its number.
  QAction& Button(int number) const { return tbarShow->Button(number); }
  void SetShowButtons() override;
  void tbarShow_ButtonClick(int button) { Show.tbarShow_ButtonClick(button); }
  /// The show itself, to be held while a dialog is open.
  PictureShow& TheShow() { return Show; }

 Q_SIGNALS:
  /// The music was switched on or off, perhaps on the whole screen.
  void MusicSwitched();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowPicture(const QString& file) override { Pictures->Show(file); }
  void PreparePicture(const QString& file) override { Pictures->Prepare(file); }
  void HidePictures() override { Pictures->Hide(); }
  void SetSlider(int value) override { Slider->setValue(value); }
  bool IsEnabled(int button) const override { return Button(button).isEnabled(); }
  void MusicOnChanged() override { Q_EMIT MusicSwitched(); }
  void ChangeWindow() override;
  void ShowAudioDialog() override;

  void MakeControls();
  void PlaceControls();

  ShowParts Parts;
  PictureLoader Loader;
  QLabel* lblShow;
  QWidget* picScreen;
  PicturePair* Pictures;
  QSlider* Slider;
  ShowToolbar* tbarShow;
  PictureTimer* Timer1;
  PictureShow Show;
};

}  // namespace veldrin::show
