// What holds after each step, whatever the user does.
#include <algorithm>

#include "journeys/journey_walk.h"

namespace veldrin::test {

namespace {

QString Text(const QString& text) { return text; }
QString Text(int number) { return QString::number(number); }
QString Text(const std::vector<int>& numbers) {
  QStringList texts;
  for (const int number : numbers) texts << Text(number);
  return texts.join(u' ');
}

bool IsNear(QRgb a, QRgb b) {
  constexpr int Most = 6;  // What a JPEG makes of a colour.
  return std::abs(qRed(a) - qRed(b)) <= Most && std::abs(qGreen(a) - qGreen(b)) <= Most &&
         std::abs(qBlue(a) - qBlue(b)) <= Most;
}

}  // namespace

void Walk::Require(bool holds, const char* invariant, const QString& what) {
  if (!holds) Fail(invariant, what);
}

template <class Value>
void Walk::Compare(const char* invariant, const Value& seen, const Value& expected) {
  Require(seen == expected, invariant, Text(seen) + "\nexpected: " + Text(expected));
}

void Walk::Check() {
  const QStringList errors = TakeEscapedErrors();
  Require(errors.isEmpty(), "error", errors.join(u'\n'));
  for (const BoxRule& rule : Boxes) Require(!rule.Must || rule.Came, "box", "didn't come: " + rule.Begin);
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
  if (met == Outcomes.end()) {
    TakeAsItIs(stored);
  } else {
    Model = *met;
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
    Model = Outcomes.front();
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
    for (const int staged : Model.Staged) PendingChanged |= Changed.contains(staged);
    Changed.clear();
    BirthsRead.clear();
    for (const auto& [number, photo] : Model.Rows) BirthsRead[number] = photo.Birth;
  }
  if (After.Naming) return;
  const bool held = Model.HasQuery();
  Require(Child(*Window, "lblQuery").isHidden() != held, "query", "note");
  Require(Child<QAction>(*Window, "tbarToolBar(12)").isChecked() == held, "query", "button");
  Compare("list", After.List, ListIsOld ? Before.List : Model.List());
  std::vector<int> selected = After.Selected;
  std::sort(selected.begin(), selected.end());
  Require(std::includes(After.List.begin(), After.List.end(), selected.begin(), selected.end()), "selection",
          "not in the list: " + Text(selected));
  if (Refreshes > 0) return;
  if (Selection) Compare("selection", selected, *Selection);
  if (Current) Compare("clicked", ListCurrent(), *Current);
}

void Walk::CheckTree() {
  const controls::TreeView& tree = Reader->Tree;
  const controls::Node* node = tree.SelectedItem();
  if (node == nullptr) return Fail("tree", "no folder is selected");
  for (const controls::Node* above = node->Parent(); above != nullptr; above = above->Parent())
    Require(above->isExpanded(), "tree", "out of sight: " + node->Text());
  if (TreeIsOld) return;
  std::map<QString, QString> nodes;
  for (int i = 2; i <= tree.Count(); ++i) nodes[tree.NodeAt(i)->Tag()] = tree.NodeAt(i)->Text();
  const std::map<QString, QString> folders = Model.AsStored().Folders;
  ForEachBeyond(nodes, folders,
                [this](const auto& it) { Fail("tree", "node " + it.first + u' ' + it.second); });
  ForEachBeyond(folders, nodes,
                [this](const auto& it) { Fail("tree", "no node " + it.first + u' ' + it.second); });
  Compare("tree", static_cast<int>(nodes.size()), tree.Count() - 1);
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

int Walk::ListCurrent() const {
  return After.Position < 0 || After.List.empty() ? 0 : After.List.at(After.Position);
}

QString Walk::ListCounter() const {
  return QStringLiteral("%1 of %2").arg(After.Position + 1).arg(After.List.size());
}

void Walk::CheckCurrent() {
  const int count = static_cast<int>(After.List.size());
  Require(count == 0 ? After.Position == -1 : After.Position >= 0 && After.Position < count, "position",
          Text(After.Position));
  if (After.Tab != shell::BrowseTab || First) return;
  Compare("counter", After.Counter, count == 0 ? "No Record" : ListCounter());
  const bool isOn = After.PreviewOn && count > 0;
  // Until its picture comes the former one stands.
  Require(isOn ? Hurried || IsPictureOf(ListCurrent(), After.Preview) : !After.Preview, "preview",
          Text(ListCurrent()));
  if (After.Page || count == 0) return;
  Compare("grid", After.GridRow, After.Position);
  const auto row = Model.Rows.find(ListCurrent());
  if (row != Model.Rows.end() && !Changed.contains(row->first))
    Compare("grid", After.GridTitle, row->second.Title);
}

void Walk::CheckPage() {
  const int count = static_cast<int>(After.List.size());
  Require(count == 0 ? !After.FrameShown : After.Framed >= 0 && After.Cells[After.Framed].Shown, "frame",
          Text(After.Framed));
  if (First) return;
  const int start = After.Position - After.Framed;
  Require(count == 0 || start >= 0, "cell", "stands before the list");
  for (int i = 0; i < browse::CellCount && !First; ++i) {
    const CellOnScreen& cell = After.Cells[i];
    const QString where = QStringLiteral("%1 '%2'").arg(i).arg(cell.Caption);
    if (count == 0 || start + i >= count) {
      Require(!cell.Shown && cell.Caption.isEmpty() && !cell.Marked, "cell", where + " has no photo");
      continue;
    }
    const int number = After.List[start + i];
    const auto row = Model.Rows.find(number);
    const QString caption = QStringLiteral("%1: ").arg(number);
    const bool isKnown = row != Model.Rows.end() && !Changed.contains(number);
    Require(cell.Shown, "cell", where + " isn't shown");
    Compare("cell", isKnown ? cell.Caption : cell.Caption.left(caption.size()),
            isKnown ? caption + row->second.Title : caption);
    const bool selected =
        std::find(After.Selected.begin(), After.Selected.end(), number) != After.Selected.end();
    Require(cell.Marked == selected, "mark", where);
    const bool isAwaited = Hurried && !cell.Picture;
    Require(isAwaited || IsPictureOf(number, cell.Picture), "thumbnail",
            where + (cell.Picture ? " is " + QColor(*cell.Picture).name() : QString(" is empty")));
  }
}

void Walk::CheckForm() {
  if (After.List.empty())
    return Require(!After.FormImage && After.FormCounter.isEmpty(), "form", "of an empty list");
  if (After.Position < 0) return;
  Compare("form", After.FormNumber, Text(ListCurrent()));
  // One that has gone has its number alone, also when another photo was given that since.
  const bool wasGone = IsAnother(ListCurrent()) && After.FormCounter.isEmpty();
  if (wasGone || !Model.Rows.contains(ListCurrent())) return;
  Compare("form", After.FormCounter, ListCounter());
  Require(Hurried || IsPictureOf(ListCurrent(), After.FormImage), "form image", Text(ListCurrent()));
}

void Walk::CheckRanges() {
  const bool runs = Child<QAction>(*Window, "tbarShow(5)").isEnabled();
  Require(!runs || After.Tab == shell::PlayTab, "show", "goes on behind another tab");
  const int count = static_cast<int>(After.List.size());
  if (After.Naming) return;
  const QScrollBar& scroll = Reader->Scroll;
  Compare("scroll bar", int(scroll.isEnabled()), int(count > browse::CellCount));
  if (scroll.isEnabled()) Compare("scroll bar", scroll.maximum(), count / browse::CellsPerRow);
  if (SliderMax > 0) Compare("slider", Reader->Slider.maximum(), SliderMax);
}

}  // namespace veldrin::test
