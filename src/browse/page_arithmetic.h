// The movements on the thumbnail page: where the page begins and which of its cells stands for the current
// record, after each key. A page may begin at any record.
#pragma once

#include <optional>

namespace veldrin::browse {

constexpr int CellCount = 12;
constexpr int CellsPerRow = 3;

/// Where the user stands: the record in the first cell, counted from 0 in the list, and the cell of the
/// current record. So the current record is Start + Cell.
struct PagePlace {
  int Start = 0;
  int Cell = 0;
  int Position() const { return Start + Cell; }
  bool operator==(const PagePlace&) const = default;
};

/// From a place in a list of `count` records. Left and Right move the page by one record at its edge, Up and
/// Down by up to a row, and the cell stays the same; the page keys move by up to a page and go to cell 0.
/// Right never reaches the last record by scrolling: Down, Page Down and End do. A move that would pass
/// either end of the list does nothing.
PagePlace MoveRight(PagePlace place, int count);
PagePlace MoveLeft(PagePlace place);
PagePlace MoveDown(PagePlace place, int count);
PagePlace MoveUp(PagePlace place);
PagePlace MovePageDown(PagePlace place, int count);
PagePlace MovePageUp(PagePlace place);
/// Turns the page by rows, on or back, as far as the list goes; the cell stays the same.
PagePlace TurnRows(PagePlace place, int rows, int count);

/// The end of the list in the last cell, or in the cell of its own position in a list shorter than a page.
PagePlace LastPlace(int count);

/// The scroll bar counts rows in 16-bit integers.
constexpr int MaxScroll = 32767;

/// The largest value of the scroll bar for a list.
int ScrollMax(int count);
/// The position to which a drag of the scroll bar jumps; nothing where it passes 16 bits or the list.
std::optional<int> ScrollPosition(int value, int count);

}  // namespace veldrin::browse
