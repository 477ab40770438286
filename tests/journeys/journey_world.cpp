// What is there before the user's first step, and what happens elsewhere.
#include <QBuffer>
#include <QTimer>
#include <algorithm>
#include <map>
#include <utility>

#include "catalogue/image_store.h"
#include "catalogue/schema.h"
#include "journeys/journey_walk.h"

namespace veldrin::test {

// Kinds: 0 broken, 1 missing, 2 a single dot, 3 very wide, 4 one that takes long, otherwise an ordinary
// picture.
JourneyModel::Photo Walk::NewPhoto(int kind) {
  JourneyModel::Photo photo;
  photo.Birth = ++Births;
  photo.Title = NewText();
  photo.ImageType = photo.Birth % 3 == 0 ? "jpg" : "bmp";
  if (kind == 0) photo.Image = "no picture " + QByteArray::number(photo.Birth);
  if (kind <= 1) return photo;
  const auto tone = [&](int digit) { return 16 + digit % 15 * 16; };
  const QColor color(tone(photo.Birth), tone(photo.Birth / 15), tone(photo.Birth / 225 + photo.Birth));
  static const std::map<int, QSize> sizes = {{2, {1, 1}}, {3, {300, 2}}, {4, {2400, 1800}}};
  const auto size = sizes.find(kind);
  QImage image(size == sizes.end() ? QSize(12, 9) : size->second, QImage::Format_RGB32);
  image.fill(color);
  QBuffer buffer(&photo.Image);
  // Of few bytes and many dots, whatever its name says.
  image.save(&buffer, kind == 4 ? "PNG" : photo.ImageType == "jpg" ? "JPG" : "BMP", kind == 4 ? 0 : 100);
  photo.Colour = color.rgb();
  return photo;
}

void Walk::FillPictures() {
  const QStringList there = QDir(PicturesDir()).entryList(QDir::Files);
  std::erase_if(Pictures, [&](const auto& picture) { return !there.contains(picture.first); });
  while (Pictures.size() < 9) {
    const int kind = static_cast<int>(Pictures.size()) % 9 == 0 ? 0 : 2 + Births % 6;
    const JourneyModel::Photo photo = NewPhoto(kind);
    const QString name = QStringLiteral("p%1.%2").arg(photo.Birth, 4, 10, QChar(u'0')).arg(photo.ImageType);
    WriteFile(PicturesDir() + name, photo.Image);
    Pictures[name] = photo;
  }
}

void Walk::MakeCatalogue() {
  const std::pair<const char*, const char*> folders[] = {
      {"0001", "Travels"}, {"00010001", "Italy"}, {"000100010001", "Rome"}, {"00010002", "Spain"},
      {"0002", "Home"},    {"0003", "Empty"},     {"0004", "One"}};
  for (const auto& [key, name] : folders) Model.Folders[QLatin1String(key)] = QLatin1String(name);
  const char* const places[] = {"00010001", "000100010001", "0002", "", "00010001", "0001"};
  for (int number = 1; number <= 36; ++number) {
    const int kind = number % 12 == 7 ? number / 12 : number % 17 == 4 ? 2 : number % 17 == 9 ? 3 : 9;
    const QString place = QLatin1String(number == 36 ? "0004" : number < 20 ? places[0] : places[number % 6]);
    Model.Store(number, NewPhoto(kind), place);
    if (number % 7 == 0) Model.Links.emplace("0002", number);
  }
  Other->Write(Model);
}

void Walk::Start() {
  Window = std::make_unique<shell::frmMain>(TheApp, Catalogue.Paths(), Catalogue.Engine());
  Reader = std::make_unique<ScreenReader>(*Window);
  QObject::connect(&Window->List(), &catalogue::RecordList::Refreshed, Window.get(), [this] {
    ++Refreshes;
    // Of an empty list the slider keeps its range.
    if (const int count = Window->List().RecordCount(); count > 0) SliderMax = count;
  });
  QObject::connect(&Reader->Tree, &QTreeWidget::currentItemChanged, Window.get(),
                   [this] { FolderMoved = true; });
  Window->Form_Load();
  constexpr int hour = 3'600'000;
  Child<QTimer>(*Window, "Timer1").setInterval(hour);  // A show ticks by hand only.
  Window->show();
  Window->activateWindow();
  if (!QTest::qWaitForWindowActive(Window.get())) Fail("start", "no active window");
  Model.Selected.clear();
  Model.ClearQuery();
  Model.PendingFolder.reset();
  Model.PendingRecords.reset();
  Model.Staged.clear();
  Foreign.clear();
  TreeIsOld = PendingChanged = false;
  SliderMax = 0;
}

void Walk::Restart() {
  LetGo();
  if (!Window->close()) return;
  Reader.reset();
  Window.reset();
  Catalogue.Engine().Forget();
  catalogue::CreateWorkFile(Catalogue.Paths(), Catalogue.Engine(), Catalogue.ProgramPath());
  if (!catalogue::OpenCatalogue(Catalogue.Paths(), Catalogue.Engine()))
    Fail("start", "the catalogue can't be opened");
  Start();
  FillPictures();
}

void Walk::HoldCatalogue() {
  constexpr int aWhile = 100;  // milliseconds; several tries
  if (Holding == Hold::None) return;
  Other->Hold(std::exchange(Holding, Hold::None) == Hold::Alone);
  Held.start(aWhile);
}

void Walk::LetGo() {
  if (!Held.isActive()) return;
  Held.stop();
  Other->LetGo();
}

void Walk::Elsewhere(const std::function<void(JourneyModel&)>& change) {
  LetGo();
  if (Before.Naming) return;  // What the name is given to would be another machine's.
  JourneyModel changed = Model;
  change(changed);
  std::vector<int> replacedPhotos;
  for (const auto& [number, photo] : Model.Rows) {
    const auto now = changed.Rows.find(number);
    if (now != changed.Rows.end() && now->second.Birth == photo.Birth) continue;
    Changed.insert(number);
    PendingChanged |= Model.Staged.contains(number);
    replacedPhotos.push_back(number);
  }
  const std::set<QString> replaced = changed.TakeReplaced();
  for (const auto& [key, name] : Model.Folders) {
    const auto now = changed.Folders.find(key);
    const bool isGone = now == changed.Folders.end() || replaced.contains(key);
    if (!isGone && now->second == name) continue;
    Foreign[key] |= isGone;
    TreeIsOld = true;
  }
  Other->Write(changed);
  // Behind its image, or one that is being made of that could come after.
  for (const int number : replacedPhotos) QFile::remove(catalogue::ThumbFileName(Catalogue.Paths(), number));
  Model = changed;
  ListIsOld = true;
}

}  // namespace veldrin::test
