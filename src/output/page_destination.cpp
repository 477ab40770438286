#include "output/page_destination.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>

#include "base/dates.h"
#include "base/failure.h"
#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "desktop/file_copy.h"
#include "output/web_directory.h"

namespace veldrin::output {

using base::RuntimeError;
using catalogue::ImageFileName;
using catalogue::ThumbFileName;

namespace {

// As many as a page of the report's list has.
constexpr int RowsOfReport = 25;

QString PrintedText(const engine::Value& value) {
  if (engine::IsNull(value)) return {};
  return value.userType() == QMetaType::QDateTime ? base::FormatDate(value.toDateTime()) : value.toString();
}

// As a link has it: a sign that means something in a link, or in the text around it, would lead elsewhere.
QString LinkOf(const QString& path) {
  return QString::fromLatin1(QFile::encodeName(path).toPercentEncoding("/"));
}

QString FileLinkOf(const QString& path) { return QStringLiteral("file://") + LinkOf(path); }

PhotoEntry EntryOf(const PhotoRow& photo, int number) {
  return {photo, QString::number(number), catalogue::ImageName(number, photo.ImageType), {}, {}};
}

QString WebThumbName(const PhotoEntry& entry) { return entry.Number + QStringLiteral("t.bmp"); }

}  // namespace

PhotoRow PhotoReader::At(int position) {
  const int count = Data1.RecordCount();
  if (position < 0 || position >= count)
    throw RuntimeError(base::errNoCurrentRecord, QStringLiteral("No current record."));
  if (position < First || position >= First + static_cast<int>(Rows.size())) {
    Rows = Data1.Recordset().ReadRows(position, std::min(RowsAtOnce, count - position));
    Names = Data1.Recordset().FieldNames();
    First = position;
  }
  const auto& row = Rows[position - First];
  if (row.empty()) throw RuntimeError(base::errRecordDeleted, QStringLiteral("Record is deleted."));
  const auto field = [&](const char* name) { return PrintedText(row[Names.indexOf(QLatin1String(name))]); };
  return {field("PhotoID").toInt(), field("ImageType"), field("Title"),
          field("CreateDate"),      field("MadeBy"),    field("Description")};
}

bool PageDestination::NeedsThumbnail(const PhotoRow& photo) const {
  return Gallery && !QFileInfo::exists(ThumbFileName(ThePaths, photo.PhotoID));
}

void PageDestination::MakeThumbnail(const PhotoRow& photo) const {
  catalogue::CreateThumbnail(ThePaths, photo.PhotoID, photo.ImageType, PixelRatio);
}

// --- a web directory --------------------------------------------------------------------------------------

WebDestination::WebDestination(const catalogue::RecordList& data1, const catalogue::Paths& paths,
                               ProgressForm& form, bool gallery, double pixelRatio, QString webDir,
                               QString title)
    : PageDestination(paths, form, gallery, pixelRatio),
      Data1(data1),
      Reader(data1, 1),
      TheCount(data1.SelBookmarks.Count()),
      WebDir(std::move(webDir)),
      Title(std::move(title)) {
  const bool leadsAway =
      QFileInfo(WebImageDir(WebDir)).isSymLink() || QFileInfo(WebThumbDir(WebDir)).isSymLink();
  if (leadsAway || IsProgramsOwn(paths, WebDir))
    throw RuntimeError(base::errPermissionDenied, QStringLiteral("Permission denied: %1").arg(WebDir));
}

QString WebDestination::Directory() const { return WebDir + QLatin1Char('/'); }

QStringList WebDestination::Head() const { return HeadLines(Title, Title, QStringLiteral("<p></p>")); }

PhotoEntry WebDestination::Take(int index) {
  if (Copied.empty()) CopyAhead(index);
  PhotoEntry entry = std::move(Copied.front());
  Copied.pop_front();
  return entry;
}

// Some photos at once: a step to another thread and back takes as long as a copy of a small file. What keeps
// a photo that isn't the next from being copied comes up again when it is.
void WebDestination::CopyAhead(int index) {
  constexpr int most = 12;
  constexpr int enough = 20;  // milliseconds
  std::vector<PhotoEntry> entries{EntryAt(index)};
  base::ResumeNext([&] {
    for (int next = index + 1; next < std::min(index + most, TheCount); ++next)
      entries.push_back(EntryAt(next));
  });
  Form.Beside([&] {
    QElapsedTimer begun;
    begun.start();
    CopyFiles(entries.front());
    Copied.push_back(entries.front());
    base::ResumeNext([&] {
      for (size_t next = 1; next < entries.size() && !begun.hasExpired(enough); ++next) {
        CopyFiles(entries[next]);
        Copied.push_back(entries[next]);
      }
    });
  });
}

// The image goes first: of one that is refused no thumbnail goes out either.
void WebDestination::CopyFiles(const PhotoEntry& entry) const {
  const PhotoRow& photo = entry.Row;
  desktop::CopyStoredFile(ImageFileName(ThePaths, photo.PhotoID, photo.ImageType), CopyOf(entry));
  if (!Gallery) return;
  auto withoutThumbnail = qScopeGuard([&] { QFile::remove(CopyOf(entry)); });
  if (NeedsThumbnail(photo)) MakeThumbnail(photo);
  desktop::CopyStoredFile(ThumbFileName(ThePaths, photo.PhotoID), ThumbnailOf(entry));
  withoutThumbnail.dismiss();
}

QString WebDestination::CopyOf(const PhotoEntry& entry) const {
  return WebImageDir(WebDir) + QLatin1Char('/') + entry.ImageName;
}

QString WebDestination::ThumbnailOf(const PhotoEntry& entry) const {
  return WebThumbDir(WebDir) + QLatin1Char('/') + WebThumbName(entry);
}

void WebDestination::RemoveAhead() {
  for (const PhotoEntry& entry : Copied) {
    QFile::remove(CopyOf(entry));
    if (Gallery) QFile::remove(ThumbnailOf(entry));
  }
  Copied.clear();
}

PhotoEntry WebDestination::EntryAt(int index) {
  PhotoEntry entry = EntryOf(Reader.At(Data1.PositionOf(Data1.SelBookmarks[index])), index + 1);
  entry.ImageUrl = QStringLiteral("./Images/") + LinkOf(entry.ImageName);
  entry.ThumbUrl = QStringLiteral("./Thumbnails/") + WebThumbName(entry);
  return entry;
}

// --- a report ---------------------------------------------------------------------------------------------

ReportDestination::ReportDestination(const catalogue::RecordList& data1, const catalogue::Paths& paths,
                                     ProgressForm& form, bool gallery, double pixelRatio, QString folder)
    : PageDestination(paths, form, gallery, pixelRatio),
      Data1(data1),
      Reader(data1, RowsOfReport),
      TheCount(data1.RecordCount()),
      Folder(std::move(folder)) {}

QStringList ReportDestination::Head() const {
  const QString line = FolderLine(Folder);
  return Gallery
             ? HeadLines(QStringLiteral("Photo Image Gallery"), QStringLiteral("PHOTO IMAGE GALLERY"), line)
             : HeadLines(QStringLiteral("Photo Image List"), QStringLiteral("PHOTO IMAGE LIST"), line);
}

PhotoEntry ReportDestination::Take(int index) {
  const PhotoRow photo = Reader.At(index);
  if (NeedsThumbnail(photo)) Form.Beside([&] { MakeThumbnail(photo); });
  PhotoEntry entry = EntryOf(photo, photo.PhotoID);
  entry.ImageUrl = FileLinkOf(ImageFileName(ThePaths, photo.PhotoID, photo.ImageType));
  entry.ThumbUrl = FileLinkOf(ThumbFileName(ThePaths, photo.PhotoID));
  return entry;
}

}  // namespace veldrin::output
