#include "output/page_writer.h"

#include "output/code_page.h"

namespace veldrin::output {

void PageWriter::Print(const QString& line) {
  constexpr qsizetype block = 65'536;
  Buffer += ToCodePage(line);
  Buffer += "\r\n";
  if (Buffer.size() >= block) Flush();
}

void PageWriter::Print(const QStringList& lines) {
  for (const QString& line : lines) Print(line);
}

void PageWriter::Flush() {
  File.Write(Buffer.constData(), Buffer.size());
  Buffer.clear();
}

void PageWriter::Close() {
  Flush();
  File.PutInPlace();
}

}  // namespace veldrin::output
