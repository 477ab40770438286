#include "pictures/fit.h"

#include <gtest/gtest.h>

namespace veldrin::pictures {
namespace {

TEST(Fit, APictureFitsTheBox) {
  const std::pair<QSize, TwipSize> cases[] = {{{500, 500}, {1935, 1935}},
                                              {{10, 10}, {1935, 1935}},
                                              {{300, 600}, {968, 1935}},
                                              {{4000, 1000}, {2535, 634}},
                                              {{10000, 1}, {2535, 0}}};
  for (const auto& [pixels, fitted] : cases) {
    EXPECT_EQ(FitToBox(Picture({}, pixels), {2535, 1935}), fitted) << pixels.width();
  }
}

}  // namespace
}  // namespace veldrin::pictures
