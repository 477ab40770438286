// The libraries that decode pictures, behind one call each.
#pragma once

#include "pictures/claim.h"
#include "pictures/picture.h"

namespace veldrin::pictures {

/// Decodes the bytes of a file whose claim has been found good. An empty picture where that fails; raises 7
/// where the claim goes beyond the limits, std::bad_alloc where memory has no room.
Picture Decode(FileKind kind, QByteArray& file, const Claim& claim, const DrawnSize& drawn);

}  // namespace veldrin::pictures
