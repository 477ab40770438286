// The lines of the pages. Texts pass through as they stand: what people enter may be HTML of their own.
#pragma once

#include <QStringList>

namespace veldrin::output {

/// What the pages show of a photo; texts as they are printed, Null empty.
struct PhotoRow {
  int PhotoID = 0;
  QString ImageType;
  QString Title;
  QString CreateDate;
  QString MadeBy;
  QString Description;
};

/// A photo as it stands on a page.
struct PhotoEntry {
  PhotoRow Row;
  QString Number;     ///< what its caption begins with
  QString ImageName;  ///< the image's name without the way to it
  QString ImageUrl;   ///< where its image is
  QString ThumbUrl;   ///< where its thumbnail is
};

/// The beginning of a page. `line` stands below the heading.
QStringList HeadLines(const QString& title, const QString& heading, const QString& line);
/// The line below the heading of a report, which names the folder.
QString FolderLine(const QString& fullPath);

// A row of a gallery is a table of its own: pictures above, captions below.
QString PictureCell(const PhotoEntry& photo);
QString CaptionCell(const PhotoEntry& photo);

/// The beginning of a list, with its header.
QStringList ListHeadLines();
QStringList ListRowLines(const PhotoEntry& photo);

/// The links to the other pages; an empty table where there are none. `page` counts from 1.
QStringList NavigationLines(bool gallery, int page, int pages);

}  // namespace veldrin::output
