// The photos that a command hands on.
#pragma once

#include <QWidget>
#include <vector>

#include "catalogue/chosen_photos.h"

namespace veldrin::output {

/// Those of a choice that still are what the user saw; a box tells of the others. What no view has shown is
/// taken as it is now. Raises the engine's errors.
std::vector<catalogue::CheckedPhotos::Photo> TakePhotos(engine::Database& database, catalogue::Choice& choice,
                                                        QWidget& window);

}  // namespace veldrin::output
