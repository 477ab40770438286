#include "show/show_stage.h"

#include "show/audio_dialog.h"

namespace veldrin::show {

ShowStage::ShowStage(const ShowParts& parts, ShowWindow window, pictures::PictureCache& cache,
                     QSlider& slider, QWidget& box, QWidget& panel)
    : QObject(&panel),
      Panel(panel),
      Settings(parts.Settings),
      TheMusic(parts.TheMusic),
      Slider(slider),
      Pictures(new PicturePair(box, cache)),
      tbarShow(new ShowToolbar(window, &panel)),
      Timer1(new PictureTimer(
          parts.Interval, [this] { return Pictures->IsReady(); }, this)),
      TheShow(parts, *this, *Timer1, window) {
  connect(tbarShow, &ShowToolbar::ButtonClick, this,
          [this](int button) { TheShow.tbarShow_ButtonClick(button); });
  connect(Pictures, &PicturePair::Ready, Timer1, &PictureTimer::PictureReady);
  connect(Pictures, &PicturePair::Shown, Timer1, &PictureTimer::PictureShown);
  connect(Pictures, &PicturePair::DblClick, this, &ShowStage::DblClick);
  connect(Timer1, &PictureTimer::Timer, this, [this] { TheShow.Timer1_Timer(); });
  connect(&parts.Data1, &catalogue::RecordList::Refreshed, this, [this] { TheShow.ListChanged(); });
  connect(&parts.Data1, &catalogue::RecordList::ReadAgain, this, [this] { TheShow.ReadAgain(); });
}

void ShowStage::ShowAudioDialog() {
  frmAudio(TheMusic.MusicList(), TheMusic.MusicDir(), Panel.window()).exec();
}

}  // namespace veldrin::show
