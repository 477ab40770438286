// `picNew`: the preview of a file that is to be stored, from which it is dragged.
#pragma once

#include <QFrame>
#include <QLabel>

#include "catalogue/image_store.h"

namespace veldrin::records {

class NewImageBox : public QFrame {
  Q_OBJECT

 public:
  explicit NewImageBox(QWidget* parent = nullptr);

  /// The room in twips for a picture; less for one of several files, which leaves a margin for the mark.
  pictures::TwipSize Room(bool multi) const;

  /// Shows the picture as large as the room allows. `multi` adds the mark of several files, `crossed` the
  /// cross of a file that isn't selected.
  void ShowImage(const pictures::Picture& picture, bool multi, bool crossed);
  void HideImage();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Drag();

  QLabel* ImgNew;
  QLabel* ImageNew;
  QLabel* ImageCross;
  QPoint PressedAt;
};

}  // namespace veldrin::records
