// The commands that take photos away: out of the catalogue, or out of the selected folder only.
#pragma once

#include <QWidget>
#include <functional>
#include <span>
#include <vector>

#include "catalogue/paths.h"
#include "catalogue/record_source.h"
#include "controls/tree_view.h"

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
               const controls::TreeView& tvTreeView, engine::DBEngine& engine, const catalogue::Paths& paths,
               DeleteViews& views, QWidget& window)
      : Source(source),
        Data1(data1),
        Tree(tvTreeView),
        Engine(engine),
        ThePaths(paths),
        Views(views),
        Window(window) {}

  // What can't be written, such as while another machine holds the catalogue, stays as it was, files
  // included.

  /// Asks, then deletes the photos: rows, links, stored images and thumbnails.
  void RecordDel_Click();
  /// Asks, then takes the photos out of the selected folder and all below it.
  void RecordRmv_Click();

 private:
  using Group = std::span<const int>;  ///< numbers of photos

  bool Ask(const QString& question) const;
  std::vector<int> AffectedPhotos() const;
  void DeleteGroup(engine::Database& database, Group group) const;
  void RemoveGroup(engine::Database& database, Group group) const;
  void WriteInGroups(const std::function<void(engine::Database&, Group)>& write);

  catalogue::RecordSource& Source;
  catalogue::RecordList& Data1;
  const controls::TreeView& Tree;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  DeleteViews& Views;
  QWidget& Window;
};

/// Deletes a photo's row, its links and the note of its hand-over, by which a later photo of its number would
/// be taken for changed. To be run in a transaction; its files go when that is stored.
void DeletePhoto(engine::Database& database, int photoId);

/// Takes a photo's links at `folder`, which must not be the root, and below it away. A photo that nothing
/// else holds below the folder's parent is linked to the parent itself: some folder always leads to a photo.
/// To be run in a transaction. Raises the errors of the data engine.
void RemovePhotoLink(engine::Database& database, const controls::Node& folder, int photoId);

}  // namespace veldrin::records
