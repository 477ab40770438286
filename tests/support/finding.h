// A list over a catalogue of a test's own: for the tests of query and search.
#pragma once

#include "support/catalogue_list.h"

namespace veldrin::test {

class FindingTest : public testing::Test, public Controls, public CatalogueList {
 protected:
  FindingTest() { LoadFolders(); }

  /// Rows as SQL values: PhotoID, ImageType, Title, Description, MadeBy and CreateDate.
  void Add(std::initializer_list<const char*> photos) {
    const QString statement =
        "INSERT INTO tblPhotos (PhotoID, ImageType, Title, Description, MadeBy, CreateDate) VALUES (";
    for (const char* photo : photos) Catalogue.Execute({statement + photo + u')'});
  }
  void Show() { Source.SetRecordSource(); }
};

}  // namespace veldrin::test
