// The twelve cells of the thumbnail page as controls: their places, their looks and their mouse
// events.
#pragma once

#include <QLabel>
#include <QMouseEvent>
#include <QWidget>
#include <array>
#include <functional>

#include "browse/page_arithmetic.h"
#include "browse/shape.h"
#include "controls/caption_label.h"
#include "pictures/picture.h"

namespace veldrin::browse {

/// A control that reports its mouse buttons.
template <class Base>
class MouseReporter : public Base {
 public:
  using Base::Base;
  std::function<void(QMouseEvent*)> MouseDown;
  std::function<void(QMouseEvent*)> MouseUp;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (MouseDown) MouseDown(event);
    event->accept();
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (MouseUp) MouseUp(event);
    event->accept();
  }
};

/// The box of a thumbnail; takes the focus. Its keys are its panel's.
class PictureCell : public MouseReporter<QWidget> {
 public:
  explicit PictureCell(QWidget* parent);
  std::function<void()> GotFocus;
  std::function<void()> LostFocus;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
};

using ThumbImage = MouseReporter<QLabel>;
using ThumbCaption = MouseReporter<controls::CaptionLabel>;

/// The colours in which the frames are drawn at the start.
constexpr QColor MarkDesignColor = FromBgr(0x00400000);
constexpr QColor DimmedColor = FromBgr(0x00808080);
constexpr QColor FocusColor = FromBgr(255);

/// The controls; they belong to the panel they are made on.
struct ThumbnailCells {
  explicit ThumbnailCells(QWidget& panel);

  std::array<PictureCell*, CellCount> picThumb{};
  std::array<ThumbImage*, CellCount> ImgThumb{};
  std::array<ThumbCaption*, CellCount> ThumbTitle{};
  std::array<Shape*, CellCount> shpMark{};
  Shape* shpThumb = nullptr;

  /// Hides a cell with its mark and empties its title.
  void Clear(int cell);
  /// Shows a thumbnail, fitted and centred, or an empty cell for an empty one.
  void ShowPicture(int cell, const pictures::Picture& thumbnail);
};

}  // namespace veldrin::browse
