// What a walk through the program makes of a catalogue, beside what stands in its files. The folders and
// links are those of CatalogueModel; photos are known by what is in them.
#pragma once

#include <QByteArray>
#include <QRgb>
#include <utility>

#include "journeys/catalogue_model.h"

struct sqlite3;

namespace veldrin::test {

/// What stands in a catalogue's files, for a comparison.
struct Stored {
  std::map<int, QStringList> Rows;  ///< type, title, description, maker, by number
  std::set<CatalogueModel::Link> Links;
  std::map<QString, QString> Folders;    ///< names by key, the rows of "!UNORGANIZED" too
  std::map<QString, QByteArray> Images;  ///< bytes by the file's name

  bool operator==(const Stored&) const = default;
  /// The first difference in words; empty for none.
  QString DifferenceTo(const Stored& expected) const;
  /// A link that leads from or to nothing, or a folder without its parent; empty for none.
  QString DeadEnd() const;
};

class JourneyModel : public CatalogueModel {
 public:
  struct Photo {
    int Birth = 0;     ///< another one for each photo, also of one number
    QByteArray Image;  ///< of the stored file; null without one
    QRgb Colour = 0;   ///< of the whole picture; 0 for one that can't be read
    QString ImageType, Title, Description, MadeBy;
    bool FileChanged = false;  ///< its file isn't that of which its thumbnail was made
  };

  std::map<int, Photo> Rows;  ///< by number
  QString QueryTitle, QueryType;

  void ClearQuery() { QueryTitle = QueryType = QString(); }
  bool HasQuery() const { return !QueryTitle.isEmpty() || !QueryType.isEmpty(); }
  /// The numbers that the selected folder and the query give, in their order.
  std::vector<int> List() const;
  int NextNumber() const { return Rows.empty() ? 1 : Rows.rbegin()->first + 1; }
  /// Puts a photo into a folder.
  void Store(int number, Photo photo, const QString& folder);
  /// With what waits for a paste.
  void Delete(int number);
  void RemoveFolder(const QString& folder) { CatalogueModel::Delete(folder); }
  /// The same by another machine: here it stays selected, and what waits for a paste goes on waiting.
  void RemoveFolderElsewhere(const QString& folder);
  /// Puts another folder in the place of one.
  void ReplaceFolder(const QString& folder, const QString& name);
  /// Those since the last look.
  std::set<QString> TakeReplaced() { return std::exchange(Replaced, {}); }
  /// Takes folders and places as they are.
  void Adopt(const Stored& stored);
  Stored AsStored() const;

 private:
  std::set<QString> Replaced;  ///< folders that another machine has put in the place of others just now
};

/// The files of a catalogue, looked at and changed as another machine does it.
class OtherMachine {
 public:
  OtherMachine(const QString& databaseFile, QString imageDir);
  ~OtherMachine();
  OtherMachine(const OtherMachine&) = delete;
  OtherMachine& operator=(const OtherMachine&) = delete;

  void Execute(const QString& sql);
  /// Everything, read anew where it may have changed.
  const Stored& Look();
  /// Writes rows, links, folders and files that the catalogue hasn't got as in the model, and takes away
  /// those that the model hasn't got.
  void Write(const JourneyModel& model);

 private:
  std::vector<QStringList> Read(const QString& sql);
  void ReadTables();
  void ReadImages();

  sqlite3* File = nullptr;
  QString ImageDir;
  Stored Last;
  QString LastVersion;
  std::map<QString, QString> LastStates;  ///< of the image files
};

}  // namespace veldrin::test
