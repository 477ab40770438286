// The picture show: how long a tick holds the window, and the release of the slider in a large list.

#include <QCoreApplication>
#include <QImageReader>
#include <QThread>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "controls/file_list.h"
#include "show/image_play.h"
#include "show/media_player.h"
#include "show/music.h"

namespace veldrin::benches {

namespace {

constexpr int ShowPictures = 12;
constexpr int SecondsToDecode = 2;

// A show without music on the whole of a catalogue, played forward and repeated, whose clock is turned by
// hand.
class ShowBench {
 public:
  explicit ShowBench(const QString& program)
      : Opened(program),
        Data1(Opened.Engine()),
        TheMusic(Settings, MusicList, Opened.Paths().MusicDir, Player),
        Play({Data1, Opened.Paths(), Settings, TheMusic}, Cache, nullptr) {
    Data1.DatabaseName = Opened.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    Play.Slider1().setMaximum(Data1.RecordCount());
    Play.resize(829, 654);
    Play.show();
    Play.tbarShow_ButtonClick(show::PlayRepeat);
    Play.tbarShow_ButtonClick(show::PlayForward);
    QCoreApplication::processEvents();
  }

  double Tick() {
    // The time between two ticks is the decoding's.
    QThread::sleep(SecondsToDecode);
    QCoreApplication::processEvents();
    return Milliseconds([&] {
      Play.TheShow().Timer1_Timer();
      QCoreApplication::processEvents();  // paints it
    });
  }

  double ReleaseSlider() {
    Play.TheShow().Slider1_MouseDown();
    return Milliseconds([&] {
      Play.TheShow().Slider1_MouseUp(Data1.RecordCount() / 2);
      QCoreApplication::processEvents();
    });
  }

 private:
  OpenedCatalogue Opened;
  catalogue::RecordList Data1;
  show::ShowSettings Settings;
  controls::FileListBox MusicList;
  show::MediaPlayer Player;
  show::Music TheMusic;
  pictures::PictureCache Cache;
  show::ImagePlay Play;
};

// One decoding at the size of the picture area.
double DecodeForShow(const std::string& picture) {
  return Milliseconds([&] {
    QImageReader reader(QString::fromStdString(picture));
    reader.setScaledSize(reader.size().scaled(809, 548, Qt::KeepAspectRatio));
    if (reader.read().isNull()) throw std::runtime_error("no picture");
  });
}

}  // namespace

void AddShowFigures(const std::string& data) {
  AddFigure({"show_tick_24mp", "ms",
             [data, show = std::make_shared<std::unique_ptr<ShowBench>>()] {
               if (!*show) {
                 const auto pictures = MakeLargePictures(data, ShowPictures);
                 *show = std::make_unique<ShowBench>(
                     MakePictureCatalogue(QString::fromStdString(data + "/show"), pictures));
               }
               return (*show)->Tick();
             },
             [data] { return DecodeForShow(MakeLargePictures(data, ShowPictures).front()); }, 9});
  AddFigure({"slider_drag_1m",
             "ms",
             [data, show = std::make_shared<std::unique_ptr<ShowBench>>()] {
               if (!*show) {
                 *show =
                     std::make_unique<ShowBench>(MakeCatalogue(QString::fromStdString(data), LargeCatalogue));
               }
               return (*show)->ReleaseSlider();
             },
             {},
             21});
}

}  // namespace veldrin::benches
