// The file of one page.
#pragma once

#include <QByteArray>
#include <QStringList>

#include "desktop/new_file.h"

namespace veldrin::output {

/// Writes lines, each ended by CR LF, in the pages' character set. The page has its name from Close on, and
/// replaces what had it; one that is left without Close never comes to be.
class PageWriter {
 public:
  /// Raises 76, 61 or 75 where the page can't be made.
  explicit PageWriter(const QString& path) : File(path) {}

  // Each raises 61 or 75 where the disk doesn't take what was written.
  void Print(const QString& line);
  void Print(const QStringList& lines);
  void Close();

 private:
  void Flush();

  desktop::NewFile File;
  QByteArray Buffer;
};

}  // namespace veldrin::output
