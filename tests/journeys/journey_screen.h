// The main window as its user sees it.
#pragma once

#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <array>
#include <optional>

#include "browse/thumbnail_cells.h"
#include "controls/named.h"
#include "shell/main_window.h"

namespace veldrin::test {

/// A child by its name, which must be there.
template <class Control = QWidget>
Control& Child(const QObject& parent, const QString& name) {
  return controls::Get<Control>(parent, name);
}

/// What an image control shows; nothing for a hidden or empty one.
using Seen = std::optional<QRgb>;

struct CellOnScreen {
  bool Shown = false;
  QString Caption;
  Seen Picture;
  bool Marked = false;
};

struct Screen {
  int Tab = 0;
  bool Page = false;  ///< the thumbnails are shown
  QString Folder;     ///< the key of the selected one
  bool Naming = false;
  QString NameTyped;

  QString Counter;
  bool PreviewOn = false;
  Seen Preview;
  std::array<CellOnScreen, browse::CellCount> Cells;
  bool FrameShown = false;
  int Framed = -1;  ///< the cell in the frame; -1 for none
  int GridRow = -1;
  QString GridNumber, GridTitle;  ///< of the grid's current row
  QString FormNumber, FormCounter, FormTitle, FormMaker;
  Seen FormImage;

  int Position = -1;
  std::vector<int> List;      ///< the numbers of the list
  std::vector<int> Selected;  ///< and of those of its photos that are marked

  /// The number of the photo that the shown view points at; 0 for none.
  int Current() const;
  /// A photo's title as it is on the screen; null for one that isn't.
  QString TitleOf(int number) const;
};

class ScreenReader {
 public:
  explicit ScreenReader(shell::frmMain& window);

  Screen Read() const;
  /// What has the focus and can't be seen; empty when all is well.
  QString HiddenFocus() const;

  shell::frmMain& Window;
  controls::TreeView& Tree;
  browse::RecordGrid& Grid;
  QScrollBar& Scroll;
  QSlider& Slider;
  std::array<browse::PictureCell*, browse::CellCount> Cells{};
  std::array<browse::ThumbImage*, browse::CellCount> Images{};
  std::array<browse::ThumbCaption*, browse::CellCount> Captions{};
  std::array<QWidget*, browse::CellCount> Marks{};

 private:
  void ReadPage(Screen& screen) const;
  void ReadForm(Screen& screen) const;
};

}  // namespace veldrin::test
