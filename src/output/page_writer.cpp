#include "output/page_writer.h"

#include "base/runtime_error.h"
#include "output/code_page.h"

namespace veldrin::output {

// The name goes first: it may be a link to another file. What can't be removed isn't written through.
PageWriter::PageWriter(const QString& path) : File(path) {
  QFile::remove(path);
  Require(File.open(QIODevice::WriteOnly | QIODevice::NewOnly));
}

void PageWriter::Print(const QString& line) {
  const QByteArray bytes = ToCodePage(line) + "\r\n";
  Require(File.write(bytes) == bytes.size());
}

void PageWriter::Print(const QStringList& lines) {
  for (const QString& line : lines) Print(line);
}

// The last lines may still be on their way, and some file systems tell only now that there is no room.
void PageWriter::Close() {
  Require(File.flush());
  File.close();
  Require(File.error() == QFileDevice::NoError);
}

void PageWriter::Require(bool done) const {
  if (done) return;
  throw base::RuntimeError(
      base::errPathFileAccess,
      QStringLiteral("Path/File access error: %1: %2").arg(File.fileName(), File.errorString()));
}

}  // namespace veldrin::output
