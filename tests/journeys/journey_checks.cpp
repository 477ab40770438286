// What holds after each step, whatever the user does.
#include <algorithm>

#include "journeys/journey_walk.h"

namespace veldrin::test {

namespace {

QString Numbers(const std::vector<int>& numbers) {
  QStringList texts;
  for (const int number : numbers) texts << QString::number(number);
  return texts.join(u' ');
}

bool IsNear(QRgb a, QRgb b) {
  constexpr int Most = 6;  // What a JPEG makes of a colour.
  return std::abs(qRed(a) - qRed(b)) <= Most && std::abs(qGreen(a) - qGreen(b)) <= Most &&
         std::abs(qBlue(a) - qBlue(b)) <= Most;
}

}  // namespace

void Walk::Check() {
  const QStringList errors = TakeEscapedErrors();
  Require(errors.isEmpty(), "error", errors.join(u'\n'));
  for (const BoxRule& rule : Boxes)
    Require(!rule.Must || rule.Came, "box", QStringLiteral("didn't come: ") + rule.Begin);
  CheckStored();
  if (First) return;
  CheckList();
  CheckTree();
  if (First) return;
  CheckCurrent();
  if (After.Page) CheckPage();
  if (After.Tab == shell::FormTab) CheckForm();
  CheckRanges();
  const QString hidden = Reader->HiddenFocus();
  Require(hidden.isEmpty(), "focus", hidden);
}

bool Walk::IsRenumbered(const Stored& stored, const Stored& expected) const {
  const auto names = [](const Stored& some) {
    std::multiset<QString> all;
    for (const auto& [key, name] : some.Folders) all.insert(name);
    return all;
  };
  return Renumbers && stored.Links == expected.Links && names(stored) == names(expected);
}

// A folder that another machine put in the place of a shown one is as it was.
bool Walk::LeavesForeignAlone(const Stored& stored) const {
  const Stored before = Model.AsStored();
  return std::all_of(Foreign.begin(), Foreign.end(), [&](const auto& foreign) {
    const auto& [key, isGone] = foreign;
    const auto now = stored.Folders.find(key);
    const auto then = before.Folders.find(key);
    if (!isGone || then == before.Folders.end()) return true;
    const auto isThere = [&](const auto& link) { return link.first == key; };
    return now != stored.Folders.end() && now->second == then->second &&
           std::count_if(stored.Links.begin(), stored.Links.end(), isThere) ==
               std::count_if(before.Links.begin(), before.Links.end(), isThere);
  });
}

void Walk::CheckStored() {
  const Stored& stored = Other->Look();
  const QString dead = stored.DeadEnd();
  Require(dead.isEmpty(), "dead end", dead);
  const auto met = std::find_if(Outcomes.begin(), Outcomes.end(),
                                [&](const JourneyModel& outcome) { return outcome.AsStored() == stored; });
  const std::map<QString, QString> folders = Model.Folders;
  if (met != Outcomes.end()) {
    JourneyModel chosen = std::move(*met);
    Model = std::move(chosen);
  } else {
    TakeAsItIs(stored);
  }
  // A key that had gone elsewhere is given again here.
  std::erase_if(Foreign, [&](const auto& foreign) {
    return !folders.contains(foreign.first) && Model.Folders.contains(foreign.first);
  });
}

// What the step left isn't told to the letter.
void Walk::TakeAsItIs(const Stored& stored) {
  const Stored expected = Outcomes.front().AsStored();
  const bool sameRows = stored.Rows == expected.Rows && stored.Images == expected.Images;
  if (sameRows && IsRenumbered(stored, expected)) {
    JourneyModel chosen = std::move(Outcomes.front());
    Model = std::move(chosen);
    Model.Adopt(stored);
  } else if (sameRows && MayAdopt && LeavesForeignAlone(stored)) {
    Model.Adopt(stored);
    Other->Write(Model);  // What two machines left of the "!UNORGANIZED" isn't the walk's affair.
  } else {
    Fail("stored", stored.DifferenceTo(expected));
  }
}

void Walk::CheckList() {
  if (FolderMoved) Model.ClearQuery();
  Model.Selected = After.Folder;
  if (Refreshes > 0) {
    ListIsOld = false;
    for (const auto& [key, staged] : Model.Staged) PendingChanged |= Changed.contains(staged);
    Changed.clear();
    BirthsRead.clear();
    for (const auto& [number, photo] : Model.Rows) BirthsRead[number] = photo.Birth;
  }
  if (After.Naming) return;
  const std::vector<int> expected = ListIsOld ? Before.List : Model.List();
  Require(After.List == expected, "list",
          QStringLiteral("folder '%1': %2\nexpected: %3")
              .arg(After.Folder, Numbers(After.List), Numbers(expected)));
  std::vector<int> selected = After.Selected;
  std::sort(selected.begin(), selected.end());
  for (const int number : selected)
    Require(std::binary_search(After.List.begin(), After.List.end(), number), "selection",
            QStringLiteral("%1 isn't in the list").arg(number));
  if (Selection && Refreshes == 0)
    Require(selected == *Selection, "selection",
            QStringLiteral("%1\nexpected: %2").arg(Numbers(selected), Numbers(*Selection)));
  const int current = After.Position < 0 ? 0 : After.List.at(static_cast<size_t>(After.Position));
  if (Current && Refreshes == 0)
    Require(current == *Current, "clicked",
            QStringLiteral("%1, and %2 is the current one").arg(*Current).arg(current));
}

void Walk::CheckTree() {
  const controls::TreeView& tree = Reader->Tree;
  const controls::Node* node = tree.SelectedItem();
  if (node == nullptr) return Fail("tree", QStringLiteral("no folder is selected"));
  for (const controls::Node* above = node->Parent(); above != nullptr; above = above->Parent())
    Require(above->isExpanded(), "tree",
            QStringLiteral("the selected folder %1 is out of sight").arg(node->Text()));
  if (TreeIsOld) return;
  std::map<QString, QString> nodes;
  for (int i = 2; i <= tree.Count(); ++i) nodes[tree.NodeAt(i)->Tag()] = tree.NodeAt(i)->Text();
  const std::map<QString, QString> folders = Model.AsStored().Folders;
  QStringList lines;
  for (const auto& [key, name] : nodes)
    if (!folders.contains(key) || folders.at(key) != name)
      lines << QStringLiteral("node %1 %2").arg(key, name);
  for (const auto& [key, name] : folders)
    if (!nodes.contains(key)) lines << QStringLiteral("no node %1 %2").arg(key, name);
  Require(lines.isEmpty() && static_cast<int>(nodes.size()) == tree.Count() - 1, "tree", lines.join(u'\n'));
}

// The picture of a photo where it can be read, otherwise none. What another machine did to a photo may show
// or not.
bool Walk::IsPictureOf(int number, const Seen& seen) const {
  const auto row = Model.Rows.find(number);
  if (row == Model.Rows.end() || Changed.contains(number)) return true;
  const JourneyModel::Photo& photo = row->second;
  if (photo.FileChanged) return true;  // What was shown before stays until the photo is shown anew.
  if (photo.Colour == 0 || !seen) return photo.Colour == 0 && !seen;
  return IsNear(*seen, photo.Colour);
}

void Walk::CheckCurrent() {
  const int count = static_cast<int>(After.List.size());
  Require(count == 0 ? After.Position == -1 : After.Position >= 0 && After.Position < count, "position",
          QStringLiteral("%1 of %2").arg(After.Position).arg(count));
  if (After.Tab != shell::BrowseTab || First) return;
  const QString counter = count == 0 ? QStringLiteral("No Record")
                                     : QStringLiteral("%1 of %2").arg(After.Position + 1).arg(count);
  Require(After.Counter == counter, "counter", QStringLiteral("%1, expected %2").arg(After.Counter, counter));
  const bool isOn = After.PreviewOn && count > 0;
  const int current = count == 0 ? 0 : After.List[static_cast<size_t>(After.Position)];
  Require(isOn ? IsPictureOf(current, After.Preview) : !After.Preview, "preview",
          QStringLiteral("of %1: %2").arg(current).arg(After.Preview ? *After.Preview : 0, 0, 16));
  if (!After.Page && count > 0)
    Require(After.GridRow == After.Position, "grid",
            QStringLiteral("on row %1, the list on %2").arg(After.GridRow).arg(After.Position));
}

void Walk::CheckPage() {
  const int count = static_cast<int>(After.List.size());
  if (count == 0) {
    Require(!After.FrameShown, "frame", QStringLiteral("of an empty list"));
  } else {
    Require(After.Framed >= 0 && After.Cells[static_cast<size_t>(After.Framed)].Shown, "frame",
            QStringLiteral("on no cell"));
  }
  if (First) return;
  const int start = After.Position - After.Framed;
  for (int i = 0; i < browse::CellCount; ++i) {
    const CellOnScreen& cell = After.Cells[static_cast<size_t>(i)];
    const QString where = QStringLiteral("cell %1 '%2'").arg(i).arg(cell.Caption);
    const int position = start + i;
    if (count == 0 || position >= count) {
      Require(!cell.Shown && cell.Caption.isEmpty() && !cell.Marked, "cell",
              where + QStringLiteral(" has no photo"));
      continue;
    }
    if (position < 0) return Fail("cell", where + QStringLiteral(" stands before the list"));
    const int number = After.List[static_cast<size_t>(position)];
    const auto row = Model.Rows.find(number);
    const QString caption = QStringLiteral("%1: ").arg(number);
    const bool isKnown = row != Model.Rows.end() && !Changed.contains(number);
    Require(cell.Shown, "cell", where + QStringLiteral(" isn't shown"));
    Require(isKnown ? cell.Caption == caption + row->second.Title
                    : !cell.Shown || cell.Caption.startsWith(caption),
            "cell", where + QStringLiteral(", expected ") + caption);
    const bool selected =
        std::find(After.Selected.begin(), After.Selected.end(), number) != After.Selected.end();
    Require(cell.Marked == selected, "mark", where);
    Require(IsPictureOf(number, cell.Picture), "thumbnail", where);
  }
}

void Walk::CheckForm() {
  const int count = static_cast<int>(After.List.size());
  if (count == 0)
    return Require(!After.FormImage && After.FormCounter.isEmpty(), "form",
                   QStringLiteral("of an empty list"));
  if (After.Position < 0) return;
  const int current = After.List[static_cast<size_t>(After.Position)];
  const bool isThere = Model.Rows.contains(current);
  Require(After.FormNumber == QString::number(current), "form",
          QStringLiteral("%1, expected %2").arg(After.FormNumber).arg(current));
  if (!isThere) return;
  const QString counter = QStringLiteral("%1 of %2").arg(After.Position + 1).arg(count);
  Require(After.FormCounter == counter, "form",
          QStringLiteral("%1, expected %2").arg(After.FormCounter, counter));
  Require(IsPictureOf(current, After.FormImage), "form image",
          QStringLiteral("of %1: %2").arg(current).arg(After.FormImage ? *After.FormImage : 0, 0, 16));
}

void Walk::CheckRanges() {
  const int count = static_cast<int>(After.List.size());
  if (After.Naming) return;
  Require(Reader->Scroll.isEnabled() == (count > browse::CellCount), "scroll bar", QString::number(count));
  if (Reader->Scroll.isEnabled())
    Require(Reader->Scroll.maximum() == count / browse::CellsPerRow, "scroll bar",
            QStringLiteral("%1 rows of %2").arg(Reader->Scroll.maximum()).arg(count));
  Require(SliderMax == 0 || Reader->Slider.maximum() == SliderMax, "slider",
          QStringLiteral("%1, expected %2").arg(Reader->Slider.maximum()).arg(SliderMax));
}

}  // namespace veldrin::test
