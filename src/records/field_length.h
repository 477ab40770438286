// The lengths of the catalogue's text columns, in characters: what the fields for them take.
#pragma once

namespace veldrin::records {

constexpr int TitleLength = 60;
constexpr int DescriptionLength = 255;
constexpr int MadeByLength = 26;

}  // namespace veldrin::records
