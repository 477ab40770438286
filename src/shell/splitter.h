// The splitter between the tree and the views: a thin button, and a bar that follows the pointer during a
// drag.
#pragma once

#include <QAbstractButton>
#include <QWidget>
#include <functional>

namespace veldrin::shell {

/// `bttnSplitter`. The panes don't move during the drag; the release hands the bar's place to `arrange`, in
/// twips.
class Splitter : public QAbstractButton {
 public:
  /// Both the button and the bar `picSplitter` belong to `window`, in whose width the bar moves.
  Splitter(QWidget* window, std::function<void(float)> arrange);

  /// In twips.
  void Place(double left, double top, double height);
  float Left() const { return static_cast<float>(TheLeft); }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  std::function<void(float)> Arrange;
  QWidget* picSplitter;
  bool SplitterDown = false;
  double TheLeft = 0;
  double BarLeft = 0;
};

}  // namespace veldrin::shell
