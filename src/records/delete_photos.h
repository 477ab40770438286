// The commands that take photos away: out of the catalogue, or out of the selected folder only.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <span>
#include <vector>

#include "base/work_report.h"
#include "catalogue/chosen_photos.h"
#include "catalogue/paths.h"
#include "catalogue/record_source.h"
#include "catalogue/staging.h"
#include "controls/progress.h"
#include "controls/tree_view.h"

namespace veldrin::records {

/// A photo that isn't any more what the user saw is left alone, and so is a folder; a box tells of them.
class DeletePhotos : public QObject {
  Q_OBJECT

 public:
  /// The references must outlive the object; `window` has the questions, and `tell` takes what became of the
  /// photos.
  DeletePhotos(catalogue::Chooser chosen, catalogue::RecordSource& source,
               const controls::TreeView& tvTreeView, engine::DBEngine& engine, const catalogue::Paths& paths,
               QWidget& window, controls::LongWork& work, base::TellWork tell)
      : Chosen(std::move(chosen)),
        Source(source),
        Tree(tvTreeView),
        Engine(engine),
        ThePaths(paths),
        Window(window),
        Work(work),
        Tell(std::move(tell)) {}

  // What can't be written, such as while another machine holds the catalogue, stays as it was, files
  // included.

  /// Asks, then deletes the photos: rows, links, stored images and thumbnails.
  void RecordDel_Click();
  /// Asks, then takes the photos out of the selected folder and all below it.
  void RecordRmv_Click();

 Q_SIGNALS:
  void Deleted(const std::vector<int>& photos);

 private:
  using Group = std::span<const catalogue::ChosenPhoto>;
  using Photos = std::vector<catalogue::CheckedPhotos::Photo>;
  /// Runs a work in another thread and waits for it.
  using Aside = std::function<void(const std::function<void()>&)>;
  /// What becomes of a group; false where the folder isn't what the user sees.
  using Write = std::function<bool(engine::Database&, Group, const Aside&)>;

  catalogue::Choice Ask(const QString& question) const;
  void DeleteGroup(engine::Database& database, Group group, catalogue::Staging* staging, const Aside& aside);
  bool DeleteRows(engine::Database& database, Group group, catalogue::Staging* staging,
                  catalogue::CheckedPhotos& checked);
  /// `noted`: what stays goes at the next start.
  bool RemoveFiles(engine::Database& database, const Photos& photos, bool noted);
  bool RemoveGroup(engine::Database& database, Group group, const controls::Node& folder);
  void WriteInGroups(const catalogue::Choice& choice, const QString& caption, const QString& deed,
                     const Write& write);
  bool WriteAll(Group photos, const QString& caption, const Write& write);

  catalogue::Chooser Chosen;
  catalogue::RecordSource& Source;
  const controls::TreeView& Tree;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  QWidget& Window;
  controls::LongWork& Work;
  base::TellWork Tell;
  // Of the command in hand.
  base::WorkReport Report;
  std::vector<int> Others;  ///< photos that another machine has changed
};

/// Takes a photo's links at `folder`, which must not be the root, and below it away. A photo that nothing
/// else holds below the folder's parent is linked to the parent itself: some folder always leads to a photo.
/// To be run in a transaction. Raises the errors of the data engine.
void RemovePhotoLink(engine::Database& database, const controls::Node& folder, int photoId);

}  // namespace veldrin::records
