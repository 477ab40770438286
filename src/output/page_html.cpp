#include "output/page_html.h"

#include "output/page_names.h"

namespace veldrin::output {

namespace {

constexpr auto SmallType = R"(<font face="Arial" size="1">)";

// A table's cell of a width, with small type.
QString SmallCell(const char* width, const char* align, const QString& text) {
  return QStringLiteral(R"(<td width="%1"><p align="%2">)").arg(QLatin1String(width), QLatin1String(align)) +
         QLatin1String(SmallType) + text + QStringLiteral("</font></td>");
}

// The links between the pages are written with a backslash, which browsers take for a slash.
QString PageLink(bool gallery, int page, const char* caption) {
  return SmallCell("25%", "center",
                   QStringLiteral(R"(<a href=".\)") + PageName(gallery, page) + QStringLiteral("\">") +
                       QLatin1String(caption) + QStringLiteral("</a>"));
}

QString ImageLink(const QString& url, const QString& text) {
  return QStringLiteral("<a href=\"") + url + QStringLiteral("\">") + text + QStringLiteral("</a>");
}

}  // namespace

QStringList HeadLines(const QString& title, const QString& heading, const QString& line) {
  const QString titleLine = QStringLiteral("<title>") + title + QStringLiteral(" </title>");
  const QString headingLine = QStringLiteral(R"(<h2 align="center"><font face="Arial" color="#0000FF">)") +
                              heading + QStringLiteral("</font></h2>");
  return {QStringLiteral("<html>"),
          QStringLiteral("<head>"),
          titleLine,
          QStringLiteral("</head>"),
          QStringLiteral("<body>"),
          headingLine,
          line};
}

QString FolderLine(const QString& fullPath) {
  return QStringLiteral(R"(<p align="center"><font face="Arial">)") + fullPath +
         QStringLiteral("</font></p>");
}

// The link around the picture is left open: every browser ends it with the cell.
QString PictureCell(const PhotoEntry& photo) {
  return QStringLiteral(R"(<td width="25%"><p align="center"><a href=")") + photo.ImageUrl +
         QStringLiteral(R"("><img src = ")") + photo.ThumbUrl + QStringLiteral("\"></td>");
}

QString CaptionCell(const PhotoEntry& photo) {
  return SmallCell("25%", "center", photo.Number + QStringLiteral(": ") + photo.Row.Title);
}

QStringList ListHeadLines() {
  return {QStringLiteral(R"(<table border="1" width="100%">)"),
          QStringLiteral("<tr>"),
          SmallCell("8%", "center", QStringLiteral("Image")),
          SmallCell("30%", "center", QStringLiteral("Title")),
          SmallCell("12%", "center", QStringLiteral("Create Date")),
          SmallCell("10%", "center", QStringLiteral("Made By")),
          SmallCell("40%", "center", QStringLiteral("Description")),
          QStringLiteral("</tr>")};
}

QStringList ListRowLines(const PhotoEntry& photo) {
  return {QStringLiteral("<tr>"),
          SmallCell("8%", "center", ImageLink(photo.ImageUrl, photo.ImageName)),
          SmallCell("30%", "left", photo.Row.Title),
          SmallCell("12%", "left", photo.Row.CreateDate),
          SmallCell("10%", "left", photo.Row.MadeBy),
          SmallCell("40%", "left", photo.Row.Description),
          QStringLiteral("</tr>")};
}

QStringList NavigationLines(bool gallery, int page, int pages) {
  QStringList lines = {QStringLiteral(R"(<table border="0" width="100%">)"), QStringLiteral("<tr>")};
  if (page > 1) {
    lines << PageLink(gallery, 1, "FIRST PAGE") << PageLink(gallery, page - 1, "PREVIOUS PAGE");
  }
  if (page < pages) {
    lines << PageLink(gallery, page + 1, "NEXT PAGE") << PageLink(gallery, pages, "LAST PAGE");
  }
  lines << QStringLiteral("</tr>") << QStringLiteral("</table>");
  return lines;
}

}  // namespace veldrin::output
