// The field in which a tree's label is edited, and what makes a tree use it.
#pragma once

#include <QLineEdit>
#include <QStyledItemDelegate>
#include <functional>

namespace veldrin::controls {

/// Keeps its keys to itself. Does not close itself: it tells that the edit is over.
class LabelEditor : public QLineEdit {
 public:
  /// `ended` is called with true at Enter and when the focus goes, with false at Esc.
  LabelEditor(QWidget* parent, std::function<void(bool keep)> ended);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  std::function<void(bool)> Ended;
};

/// Shows an editor over a label and leaves the rest to the editor and the tree.
class LabelDelegate : public QStyledItemDelegate {
 public:
  LabelDelegate(QObject* parent, std::function<QWidget*(QWidget* parent)> makeEditor);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject*, QEvent*) override { return false; }

 private:
  std::function<QWidget*(QWidget*)> MakeEditor;
};

}  // namespace veldrin::controls
