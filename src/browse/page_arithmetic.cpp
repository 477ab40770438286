#include "browse/page_arithmetic.h"

#include <algorithm>

namespace veldrin::browse {

namespace {

// How far the page can move on, up to `most`: until the last record stands in its last cell.
int StepsForward(PagePlace place, int count, int most) {
  return std::clamp(count - CellCount - place.Start, 0, most);
}

int StepsBack(PagePlace place, int most) { return std::min(place.Start, most); }

PagePlace Scrolled(PagePlace place, int steps) { return {place.Start + steps, place.Cell}; }

// A cell that shows no record can't be gone to.
PagePlace ToCell(PagePlace place, int cell, int count) {
  return place.Start + cell < count ? PagePlace{place.Start, cell} : place;
}

}  // namespace

PagePlace MoveRight(PagePlace place, int count) {
  if (place.Cell + 1 < CellCount) return ToCell(place, place.Cell + 1, count);
  return place.Position() + 1 < count - 1 ? Scrolled(place, 1) : place;
}

PagePlace MoveLeft(PagePlace place) {
  if (place.Cell > 0) return {place.Start, place.Cell - 1};
  return Scrolled(place, -StepsBack(place, 1));
}

PagePlace MoveDown(PagePlace place, int count) {
  if (place.Cell + CellsPerRow < CellCount) return ToCell(place, place.Cell + CellsPerRow, count);
  return Scrolled(place, StepsForward(place, count, CellsPerRow));
}

PagePlace MoveUp(PagePlace place) {
  if (place.Cell >= CellsPerRow) return {place.Start, place.Cell - CellsPerRow};
  return Scrolled(place, -StepsBack(place, CellsPerRow));
}

PagePlace MovePageDown(PagePlace place, int count) {
  return {place.Start + StepsForward(place, count, CellCount), 0};
}

PagePlace MovePageUp(PagePlace place) { return {place.Start - StepsBack(place, CellCount), 0}; }

PagePlace TurnRows(PagePlace place, int rows, int count) {
  const int most = rows * CellsPerRow;
  return Scrolled(place, rows > 0 ? StepsForward(place, count, most) : -StepsBack(place, -most));
}

PagePlace LastPlace(int count) {
  const int cell = std::min(count, CellCount) - 1;
  return {count - 1 - cell, cell};
}

int ScrollMax(int count) { return std::min(count / CellsPerRow, MaxScroll); }

std::optional<int> ScrollPosition(int value, int count) {
  const int position = value * CellsPerRow;
  return position > MaxScroll || position >= count ? std::nullopt : std::optional(position);
}

}  // namespace veldrin::browse
