// The pages in a real browser: every picture shows and every link leads somewhere, from wherever the
// directory is put.
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <filesystem>

#include "output/output_fixture.h"
#include "output/page_names.h"

namespace veldrin::output {
namespace {

using test::FakeForm;
using test::WriteFile;

class PagesInBrowser : public test::OutputTest {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable("chromium").isEmpty()) GTEST_SKIP() << "there is no Chromium here";
  }

  QByteArray DomOf(const QString& page) {
    QProcess browser;
    browser.start("chromium", {"--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                               "--allow-file-access-from-files", "--virtual-time-budget=10000",
                               "--window-size=900,900", QStringLiteral("--user-data-dir=") + Profile.path(),
                               "--dump-dom", QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded)});
    EXPECT_TRUE(browser.waitForFinished(120'000)) << browser.errorString().toStdString();
    return browser.readAllStandardOutput();
  }

  // What stands on pages of a directory: "<width of the picture> <its address>", or "link <its address>".
  QStringList Look(const QString& directory, int pages) {
    QStringList names;
    for (int page = 1; page <= pages; ++page) names << PageName(true, page);
    const QString looker = directory + "/look.htm";
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
    const QString dom = QString::fromUtf8(DomOf(looker));
    QFile::remove(looker);
    const qsizetype begin = dom.indexOf(QLatin1String("begin\n")) + 6;
    return dom.mid(begin, dom.indexOf(QLatin1String("</pre>")) - begin)
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  }

  QTemporaryDir Profile;
};

TEST_F(PagesInBrowser, ShowEveryPictureAndFollowEveryLink) {
  constexpr int photos = 30;
  AddPhotos(photos);
  for (int id = 1; id <= photos; ++id) {
    test::WritePicture(ImageOf(id), {320, 240}, QColor::fromHsv(id * 6, 200, 200));
    QFile::remove(ThumbOf(id));
  }
  SelectLastFirst(photos);
  // A name with a blank and a letter beyond ASCII.
  Web.WebDir = Catalogue.ProgramPath() + "/Wéb pages";
  MakeWebDirs();
  FakeForm gallery(true);
  Pages.MakeWeb(gallery);
  const QString moved = Catalogue.ProgramPath() + "/moved";
  std::filesystem::rename(Web.WebDir.toStdString(), moved.toStdString());
  QMap<bool, int> counts;
  for (const QString& line : Look(moved, 3)) {
    ++counts[line.startsWith("link ")];
    EXPECT_FALSE(line.startsWith("0 ")) << "not shown: " << line.toStdString();
    const QString file = QUrl(line.section(' ', 1)).toLocalFile();
    EXPECT_TRUE(QFile::exists(file) && file.startsWith(moved)) << line.toStdString();
  }
  EXPECT_EQ(counts[false], photos);
  EXPECT_EQ(counts[true], photos + 2 + 4 + 2);
}

}  // namespace
}  // namespace veldrin::output
