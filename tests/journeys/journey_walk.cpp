#include "journeys/journey_walk.h"
#include "browse/thumbnail_page.h"

#include <QApplication>
#include <QBuffer>
#include <QMenu>
#include <QStandardPaths>
#include <QToolButton>
#include <QWindow>
#include <algorithm>

#include "catalogue/image_store.h"
#include "catalogue/schema.h"

namespace veldrin::test {

namespace {

constexpr int Hour = 3'600'000;
constexpr int MostWaiting = 10'000;  // milliseconds

}  // namespace

Walk::Walk()
    : Places{{"HOME", QFile::encodeName(Home.path())},
             {"XDG_CONFIG_HOME", QFile::encodeName(Home.path() + "/config")}},
      TheApp(Catalogue.ProgramPath(), Catalogue.ProgramPath() + "/Temp") {
  Other = std::make_unique<OtherMachine>(Catalogue.Paths().DatabaseFile, Catalogue.Paths().ImageDir);
  for (const char* name : {"/Pictures", "/Got"}) QDir().mkpath(Home.path() + QLatin1String(name));
  FillPictures();
  MakeCatalogue();
  Modals.setInterval(0);
  QObject::connect(&Modals, &QTimer::timeout, &Modals, [this] { AnswerModal(); });
  Modals.start();
  Held.setSingleShot(true);
  QObject::connect(&Held, &QTimer::timeout, &Held, [this] { Other->LetGo(); });
  Start();
}

Walk::~Walk() { TakeEscapedErrors(); }

// --- the world --------------------------------------------------------------------------------------------

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
  Child<QTimer>(*Window, "Timer1").setInterval(Hour);  // A show ticks by hand only.
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

// --- the hands --------------------------------------------------------------------------------------------

void Walk::Look() {
  Before = Reader->Read();
  Model.Selected = Before.Folder;
}

bool Walk::InSight(const QWidget& control, QPoint place) const {
  if (!control.isVisible() || !control.rect().contains(place)) return false;
  const QWidget* window = control.window();
  const QWidget* there = window->childAt(control.mapTo(window, place));
  return there == &control || (there == nullptr && window == &control) || control.isAncestorOf(there);
}

bool Walk::Click(QWidget& control, QPoint place, Qt::KeyboardModifiers keys, Qt::MouseButton button) {
  if (!InSight(control, place)) return false;
  QWidget* window = control.window();
  QTest::mouseClick(window->windowHandle(), button, keys, control.mapTo(window, place));
  return true;
}

void Walk::LeaveMenu() {
  while (QWidget* menu = QApplication::activePopupWidget()) {
    QTest::keyClick(menu, Qt::Key_Escape);
    if (QApplication::activePopupWidget() == menu) menu->close();
  }
}

bool Walk::Choose(const char* command) {
  auto& action = Child<QAction>(*Window, QLatin1String(command));
  FromMenu = true;
  if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
    if (action.isVisible() && action.isEnabled() && menu->actions().contains(&action)) {
      QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {}, menu->actionGeometry(&action).center());
      return true;
    }
    LeaveMenu();
    return false;
  }
  for (QObject* owner : action.associatedObjects()) {
    auto* menu = qobject_cast<QMenu*>(owner);
    if (menu == nullptr || !menu->menuAction()->isVisible()) continue;
    if (!action.isVisible() || !action.isEnabled()) return false;
    action.trigger();
    return true;
  }
  return false;
}

void Walk::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWidget* focus = QApplication::focusWidget();
  QTest::keyClick(focus != nullptr ? focus : Window.get(), key, modifiers);
}

void Walk::Type(const QString& text) {
  if (QApplication::focusWidget() != nullptr) QTest::keyClicks(QApplication::focusWidget(), text);
}

void Walk::ShowView(int view, bool byMenu) {
  static const std::map<int, const char*> items = {{shell::DataViewCode, "MainData"},
                                                   {shell::ImageViewCode, "MainImage"},
                                                   {shell::FormViewCode, "MainForm"},
                                                   {shell::AddNewCode, "MainAdd"},
                                                   {shell::ImagePlayCode, "MainPlay"}};
  if (byMenu) {
    Choose(items.at(view));
    return;
  }
  auto& bar = Child<QToolBar>(*Window, "tbarToolBar");
  Click(*bar.widgetForAction(&Child<QAction>(*Window, QStringLiteral("tbarToolBar(%1)").arg(view))));
}

// --- boxes and dialogs ------------------------------------------------------------------------------------

void Walk::AnswerBox(const char* begin, QMessageBox::StandardButton button, bool must) {
  Boxes.push_back({QString::fromUtf8(begin), button, must});
}

void Walk::OnDialog(const char* name, std::function<void(QDialog&)> handler) {
  Dialogs[QLatin1String(name)] = std::move(handler);
}

void Walk::AnswerModal() {
  QWidget* modal = QApplication::activeModalWidget();
  if (auto* box = qobject_cast<QMessageBox*>(modal)) return AnswerBox(*box);
  if (modal != LastModal) Waited.start();
  const bool isNew = std::exchange(LastModal, modal) != modal;
  if (modal == nullptr) return;
  if (Waited.hasExpired(MostWaiting)) {
    Fail("dialog", QStringLiteral("%1 doesn't go").arg(modal->objectName()));
    modal->close();
  }
  if (!isNew) return;
  auto* dialog = qobject_cast<QDialog*>(modal);
  const auto handler = Dialogs.find(modal->objectName());
  if (dialog == nullptr || handler == Dialogs.end()) {
    Fail("dialog", "not asked for: " + modal->objectName());
    modal->close();
    return;
  }
  // Behind this call, which may not come again while it lasts.
  QTimer::singleShot(0, dialog, [dialog, handler] { handler->second(*dialog); });
}

void Walk::AnswerBox(QMessageBox& box) {
  const bool tellsOfOthers = box.text().contains("another machine");
  for (BoxRule& rule : Boxes) {
    if (!box.text().startsWith(rule.Begin) || box.button(rule.Button) == nullptr) continue;
    rule.Came = true;
    return box.button(rule.Button)->click();
  }
  const bool mayCome = tellsOfOthers && (!Changed.empty() || PendingChanged || TreeIsOld);
  if (!mayCome) Fail("box", box.windowTitle() + u'|' + box.text());
  for (BoxRule& rule : Boxes) rule.Must = false;
  if (mayCome) MayAdopt = true;
  box.reject();
}

// --- a step -----------------------------------------------------------------------------------------------

void Walk::Fail(const char* invariant, const QString& what) {
  if (!First) First = Failure{invariant, what.toStdString()};
}

void Walk::Settle() {
  LeaveMenu();
  QCoreApplication::processEvents();
  // As a desktop does when a dialog has gone.
  if (!Window->isActiveWindow()) Window->activateWindow();
  QCoreApplication::processEvents();
  while (Window->List().AwaitsRows()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  const auto& page = Child<browse::ThumbnailPage>(*Window, "ThumbPannel");
  while (!Hurried && !page.IsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (!Hurried) WaitForPictures();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Walk::Do(const Step& step) {
  Outcomes.clear();
  Boxes.clear();
  Dialogs.clear();
  Selection.reset();
  Current.reset();
  MayAdopt = Renumbers = FolderMoved = FromMenu = false;
  Refreshes = 0;
  Look();
  const JourneyModel before = Model;
  // A name that is open is kept by whatever takes the user elsewhere.
  const bool naming = Before.Naming && !step.Kind->TypesName;
  if (naming) KeepName();
  constexpr int oftenEnough = 4;
  Hurried = (step.A + step.B) % oftenEnough == 0;
  HoldCatalogue();
  step.Kind->Act(*this, step.A, step.B);
  LetGo();
  Settle();
  After = Reader->Read();
  const bool refused = naming && std::any_of(Boxes.begin(), Boxes.end(), [](const BoxRule& rule) {
                         return rule.Came && rule.Begin.startsWith("Duplicate");
                       });
  // A name that is refused stops a command of the menus, and none of a button.
  if (refused && FromMenu) Outcomes.clear();
  if (refused) Model.Folders = before.Folders;
  if (Outcomes.empty() || naming) Outcome();
  if (naming && After.Naming) Outcomes.push_back(before);
  if (refused || (naming && Foreign.contains(before.Selected))) MayKeepFormerName(before);
  Check();
  if (First) throw *First;
}

void Walk::KeepName() {
  const auto changed = Foreign.find(Model.Selected);
  const bool isThere = changed == Foreign.end() || !changed->second;
  // What a folder was called that has gone elsewhere stands in the tree still.
  if ((isThere && !Model.Rename(Before.NameTyped)) || TreeIsOld)
    AnswerBox("Duplicate Folder Name!", QMessageBox::Ok, false);
}

// A name that is refused is forgotten, whatever else the step does.
void Walk::MayKeepFormerName(const JourneyModel& before) {
  const auto former = before.Folders.find(before.Selected);
  if (former == before.Folders.end()) return;
  for (size_t i = 0, count = Outcomes.size(); i < count; ++i) {
    JourneyModel outcome = Outcomes[i];
    if (!outcome.Folders.contains(former->first)) continue;
    outcome.Folders[former->first] = former->second;
    Outcomes.push_back(std::move(outcome));
  }
}

JourneyModel& Walk::Outcome() { return Outcomes.emplace_back(Model); }

std::vector<int> Walk::Pointed() const {
  if (Before.Tab != shell::FormTab && !Before.Selected.empty()) return Before.Selected;
  const int current = Before.Current();
  return current == 0 ? std::vector<int>() : std::vector{current};
}

// Whether the number is another photo's now than when the list was read.
bool Walk::IsAnother(int photo) const {
  const auto read = BirthsRead.find(photo);
  const auto now = Model.Rows.find(photo);
  return read != BirthsRead.end() && now != Model.Rows.end() && read->second != now->second.Birth;
}

// Of a photo that is another one now it matters which of them the user sees; either may be meant where
// neither is in sight.
void Walk::ExpectOn(const std::vector<int>& photos, const std::function<void(JourneyModel&, int)>& effect) {
  constexpr size_t mostOpen = 4;
  std::vector<int> sure;
  std::vector<int> open;
  for (const int photo : photos) {
    if (!Model.Rows.contains(photo)) continue;
    const QString seen = Before.TitleOf(photo);
    if (!IsAnother(photo) || seen == Model.Rows.at(photo).Title)
      sure.push_back(photo);
    else if (seen.isNull())
      open.push_back(photo);
  }
  MayAdopt |= open.size() > mostOpen;
  open.resize(std::min(open.size(), mostOpen));
  for (unsigned chosen = 0; chosen < 1U << open.size(); ++chosen) {
    JourneyModel& outcome = Outcome();
    for (const int photo : sure) effect(outcome, photo);
    for (size_t i = 0; i < open.size(); ++i)
      if ((chosen >> i & 1U) != 0) effect(outcome, open[i]);
  }
  if (std::any_of(photos.begin(), photos.end(), [&](int p) { return Changed.contains(p); })) Outcome();
}

bool Walk::IsForeign(const QString& folder) const {
  const QString place = JourneyModel::PlaceOf(folder);
  const QString parent = place.left(std::max<qsizetype>(0, place.size() - 4));
  return std::any_of(Foreign.begin(), Foreign.end(), [&](const auto& foreign) {
    return foreign.first.startsWith(parent) || folder.startsWith(foreign.first);
  });
}

void Walk::ExpectAt(const QStringList& folders, const std::function<void(JourneyModel&)>& effect) {
  const bool foreign =
      std::any_of(folders.begin(), folders.end(), [&](const QString& key) { return IsForeign(key); });
  const bool gone = std::any_of(folders.begin(), folders.end(), [&](const QString& key) {
    const auto changed = Foreign.find(JourneyModel::PlaceOf(key));
    return changed != Foreign.end() && changed->second;
  });
  if (!gone) effect(Outcome());
  if (foreign) Outcome();
  // A folder that has gone may stand in the tree beside the one that was given its key.
  MayAdopt |= foreign || TreeIsOld;
}

void Walk::ExpectSelection(std::vector<int> numbers) {
  std::sort(numbers.begin(), numbers.end());
  if (!Before.Naming) Selection = std::move(numbers);
}

}  // namespace veldrin::test
