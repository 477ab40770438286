// A catalogue of small photos, and a form that counts them and can stop a run at any.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>

#include "catalogue/image_store.h"
#include "engine/sql_dialect.h"
#include "output/web_pages.h"
#include "support/test_support.h"

namespace veldrin::test {

/// The paths of all files and links below a directory, in order.
inline QStringList FilesBelow(const QString& directory) {
  QStringList files;
  QDirIterator entries(directory, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
  while (entries.hasNext()) files << QDir(directory).relativeFilePath(entries.next());
  files.sort();
  return files;
}

class FakeForm : public output::ProgressForm {
 public:
  FakeForm() { Progress = true; }

  float ProgressValue() const override { return Value; }
  void SetProgressValue(float value) override { Value = value; }
  void SetPercent(const QString& caption) override { Percents << caption; }
  void DoEvents() override {
    if (AtPhoto) AtPhoto(static_cast<int>(Percents.size()));
    if (Percents.size() == StopAt) Progress = false;
  }
  void Unload() override { ++Unloaded; }

  int StopAt = 0;                    ///< the photo after which the run is stopped
  std::function<void(int)> AtPhoto;  ///< what else happens after each
  QStringList Percents;
  int Unloaded = 0;

 private:
  float Value = 0;
};

class PagesTest : public testing::Test {
 protected:
  PagesTest() : Data1(Catalogue.Engine()), Pages(Data1, Tree, Catalogue.Paths(), Web, Window) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("tblPhotos");
    controls::Node* root = Tree.Add(nullptr, QStringLiteral("Photos"));
    Tree.Select(Tree.Add(root, QStringLiteral("Tåg & <Nacht>")));
    Web.WebDir = Catalogue.ProgramPath() + QStringLiteral("/Web");
  }

  static QString TypeOf(int id) { return id % 4 == 0 ? QStringLiteral("bmp") : QStringLiteral("jpg"); }
  QString ImageOf(int id) { return catalogue::ImageFileName(Catalogue.Paths(), id, TypeOf(id)); }
  QString ThumbOf(int id) { return catalogue::ThumbFileName(Catalogue.Paths(), id); }

  /// Photos 1 to `count`, whose files are short texts; the third has no texts.
  void AddPhotos(int count, bool thumbnails = true) {
    const QMap<int, QString> titles = {{2, QStringLiteral("<b>Tom & \"Jerry\"</b>")},
                                       {5, QStringLiteral("Zürich € “Łódź” 😀")}};
    QStringList statements;
    for (int id = 1; id <= count; ++id) {
      const QString title = titles.value(id, QStringLiteral("Photo %1").arg(id));
      const QString texts = QStringLiteral("'%1', 'Ann & Co', 'Seen on day %2', #7/4/2001%3#")
                                .arg(engine::QuoteSql(title))
                                .arg(id)
                                .arg(id == 4 ? QStringLiteral(" 10:15") : QString());
      statements << QStringLiteral(
                        "INSERT INTO tblPhotos (PhotoID, ImageType, Title, MadeBy, Description, "
                        "CreateDate) VALUES (%1, '%2', %3)")
                        .arg(id)
                        .arg(TypeOf(id), id == 3 ? QStringLiteral("Null, Null, Null, Null") : texts);
      WriteFile(ImageOf(id), "image " + QByteArray::number(id));
      if (thumbnails) WriteFile(ThumbOf(id), "thumbnail " + QByteArray::number(id));
    }
    Catalogue.Execute(statements);
    Data1.Refresh();
  }
  void Select(std::vector<int> photos) { Data1.SelBookmarks.Replace(std::move(photos)); }
  /// The last photo, then the others in order.
  void SelectLastFirst(int count) {
    std::vector<int> photos(count);
    for (int i = 0; i < count; ++i) photos[i] = i == 0 ? count : i;
    Select(photos);
  }
  void MakeWebDirs() {
    for (const char* name : {"", "/Images", "/Thumbnails"}) QDir().mkdir(Web.WebDir + QLatin1String(name));
  }
  void MakeWeb(FakeForm& form, bool gallery) {
    form.Gallery = gallery ? 1 : 0;
    form.WebTitle = QStringLiteral("My <i>Web</i>");
    Pages.MakeWeb(form);
  }
  QByteArray WebPage(const char* name) {
    return ReadFile(Web.WebDir + QLatin1Char('/') + QLatin1String(name));
  }

  TestCatalogue Catalogue;
  controls::TreeView Tree;
  catalogue::RecordList Data1;
  output::WebSettings Web;
  QWidget Window;
  output::WebPages Pages;
};

}  // namespace veldrin::test
