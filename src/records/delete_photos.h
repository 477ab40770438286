// The commands that take photos away: out of the catalogue, or out of the selected folder only.
#pragma once

#include <QWidget>
#include <functional>
#include <span>
#include <vector>

#include "catalogue/paths.h"
#include "catalogue/record_source.h"

namespace veldrin::records {

/// What the commands ask of the views.
class DeleteViews {
 public:
  virtual ~DeleteViews() = default;
  virtual bool FormViewIsShown() const = 0;
  /// The list was read anew: the view that shows it draws its current record.
  virtual void ShowFolderRecords() = 0;
};

/// The commands act on the selected records; without any, and in Form View, on the current one.
class DeletePhotos {
 public:
  /// The references must outlive the object; `window` has the questions.
  DeletePhotos(catalogue::RecordSource& source, catalogue::RecordList& data1,
               const platform::TreeView& tvTreeView, platform::DBEngine& engine,
               const catalogue::Paths& paths, DeleteViews& views, QWidget& window)
      : Source(source),
        Data1(data1),
        Tree(tvTreeView),
        Engine(engine),
        ThePaths(paths),
        Views(views),
        Window(window) {}

  /// Asks, then deletes the photos: rows, links, stored images and thumbnails.
  void RecordDel_Click();
  /// Asks, then takes the photos out of the selected folder and all below it.
  void RecordRmv_Click();

 private:
  struct Photo {
    int PhotoID;
    QString ImageType;
  };

  bool Ask(const QString& question) const;
  Photo CurrentPhoto() const;
  std::vector<Photo> AffectedPhotos();
  void DeleteGroup(platform::Database& database, std::span<const Photo> group) const;
  void RemoveGroup(platform::Database& database, std::span<const Photo> group) const;
  using WriteGroup = void (DeletePhotos::*)(platform::Database&, std::span<const Photo>) const;
  void WriteInGroups(WriteGroup write);

  catalogue::RecordSource& Source;
  catalogue::RecordList& Data1;
  const platform::TreeView& Tree;
  platform::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  DeleteViews& Views;
  QWidget& Window;
};

/// Takes a photo's links at `folder` and below it away. A photo that nothing else holds below the folder's
/// parent is linked to the parent itself: some folder always leads to a photo. To be run in a transaction.
void RemovePhotoLink(platform::Database& database, const platform::Node& folder, int photoId);

}  // namespace veldrin::records
