// `Data1` on the screen: the counter of the list between buttons to its first, previous, next and last
// record.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "catalogue/record_list.h"

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
  QToolButton* MakeButton(const char* icon, const QString& tip);
  void Step(int position);
  QRect CaptionRect() const;

  catalogue::RecordList& Data1;
  QString TheCaption;
  QToolButton* First;
  QToolButton* Previous;
  QToolButton* Next;
  QToolButton* Last;
};

}  // namespace veldrin::browse
