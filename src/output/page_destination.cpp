#include "output/page_destination.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "base/dates.h"
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

void PageDestination::NeedThumbnail(const PhotoRow& photo) const {
  if (QFileInfo::exists(ThumbFileName(ThePaths, photo.PhotoID))) return;
  Form.Beside([&] { catalogue::CreateThumbnail(ThePaths, photo.PhotoID, photo.ImageType, PixelRatio); });
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
  const PhotoRow photo = Reader.At(Data1.PositionOf(Data1.SelBookmarks[index]));
  PhotoEntry entry = EntryOf(photo, index + 1);
  const QString thumbName = entry.Number + QStringLiteral("t.bmp");
  // The image goes first: of one that is refused no thumbnail goes out either.
  const auto copy = [this](const QString& from, const QString& to) {
    Form.Beside([&] { desktop::CopyStoredFile(from, to); });
  };
  copy(ImageFileName(ThePaths, photo.PhotoID, photo.ImageType),
       WebImageDir(WebDir) + QLatin1Char('/') + entry.ImageName);
  if (Gallery) {
    NeedThumbnail(photo);
    copy(ThumbFileName(ThePaths, photo.PhotoID), WebThumbDir(WebDir) + QLatin1Char('/') + thumbName);
  }
  entry.ImageUrl = QStringLiteral("./Images/") + LinkOf(entry.ImageName);
  entry.ThumbUrl = QStringLiteral("./Thumbnails/") + thumbName;
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
  if (Gallery) NeedThumbnail(photo);
  PhotoEntry entry = EntryOf(photo, photo.PhotoID);
  entry.ImageUrl = FileLinkOf(ImageFileName(ThePaths, photo.PhotoID, photo.ImageType));
  entry.ThumbUrl = FileLinkOf(ThumbFileName(ThePaths, photo.PhotoID));
  return entry;
}

}  // namespace veldrin::output
