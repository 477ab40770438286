// A catalogue of small photos in a list, and a form that counts them and can stop a run at any.
#pragma once

#include <QDirIterator>

#include "catalogue/image_store.h"
#include "engine/sql_tokens.h"
#include "output/record_choice.h"
#include "output/web_pages.h"
#include "support/catalogue_list.h"
#include "support/environment.h"

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
  explicit FakeForm(bool gallery) {
    Progress = true;
    Gallery = gallery ? 1 : 0;
    WebTitle = "My <i>Web</i>";
  }

  float ProgressValue() const override { return Value; }
  void SetProgressValue(float value) override { Value = value; }
  void SetPercent(const QString& caption) override { Percents << caption; }
  void DoEvents() override {
    if (AtPhoto) AtPhoto(static_cast<int>(Percents.size()));
    if (Percents.size() == StopAt) Progress = false;
  }
  void Beside(const std::function<void()>& work) override { work(); }
  void Unload() override { ++Unloaded; }

  int StopAt = 0;                    ///< the photo after which the run is stopped
  std::function<void(int)> AtPhoto;  ///< what else happens after each
  QStringList Percents;
  int Unloaded = 0;

 private:
  float Value = 0;
};

class OutputTest : public testing::Test, public CatalogueList {
 protected:
  OutputTest() {
    Tree.Select(Tree.Add(Tree.Add(nullptr, "Photos"), "Tåg & <Nacht>"));
    Web.WebDir = Catalogue.ProgramPath() + "/Web";
  }

  static QString TypeOf(int id) { return id % 4 == 0 ? "bmp" : "jpg"; }
  QString ImageOf(int id) { return catalogue::ImageFileName(Catalogue.Paths(), id, TypeOf(id)); }
  QString ThumbOf(int id) { return catalogue::ThumbFileName(Catalogue.Paths(), id); }
  static QByteArray BytesOf(int id) { return "image " + QByteArray::number(id); }

  /// Photos 1 to `count`, whose files are short texts; the third has no texts.
  void AddPhotos(int count, bool thumbnails = true) {
    const QMap<int, QString> titles = {{2, "<b>Tom & \"Jerry\"</b>"}, {5, "Zürich € “Łódź” 😀"}};
    QStringList statements;
    for (int id = 1; id <= count; ++id) {
      const QString title = titles.value(id, QStringLiteral("Photo %1").arg(id));
      const QString texts = QStringLiteral("'%1', 'Ann & Co', 'Seen on day %2', #7/4/2001%3#")
                                .arg(engine::QuoteSql(title), QString::number(id), id == 4 ? " 10:15" : "");
      statements << QStringLiteral(
                        "INSERT INTO tblPhotos (PhotoID, ImageType, Title, MadeBy, Description, "
                        "CreateDate) VALUES (%1, '%2', %3)")
                        .arg(QString::number(id), TypeOf(id), id == 3 ? "Null, Null, Null, Null" : texts);
      WriteFile(ImageOf(id), BytesOf(id));
      if (thumbnails) WriteFile(ThumbOf(id), "thumbnail " + QByteArray::number(id));
    }
    Catalogue.Execute(statements);
    Open();
  }
  void Select(const std::vector<int>& photos) { Data1.SelBookmarks.Replace(photos); }
  /// The last photo, then the others in order.
  void SelectLastFirst(int count) {
    std::vector<int> photos = {count};
    for (int id = 1; id < count; ++id) photos.push_back(id);
    Select(photos);
  }
  void MakeWebDirs() {
    for (const char* name : {"", "/Images", "/Thumbnails"}) QDir().mkdir(Web.WebDir + name);
  }
  QByteArray WebPage(const char* name) { return ReadFile(Web.WebDir + '/' + name); }

  /// That a command on the list left nothing behind.
  void ExpectAsBefore(int current) const {
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Data1.Bookmark(), current);
  }

  bool FormView = false;
  const catalogue::Chooser Chosen = [this] { return Data1.Chosen(!FormView); };
  output::WebSettings Web;
  output::WebPages Pages{Data1, Tree, Catalogue.Paths(), Web, Window};
};

}  // namespace veldrin::test
