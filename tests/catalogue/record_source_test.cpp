#include "catalogue/record_source.h"

#include "support/catalogue_list.h"

namespace veldrin::catalogue {
namespace {

struct RecordSources : testing::Test, test::CatalogueList {};

TEST_F(RecordSources, ShowTheFolderAndKeepTheListThatTheyCantRead) {
  for (const char* key : {"0001", "0002"}) Catalogue.AddFolder(key, key);
  LoadFolders();
  Catalogue.AddPhoto(1, "in one", {"0001"});
  Catalogue.AddPhoto(2, "below one", {"00010001"});
  Catalogue.AddPhoto(3, "without a link", {});
  // The numbers of the photos that a node shows, with the current one.
  const auto shown = [this] { return Ids() + ' ' + std::to_string(Data1.AbsolutePosition()); };
  const auto show = [&](int node) {
    Tree.Select(Tree.NodeAt(node));
    Source.SetRecordSource();
    return shown();
  };
  EXPECT_EQ(show(1), "1 2 3 0");
  EXPECT_EQ(show(3), " -1");
  EXPECT_EQ(show(2), "1 2 0");
  Data1.SetAbsolutePosition(1);
  Source.Query.QryImageType = "x' AND";
  EXPECT_THROW(show(1), base::RuntimeError);
  EXPECT_EQ(Source.Query, Criteria{});
  EXPECT_EQ(shown(), "1 2 1");
  Data1.RefreshAt(2);
  EXPECT_EQ(shown(), "1 2 1") << "the folder is still that of the list";
  Catalogue.Execute({"DELETE FROM tblPhotoLinks WHERE PhotoID = 2"});
  Data1.RefreshAt(2);
  EXPECT_EQ(shown(), "1 0");
}

}  // namespace
}  // namespace veldrin::catalogue
