// What both windows of the show have: the pictures, the buttons, the timer, and the show that plays on them.
#pragma once

#include <QSlider>

#include "show/picture_pair.h"
#include "show/picture_show.h"
#include "show/picture_timer.h"
#include "show/show_toolbar.h"

namespace veldrin::show {

class ShowStage : public QObject, private ShowSurface {
  Q_OBJECT

 public:
  /// The pictures lie in `box`, the buttons in `panel`, which owns the stage and may be the box itself.
  ShowStage(const ShowParts& parts, ShowWindow window, pictures::PictureCache& cache, QSlider& slider,
            QWidget& box, QWidget& panel);

  PictureShow& Show() { return TheShow; }
  /// `tbarShow`. Belongs to the panel.
  ShowToolbar& Toolbar() const { return *tbarShow; }
  /// Sets the buttons from the settings.
  void SetShowButtons() override { tbarShow->SetShowButtons(Settings); }
  void HidePictures() override { Pictures->Hide(); }
  /// Leaves the next picture to the other window.
  void GiveUpPreparation() { Pictures->Prepare({}); }

 Q_SIGNALS:
  /// The show goes on in the other window.
  void WindowChanged();
  void MusicSwitched();
  /// On a picture.
  void DblClick();

 private:
  void ShowPicture(const QString& file) override { Pictures->Show(file); }
  void PreparePicture(const QString& file) override { Pictures->Prepare(file); }
  void SetSlider(int value) override { Slider.setValue(value); }
  void MusicOnChanged() override { Q_EMIT MusicSwitched(); }
  void ChangeWindow() override { Q_EMIT WindowChanged(); }
  void ShowAudioDialog() override;

  QWidget& Panel;
  const ShowSettings& Settings;
  Music& TheMusic;
  QSlider& Slider;
  PicturePair* Pictures;
  ShowToolbar* tbarShow;
  PictureTimer* Timer1;
  PictureShow TheShow;
};

}  // namespace veldrin::show
