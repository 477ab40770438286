// What the commands on folders and records do to a catalogue, told as a user would: folders have numbers and
// names, and a photo stands at places. Knows nothing of tables and statements.
#pragma once

#include <QString>
#include <QStringList>
#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace veldrin::test {

/// The numbers of the folders from the top down; the root's is empty.
using Place = std::vector<int>;

inline bool IsBelow(const Place& place, const Place& top) {
  return place.size() >= top.size() && std::equal(top.begin(), top.end(), place.begin());
}

/// A node of the tree: a folder, or its "!UNORGANIZED".
struct ModelNode {
  int Folder = 0;
  bool Unorganized = false;
  bool operator==(const ModelNode&) const = default;
};

class CatalogueModel {
 public:
  struct Folder {
    QString Name;
    int Parent = 0;
    Place At;
    bool Grey = false;
    std::vector<int> Subfolders;  ///< in the order of the tree
  };
  struct Pending {
    ModelNode Source;
    bool IsCut = false;
  };

  std::map<int, Folder> Folders = {{0, {QStringLiteral("Photos"), -1, {}, false, {}}}};
  std::map<Place, std::set<int>> Photos;  ///< also at places whose folder has gone, and deleted ones
  std::set<int> AllPhotos;
  std::set<int> Hidden;  ///< see Remove
  ModelNode Selected;
  std::optional<Pending> PendingFolder;
  std::optional<Pending> PendingRecords;
  std::set<std::pair<Place, int>> Staged;

  // --- looking ---

  const Place& At(ModelNode node) const { return Folders.at(node.Folder).At; }
  bool HasChildren(ModelNode node) const {
    return !node.Unorganized && !Folders.at(node.Folder).Subfolders.empty();
  }
  static bool IsRoot(ModelNode node) { return node == ModelNode{}; }

  /// All nodes, each before those below it.
  std::vector<ModelNode> Nodes(int folder = 0) const {
    std::vector<ModelNode> nodes = {{folder, false}};
    if (HasChildren({folder, false})) nodes.push_back({folder, true});
    for (const int subfolder : Folders.at(folder).Subfolders) {
      const auto below = Nodes(subfolder);
      nodes.insert(nodes.end(), below.begin(), below.end());
    }
    return nodes;
  }

  /// The photos that a node shows.
  std::set<int> Shows(ModelNode node) const {
    if (IsRoot(node)) return AllPhotos;
    std::set<int> shown;
    for (const auto& [place, photos] : Photos) {
      if (node.Unorganized ? place == At(node) : IsBelow(place, At(node)))
        std::set_intersection(photos.begin(), photos.end(), AllPhotos.begin(), AllPhotos.end(),
                              std::inserter(shown, shown.end()));
    }
    return shown;
  }

  /// The photos that no folder leads to; without folders nothing does.
  std::set<int> Unreached() const {
    std::set<int> unreached = AllPhotos;
    for (const ModelNode node : Nodes()) {
      if (IsRoot(node)) continue;
      for (const int photo : Shows(node)) unreached.erase(photo);
    }
    return HasChildren({}) ? unreached : std::set<int>();
  }

  /// Whether the target shows the source's photos in any case, as it stands above it.
  bool IsAbove(ModelNode target, ModelNode source) const {
    if (IsRoot(target)) return true;
    return target != source && (target.Unorganized || target.Folder != source.Folder || source.Unorganized) &&
           IsBelow(At(source), At(target));
  }

  bool IsTaken(int folder, const QString& name) const {
    if (name == QLatin1String("!UNORGANIZED")) return true;  // It stands beside every folder.
    const auto& siblings = Folders.at(Folders.at(folder).Parent).Subfolders;
    return std::any_of(siblings.begin(), siblings.end(),
                       [&](int other) { return other != folder && Folders.at(other).Name == name; });
  }

  int Height(int folder) const {
    int height = 0;
    for (const int subfolder : Folders.at(folder).Subfolders)
      height = std::max(height, Height(subfolder) + 1);
    return height;
  }

  // --- folders ---

  /// Selects the new folder.
  int Add(const QString& name) {
    const int added = Append(Selected.Folder, name);
    Selected = {added, false};
    return added;
  }

  /// An empty name is the one that the folder has. False when a sibling bears the name.
  bool Rename(int folder, const QString& typed) {
    const QString name = typed.isEmpty() ? Folders.at(folder).Name : typed;
    if (IsTaken(folder, name)) return false;
    Folders.at(folder).Name = name;
    return true;
  }

  void Delete(int folder) {
    const int parent = Folders.at(folder).Parent;
    MovePhotosUp(folder);
    Erase(folder);
    if (!Folders.contains(Selected.Folder)) Selected = {parent, false};
    ForgetGone();
  }

  // A folder cut before stays grey.
  void Cut() {
    PendingFolder = Pending{Selected, true};
    SetGrey(Selected.Folder, true);
  }
  void Copy() {
    UndoCut();
    PendingFolder = Pending{Selected, false};
  }
  void UndoCut() {
    if (!PendingFolder || !PendingFolder->IsCut) return;
    SetGrey(PendingFolder->Source.Folder, false);
    PendingFolder.reset();
  }

  /// True when the user is asked for another name.
  bool Paste() {
    const auto [source, isCut] = *PendingFolder;
    const int pasted = Append(Selected.Folder, Folders.at(source.Folder).Name);
    QString& name = Folders.at(pasted).Name;
    if (!isCut && IsTaken(pasted, name)) name.prepend(QStringLiteral("Copy of "));
    AppendCopies(pasted, source.Folder);
    PendingFolder.reset();
    if (isCut) Delete(source.Folder);
    Selected = {pasted, false};
    return isCut && IsTaken(pasted, name);
  }

  // --- records ---

  void Stage(const std::vector<int>& photos, bool cut) {
    Staged.clear();
    for (const int photo : photos) Staged.insert({At(Selected), photo});
    if (!photos.empty()) PendingRecords = Pending{Selected, cut};
  }

  void UndoRecordCut() {
    if (PendingRecords && PendingRecords->IsCut) PendingRecords.reset();
  }

  bool CanPasteRecords() const {
    if (!PendingRecords) return false;
    return PendingRecords->IsCut ? !HasChildren(Selected) : !IsAbove(Selected, PendingRecords->Source);
  }

  void PasteRecords() {
    if (!PendingRecords) return;
    const bool up = PendingRecords->IsCut && IsAbove(Selected, PendingRecords->Source);
    const Place target = At(Selected);
    for (const auto& [place, photo] : Staged) {
      if (up) RemoveBelow(target, photo);
      if (!up && PendingRecords->IsCut) Photos[place].erase(photo);
    }
    for (const auto& [place, photo] : Staged) Photos[target].insert(photo);
    Staged.clear();
    PendingRecords.reset();
  }

  void AddPhoto(int photo) {
    AllPhotos.insert(photo);
    Photos[{}].insert(photo);
  }

  // One that waits for a paste still comes to stand where it is pasted, shown by nothing.
  void DeletePhoto(int photo) {
    RemoveBelow({}, photo);
    AllPhotos.erase(photo);
  }

  /// The photo falls to the parent unless it stands elsewhere below it. At the top a place whose folder has
  /// gone counts as well: such a photo is hidden, until a folder gets that place again.
  void Remove(int photo) {
    const Place from = At(Selected);
    const Place parent = Selected.Unorganized ? from : Place(from.begin(), from.end() - 1);
    Selected.Unorganized ? void(Photos[from].erase(photo)) : RemoveBelow(from, photo);
    if (!StandsBelow(parent, photo)) Photos[parent].insert(photo);
    if (parent.empty() && Unreached().contains(photo)) Hidden.insert(photo);
  }

 private:
  // The next number is one more than the highest in use: that of a deleted last folder is given out again.
  int Append(int parent, const QString& name) {
    const auto& siblings = Folders.at(parent).Subfolders;
    int number = 1;
    for (const int sibling : siblings) number = std::max(number, Folders.at(sibling).At.back() + 1);
    Place at = Folders.at(parent).At;
    at.push_back(number);
    const int added = NextFolder++;
    Folders[added] = {name, parent, at, false, {}};
    Folders.at(parent).Subfolders.push_back(added);
    return added;
  }

  void AppendCopies(int target, int source) {
    for (const int subfolder : std::vector<int>(Folders.at(source).Subfolders)) {
      AppendCopies(Append(target, Folders.at(subfolder).Name), subfolder);
    }
  }

  void SetGrey(int folder, bool grey) {
    Folders.at(folder).Grey = grey;
    for (const int subfolder : Folders.at(folder).Subfolders) SetGrey(subfolder, grey);
  }

  void Erase(int folder) {
    for (const int subfolder : std::vector<int>(Folders.at(folder).Subfolders)) Erase(subfolder);
    std::erase(Folders.at(Folders.at(folder).Parent).Subfolders, folder);
    Folders.erase(folder);
  }

  // What waits for a paste from a node that has gone waits no longer.
  void ForgetGone() {
    for (auto* pending : {&PendingFolder, &PendingRecords}) {
      if (!*pending) continue;
      const ModelNode source = (*pending)->Source;
      const bool gone = !Folders.contains(source.Folder) ||
                        (source.Unorganized && Folders.at(source.Folder).Subfolders.empty());
      if (gone) pending->reset();
    }
    if (Selected.Unorganized && !HasChildren({Selected.Folder, false})) Selected.Unorganized = false;
  }

  // A photo comes to stand at the parent unless it stands elsewhere below it. From the top only the unfiled
  // photos count as standing elsewhere. Of a photo's several places below the folder only the first moves;
  // the others stay behind, where no folder is. The staging of records goes: the move uses its table.
  void MovePhotosUp(int folder) {
    const Place from = Folders.at(folder).At;
    const Place parent = Folders.at(Folders.at(folder).Parent).At;
    Staged.clear();
    std::set<int> moved;
    for (auto& [place, photos] : Photos) {
      if (!IsBelow(place, from)) continue;
      for (const int photo : photos) Staged.insert({moved.insert(photo).second ? parent : place, photo});
      photos.clear();
    }
    std::vector<std::pair<Place, int>> added;
    for (const auto& [place, photo] : Staged) {
      const bool there =
          parent.empty() ? place.empty() && Photos[place].contains(photo) : StandsBelow(parent, photo);
      if (!there) added.emplace_back(place, photo);
    }
    for (const auto& [place, photo] : added) Photos[place].insert(photo);
  }

  bool StandsBelow(const Place& top, int photo) const {
    return std::any_of(Photos.begin(), Photos.end(),
                       [&](const auto& at) { return IsBelow(at.first, top) && at.second.contains(photo); });
  }

  void RemoveBelow(const Place& top, int photo) {
    for (auto& [place, photos] : Photos) {
      if (IsBelow(place, top)) photos.erase(photo);
    }
  }

  int NextFolder = 1;
};

}  // namespace veldrin::test
