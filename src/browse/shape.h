// A rectangle drawn behind a control: only the outer part of its border shows around the control.
#pragma once

#include <QColor>
#include <QWidget>

namespace veldrin::browse {

class Shape : public QWidget {
 public:
  /// `borderWidth` in pixels, half of it outside of the control; no more than `margin` pixels of that are
  /// drawn.
  Shape(int borderWidth, int margin, QColor color, QWidget* parent);

  QColor BorderColor() const { return Color; }
  void SetBorderColor(QColor color);

  /// Lies around the given control, behind it and its siblings.
  void Surround(const QWidget& control);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int Outer;
  QColor Color;
};

/// A colour of the form 0x00BBGGRR.
constexpr QColor FromBgr(unsigned bgr) {
  return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF),
                static_cast<int>(bgr >> 16 & 0xFF));
}

}  // namespace veldrin::browse
