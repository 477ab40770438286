// The pages in a real browser: every picture shows and every link leads somewhere, from wherever the
// directory is put.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <filesystem>

#include "output/page_names.h"
#include "output/pages_fixture.h"

namespace veldrin::output {
namespace {

using test::FakeForm;
using test::WriteFile;

constexpr int Photos = 60;
constexpr int GalleryPages = 5;
constexpr int ListPages = 3;

class PagesInBrowser : public test::PagesTest {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable(QStringLiteral("chromium")).isEmpty())
      GTEST_SKIP() << "there is no Chromium here";
  }

  QByteArray Run(const QString& task, const QString& page) {
    QProcess browser;
    browser.start(
        QStringLiteral("chromium"),
        {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"), QStringLiteral("--disable-gpu"),
         QStringLiteral("--disable-dev-shm-usage"), QStringLiteral("--allow-file-access-from-files"),
         QStringLiteral("--virtual-time-budget=10000"), QStringLiteral("--window-size=900,900"),
         QStringLiteral("--user-data-dir=") + Profile.path(), task,
         QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded)});
    EXPECT_TRUE(browser.waitForFinished(120'000)) << browser.errorString().toStdString();
    return browser.readAllStandardOutput();
  }

  // What stands on pages of a directory: "<width of the picture> <its address>", or "link <its address>".
  QStringList Look(const QString& directory, bool gallery, int pages) {
    QStringList names;
    for (int page = 1; page <= pages; ++page) names << PageName(gallery, page);
    const QString looker = directory + QStringLiteral("/look.htm");
    WriteFile(looker, QStringLiteral(R"(<html><body><pre>begin
</pre><script>
const told = document.querySelector('pre');
for (const page of '%1'.split(' ')) {
  const frame = document.body.appendChild(document.createElement('iframe'));
  frame.onload = () => {
    for (const img of frame.contentDocument.images) told.append(img.naturalWidth + ' ' + img.src + '\n');
    for (const link of frame.contentDocument.links) told.append('link ' + link.href + '\n');
  };
  frame.src = page;
}
</script></body></html>)")
                          .arg(names.join(QLatin1Char(' ')))
                          .toUtf8());
    const QString dom = QString::fromUtf8(Run(QStringLiteral("--dump-dom"), looker));
    QFile::remove(looker);
    const qsizetype begin = dom.indexOf(QLatin1String("begin\n")) + 6;
    return dom.mid(begin, dom.indexOf(QLatin1String("</pre>")) - begin)
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  }

  // Pictures and links, and that all are there, below one of the directories.
  void ExpectWhole(const QStringList& lines, const QStringList& below, qsizetype pictures, qsizetype links) {
    QMap<bool, qsizetype> counts;
    for (const QString& line : lines) {
      const bool isLink = line.startsWith(QLatin1String("link "));
      ++counts[isLink];
      const QString file = QUrl(line.section(QLatin1Char(' '), 1)).toLocalFile();
      EXPECT_NE(line.section(QLatin1Char(' '), 0, 0), QStringLiteral("0"))
          << "not shown: " << file.toStdString();
      EXPECT_TRUE(QFile::exists(file)) << line.toStdString();
      EXPECT_TRUE(std::any_of(below.begin(), below.end(), [&](const auto& dir) {
        return file.startsWith(dir);
      })) << line.toStdString();
    }
    EXPECT_EQ(counts[false], pictures);
    EXPECT_EQ(counts[true], links);
  }

  // A picture of a page, for people.
  void TakePicture(const QString& page) {
    const QString directory = QCoreApplication::applicationDirPath() + QStringLiteral("/pages");
    QDir().mkpath(directory);
    const QString picture =
        directory + QLatin1Char('/') + QFileInfo(page).baseName() + QStringLiteral(".png");
    Run(QStringLiteral("--screenshot=") + picture, page);
    EXPECT_FALSE(QImage(picture).isNull()) << picture.toStdString();
  }

  QTemporaryDir Profile;
};

TEST_F(PagesInBrowser, ShowEveryPictureAndFollowEveryLink) {
  AddPhotos(Photos);
  for (int id = 1; id <= Photos; ++id) {
    test::WritePicture(ImageOf(id), {320, 240}, QColor::fromHsv(id * 5, 200, 200));
    QFile::remove(ThumbOf(id));
  }
  SelectLastFirst(Photos);
  // A name with a blank and a letter beyond ASCII.
  Web.WebDir = Catalogue.ProgramPath() + QStringLiteral("/Wéb pages");
  MakeWebDirs();
  FakeForm gallery;
  MakeWeb(gallery, true);
  FakeForm list;
  MakeWeb(list, false);
  const QString moved = Catalogue.ProgramPath() + QStringLiteral("/moved");
  std::filesystem::rename(Web.WebDir.toStdString(), moved.toStdString());
  ExpectWhole(Look(moved, true, GalleryPages), {moved}, Photos, Photos + 2 + 3 * 4 + 2);
  ExpectWhole(Look(moved, false, ListPages), {moved}, 0, Photos + 2 + 4 + 2);
  const catalogue::Paths& paths = Catalogue.Paths();
  FakeForm report;
  report.Gallery = 1;
  Pages.MakeReport(report);
  ExpectWhole(Look(paths.TempDir, true, GalleryPages), {paths.TempDir, paths.ImageDir}, Photos,
              Photos + 2 + 3 * 4 + 2);
  for (const bool thumbnails : {true, false}) TakePicture(moved + QLatin1Char('/') + PageName(thumbnails, 2));
}

}  // namespace
}  // namespace veldrin::output
