#include "controls/file_list.h"

#include <QDir>
#include <QMouseEvent>
#include <QRegularExpression>
#include <algorithm>

#include "base/runtime_error.h"
#include "controls/display_name.h"

namespace veldrin::controls {

namespace {

QRegularExpression WildcardsOf(const QString& pattern) {
  QStringList parts;
  for (const QString& part : pattern.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    parts << QRegularExpression::wildcardToRegularExpression(part.trimmed());
  }
  return QRegularExpression(parts.join(QLatin1Char('|')), QRegularExpression::CaseInsensitiveOption |
                                                              QRegularExpression::DotMatchesEverythingOption);
}

}  // namespace

FileListBox::FileListBox(QWidget* parent) : QListWidget(parent), ThePath(QDir::rootPath()) {
  setSelectionMode(ExtendedSelection);
  setUniformItemSizes(true);
  setSpacing(1);
  setTextElideMode(Qt::ElideMiddle);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  Refresh();
}

void FileListBox::SetPath(const QString& path) {
  if (path.isEmpty() || !QFileInfo(path).isDir()) {
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(path));
  }
  ThePath = path;
  Refresh();
  Q_EMIT PathChange();
}

void FileListBox::SetPattern(const QString& pattern) {
  ThePattern = pattern;
  Refresh();
  Q_EMIT PatternChange();
}

QString FileListBox::List(int index) const { return item(index)->data(Qt::UserRole).toString(); }

void FileListBox::Refresh() {
  const QRegularExpression wildcards = WildcardsOf(ThePattern);
  QStringList names = QDir(ThePath).entryList(QDir::Files, QDir::NoSort);
  names.removeIf([&](const QString& name) { return !wildcards.match(name).hasMatch(); });
  std::sort(names.begin(), names.end(), NameComesBefore);
  clear();
  for (const QString& name : names) {
    auto* entry = new QListWidgetItem(DisplayName(name), this);
    entry->setData(Qt::UserRole, name);
    entry->setToolTip(DisplayName(name));
  }
}

void FileListBox::mousePressEvent(QMouseEvent* event) {
  Before = CurrentState();
  QListWidget::mousePressEvent(event);
}

void FileListBox::mouseReleaseEvent(QMouseEvent* event) {
  QListWidget::mouseReleaseEvent(event);
  if (itemAt(event->pos()) != nullptr || CurrentState() != Before) Q_EMIT Click();
}

void FileListBox::keyPressEvent(QKeyEvent* event) {
  const State before = CurrentState();
  QListWidget::keyPressEvent(event);
  if (CurrentState() != before) Q_EMIT Click();
}

}  // namespace veldrin::controls
