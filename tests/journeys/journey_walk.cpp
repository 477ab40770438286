#include "journeys/journey_walk.h"
#include "browse/thumbnail_page.h"

#include <QApplication>
#include <QMenu>
#include <QStandardPaths>
#include <QToolButton>
#include <QWindow>
#include <algorithm>

namespace veldrin::test {

namespace {

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
