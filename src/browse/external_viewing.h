// Photos handed to an outside program: what comes back of them.
#pragma once

#include "catalogue/paths.h"
#include "platform/dao/database.h"

namespace veldrin::browse {

/// Compares the stored file of a photo with the note that was written when it was handed out, if there is
/// one. Where the file's date differs, the thumbnail goes, so that it is made anew, and the photo's row takes
/// the file's date; the note goes in any case. Passes over every error.
void RefreshCheckedPhoto(platform::Database& database, const catalogue::Paths& paths, int photoId);

}  // namespace veldrin::browse
