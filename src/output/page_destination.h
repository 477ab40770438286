// Where pages go: which photos stand on them, what is copied for them, and what their links say.
#pragma once

#include <deque>
#include <vector>

#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "controls/tree_view.h"
#include "engine/dao/recordset.h"
#include "output/page_html.h"
#include "output/progress_form.h"

namespace veldrin::output {

/// Reads the rows of the list without moving it, some at a time.
class PhotoReader {
 public:
  PhotoReader(const catalogue::RecordList& data1, int rowsAtOnce) : Data1(data1), RowsAtOnce(rowsAtOnce) {}

  /// Raises 3021 for a place beyond the list, 3167 for a row that has gone.
  PhotoRow At(int position);

 private:
  const catalogue::RecordList& Data1;
  int RowsAtOnce;
  int First = 0;
  std::vector<std::vector<engine::Value>> Rows;
  QStringList Names;  ///< of their fields
};

class PageDestination {
 public:
  /// `pixelRatio`: of thumbnails that have to be made.
  PageDestination(const catalogue::Paths& paths, ProgressForm& form, bool gallery, double pixelRatio)
      : ThePaths(paths), Form(form), Gallery(gallery), PixelRatio(pixelRatio) {}
  virtual ~PageDestination() = default;
  PageDestination(const PageDestination&) = delete;
  PageDestination& operator=(const PageDestination&) = delete;

  bool IsGallery() const { return Gallery; }
  /// The pages' directory; ends in a separator.
  virtual QString Directory() const = 0;
  /// How many photos the pages show.
  virtual int Count() const = 0;
  virtual QStringList Head() const = 0;
  /// The number of the photo in a place, from 0 on.
  virtual int NumberAt(int index) const = 0;
  /// The next photo, `index` from 0 on, with its files in place. Raises what keeps it from that.
  virtual PhotoEntry Take(int index) = 0;
  /// To be called at the end: files of photos that weren't taken go.
  virtual void RemoveAhead() {}

 protected:
  bool NeedsThumbnail(const PhotoRow& photo) const;
  /// In any thread.
  void MakeThumbnail(const PhotoRow& photo) const;

  const catalogue::Paths& ThePaths;
  ProgressForm& Form;
  bool Gallery;

 private:
  double PixelRatio;
};

/// The selected photos, in the order of the selection, with copies of their files under running numbers, so
/// that the directory can go anywhere.
class WebDestination : public PageDestination {
 public:
  /// Raises 70 for a directory of the program's own, where the copies would replace stored images, and where
  /// a link stands for one of the pictures' directories, which would lead them to others' files.
  WebDestination(const catalogue::RecordList& data1, const catalogue::Paths& paths, ProgressForm& form,
                 bool gallery, double pixelRatio, QString webDir, QString title);

  QString Directory() const override;
  int Count() const override { return TheCount; }
  QStringList Head() const override;
  int NumberAt(int index) const override { return Data1.SelBookmarks[index]; }
  PhotoEntry Take(int index) override;
  void RemoveAhead() override;

 private:
  void CopyAhead(int index);
  void CopyFiles(const PhotoEntry& entry) const;
  QString CopyOf(const PhotoEntry& entry) const;
  QString ThumbnailOf(const PhotoEntry& entry) const;
  PhotoEntry EntryAt(int index);

  const catalogue::RecordList& Data1;
  PhotoReader Reader;
  int TheCount;
  QString WebDir;
  QString Title;
  std::deque<PhotoEntry> Copied;
};

/// All photos of the list, with links to the catalogue's own files.
class ReportDestination : public PageDestination {
 public:
  ReportDestination(const catalogue::RecordList& data1, const catalogue::Paths& paths, ProgressForm& form,
                    bool gallery, double pixelRatio, QString folder);

  QString Directory() const override { return ThePaths.TempDir; }
  int Count() const override { return TheCount; }
  QStringList Head() const override;
  int NumberAt(int index) const override { return Data1.BookmarkAt(index); }
  PhotoEntry Take(int index) override;

 private:
  const catalogue::RecordList& Data1;
  PhotoReader Reader;
  int TheCount;
  QString Folder;
};

}  // namespace veldrin::output
