#include "controls/caption_label.h"

#include <QPainter>
#include <QStyle>

namespace veldrin::controls {

CaptionLabel::CaptionLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

void CaptionLabel::SetCaption(const QString& caption) {
  setText(caption);
  SetToolTip();
}

void CaptionLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  SetToolTip();
}

void CaptionLabel::SetToolTip() {
  const bool cut = fontMetrics().horizontalAdvance(text()) > Room().width();
  // As rich text the tool tip would show a title's "<" as markup.
  setToolTip(cut ? QStringLiteral("<qt>%1</qt>").arg(text().toHtmlEscaped()) : QString());
}

QRect CaptionLabel::Room() const { return contentsRect().adjusted(margin(), 0, -margin(), 0); }

void CaptionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawFrame(&painter);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, Room().width());
  style()->drawItemText(&painter, Room(), static_cast<int>(alignment()) | Qt::TextSingleLine, palette(),
                        isEnabled(), shown, foregroundRole());
}

}  // namespace veldrin::controls
