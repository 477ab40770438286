// `Data1` on the screen: the counter of the list between buttons to its first, previous, next and last
// record.
#pragma once

#include <QWidget>
#include <array>

#include "catalogue/record_list.h"

class QToolButton;

namespace veldrin::browse {

class DataNavigator : public QWidget {
 public:
  DataNavigator(catalogue::RecordList& data1, QWidget* parent);

  QString Caption() const { return TheCaption; }
  void SetCaption(const QString& caption);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void First_Click() { MoveTo(0); }
  void Previous_Click() { MoveTo(Data1.AbsolutePosition() - 1); }
  void Next_Click() { MoveTo(Data1.AbsolutePosition() + 1); }
  void Last_Click() { MoveTo(Data1.RecordCount() - 1); }
  // Past either end of the list there is nowhere to go.
  void MoveTo(int position) { Data1.MoveNear(position); }
  QRect CaptionRect() const;

  catalogue::RecordList& Data1;
  QString TheCaption;
  std::array<QToolButton*, 4> Buttons{};
};

}  // namespace veldrin::browse
