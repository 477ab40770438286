#include "controls/tree_view.h"

#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "base/runtime_error.h"
#include "controls/entry_field.h"

namespace veldrin::controls {

namespace {

// Qt draws the state On for an open branch. The theme's small folders are line drawings; the coloured ones
// are made for larger sizes and scale down well.
QIcon FolderIcon() {
  constexpr int Size = 64;
  QIcon icon;
  icon.addPixmap(QIcon::fromTheme(QStringLiteral("folder")).pixmap(Size), QIcon::Normal, QIcon::Off);
  icon.addPixmap(QIcon::fromTheme(QStringLiteral("folder-open")).pixmap(Size), QIcon::Normal, QIcon::On);
  return icon;
}

}  // namespace

Node::Node(const QString& text, int index) : QTreeWidgetItem(QStringList(text)), TheIndex(index) {
  setFlags(flags() | Qt::ItemIsEditable);
}

QVariant Node::data(int column, int role) const {
  static const QVariant icon = FolderIcon();
  return role == Qt::DecorationRole ? icon : QTreeWidgetItem::data(column, role);
}

void Node::Append(Node* child) {
  child->Row = Children();
  addChild(child);
}

// Qt asks for writable items where it only compares them.
Node* Node::Sibling(int offset) const {
  const Node* parent = Parent();
  if (parent == nullptr) return nullptr;
  // Looked for only when siblings in front have gone: a walk along thousands would look through all of them.
  if (parent->child(Row) != this) Row = parent->indexOfChild(const_cast<Node*>(this));
  return static_cast<Node*>(parent->child(Row + offset));
}

Node* Node::Next() const { return Sibling(1); }
Node* Node::Previous() const { return Sibling(-1); }

Node* Node::FirstSibling() const { return Parent() == nullptr ? const_cast<Node*>(this) : Parent()->Child(); }

Node* Node::LastSibling() const {
  const Node* parent = Parent();
  if (parent == nullptr) return const_cast<Node*>(this);
  return static_cast<Node*>(parent->child(parent->Children() - 1));
}

QString Node::FullPath() const {
  return Parent() == nullptr ? Text() : Parent()->FullPath() + QLatin1Char('\\') + Text();
}

bool Node::IsBelow(const Node& node) const {
  for (const Node* above = Parent(); above != nullptr; above = above->Parent()) {
    if (above == &node) return true;
  }
  return false;
}

void Node::SetGrey(bool grey) {
  Grey = grey;
  setForeground(0, grey ? QBrush(QColor::fromRgb(GreyNodeColor)) : QBrush());
}

TreeView::TreeView(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setColumnCount(1);
  setUniformRowHeights(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTextElideMode(Qt::ElideRight);
  setIconSize(QSize(18, 18));
  setIndentation(16);  // "!UNORGANIZED" fits below a top-level folder in the pane as designed.
  setItemDelegate(new LabelDelegate(this, [this](QWidget* viewport) { return MakeEditor(viewport); }));
  // The selected node is always seen.
  connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) {
    auto* node = static_cast<Node*>(item);
    if (SelectedItem() == nullptr || !SelectedItem()->IsBelow(*node)) return;
    Select(node);
    Q_EMIT NodeClick(node);
  });
}

// Before the base class hides the tree: an editor that loses the focus then would find it half gone.
TreeView::~TreeView() { EndLabelEdit(false); }

Node* TreeView::Make(const QString& text) {
  auto* node = new Node(text, Count() + 1);
  Nodes.push_back(node);
  return node;
}

Node* TreeView::Add(Node* relative, const QString& text) {
  Node* node = Make(text);
  if (relative == nullptr) {
    addTopLevelItem(node);
  } else {
    relative->Append(node);
  }
  return node;
}

Node* TreeView::MakeCopy(const Node& source) {
  Node* copy = Make(source.Text());
  for (const Node* child = source.Child(); child != nullptr; child = child->Next()) {
    copy->Append(MakeCopy(*child));
  }
  return copy;
}

// The view hears of the whole subtree at once.
Node* TreeView::AddCopy(Node* relative, const Node& source) {
  Node* copy = MakeCopy(source);
  relative->Append(copy);
  return copy;
}

void TreeView::Remove(Node* node) {
  EndLabelEdit(false);
  Node* parent = node->Parent();
  const Node* selected = SelectedItem();
  const bool selectionGoes = selected != nullptr && (selected == node || selected->IsBelow(*node));
  if (selectionGoes && parent != nullptr) Select(parent);
  Forget(node);
  delete node;
  Renumber();
}

void TreeView::Forget(Node* node) {
  for (int i = 0; i < node->Children(); ++i) Forget(static_cast<Node*>(node->child(i)));
  Q_EMIT NodeRemoved(node);
  Nodes[node->Index() - 1] = nullptr;
}

void TreeView::Renumber() {
  std::erase(Nodes, nullptr);
  for (size_t i = 0; i < Nodes.size(); ++i) Nodes[i]->TheIndex = static_cast<int>(i) + 1;
}

Node* TreeView::NodeAt(int index) const {
  if (index < 1 || index > Count()) {
    throw base::RuntimeError(base::errSubscriptOutOfRange, QStringLiteral("Index out of bounds."));
  }
  return Nodes[index - 1];
}

void TreeView::Select(Node* node) {
  setCurrentItem(node);
  if (Filling) return;
  for (Node* parent = node->Parent(); parent != nullptr; parent = parent->Parent()) parent->setExpanded(true);
  scrollToItem(node);
}

void TreeView::SetFilling(bool filling) {
  Filling = filling;
  setUpdatesEnabled(!filling);
}

// --- label editing ----------------------------------------------------------------------------------------

void TreeView::StartLabelEdit(const QString& text) {
  if (Editor != nullptr || SelectedItem() == nullptr) return;
  scrollToItem(SelectedItem());
  editItem(SelectedItem());
  if (Editor == nullptr || text.isEmpty()) return;
  Editor->setText(text);
  Editor->selectAll();
}

QWidget* TreeView::MakeEditor(QWidget* parent) {
  Editor = new LabelEditor(parent, [this](bool keep) {
    EndLabelEdit(keep);
    if (!keep) Q_EMIT LabelEditCancelled();
  });
  LimitText(*Editor, MaxLabelLength);
  return Editor;
}

bool TreeView::EndLabelEdit(bool keep) {
  if (Editor == nullptr) return true;
  QString newString = Editor->text();
  const QPersistentModelIndex edited = currentIndex();
  // Closed before anything is told: what follows may show a box or take the focus elsewhere, and a field that
  // is still there would end its edit a second time.
  TreeView::closeEditor(Editor, QAbstractItemDelegate::NoHint);
  if (!keep) return true;
  bool cancel = false;
  Q_EMIT AfterLabelEdit(cancel, newString);
  if (!cancel && edited.isValid()) itemFromIndex(edited)->setText(0, newString);
  return Editor == nullptr;
}

// Also called by the base class, for an edit whose node it leaves.
void TreeView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint) {
  if (editor == Editor) Editor = nullptr;
  QTreeWidget::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

// --- mouse and keyboard -----------------------------------------------------------------------------------

QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
  const auto flags = QTreeWidget::selectionCommand(index, event);
  return flags.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : flags;
}

void TreeView::mousePressEvent(QMouseEvent* event) {
  // A press takes the focus and so ends an edit. One that has the focus again was refused: it goes on.
  const bool refused = Editor != nullptr && window()->focusWidget() == Editor;
  if (refused || !EndLabelEdit()) return event->accept();
  const Node* before = SelectedItem();
  const QPoint point = event->pos();
  const bool onNode = [&] {
    const Node* node = HitTest(point);
    return node != nullptr && visualItemRect(node).contains(point);
  }();
  Q_EMIT MouseDown(event->button(), point);
  if (event->button() == Qt::RightButton) return event->accept();
  QTreeWidget::mousePressEvent(event);
  // A press on the arrow of a branch opens it and selects nothing.
  if (SelectedItem() != nullptr && (onNode || SelectedItem() != before)) Q_EMIT NodeClick(SelectedItem());
}

// A press that moves on selects no further nodes: what it passes isn't clicked.
void TreeView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) QTreeWidget::mouseMoveEvent(event);
}

void TreeView::keyPressEvent(QKeyEvent* event) {
  const Node* before = SelectedItem();
  QTreeWidget::keyPressEvent(event);
  if (SelectedItem() != nullptr && SelectedItem() != before) Q_EMIT NodeClick(SelectedItem());
}

}  // namespace veldrin::controls
