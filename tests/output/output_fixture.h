// A list of photos with stored images, and what the commands on it ask of the views.
#pragma once

#include <gtest/gtest.h>

#include <QGuiApplication>

#include "support/silent_views.h"
#include "support/test_support.h"

namespace veldrin::test {

class OutputFixture : public SilentViews {
 public:
  /// Photos 1, 2, ..., the second of them the current one.
  explicit OutputFixture(int photos) : Data1(Catalogue.Engine()) {
    for (int id = 1; id <= photos; ++id) {
      Catalogue.AddPhoto(id, {}, {});
      WriteFile(Catalogue.Paths().ImageDir + Image(id), Image(id).toUtf8());
    }
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    if (photos > 1) Data1.SetAbsolutePosition(1);
  }
  /// Each stored image has its own name for its bytes.
  static QString Image(int id) { return QStringLiteral("%1.jpg").arg(id); }

  void Select(const std::vector<int>& ids) { Data1.SelBookmarks.Replace(ids); }

  /// That no command left anything behind.
  void ExpectAsBefore() const {
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(Data1.SuppressReposition);
    EXPECT_EQ(Data1.Bookmark(), 2);
  }

  TestCatalogue Catalogue;
  catalogue::RecordList Data1;
  QWidget Window;
};

}  // namespace veldrin::test
