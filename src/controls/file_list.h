// The list of a directory's files, of which several may be selected.
#pragma once

#include <QListWidget>

namespace veldrin::controls {

class FileListBox : public QListWidget {
  Q_OBJECT

 public:
  explicit FileListBox(QWidget* parent = nullptr);

  const QString& Path() const { return ThePath; }
  /// Lists another directory. Raises 76 when there is none at the path.
  void SetPath(const QString& path);

  /// Wildcards joined by ";", matched without regard to case.
  const QString& Pattern() const { return ThePattern; }
  void SetPattern(const QString& pattern);

  int ListCount() const { return count(); }
  /// A file's true name; the list shows it in one line.
  QString List(int index) const;
  bool Selected(int index) const { return item(index)->isSelected(); }
  /// The current file, which was clicked or reached last; -1 without one.
  int ListIndex() const { return currentRow(); }

  /// Reads the directory anew; nothing is selected then.
  void Refresh();

 Q_SIGNALS:
  /// The user clicked a file or moved to one by key, or changed the selection.
  void Click();
  void PathChange();
  void PatternChange();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct State {
    int Current;
    QModelIndexList Selection;
    bool operator==(const State&) const = default;
  };
  State CurrentState() const { return {currentRow(), selectedIndexes()}; }

  QString ThePath;
  QString ThePattern = QStringLiteral("*");
  State Before{-1, {}};  ///< when the mouse button went down
};

}  // namespace veldrin::controls
