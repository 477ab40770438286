// Makes photographs to measure on, with the noise of a real sensor. What is made is kept and used again.
#pragma once

#include <string>
#include <vector>

namespace veldrin::benches {

/// `count` JPEG files of 6000 by 4000 pixels, of some 9 MB each. Returns their paths.
std::vector<std::string> MakeLargePictures(const std::string& data, int count);

/// A directory with `count` JPEG files of about 1 MB each, no two alike. Returns its path.
std::string MakeManyPictures(const std::string& data, int count);

}  // namespace veldrin::benches
