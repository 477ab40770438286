// The photos that a command hands on.
#pragma once

#include <QWidget>
#include <vector>

#include "catalogue/chosen_photos.h"

namespace veldrin::output {

/// Those of a choice that still are what the user saw; a box tells of the others. Raises the engine's errors.
std::vector<catalogue::CheckedPhotos::Photo> TakePhotos(engine::Database& database,
                                                        const catalogue::Choice& choice, QWidget& window);

}  // namespace veldrin::output
