#include "journeys/journey_model.h"

#include <algorithm>

#include "journeys/other_machine.h"

namespace veldrin::test {

namespace {

bool IsUnorganized(const QString& node) { return node.endsWith("0000"); }

QStringList Lines(const Stored& stored) {
  QStringList lines;
  for (const auto& [number, texts] : stored.Rows)
    lines << QStringLiteral("row %1: %2").arg(number).arg(texts.join(u'|'));
  for (const auto& [key, photo] : stored.Links) lines << QStringLiteral("link %1|%2").arg(key).arg(photo);
  for (const auto& [key, name] : stored.Folders) lines << QStringLiteral("folder %1 %2").arg(key, name);
  for (const auto& [name, bytes] : stored.Images)
    lines << QStringLiteral("image %1 of %2 bytes, %3").arg(name).arg(bytes.size()).arg(qHash(bytes));
  return lines;
}

}  // namespace

QString Stored::DifferenceTo(const Stored& expected) const {
  QStringList lines;
  ForEachBeyond(Lines(*this), Lines(expected), [&](const auto& line) { lines << "not expected: " + line; });
  ForEachBeyond(Lines(expected), Lines(*this), [&](const auto& line) { lines << "missing: " + line; });
  return lines.mid(0, 12).join(u'\n');
}

QString Stored::DeadEnd() const {
  for (const auto& [key, photo] : Links)
    if (!Rows.contains(photo) || (!key.isEmpty() && !Folders.contains(key)))
      return QStringLiteral("link %1|%2").arg(key).arg(photo);
  for (const auto& [key, name] : Folders)
    if (key.size() > 4 && !Folders.contains(key.chopped(4))) return "no folder above " + key;
  return {};
}

// --- looking ----------------------------------------------------------------------------------------------

QString JourneyModel::PlaceOf(const QString& node) { return IsUnorganized(node) ? node.chopped(4) : node; }

QStringList JourneyModel::Subfolders(const QString& parent) const {
  QStringList keys;
  for (const auto& [key, name] : Folders)
    if (key.size() == parent.size() + 4 && key.startsWith(parent)) keys << key;
  return keys;
}

QStringList JourneyModel::Nodes(const QString& top) const {
  QStringList nodes;
  for (const auto& [key, name] : Folders) {
    if (!key.startsWith(top)) continue;
    nodes << key;
    if (HasChildren(key)) nodes << key + "0000";
  }
  return nodes;
}

std::vector<int> JourneyModel::List() const {
  std::vector<int> list;
  const QString place = PlaceOf(Selected);
  for (const auto& [number, photo] : Rows) {
    const bool isHere = Selected.isEmpty() || (IsUnorganized(Selected) ? Links.contains({place, number})
                                                                       : StandsBelow(place, number));
    if (isHere && photo.Title.contains(QueryTitle, Qt::CaseInsensitive) &&
        (QueryType.isEmpty() || photo.ImageType == QueryType))
      list.push_back(number);
  }
  return list;
}

Stored JourneyModel::AsStored() const {
  Stored stored;
  for (const auto& [number, photo] : Rows) {
    stored.Rows[number] = {photo.ImageType, photo.Title, photo.Description, photo.MadeBy};
    if (!photo.Image.isNull())
      stored.Images[QStringLiteral("%1.%2").arg(number).arg(photo.ImageType)] = photo.Image;
  }
  stored.Links = Links;
  for (const auto& [key, name] : Folders) {
    if (!key.isEmpty()) stored.Folders[key] = name;
    if (HasChildren(key)) stored.Folders[key + "0000"] = "!UNORGANIZED";
  }
  return stored;
}

// --- folders ----------------------------------------------------------------------------------------------

bool JourneyModel::IsTaken(const QString& folder, const QString& name) const {
  if (name == "!UNORGANIZED") return true;  // It stands beside every folder.
  const QStringList siblings = Subfolders(folder.chopped(4));
  return std::any_of(siblings.begin(), siblings.end(),
                     [&](const QString& other) { return other != folder && Folders.at(other) == name; });
}

bool JourneyModel::Rename(const QString& typed) {
  const QString name = typed.isEmpty() ? Folders.at(Selected) : typed;
  if (IsTaken(Selected, name)) return false;
  Folders.at(Selected) = name;
  return true;
}

void JourneyModel::RemoveFolderElsewhere(const QString& folder) {
  MovePhotosUp(folder);
  std::erase_if(Folders, [&](const auto& entry) { return entry.first.startsWith(folder); });
}

void JourneyModel::RemoveFolder(const QString& folder) {
  RemoveFolderElsewhere(folder);
  Selected = folder.chopped(4);
  // What waits for a paste from a node that has gone waits no longer.
  for (auto* pending : {&PendingFolder, &PendingRecords})
    if (*pending && !Nodes().contains((*pending)->Source)) pending->reset();
}

void JourneyModel::ReplaceFolder(const QString& folder, const QString& name) {
  RemoveFolderElsewhere(folder);
  Folders[folder] = name;
  Replaced.insert(folder);
}

void JourneyModel::Paste() {
  const auto [source, isCut] = *PendingFolder;
  const QString pasted = Append(Selected, Folders.at(source));
  QString& name = Folders.at(pasted);
  if (!isCut && IsTaken(pasted, name)) name.prepend("Copy of ");
  AppendCopies(pasted, source);
  PendingFolder.reset();
  if (isCut) RemoveFolder(source);
  Selected = pasted;
}

void JourneyModel::Adopt(const Stored& stored) {
  Folders = {{QString(), "Photos"}};
  for (const auto& [key, name] : stored.Folders)
    if (!IsUnorganized(key)) Folders[key] = name;
  Links = stored.Links;
}

// The next number is one more than the highest in use: that of a deleted last folder is given out again.
QString JourneyModel::Append(const QString& parent, const QString& name) {
  const QStringList siblings = Subfolders(parent);
  const int number = siblings.isEmpty() ? 1 : siblings.last().right(4).toInt() + 1;
  const QString added = parent + QStringLiteral("%1").arg(number, 4, 10, QChar(u'0'));
  Folders[added] = name;
  return added;
}

void JourneyModel::AppendCopies(const QString& target, const QString& source) {
  for (const QString& subfolder : Subfolders(source))
    AppendCopies(Append(target, Folders.at(subfolder)), subfolder);
}

// A photo comes to stand at the parent unless it stands elsewhere below it. From the top only the unfiled
// photos count as standing elsewhere.
void JourneyModel::MovePhotosUp(const QString& folder) {
  const QString parent = folder.chopped(4);
  std::set<Link> moved;
  for (const auto& [key, photo] : Links)
    if (key.startsWith(folder)) moved.emplace(parent, photo);
  std::erase_if(Links, [&](const Link& link) { return link.first.startsWith(folder); });
  for (const Link& link : moved)
    if (parent.isEmpty() || !StandsBelow(parent, link.second)) Links.insert(link);
}

// --- records ----------------------------------------------------------------------------------------------

void JourneyModel::Store(int number, Photo photo, const QString& folder) {
  Rows[number] = std::move(photo);
  Links.emplace(PlaceOf(folder), number);
}

void JourneyModel::Delete(int number) {
  RemoveBelow({}, number);
  Rows.erase(number);
  Staged.erase(number);
}

void JourneyModel::Remove(int photo) {
  const QString parent = Selected.chopped(4);
  IsUnorganized(Selected) ? void(Links.erase({parent, photo})) : RemoveBelow(Selected, photo);
  if (!StandsBelow(parent, photo)) Links.emplace(parent, photo);
}

void JourneyModel::Stage(const std::vector<int>& photos, bool cut) {
  Staged = {photos.begin(), photos.end()};
  if (!photos.empty()) PendingRecords = Pending{Selected, cut};
}

// Photos that move up stand nowhere else below the target then.
void JourneyModel::PasteRecords() {
  const auto [node, isCut] = *PendingRecords;
  const QString source = PlaceOf(node);
  const QString target = PlaceOf(Selected);
  const bool up = Selected != node && source.startsWith(target);
  for (const int photo : std::exchange(Staged, {})) {
    if (isCut) up ? RemoveBelow(target, photo) : void(Links.erase({source, photo}));
    Links.emplace(target, photo);
  }
  PendingRecords.reset();
}

bool JourneyModel::StandsBelow(const QString& top, int photo) const {
  return std::any_of(Links.begin(), Links.end(),
                     [&](const Link& link) { return link.first.startsWith(top) && link.second == photo; });
}

void JourneyModel::RemoveBelow(const QString& top, int photo) {
  std::erase_if(Links, [&](const Link& link) { return link.first.startsWith(top) && link.second == photo; });
}

}  // namespace veldrin::test
