#include "browse/page_arithmetic.h"

#include <algorithm>

namespace veldrin::browse {

namespace {

// How far a page can move on, up to `most`, until the last record stands in its last cell. A page that is
// short already never meets that test and answers `most`.
int StepsForward(int cell, int position, int count, int most) {
  for (int i = 1; i <= most; ++i) {
    if (CellCount - 1 - cell + position + i == count) return i - 1;
  }
  return most;
}

int StepsBack(int cell, int position, int most) { return std::clamp(position - cell, 0, most); }

}  // namespace

PageMove MoveRight(int cell, int position, int count) {
  if (cell + 1 < CellCount) return {{}, cell + 1};
  if (position + 1 >= count - 1) return {{}, cell};
  return {PageMove::Scroll{position + 1, position + 1 - cell}, cell};
}

PageMove MoveLeft(int cell, int position) {
  if (cell > 0) return {{}, cell - 1};
  if (position < 1) return {{}, cell};
  return {PageMove::Scroll{position - 1, position - 1}, cell};
}

PageMove MoveDown(int cell, int position, int count) {
  if (cell + CellsPerRow < CellCount) return {{}, cell + CellsPerRow};
  const int steps = StepsForward(cell, position, count, CellsPerRow);
  if (steps == 0 || position + steps >= count) return {{}, cell};
  return {PageMove::Scroll{position + steps, position + steps - cell}, cell};
}

PageMove MoveUp(int cell, int position) {
  if (cell >= CellsPerRow) return {{}, cell - CellsPerRow};
  const int steps = StepsBack(cell, position, CellsPerRow);
  if (steps == 0) return {{}, cell};
  return {PageMove::Scroll{position - steps, position - steps - cell}, cell};
}

PageMove MovePageDown(int cell, int position, int count) {
  const int steps = StepsForward(cell, position, count, CellCount);
  if (steps == 0 || position + steps >= count) return {};
  return {PageMove::Scroll{position + steps - cell, position + steps - cell}, 0};
}

PageMove MovePageUp(int cell, int position) {
  const int steps = StepsBack(cell, position, CellCount);
  if (steps == 0) return {};
  return {PageMove::Scroll{position - cell - steps, position - cell - steps}, 0};
}

int LastCell(int count) { return std::min(count, CellCount) - 1; }

int ScrollMax(int count) { return std::min(count / CellsPerRow, MaxScroll); }

std::optional<int> ScrollPosition(int value) {
  const int position = value * CellsPerRow;
  return position > MaxScroll ? std::nullopt : std::optional(position);
}

}  // namespace veldrin::browse
