#include "controls/label_editor.h"

#include <QKeyEvent>

namespace veldrin::controls {

LabelEditor::LabelEditor(QWidget* parent, std::function<void(bool keep)> ended)
    : QLineEdit(parent), Ended(std::move(ended)) {
  // The field hides the label below it.
  setAutoFillBackground(true);
}

void LabelEditor::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      event->accept();
      return Ended(true);
    case Qt::Key_Escape:
      event->accept();
      return Ended(false);
    default:
      QLineEdit::keyPressEvent(event);
      event->accept();
  }
}

void LabelEditor::keyReleaseEvent(QKeyEvent* event) {
  QLineEdit::keyReleaseEvent(event);
  event->accept();
}

void LabelEditor::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // A menu, also the field's own, gives the focus back.
  if (event->reason() != Qt::PopupFocusReason) Ended(true);
}

LabelDelegate::LabelDelegate(QObject* parent, std::function<QWidget*(QWidget* parent)> makeEditor)
    : QStyledItemDelegate(parent), MakeEditor(std::move(makeEditor)) {}

QWidget* LabelDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
  return MakeEditor(parent);
}

// To the edge of the tree: a name may be longer than the one it replaces.
void LabelDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
  QStyledItemDelegate::updateEditorGeometry(editor, option, index);
  const int width = editor->parentWidget()->width() - editor->x();
  editor->resize(std::max(editor->width(), width), editor->height());
}

}  // namespace veldrin::controls
