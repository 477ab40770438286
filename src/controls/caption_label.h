// A label of one line that ends in dots where its text is too long, and tells the whole in a tool tip then.
#pragma once

#include <QLabel>

namespace veldrin::controls {

class CaptionLabel : public QLabel {
 public:
  explicit CaptionLabel(QWidget* parent);

  QString Caption() const { return text(); }
  void SetCaption(const QString& caption);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void SetToolTip();
  QRect Room() const;
};

}  // namespace veldrin::controls
