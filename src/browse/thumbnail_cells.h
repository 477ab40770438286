// The twelve cells of the thumbnail page as controls: their places, their looks and their mouse and key
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

namespace veldrin::browse {

/// The box of a thumbnail; takes the focus.
class PictureCell : public QWidget {
  Q_OBJECT

 public:
  explicit PictureCell(QWidget* parent);

 Q_SIGNALS:
  void GotFocus();
  void LostFocus();
  /// A key that went down here went up; not sent while a held key repeats.
  void KeyUp(int key);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  int PressedKey = 0;
};

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

  void HideFrames();
  /// Hides a cell and empties its title.
  void Clear(int cell);
  /// Shows a thumbnail at its fitted size in twips, centred.
  void ShowPicture(int cell, const QImage& thumbnail, int width, int height);
};

}  // namespace veldrin::browse
