// A list over a catalogue of a test's own, and the controls of a dialog: for the tests of query and search.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLineEdit>

#include "catalogue/record_source.h"
#include "find/find_views.h"
#include "platform/sql_dialect.h"
#include "support/test_support.h"

namespace veldrin::test {

/// A row of tblPhotos; null pointers for Null.
struct Photo {
  int Id;
  const char* ImageType = nullptr;
  const char* Title = nullptr;
  const char* Description = nullptr;
  const char* MadeBy = nullptr;
  const char* CreateDate = nullptr;
};

inline std::string IdsOf(const std::vector<Photo>& photos) {
  QStringList ids;
  for (const Photo& photo : photos) ids << QString::number(photo.Id);
  return ids.join(QLatin1Char(' ')).toStdString();
}

class FindingViews : public find::FindViews, public catalogue::RecordViews {
 public:
  void ShowFolderRecords() override { ++Shown; }
  void HoldShow(const std::function<void()>& dialog) override {
    ShowIsHeld = true;
    dialog();
    ShowIsHeld = false;
  }
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override {}

  int Shown = 0;
  bool ShowIsHeld = false;
};

class FindingTest : public testing::Test {
 protected:
  FindingTest()
      : Data1(Catalogue.Engine()), Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Tree.Select(Tree.Add(nullptr, QStringLiteral("Photos")));
  }

  void Add(const std::vector<Photo>& photos) {
    const auto text = [](const char* value) {
      return value == nullptr ? QStringLiteral("Null")
                              : QStringLiteral("'%1'").arg(platform::QuoteSql(QString::fromUtf8(value)));
    };
    for (const Photo& photo : photos) {
      const QString date = photo.CreateDate == nullptr
                               ? QStringLiteral("Null")
                               : QStringLiteral("#%1#").arg(QLatin1String(photo.CreateDate));
      const QStringList values = {QString::number(photo.Id), text(photo.ImageType),   text(photo.Title),
                                  text(photo.MadeBy),        text(photo.Description), date};
      Catalogue.Execute(
          {QStringLiteral("INSERT INTO tblPhotos (PhotoID, ImageType, Title, MadeBy, Description, "
                          "CreateDate) VALUES (") +
           values.join(QStringLiteral(", ")) + QLatin1Char(')')});
    }
  }
  void Show() { Source.SetRecordSource(); }
  std::string Ids() {
    QStringList ids;
    for (int i = 0; i < Data1.RecordCount(); ++i) ids << QString::number(Data1.BookmarkAt(i));
    return ids.join(QLatin1Char(' ')).toStdString();
  }

  TestCatalogue Catalogue;
  platform::TreeView Tree;
  catalogue::RecordList Data1;
  FindingViews Views;
  catalogue::RecordSource Source;
  QWidget Window;
};

/// The controls of the dialog `Root`, by name.
class Controls {
 protected:
  template <class Control>
  Control& Get(const char* name) {
    return *Root->findChild<Control*>(QLatin1String(name));
  }
  QLineEdit& Field(const char* name) { return Get<QLineEdit>(name); }
  void Click(const char* name) { Get<QAbstractButton>(name).click(); }

  QWidget* Root = nullptr;
};

}  // namespace veldrin::test
