#include "catalogue/chosen_photos.h"

#include <algorithm>

namespace veldrin::catalogue {

namespace {

constexpr size_t RowsAtOnce = 512;
constexpr size_t MostNamed = 20;

QHash<int, PhotoLook> LooksOf(engine::Database& database, std::span<const ChosenPhoto> photos) {
  QHash<int, PhotoLook> looks;
  for (size_t first = 0; first < photos.size(); first += RowsAtOnce) {
    QStringList numbers;
    for (const ChosenPhoto& photo : photos.subspan(first, std::min(RowsAtOnce, photos.size() - first))) {
      numbers << QString::number(photo.PhotoID);
    }
    const auto rows = database.OpenRecordset(
        QStringLiteral("SELECT PhotoID, ImageType, CreateDate, Title, MadeBy, Description FROM tblPhotos "
                       "WHERE PhotoID IN (%1)")
            .arg(numbers.join(QLatin1Char(','))),
        engine::dbOpenSnapshot);
    const ListRows read(rows->FieldNames(), rows->ReadRows(0, rows->RecordCount()));
    for (int i = 0; i < read.Count(); ++i) {
      looks[read.Field(i, QStringLiteral("PhotoID")).toInt()] = read.Look(i);
    }
  }
  return looks;
}

bool IsOther(PhotoLook shown, const PhotoLook& now, bool alsoTexts) {
  if (!alsoTexts) shown.Texts = now.Texts;
  return shown != now;
}

}  // namespace

std::vector<int> CheckedPhotos::Others() const {
  std::vector<int> others = Changed;
  others.insert(others.end(), Gone.begin(), Gone.end());
  return others;
}

CheckedPhotos CheckChosen(engine::Database& database, std::span<const ChosenPhoto> photos, bool alsoTexts) {
  const QHash<int, PhotoLook> looks = LooksOf(database, photos);
  CheckedPhotos checked;
  for (const ChosenPhoto& photo : photos) {
    const auto look = looks.constFind(photo.PhotoID);
    if (look == looks.cend()) {
      checked.Gone.push_back(photo.PhotoID);
    } else if (photo.Look && IsOther(*photo.Look, *look, alsoTexts)) {
      checked.Changed.push_back(photo.PhotoID);
    } else {
      checked.Same.push_back({photo.PhotoID, look->ImageType});
    }
  }
  return checked;
}

void NoteLooks(engine::Database& database, std::span<ChosenPhoto> photos) {
  std::vector<ChosenPhoto> unseen;
  std::copy_if(photos.begin(), photos.end(), std::back_inserter(unseen),
               [](const ChosenPhoto& photo) { return !photo.Look; });
  const QHash<int, PhotoLook> looks = LooksOf(database, unseen);
  for (ChosenPhoto& photo : photos) {
    if (!photo.Look) photo.Look = looks.value(photo.PhotoID, PhotoLook{{}, {}, 0, false});
  }
}

QString ChangedPhotosText(const std::vector<int>& photos) {
  QStringList numbers;
  for (size_t i = 0; i < std::min(photos.size(), MostNamed); ++i) numbers << QString::number(photos[i]);
  if (photos.size() > MostNamed) numbers << QStringLiteral("...");
  return photos.size() == 1
             ? QStringLiteral("The photo %1 was changed by another machine.").arg(numbers.front())
             : QStringLiteral("The photos %1 were changed by another machine.")
                   .arg(numbers.join(QStringLiteral(", ")));
}

}  // namespace veldrin::catalogue
