#include "browse/page_arithmetic.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace veldrin::browse {
namespace {

struct MoveCase {
  const char* Name;
  PageMove Move;
  std::optional<PageMove::Scroll> Page;
  int Target;
};

class PageMoves : public testing::TestWithParam<MoveCase> {};

TEST_P(PageMoves, MoveAsTheKeySays) {
  EXPECT_EQ(GetParam().Move, (PageMove{GetParam().Page, GetParam().Target}));
}

using Scroll = PageMove::Scroll;

INSTANTIATE_TEST_SUITE_P(
    Keys, PageMoves,
    testing::Values(MoveCase{"RightWithinThePage", MoveRight(3, 3, 40), {}, 4},
                    MoveCase{"RightAtTheEdgeScrollsByOne", MoveRight(11, 11, 14), Scroll{12, 1}, 11},
                    MoveCase{"RightNeverScrollsToTheLastRecord", MoveRight(11, 11, 13), {}, 11},
                    MoveCase{"RightOnTheLastRecordStays", MoveRight(11, 12, 13), {}, 11},
                    MoveCase{"LeftWithinThePage", MoveLeft(1, 21), {}, 0},
                    MoveCase{"LeftAtTheEdgeScrollsByOne", MoveLeft(0, 20), Scroll{19, 19}, 0},
                    MoveCase{"LeftOnTheFirstRecordStays", MoveLeft(0, 0), {}, 0},
                    MoveCase{"DownWithinThePage", MoveDown(8, 8, 12), {}, 11},
                    MoveCase{"DownScrollsByARow", MoveDown(9, 9, 40), Scroll{12, 3}, 9},
                    MoveCase{"DownStopsWithTheLastRecordInTheLastCell", MoveDown(11, 11, 13), Scroll{12, 1},
                             11},
                    MoveCase{"DownOnAFullLastPageStays", MoveDown(9, 9, 12), {}, 9},
                    MoveCase{"DownThatWouldPassTheLastRecordDoesNothing", MoveDown(9, 21, 22), {}, 9},
                    MoveCase{"UpWithinThePage", MoveUp(4, 4), {}, 1},
                    MoveCase{"UpScrollsByARow", MoveUp(2, 22), Scroll{19, 17}, 2},
                    MoveCase{"UpScrollsByWhatIsLeft", MoveUp(1, 3), Scroll{1, 0}, 1},
                    MoveCase{"UpOnTheFirstPageStays", MoveUp(2, 2), {}, 2},
                    MoveCase{"PageDownByAPage", MovePageDown(5, 5, 40), Scroll{12, 12}, 0},
                    MoveCase{"PageDownByWhatIsLeft", MovePageDown(5, 5, 14), Scroll{2, 2}, 0},
                    MoveCase{"PageDownOnTheLastPageGoesToTheFirstCell", MovePageDown(5, 5, 12), {}, 0},
                    MoveCase{"PageDownOnAShortPageGoesToTheFirstCell", MovePageDown(2, 22, 25), {}, 0},
                    MoveCase{"PageUpByAPage", MovePageUp(5, 35), Scroll{18, 18}, 0},
                    MoveCase{"PageUpByWhatIsLeft", MovePageUp(5, 12), Scroll{0, 0}, 0},
                    MoveCase{"PageUpOnTheFirstPageGoesToTheFirstCell", MovePageUp(5, 5), {}, 0}),
    test::CaseName);

TEST(PageArithmetic, WalksEveryListWithoutLeavingIt) {
  // Whatever keys are pressed from whatever page, the current record and its cell stay within the list.
  for (int count : {1, 2, 5, 11, 12, 13, 14, 22, 25, 40}) {
    for (int start = 0; start < count; ++start) {
      for (int cell = 0; cell < CellCount && start + cell < count; ++cell) {
        const int at = start + cell;
        for (const PageMove& move :
             {MoveRight(cell, at, count), MoveLeft(cell, at), MoveDown(cell, at, count), MoveUp(cell, at),
              MovePageDown(cell, at, count), MovePageUp(cell, at)}) {
          if (!move.Page) continue;
          ASSERT_GE(move.Page->Start, 0) << count << ' ' << start << ' ' << cell;
          ASSERT_GE(move.Page->Position, move.Page->Start);
          ASSERT_LT(move.Page->Position, count);
          ASSERT_LT(move.Page->Position - move.Page->Start, CellCount);
        }
      }
    }
  }
}

TEST(PageArithmetic, CountsTheScrollBarInSixteenBits) {
  EXPECT_EQ(ScrollMax(13), 4);
  EXPECT_EQ(ScrollMax(1'000'000), 32767);
  EXPECT_EQ(ScrollPosition(10922), 32766);
  EXPECT_EQ(ScrollPosition(10923), std::nullopt);
}

}  // namespace
}  // namespace veldrin::browse
