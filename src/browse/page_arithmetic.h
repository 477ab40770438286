// The movements on the thumbnail page: which record becomes current and where the page begins, for each key.
// A page may begin at any record.
#pragma once

#include <optional>

namespace veldrin::browse {

constexpr int CellCount = 12;
constexpr int CellsPerRow = 3;

/// What a key does on the page. Positions count from 0 in the list, cells from 0 on the page.
struct PageMove {
  struct Scroll {
    int Position = 0;  ///< the record that becomes current
    int Start = 0;     ///< the record in cell 0
    bool operator==(const Scroll&) const = default;
  };
  std::optional<Scroll> Page;  ///< nothing when the page stays
  int Target = 0;              ///< the cell that gets the focus
  bool operator==(const PageMove&) const = default;
};

/// The focus in `cell`, the current record at `position` of `count`. Left and Right move a page by one record
/// at its edge, Up and Down by up to a row, and the cell stays the same; the page keys move by up to a page
/// and go to cell 0. Right never reaches the last record by scrolling: Down, Page Down and End do. A Down
/// that would pass the last record does nothing.
PageMove MoveRight(int cell, int position, int count);
PageMove MoveLeft(int cell, int position);
PageMove MoveDown(int cell, int position, int count);
PageMove MoveUp(int cell, int position);
PageMove MovePageDown(int cell, int position, int count);
PageMove MovePageUp(int cell, int position);

/// The cell in which the last record of a list stands when the list ends with it: the last one, or its own
/// position in a list shorter than a page.
int LastCell(int count);

/// The scroll bar counts rows in 16-bit integers.
constexpr int MaxScroll = 32767;

/// The largest value of the scroll bar for a list.
int ScrollMax(int count);
/// The position to which a drag of the scroll bar jumps; nothing where it passes 16 bits.
std::optional<int> ScrollPosition(int value);

}  // namespace veldrin::browse
