// The list of directories: from the root down to the open directory, each a step further in, then the
// directories within it. A double click or Enter opens one.
#pragma once

#include <QListWidget>

namespace veldrin::controls {

class DirListBox : public QListWidget {
  Q_OBJECT

 public:
  /// Opens on the root.
  explicit DirListBox(QWidget* parent = nullptr);

  /// The open directory, absolute, without a separator at its end unless it is the root.
  const QString& Path() const { return ThePath; }
  /// Opens a directory and emits Change. Raises 76 when there is none at the path.
  void SetPath(const QString& path);

  /// The directory that an entry stands for.
  QString DirectoryAt(int row) const;

 Q_SIGNALS:
  /// A directory was opened.
  void Change();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Fill();
  void AddEntry(const QString& path, const QString& name, int depth, bool open);
  void OpenEntry(int row);

  QString ThePath;
};

}  // namespace veldrin::controls
