#include "catalogue/record_source.h"

#include "controls/tree_view.h"
#include "support/test_support.h"

namespace veldrin::catalogue {
namespace {

TEST(QueryClause, IsBuiltInOrder) {
  EXPECT_EQ(BuildQueryClause({}), "");
  EXPECT_EQ(BuildQueryClause({"jpg", "It's", "d'or", "O'Hara", "1/1/2002", "", 4, 0}),
            " WHERE ImageType = 'jpg' AND Title Like '*It''s*' AND Description Like '*d''or*' AND MadeBy = "
            "'O''Hara' AND (#1/1/2002# >= DateValue(CreateDate))");
  EXPECT_EQ(BuildQueryClause({"", "", "", "", "1/1/2002", "12/31/2001", 4, 1}),
            " WHERE (#1/1/2002# >= DateValue(CreateDate) OR DateValue(CreateDate) < #12/31/2001#)")
      << "opposite directions are alternatives";
}

TEST(RecordSource, ShowsTheFolderAndKeepsTheListThatItCantRead) {
  test::TestCatalogue catalogue;
  controls::TreeView tree;
  RecordList data1(catalogue.Engine());
  data1.DatabaseName = catalogue.Paths().WorkFile;
  RecordSource source(
      data1, [&] { return tree.SelectedItem()->Tag(); }, catalogue.Engine(), catalogue.Paths());
  controls::Node* root = tree.Add(nullptr, "Photos");
  for (const char* key : {"0001", "0002"}) tree.Add(root, key)->SetTag(key);
  catalogue.AddPhoto(1, "in one", {"0001"});
  catalogue.AddPhoto(2, "below one", {"00010001"});
  catalogue.AddPhoto(3, "without a link", {});
  // The numbers of the photos that a node shows, with the current one.
  const auto shown = [&] {
    QStringList photos;
    for (int i = 0; i < data1.RecordCount(); ++i) photos << QString::number(data1.BookmarkAt(i));
    return (photos << QString::number(data1.AbsolutePosition())).join(' ');
  };
  const auto show = [&](int node) {
    tree.Select(tree.NodeAt(node));
    source.SetRecordSource();
    return shown();
  };
  EXPECT_EQ(show(1), "1 2 3 0");
  EXPECT_EQ(show(3), "-1");
  EXPECT_EQ(show(2), "1 2 0");
  data1.SetAbsolutePosition(1);
  source.Query.QryImageType = "x' AND";
  EXPECT_THROW(show(1), base::RuntimeError);
  EXPECT_EQ(source.Query, Criteria{});
  EXPECT_EQ(shown(), "1 2 1");
  data1.RefreshAt(2);
  EXPECT_EQ(shown(), "1 2 1") << "the folder is still that of the list";
  catalogue.Execute({"DELETE FROM tblPhotoLinks WHERE PhotoID = 2"});
  data1.RefreshAt(2);
  EXPECT_EQ(shown(), "1 0");
}

}  // namespace
}  // namespace veldrin::catalogue
