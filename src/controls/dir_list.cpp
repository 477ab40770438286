#include "controls/dir_list.h"

#include <QDir>
#include <QIcon>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>

#include "base/runtime_error.h"
#include "controls/display_name.h"

namespace veldrin::controls {

namespace {

constexpr int PathRole = Qt::UserRole;
constexpr int DepthRole = Qt::UserRole + 1;
constexpr int IndentPixels = 12;

class IndentingDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem indented = option;
    indented.rect.adjust(IndentOf(index), 0, 0, 0);
    QStyledItemDelegate::paint(painter, indented, index);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(IndentOf(index), 0);
  }

 private:
  static int IndentOf(const QModelIndex& index) { return index.data(DepthRole).toInt() * IndentPixels; }
};

}  // namespace

DirListBox::DirListBox(QWidget* parent) : QListWidget(parent), ThePath(QDir::rootPath()) {
  setItemDelegate(new IndentingDelegate(this));
  connect(this, &QListWidget::itemDoubleClicked, this,
          [this](QListWidgetItem* item) { OpenEntry(row(item)); });
  Fill();
}

void DirListBox::SetPath(const QString& path) {
  const QString directory = QDir::cleanPath(QDir(path).absolutePath());
  if (path.isEmpty() || !QFileInfo(directory).isDir()) {
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(path));
  }
  ThePath = directory;
  Fill();
  Q_EMIT Change();
}

QString DirListBox::DirectoryAt(int row) const { return item(row)->data(PathRole).toString(); }

void DirListBox::Fill() {
  clear();
  const QString root = QDir::rootPath();
  AddEntry(root, root, 0, true);
  QString place = root;
  int depth = 0;
  for (const QString& name : ThePath.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
    place = QDir(place).filePath(name);
    AddEntry(place, name, ++depth, true);
  }
  const int opened = depth;
  QStringList names = QDir(ThePath).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
  std::sort(names.begin(), names.end(), NameComesBefore);
  for (const QString& name : names) AddEntry(QDir(ThePath).filePath(name), name, depth + 1, false);
  setCurrentRow(opened);
  // The open directory near the top, so that what is in it shows.
  scrollToItem(item(std::max(opened - 1, 0)), PositionAtTop);
}

void DirListBox::AddEntry(const QString& path, const QString& name, int depth, bool open) {
  const QIcon icon = QIcon::fromTheme(open ? QStringLiteral("folder-open") : QStringLiteral("folder"));
  auto* entry = new QListWidgetItem(icon, DisplayName(name), this);
  entry->setData(PathRole, path);
  entry->setData(DepthRole, depth);
}

void DirListBox::OpenEntry(int row) {
  try {
    SetPath(DirectoryAt(row));
  } catch (const base::RuntimeError&) {
    Fill();  // It went since the list was filled.
  }
}

void DirListBox::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || currentRow() < 0) return QListWidget::keyPressEvent(event);
  OpenEntry(currentRow());
}

}  // namespace veldrin::controls
