// A list over a catalogue of a test's own: for the tests of query and search.
#pragma once

#include <gtest/gtest.h>

#include "catalogue/record_source.h"
#include "folders/folder_nodes.h"
#include "support/test_support.h"

namespace veldrin::test {

class FindingTest : public testing::Test, public Controls {
 protected:
  FindingTest() {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Tree.Select(Tree.Add(nullptr, QStringLiteral("Photos")));
  }

  /// Rows as SQL values: PhotoID, ImageType, Title, Description, MadeBy and CreateDate.
  void Add(std::initializer_list<const char*> photos) {
    const auto statement = QStringLiteral(
        "INSERT INTO tblPhotos (PhotoID, ImageType, Title, Description, MadeBy, CreateDate) VALUES (");
    for (const char* photo : photos) Catalogue.Execute({statement + QString::fromUtf8(photo) + u')'});
  }
  void Show() { Source.SetRecordSource(); }
  std::string Ids() {
    QStringList ids;
    for (int i = 0; i < Data1.RecordCount(); ++i) ids << QString::number(Data1.BookmarkAt(i));
    return ids.join(u' ').toStdString();
  }

  TestCatalogue Catalogue;
  controls::TreeView Tree;
  catalogue::RecordList Data1{Catalogue.Engine()};
  catalogue::RecordSource Source{Data1, [this] { return folders::SelectedFolderKey(Tree); },
                                 Catalogue.Engine(), Catalogue.Paths()};
  QWidget Window;
};

}  // namespace veldrin::test
