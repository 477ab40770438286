#include "catalogue/staging.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <cerrno>
#include <optional>

#include "base/failure.h"
#include "base/file_identity.h"
#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "desktop/file_copy.h"
#include "desktop/own_directory.h"
#include "engine/dao/transaction.h"

namespace veldrin::catalogue {

using base::ResumeNext;
using base::RuntimeError;

namespace {

constexpr qsizetype NumbersAtOnce = 512;

// What two running programs that share an image store can't have in common, since one of them holds the lock
// in TempDir; and what is the same after the machine was started again.
QString StagingName(const Paths& paths) {
  return QStringLiteral(".unfinished-") + desktop::OwnMark(paths.TempDir.toUtf8());
}

QString NotesName(const QString& directory) { return directory + QStringLiteral("names"); }

// By which a file is known again after the machine was started anew.
struct FileStamp {
  quint64 Number = 0;
  qint64 Size = -1;
  bool operator==(const FileStamp&) const = default;
};

std::optional<FileStamp> StampOf(const QString& path) {
  const auto state = base::StateOf(path);
  if (!state) return {};
  return FileStamp{state->Is.Number, state->Size};
}

[[noreturn]] void RaiseFor(const QFile& file) {
  const bool full = file.error() == QFileDevice::ResourceError || file.error() == QFileDevice::WriteError;
  throw RuntimeError(full ? base::errDiskFull : base::errPathFileAccess,
                     (full ? QStringLiteral("Disk full: %1") : QStringLiteral("Path/File access error: %1"))
                         .arg(file.fileName()));
}

// A line of the notes: which file it is, by number and size, and its bare name.
struct Note {
  FileStamp Stamp;
  QString Name;

  /// The photo's; 0 for a name that isn't of the store's making.
  int Number() const {
    bool isNumber = false;
    const int number = Name.section(QLatin1Char('.'), 0, 0).toInt(&isNumber);
    return isNumber && !Name.contains(QLatin1Char('/')) ? number : 0;
  }
};

std::vector<Note> ReadNotes(const QString& directory) {
  std::vector<Note> notes;
  QFile file(NotesName(directory));
  if (!file.open(QIODevice::ReadOnly)) return notes;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine());
    // What the kill cut short was not noted yet.
    if (!line.endsWith(QLatin1Char('\n'))) break;
    const Note note{{line.section(QLatin1Char(' '), 0, 0).toULongLong(),
                     line.section(QLatin1Char(' '), 1, 1).toLongLong()},
                    line.section(QLatin1Char(' '), 2).chopped(1)};
    if (note.Number() != 0) notes.push_back(note);
  }
  return notes;
}

QSet<int> NumbersWithRow(engine::Database& database, const QStringList& numbers) {
  QSet<int> found;
  for (qsizetype first = 0; first < numbers.size(); first += NumbersAtOnce) {
    const auto rows =
        database.OpenRecordset(QStringLiteral("SELECT PhotoID FROM tblPhotos WHERE PhotoID IN (%1)")
                                   .arg(numbers.mid(first, NumbersAtOnce).join(QLatin1Char(','))),
                               engine::dbOpenSnapshot);
    for (; !rows->AtEOF(); rows->MoveNext()) found.insert(rows->Field(QStringLiteral("PhotoID")).toInt());
  }
  return found;
}

// While nobody can store a photo: the numbers are those of rows that will not come. False when some stay.
bool RemoveWithoutRow(const Paths& paths, engine::Database& database, const std::vector<Note>& notes) {
  const engine::Transaction transaction(database);
  QStringList numbers;
  for (const Note& note : notes) numbers << QString::number(note.Number());
  const QSet<int> stored = NumbersWithRow(database, numbers);
  bool all = true;
  for (const Note& note : notes) {
    const QString file = paths.ImageDir + note.Name;
    if (stored.contains(note.Number()) || StampOf(file) != note.Stamp) continue;
    all &= QFile::remove(file);
    QFile::remove(ThumbFileName(paths, note.Number()));
  }
  desktop::SyncDirectory(paths.ImageDir);
  return all;
}

}  // namespace

// On the directory itself; a file system without such locks gives it to everybody.
class Staging::Lock {
 public:
  explicit Lock(const QString& directory)
      : File(::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    const bool isOthers = File >= 0 && ::flock(File, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat mine {};
    // Its holder may have removed it.
    IsMine = File >= 0 && !isOthers && ::fstat(File, &mine) == 0 &&
             base::IdentityOf(directory) == base::StateOf(mine).Is;
  }
  ~Lock() {
    if (File >= 0) ::close(File);
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  const int File;
  bool IsMine = false;
};

Staging::Staging(const Paths& paths) {
  constexpr int most = 100;
  for (int number = 1; number <= most && !Held; ++number) {
    Directory = paths.ImageDir + StagingName(paths) +
                (number == 1 ? QStringLiteral("/") : QStringLiteral("-%1/").arg(number));
    if (!QDir().mkdir(Directory) && !QFileInfo(Directory).isDir()) break;
    Held = std::make_unique<Lock>(Directory);
    if (!Held->IsMine) Held.reset();
  }
  if (!Held) {
    const bool isThere = QFileInfo(paths.ImageDir).isDir();
    throw RuntimeError(
        isThere ? base::errPathFileAccess : base::errPathNotFound,
        (isThere ? QStringLiteral("Path/File access error: %1") : QStringLiteral("Path not found: %1"))
            .arg(paths.ImageDir));
  }
  // Notes of a kill that no start could bring to an end yet stay valid beside the new ones.
  Kept = QFileInfo::exists(NotesName(Directory));
  if (Kept) return;
  for (const QString& left : QDir(Directory).entryList(QDir::Files | QDir::Hidden | QDir::System))
    QFile::remove(Directory + left);
}

Staging::~Staging() {
  Notes.reset();
  if (!Kept) QDir(Directory).removeRecursively();
}

QString Staging::PlaceOf(int number, const QString& name) const {
  const QString suffix = QFileInfo(name).suffix().left(8);
  return Directory + QString::number(number) + (suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix);
}

void Staging::NoteUnfinished(const std::vector<Unfinished>& files) {
  if (!Notes) {
    auto notes = std::make_unique<QFile>(NotesName(Directory));
    if (!notes->open(QIODevice::WriteOnly | QIODevice::Append)) RaiseFor(*notes);
    desktop::SyncDirectory(Directory);
    desktop::SyncDirectory(QFileInfo(Directory.chopped(1)).path());
    Notes = std::move(notes);
  }
  for (const Unfinished& file : files) {
    if (const auto stamp = StampOf(file.Stands))
      Notes->write(QStringLiteral("%1 %2 %3\n").arg(stamp->Number).arg(stamp->Size).arg(file.Name).toUtf8());
  }
  if (!Notes->flush() || ::fdatasync(Notes->handle()) != 0) RaiseFor(*Notes);
}

void SweepStaging(const Paths& paths, engine::DBEngine& engine) {
  const QStringList left = QDir(paths.ImageDir)
                               .entryList({StagingName(paths), StagingName(paths) + QStringLiteral("-*")},
                                          QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
  for (const QString& name : left) {
    ResumeNext([&] {
      const QString directory = paths.ImageDir + name + QLatin1Char('/');
      const Staging::Lock lock(directory);
      if (!lock.IsMine) return;
      const std::vector<Note> notes = ReadNotes(directory);
      if (!notes.empty() && !RemoveWithoutRow(paths, *engine.OpenDatabase(paths.WorkFile), notes)) return;
      QDir(directory).removeRecursively();
    });
  }
}

}  // namespace veldrin::catalogue
