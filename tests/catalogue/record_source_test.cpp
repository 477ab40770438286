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

// Records what the source asks of the views.
class FakeViews : public RecordViews {
 public:
  bool PreviewIsOn() const override { return Preview; }
  void SetPreview(bool on) override {
    Preview = on;
    Log << (on ? "on" : "off");
  }
  void SetSliderMax(int count) override { Log << QString::number(count); }
  void InitThumbScroll() override { Log << "scroll"; }
  bool Preview = true;
  QStringList Log;
};

TEST(RecordSource, ShowsTheFolderWithThePreviewOffAroundTheMoves) {
  test::TestCatalogue catalogue;
  controls::TreeView tree;
  RecordList data1(catalogue.Engine());
  data1.DatabaseName = catalogue.Paths().WorkFile;
  FakeViews views;
  RecordSource source(
      data1, [&] { return tree.SelectedItem()->Tag(); }, catalogue.Engine(), catalogue.Paths(), views);
  controls::Node* root = tree.Add(nullptr, "Photos");
  for (const char* key : {"0001", "0002"}) tree.Add(root, key)->SetTag(key);
  catalogue.AddPhoto(1, "in one", {"0001"});
  catalogue.AddPhoto(2, "below one", {"00010001"});
  catalogue.AddPhoto(3, "without a link", {});
  // The numbers of the photos that a node shows, and what happened to the views.
  const auto show = [&](int node) {
    tree.Select(tree.NodeAt(node));
    source.SetRecordSource();
    QStringList shown;
    for (; !data1.Recordset().AtEOF(); data1.MoveNext()) shown << data1.Field("PhotoID").toString();
    return (shown + std::exchange(views.Log, {})).join(' ');
  };
  EXPECT_EQ(show(1), "1 2 3 off 3 scroll on");
  EXPECT_EQ(show(2), "1 2 off 2 scroll on");
  source.Query.QryTitle = "IN";
  EXPECT_EQ(show(2), "1 off 1 scroll on");
  views.Preview = false;
  EXPECT_EQ(show(3), "scroll") << "the slider stays for an empty list";
  source.Query.QryImageType = "x' AND";
  EXPECT_THROW(show(1), base::RuntimeError);
  EXPECT_EQ(data1.RecordCount(), 0);
  EXPECT_EQ(data1.AbsolutePosition(), -1);
}

}  // namespace
}  // namespace veldrin::catalogue
