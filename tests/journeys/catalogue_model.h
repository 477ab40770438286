// What the commands on folders and records do to a catalogue. A node is its key: four digits for each folder
// on the way from the root, whose key is empty, and "0000" behind them for an "!UNORGANIZED". Knows nothing
// of tables and statements.
#pragma once

#include <QString>
#include <QStringList>
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace veldrin::test {

class CatalogueModel {
 public:
  struct Pending {
    QString Source;
    bool IsCut = false;
  };
  using Link = std::pair<QString, int>;

  std::map<QString, QString> Folders = {{QString(), QStringLiteral("Photos")}};  ///< names by keys
  std::set<Link> Links;                                                          ///< where photos stand
  std::set<int> Photos;
  QString Selected;
  std::optional<Pending> PendingFolder;
  std::optional<Pending> PendingRecords;
  std::set<Link> Staged;

  // --- looking ---

  static bool IsUnorganized(const QString& node) { return node.endsWith(QLatin1String("0000")); }
  static QString PlaceOf(const QString& node) { return IsUnorganized(node) ? node.chopped(4) : node; }

  QStringList Subfolders(const QString& parent) const {
    QStringList keys;
    for (const auto& [key, name] : Folders)
      if (key.size() == parent.size() + 4 && key.startsWith(parent)) keys << key;
    return keys;
  }
  bool HasChildren(const QString& node) const { return !Subfolders(node).isEmpty(); }

  /// All nodes from one on downwards, as they stand in the tree.
  QStringList Nodes(const QString& top = {}) const {
    QStringList nodes;
    for (const auto& [key, name] : Folders) {
      if (!key.startsWith(top)) continue;
      nodes << key;
      if (HasChildren(key)) nodes << key + QStringLiteral("0000");
    }
    return nodes;
  }

  /// The photos that a node shows.
  std::set<int> Shows(const QString& node) const {
    if (node.isEmpty()) return Photos;
    std::set<int> shown;
    for (const auto& [key, photo] : Links) {
      const bool isHere = IsUnorganized(node) ? key == PlaceOf(node) : key.startsWith(node);
      if (isHere && Photos.contains(photo)) shown.insert(photo);
    }
    return shown;
  }

  /// Whether the target shows the source's photos in any case, as it stands above it.
  static bool IsAbove(const QString& target, const QString& source) {
    return target != source && PlaceOf(source).startsWith(PlaceOf(target));
  }

  bool IsTaken(const QString& folder, const QString& name) const {
    if (name == QLatin1String("!UNORGANIZED")) return true;  // It stands beside every folder.
    const QStringList siblings = Subfolders(folder.chopped(4));
    return std::any_of(siblings.begin(), siblings.end(),
                       [&](const QString& other) { return other != folder && Folders.at(other) == name; });
  }

  // --- folders ---

  /// Selects the new folder.
  void Add(const QString& name) { Selected = Append(Selected, name); }

  /// An empty name is the one that the folder has. False when a sibling bears the name.
  bool Rename(const QString& typed) {
    const QString name = typed.isEmpty() ? Folders.at(Selected) : typed;
    if (IsTaken(Selected, name)) return false;
    Folders.at(Selected) = name;
    return true;
  }

  void Delete(const QString& folder) {
    MovePhotosUp(folder);
    std::erase_if(Folders, [&](const auto& entry) { return entry.first.startsWith(folder); });
    Selected = folder.chopped(4);
    // What waits for a paste from a node that has gone waits no longer.
    for (auto* pending : {&PendingFolder, &PendingRecords})
      if (*pending && !Nodes().contains((*pending)->Source)) pending->reset();
  }

  void Cut() { PendingFolder = Pending{Selected, true}; }
  void Copy() { PendingFolder = Pending{Selected, false}; }
  void UndoCut() {
    if (PendingFolder->IsCut) PendingFolder.reset();
  }

  /// True when the user is asked for another name.
  bool Paste() {
    const auto [source, isCut] = *PendingFolder;
    const QString pasted = Append(Selected, Folders.at(source));
    QString& name = Folders.at(pasted);
    if (!isCut && IsTaken(pasted, name)) name.prepend(QStringLiteral("Copy of "));
    AppendCopies(pasted, source);
    PendingFolder.reset();
    if (isCut) Delete(source);
    Selected = pasted;
    return isCut && IsTaken(pasted, name);
  }

  // --- records ---

  void Stage(const std::vector<int>& photos, bool cut) {
    Staged.clear();
    for (const int photo : photos) Staged.emplace(PlaceOf(Selected), photo);
    if (!photos.empty()) PendingRecords = Pending{Selected, cut};
  }

  void UndoRecordCut() {
    if (PendingRecords->IsCut) PendingRecords.reset();
  }

  bool CanPasteRecords() const {
    if (!PendingRecords) return false;
    return PendingRecords->IsCut ? !HasChildren(Selected) : !IsAbove(Selected, PendingRecords->Source);
  }

  void PasteRecords() {
    const QString target = PlaceOf(Selected);
    const bool up = IsAbove(Selected, PendingRecords->Source);
    for (const Link& link : Staged) {
      if (PendingRecords->IsCut) up ? RemoveBelow(target, link.second) : void(Links.erase(link));
      Links.emplace(target, link.second);
    }
    Staged.clear();
    PendingRecords.reset();
  }

  void AddPhoto(int photo) {
    Photos.insert(photo);
    Links.emplace(QString(), photo);
  }

  void DeletePhoto(int photo) {
    RemoveBelow({}, photo);
    std::erase_if(Staged, [&](const Link& link) { return link.second == photo; });
    Photos.erase(photo);
  }

  /// The photo falls to the parent unless it stands elsewhere below it. At the top a key whose folder has
  /// gone counts as well: such a photo is hidden, until a folder gets that key again.
  void Remove(int photo) {
    const QString parent = Selected.chopped(4);
    IsUnorganized(Selected) ? void(Links.erase({parent, photo})) : RemoveBelow(Selected, photo);
    if (!StandsBelow(parent, photo)) Links.emplace(parent, photo);
  }

 private:
  // The next number is one more than the highest in use: that of a deleted last folder is given out again.
  QString Append(const QString& parent, const QString& name) {
    const QStringList siblings = Subfolders(parent);
    const int number = siblings.isEmpty() ? 1 : siblings.last().right(4).toInt() + 1;
    const QString added = parent + QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0'));
    Folders[added] = name;
    return added;
  }

  void AppendCopies(const QString& target, const QString& source) {
    for (const QString& subfolder : Subfolders(source))
      AppendCopies(Append(target, Folders.at(subfolder)), subfolder);
  }

  // A photo comes to stand at the parent unless it stands elsewhere below it. From the top only the unfiled
  // photos count as standing elsewhere.
  void MovePhotosUp(const QString& folder) {
    const QString parent = folder.chopped(4);
    std::set<Link> moved;
    for (const auto& [key, photo] : Links)
      if (key.startsWith(folder)) moved.emplace(parent, photo);
    std::erase_if(Links, [&](const Link& link) { return link.first.startsWith(folder); });
    for (const Link& link : moved) {
      const bool isThere = parent.isEmpty() ? Links.contains(link) : StandsBelow(parent, link.second);
      if (!isThere) Links.insert(link);
    }
  }

  bool StandsBelow(const QString& top, int photo) const {
    return std::any_of(Links.begin(), Links.end(),
                       [&](const Link& link) { return link.first.startsWith(top) && link.second == photo; });
  }

  void RemoveBelow(const QString& top, int photo) {
    std::erase_if(Links,
                  [&](const Link& link) { return link.first.startsWith(top) && link.second == photo; });
  }
};

}  // namespace veldrin::test
