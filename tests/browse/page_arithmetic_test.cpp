#include "browse/page_arithmetic.h"

#include <gtest/gtest.h>

namespace veldrin::browse {
namespace {

using Scroll = PageMove::Scroll;

TEST(PageArithmetic, MovesAsTheKeySays) {
  const std::tuple<const char*, PageMove, PageMove> cases[] = {
      {"right at the edge scrolls by one", MoveRight(11, 11, 14), {Scroll{12, 1}, 11}},
      {"right never scrolls to the last record", MoveRight(11, 11, 13), {{}, 11}},
      {"right on the last record stays", MoveRight(11, 12, 13), {{}, 11}},
      {"left at the edge scrolls by one", MoveLeft(0, 20), {Scroll{19, 19}, 0}},
      {"left on the first record stays", MoveLeft(0, 0), {{}, 0}},
      {"down stops with the last record in the last cell", MoveDown(11, 11, 13), {Scroll{12, 1}, 11}},
      {"down on a full last page stays", MoveDown(9, 9, 12), {{}, 9}},
      {"down that would pass the last record does nothing", MoveDown(9, 21, 22), {{}, 9}},
      {"up scrolls by what is left", MoveUp(1, 3), {Scroll{1, 0}, 1}},
      {"page down by what is left", MovePageDown(5, 5, 14), {Scroll{2, 2}, 0}},
      {"page down on the last page goes to the first cell", MovePageDown(5, 5, 12), {{}, 0}},
      {"page down on a short page goes to the first cell", MovePageDown(2, 22, 25), {{}, 0}},
      {"page up on the first page goes to the first cell", MovePageUp(5, 5), {{}, 0}},
  };
  for (const auto& [name, move, expected] : cases) EXPECT_EQ(move, expected) << name;
  EXPECT_EQ(ScrollMax(13), 4);
  EXPECT_EQ(ScrollMax(1'000'000), 32767) << "the bar counts in sixteen bits";
  EXPECT_EQ(ScrollPosition(10922), 32766);
  EXPECT_EQ(ScrollPosition(10923), std::nullopt);
}

// Whatever keys are pressed from whatever page, the current record and its cell stay within the list.
TEST(PageArithmetic, WalksEveryListWithoutLeavingIt) {
  for (int count : {1, 2, 5, 11, 12, 13, 14, 22, 25, 40}) {
    for (int at = 0; at < count; ++at) {
      for (int cell = 0; cell < CellCount && cell <= at; ++cell) {
        for (const PageMove& move :
             {MoveRight(cell, at, count), MoveLeft(cell, at), MoveDown(cell, at, count), MoveUp(cell, at),
              MovePageDown(cell, at, count), MovePageUp(cell, at)}) {
          const auto [position, start] = move.Page.value_or(Scroll{0, 0});
          ASSERT_TRUE(0 <= start && start <= position && position < count && position - start < CellCount)
              << count << ' ' << at << ' ' << cell;
        }
      }
    }
  }
}

}  // namespace
}  // namespace veldrin::browse
