#include "browse/external_viewer.h"

#include <QFile>
#include <QFileInfo>
#include <memory>

#include "base/failure.h"
#include "catalogue/chosen_photos.h"
#include "catalogue/image_store.h"
#include "controls/error_box.h"
#include "controls/msg_box.h"
#include "desktop/default_program.h"
#include "engine/sql_tokens.h"

namespace veldrin::browse {

using base::ResumeNext;

namespace {

// The date of a file that has gone, and the note of a photo without a date.
const QDateTime EmptyDate(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC);

QDateTime DateOfFile(const QString& path) {
  QDateTime date = EmptyDate;
  ResumeNext([&] { date = catalogue::GetFileDate(path); });
  return date;
}

}  // namespace

void ExternalViewer::ViewBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  try {
    const auto checked = CheckChosen(*Engine.OpenDatabase(ThePaths.WorkFile), Data1.Chosen(false).Photos);
    if (const auto others = checked.Others(); !others.empty()) {
      controls::MsgBox(&Window, catalogue::ChangedPhotosText(others), controls::vbExclamation,
                       QStringLiteral("Error"));
      return;
    }
    const int photoId = Data1.Field(QStringLiteral("PhotoID")).toInt();
    const QString imageType = Data1.Field(QStringLiteral("ImageType")).toString();
    const QString file = catalogue::ImageFileName(ThePaths, photoId, imageType);
    if (!QFileInfo(file).isFile()) return;
    desktop::OpenWithProgram(desktop::GetExtensionClass(QLatin1Char('.') + imageType), file);
    const QDateTime date = Data1.Field(QStringLiteral("LastModifyDate")).toDateTime();
    ResumeNext([&] { RecordCheckPhoto(*Engine.OpenDatabase(ThePaths.WorkFile), photoId, imageType, date); });
  } catch (const base::RuntimeError& error) {
    error.Number() == base::errLocked ? controls::ShowErrorBox(&Window, error) : ShowNoProgram();
  }
}

void ExternalViewer::ShowNoProgram() const {
  static const char* const first =
      "You need to register the file extension such as .bmp, .jpg with your chosen favorite graphics "
      "application!";
  static const char* const lines[] = {first,
                                      "To register the file extension:",
                                      "1. Open the Windows Explorer.",
                                      "2. Find a JPG file and highlight it.",
                                      "3. Right click on the file and click on the 'Open with' item.",
                                      "4. Select your favorite graphics application from the list.",
                                      "5. Check 'Always use this program to open these files'.",
                                      "6. Click on the 'OK' button.",
                                      "7. Repeat 2 to 6 doing a BMP file and other graphics files."};
  QStringList text;
  for (const char* line : lines) text << QLatin1String(line);
  controls::MsgBox(&Window, text.join(QLatin1Char('\r')), controls::vbExclamation);
}

void RecordCheckPhoto(engine::Database& database, int photoId, const QString& imageType,
                      const QDateTime& lastModifyDate) {
  const QDateTime date = lastModifyDate.isValid() ? lastModifyDate : EmptyDate;
  ResumeNext([&] {
    database.Execute(QStringLiteral("INSERT INTO CheckPhotos (PhotoID, ImageType, LastModifyDate) "
                                    "VALUES (%1, '%2', #%3#)")
                         .arg(photoId)
                         .arg(engine::QuoteSql(imageType), engine::DateToStore(date)));
  });
}

bool RefreshCheckedPhoto(engine::Database& database, const catalogue::Paths& paths, int photoId) {
  std::unique_ptr<engine::Recordset> note;
  ResumeNext([&] {
    note =
        database.OpenRecordset(QStringLiteral("SELECT * FROM CheckPhotos WHERE PhotoID = %1").arg(photoId));
    if (note->RecordCount() == 0) note.reset();
  });
  if (!note) return false;
  // One that couldn't be written stays for the next look.
  const bool written = ResumeNext([&] {
    const QString imageType = note->Field(QStringLiteral("ImageType")).toString();
    const QDateTime fileDate = DateOfFile(catalogue::ImageFileName(paths, photoId, imageType));
    const QDateTime noted = note->Field(QStringLiteral("LastModifyDate")).toDateTime();
    if (noted == fileDate && fileDate != EmptyDate) return;
    QFile::remove(catalogue::ThumbFileName(paths, photoId));
    database.Execute(QStringLiteral("UPDATE tblPhotos SET LastModifyDate = #%1# WHERE PhotoID = %2")
                         .arg(engine::DateToStore(fileDate))
                         .arg(photoId));
  });
  return written && ResumeNext([&] { note->Delete(); });
}

}  // namespace veldrin::browse
