// The tree control and its nodes.
#pragma once

#include <QPointer>
#include <QTreeWidget>
#include <vector>

#include "controls/label_editor.h"

namespace veldrin::controls {

class TreeView;

/// The longest label that can be typed, in characters.
constexpr int MaxLabelLength = 255;

/// The grey of a node that is cut, and the normal colour.
constexpr QRgb GreyNodeColor = 0xFF808080;

/// One node. Its Index is its place in the order of making, from 1; the root's is 1.
class Node : public QTreeWidgetItem {
 public:
  int Index() const { return TheIndex; }
  QString Text() const { return QTreeWidgetItem::text(0); }
  void SetText(const QString& text) { QTreeWidgetItem::setText(0, text); }
  const QString& Tag() const { return TheTag; }
  void SetTag(const QString& tag) { TheTag = tag; }

  /// Null for the root.
  Node* Parent() const { return static_cast<Node*>(QTreeWidgetItem::parent()); }
  int Children() const { return QTreeWidgetItem::childCount(); }
  /// The first child; null without children.
  Node* Child() const { return static_cast<Node*>(QTreeWidgetItem::child(0)); }
  /// Siblings; null past either end.
  Node* Next() const;
  Node* Previous() const;
  Node* FirstSibling() const;
  Node* LastSibling() const;

  /// The texts from the root down to the node, joined by backslashes.
  QString FullPath() const;
  bool IsBelow(const Node& node) const;

  bool IsGrey() const { return Grey; }
  void SetGrey(bool grey);

 private:
  friend class TreeView;
  Node(const QString& text, int index);
  // All nodes have the one icon; a value of its own in each would cost as much as all else of a node.
  QVariant data(int column, int role) const override;
  void Append(Node* child);
  Node* Sibling(int offset) const;

  int TheIndex;
  mutable int Row = 0;  ///< the place among the siblings, as far as known
  QString TheTag;
  bool Grey = false;
};

/// A single-selection tree. Nodes belong to it.
class TreeView : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TreeView(QWidget* parent = nullptr);
  ~TreeView() override;

  /// Adds a last child of `relative`, or the root when it is null.
  Node* Add(Node* relative, const QString& text);
  /// Adds a copy of a subtree, its texts only, as the last child of `relative`, which stands outside of it. A
  /// node's copy is made before those of its children.
  Node* AddCopy(Node* relative, const Node& source);
  /// Removes a node and its subtree and renumbers the others. When the selection goes with it, the parent of
  /// the removed node is selected. An edit that is open is taken back.
  void Remove(Node* node);

  int Count() const { return static_cast<int>(Nodes.size()); }
  /// By index, from 1; 9 out of range.
  Node* NodeAt(int index) const;
  Node* Root() const { return Nodes.empty() ? nullptr : Nodes.front(); }

  Node* SelectedItem() const { return static_cast<Node*>(currentItem()); }
  /// Selects without an event; the node becomes visible, its collapsed ancestors open.
  void Select(Node* node);
  /// While true Select does not open branches: for filling the tree.
  void SetFilling(bool filling);

  /// Opens the selected node's label for editing; Enter and the loss of the focus keep what was typed, Esc
  /// takes it back. A text that is given stands there instead of the label.
  void StartLabelEdit(const QString& text = {});
  /// Ends an edit as the loss of the focus does, or takes it back. False when AfterLabelEdit opened another.
  bool EndLabelEdit(bool keep = true);

  /// The node under a point of the viewport; null where there is none.
  Node* HitTest(const QPoint& point) const { return static_cast<Node*>(itemAt(point)); }

 Q_SIGNALS:
  /// A mouse button went down; the selection is still the one before.
  void MouseDown(Qt::MouseButton button, const QPoint& point);
  /// The user selected a node by mouse or keyboard, clicked the one that was selected, or collapsed a branch
  /// over it, whose top is selected then.
  void NodeClick(veldrin::controls::Node* node);
  /// An edit of the selected node's label was kept. The label becomes NewString unless Cancel is set.
  void AfterLabelEdit(bool& Cancel, QString& NewString);
  /// The user took an edit of the selected node's label back.
  void LabelEditCancelled();
  /// The node is about to go, for each node of a removed subtree, whose nodes are not to be asked for.
  void NodeRemoved(const veldrin::controls::Node* node);

 protected:
  /// There always is a selected node: Ctrl takes none away.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  QWidget* MakeEditor(QWidget* parent);
  Node* Make(const QString& text);
  Node* MakeCopy(const Node& source);
  void Renumber();
  void Forget(Node* node);

  std::vector<Node*> Nodes;
  bool Filling = false;
  QPointer<LabelEditor> Editor;  ///< while a label is edited
};

}  // namespace veldrin::controls
