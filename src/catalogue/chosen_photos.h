// Whether the photos that a command was given still are those that the user pointed at: another machine may
// have deleted one, and given its number to a new one.
#pragma once

#include <QStringList>
#include <span>
#include <vector>

#include "catalogue/image_store.h"
#include "catalogue/record_list.h"
#include "engine/dao/database.h"

namespace veldrin::catalogue {

struct CheckedPhotos {
  struct Photo {
    int PhotoID = 0;
    QString ImageType;
  };
  std::vector<Photo> Same;   ///< in the order in which they were chosen
  std::vector<int> Changed;  ///< numbers that belong to other photos now
  std::vector<int> Gone;     ///< numbers that belong to none

  /// All that are not the same.
  std::vector<int> Others() const;
};

/// Compares the rows with what was seen of them, also their texts unless these don't matter. To be asked
/// within the group of writes that relies on it. Raises the engine's errors.
CheckedPhotos CheckChosen(engine::Database& database, std::span<const ChosenPhoto> photos,
                          bool alsoTexts = true);

/// Notes how the photos look now that no view has shown; one without a row never is the same again. Raises
/// the engine's errors.
void NoteLooks(engine::Database& database, std::span<ChosenPhoto> photos);

/// What a photo is called in a report.
inline QString NameOf(const ChosenPhoto& photo) { return QStringLiteral("Photo %1").arg(photo.PhotoID); }

/// The bare name of a photo's stored image.
inline QString StoredName(const CheckedPhotos::Photo& photo) {
  return ImageName(photo.PhotoID, photo.ImageType);
}

/// "The photos 3, 17 were changed by another machine.": what a command leaves alone; only the first numbers
/// of very many.
QString ChangedPhotosText(const std::vector<int>& photos);

}  // namespace veldrin::catalogue
