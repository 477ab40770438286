// The file of one page.
#pragma once

#include <QFile>
#include <QStringList>

namespace veldrin::output {

/// Writes lines, each ended by CR LF, in the pages' character set. What stands under the name is replaced,
/// never written through. A page that is left without Close stays as far as it was written.
class PageWriter {
 public:
  /// Raises 75 where the page can't be made.
  explicit PageWriter(const QString& path);

  // Each raises 75 where the disk doesn't take what was written.
  void Print(const QString& line);
  void Print(const QStringList& lines);
  void Close();

 private:
  void Require(bool done) const;

  QFile File;
};

}  // namespace veldrin::output
