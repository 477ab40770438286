// The dragging of one control to another within the program.
#pragma once

#include <QLabel>
#include <memory>

class QMimeData;

namespace veldrin::records {

/// What is dragged with a control: its name, for this run of the program only.
std::unique_ptr<QMimeData> MakeControlDrag(const QWidget& source);

/// The name of the control that is dragged; empty for any other drag.
QString DraggedControl(const QMimeData& data);

/// Drags a control, with a picture at the pointer, until the button is released.
void DragControl(QWidget& source, const QPixmap& picture);

/// A picture that takes drops of controls; it lights up while one hovers over it. Other drags it refuses.
class DropTarget : public QLabel {
  Q_OBJECT

 public:
  explicit DropTarget(QWidget* parent = nullptr);

 Q_SIGNALS:
  void DragDrop(const QString& source);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void SetHovered(bool hovered);

  bool Hovered = false;
};

}  // namespace veldrin::records
