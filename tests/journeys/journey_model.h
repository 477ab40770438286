// What the commands make of a catalogue. A node is its key: four digits for each folder on the way from the
// root, whose key is empty, and "0000" behind them for an "!UNORGANIZED". Photos are known by what is in
// them. Knows nothing of tables and statements.
#pragma once

#include <QByteArray>
#include <QRgb>
#include <QStringList>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace veldrin::test {

using Link = std::pair<QString, int>;

/// What stands in a catalogue's files, for a comparison.
struct Stored {
  std::map<int, QStringList> Rows;  ///< type, title, description, maker, by number
  std::set<Link> Links;
  std::map<QString, QString> Folders;    ///< names by key, the rows of "!UNORGANIZED" too
  std::map<QString, QByteArray> Images;  ///< bytes by the file's name

  bool operator==(const Stored&) const = default;
  /// The first differences in words; empty for none.
  QString DifferenceTo(const Stored& expected) const;
  /// A link that leads from or to nothing, or a folder without its parent; empty for none.
  QString DeadEnd() const;
};

class JourneyModel {
 public:
  struct Pending {
    QString Source;
    bool IsCut = false;
  };
  struct Photo {
    int Birth = 0;     ///< another one for each photo, also of one number
    QByteArray Image;  ///< of the stored file; null without one
    QRgb Colour = 0;   ///< of the whole picture; 0 for one that can't be read
    QString ImageType, Title, Description, MadeBy;
    bool FileChanged = false;  ///< its file isn't that of which its thumbnail was made
  };

  std::map<QString, QString> Folders = {{QString(), "Photos"}};  ///< names by keys
  std::set<Link> Links;                                          ///< where photos stand
  std::map<int, Photo> Rows;                                     ///< by number
  QString Selected;
  QString QueryTitle, QueryType;
  std::optional<Pending> PendingFolder;
  std::optional<Pending> PendingRecords;
  std::set<int> Staged;  ///< the photos of PendingRecords

  // --- looking ---

  static QString PlaceOf(const QString& node);
  bool HasChildren(const QString& node) const { return !Subfolders(node).isEmpty(); }
  /// All nodes from one on downwards, as they stand in the tree.
  QStringList Nodes(const QString& top = {}) const;
  /// The numbers that the selected folder and the query give, in their order.
  std::vector<int> List() const;
  int NextNumber() const { return Rows.empty() ? 1 : Rows.rbegin()->first + 1; }
  Stored AsStored() const;

  // --- folders ---

  /// Selects the new folder.
  void Add(const QString& name) { Selected = Append(Selected, name); }
  /// An empty name is the one that the folder has. False when a sibling bears the name.
  bool Rename(const QString& typed);
  void RemoveFolder(const QString& folder);
  /// The same by another machine: here it stays selected, and what waits for a paste goes on waiting.
  void RemoveFolderElsewhere(const QString& folder);
  /// Puts another folder in the place of one.
  void ReplaceFolder(const QString& folder, const QString& name);
  /// Those since the last look.
  std::set<QString> TakeReplaced() { return std::exchange(Replaced, {}); }
  void CutOrCopy(bool cut) { PendingFolder = Pending{Selected, cut}; }
  void Paste();
  /// Takes folders and places as they are.
  void Adopt(const Stored& stored);

  // --- records ---

  bool HasQuery() const { return !(QueryTitle + QueryType).isEmpty(); }
  void ClearQuery() { QueryTitle = QueryType = QString(); }
  /// Puts a photo into a folder.
  void Store(int number, Photo photo, const QString& folder);
  /// With what waits for a paste.
  void Delete(int number);
  /// The photo falls to the parent unless it stands elsewhere below it. At the top a key whose folder has
  /// gone counts as well: such a photo is hidden, until a folder gets that key again.
  void Remove(int photo);
  void Stage(const std::vector<int>& photos, bool cut);
  void PasteRecords();

 private:
  QStringList Subfolders(const QString& parent) const;
  bool IsTaken(const QString& folder, const QString& name) const;
  QString Append(const QString& parent, const QString& name);
  void AppendCopies(const QString& target, const QString& source);
  void MovePhotosUp(const QString& folder);
  bool StandsBelow(const QString& top, int photo) const;
  void RemoveBelow(const QString& top, int photo);

  std::set<QString> Replaced;  ///< folders that another machine has put in the place of others just now
};

}  // namespace veldrin::test
