#include "records/record_clipboard.h"

#include <gtest/gtest.h>

#include "folders/folder_tree.h"
#include "platform/runtime_error.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

using platform::Node;

class FakeViews : public ClipboardViews, public catalogue::RecordViews {
 public:
  void SetSelectionGrey(bool grey) override { Log << (grey ? "grey" : "normal"); }
  void EnableRecordPaste(bool enabled) override { Log << (enabled ? "paste" : "no-paste"); }
  void ShowRecordUndoCut(bool visible) override { Log << (visible ? "undo" : "no-undo"); }
  void ShowFolderRecords() override { Log << "page"; }
  void SetRecordMenus() override { Log << "menus"; }
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override { Log << "list"; }

  QString Take() { return std::exchange(Log, {}).join(QLatin1Char(' ')); }

 private:
  QStringList Log;
};

class RecordClipboardTest : public testing::Test {
 protected:
  RecordClipboardTest()
      : Data1(Catalogue.Engine()),
        Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Clipboard(Data1, Tree, Source, Catalogue.Engine(), Catalogue.Paths(), Views) {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    for (const char* name : {"A", "B", "C"}) AddFolder(name, "");
    for (const char* name : {"x", "y"}) AddFolder(name, "0002");
    folders::LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
    AddPhoto(1, {"0001"});
    AddPhoto(2, {"0001", "00020001"});
    AddPhoto(3, {"00020001"});
    AddPhoto(4, {"0002"});
    AddPhoto(5, {"00020001", "00020002", "0003"});
    AddPhoto(6, {""});
    Views.Take();
  }

  void AddFolder(const char* name, const char* parent) {
    folders::AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, *parent == 0 ? 1 : 2,
                             QLatin1String(name), QLatin1String(parent));
  }
  void AddPhoto(int id, std::initializer_list<const char*> keys) {
    QStringList folders;
    for (const char* key : keys) folders << QLatin1String(key);
    Catalogue.AddPhoto(id, QStringLiteral("photo"), folders);
  }

  // "/" is the root, "!" a pseudo-folder.
  void Select(const char* path) {
    Node* node = Tree.Root();
    for (QString name : QString::fromLatin1(path).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
      if (name == QLatin1String("!")) name = QStringLiteral("!UNORGANIZED");
      for (node = node->Child(); node->Text() != name;) node = node->Next();
    }
    Tree.Select(node);
    Source.SetRecordSource();
    Views.Take();
  }
  void SelectRecords(std::initializer_list<int> ids) {
    for (const int id : ids) Data1.SelBookmarks.Add(id);
  }
  // The places of a photo, by the first two levels of their keys.
  QString Places(int id) {
    return Catalogue
        .Rows(QStringLiteral("SELECT Left(IDNo, 8) FROM tblPhotoLinks WHERE PhotoID = %1 ORDER BY IDNo")
                  .arg(id))
        .join(QLatin1Char(' '));
  }
  QString AllLinks() {
    return Catalogue.Rows(QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks ORDER BY IDNo"))
        .join(QLatin1Char(' '));
  }

  test::TestCatalogue Catalogue;
  platform::TreeView Tree;
  catalogue::RecordList Data1;
  FakeViews Views;
  catalogue::RecordSource Source;
  RecordClipboard Clipboard;
};

struct PasteCase {
  const char* Name;
  bool Cut;
  int Photo;
  const char* From;
  const char* To;
  const char* Places;
};

class Pastes : public RecordClipboardTest, public testing::WithParamInterface<PasteCase> {};

TEST_P(Pastes, GiveAndTakePlaces) {
  const auto linksOfOthers = [this] {
    return Catalogue.Rows(
        QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks WHERE PhotoID <> %1").arg(GetParam().Photo));
  };
  const QStringList others = linksOfOthers();
  Select(GetParam().From);
  SelectRecords({GetParam().Photo});
  GetParam().Cut ? Clipboard.RecordCut_Click() : Clipboard.RecordCopy_Click();
  Select(GetParam().To);
  Clipboard.RecordPaste_Click();
  EXPECT_EQ(Places(GetParam().Photo), QLatin1String(GetParam().Places));
  EXPECT_EQ(linksOfOthers(), others);
}

INSTANTIATE_TEST_SUITE_P(
    Situations, Pastes,
    testing::Values(PasteCase{"CopyAddsAPlace", false, 1, "A", "C", "00010000 00030000"},
                    PasteCase{"CopyWhereItStands", false, 2, "A", "B/x", "00010000 00020001"},
                    PasteCase{"CopyAboveAnotherPlace", false, 2, "A", "B", "00010000 00020000 00020001"},
                    PasteCase{"CopyToUnorganized", false, 2, "A", "B/!", "00010000 00020000 00020001"},
                    PasteCase{"CutMoves", true, 1, "A", "C", "00030000"},
                    PasteCase{"CutWhereItStands", true, 2, "A", "B/x", "00020001"},
                    PasteCase{"CutOntoItsOwnFolder", true, 2, "A", "A", "00010000 00020001"},
                    PasteCase{"CutToASibling", true, 5, "B/x", "B/y", "00020002 00030000"},
                    PasteCase{"CutOfUnorganized", true, 4, "B/!", "A", "00010000"},
                    PasteCase{"CutOfTopUnorganized", true, 6, "!", "B/!", "00020000"},
                    PasteCase{"CutToAnotherUnorganized", true, 2, "A", "B/!", "00020000 00020001"},
                    PasteCase{"CutToItsUnorganized", true, 5, "B/x", "B/!", "00020000 00030000"},
                    PasteCase{"CutToAFolderAbove", true, 5, "B/x", "B", "00020000 00030000"},
                    PasteCase{"CutToTopUnorganized", true, 5, "B/x", "!", "00000000"},
                    PasteCase{"CutToTheRoot", true, 5, "B/x", "/", "00000000"},
                    PasteCase{"CutOfAPlaceBelowIsACopy", true, 3, "B", "C", "00020001 00030000"}),
    test::CaseName);

TEST_F(RecordClipboardTest, TheViewsFollowTheCommands) {
  struct Step {
    const char* Name;
    void (RecordClipboard::*Command)();
    const char* Views;
    bool Cut, Copy;
  };
  const auto cut = &RecordClipboard::RecordCut_Click;
  const auto copy = &RecordClipboard::RecordCopy_Click;
  const auto undo = &RecordClipboard::RecordUndoCut_Click;
  const auto paste = &RecordClipboard::RecordPaste_Click;
  const char* pasted = "normal list page menus";
  for (const Step& step : std::vector<Step>{{"undo of nothing", undo, "", false, false},
                                            {"paste of nothing", paste, "", false, false},
                                            {"cut", cut, "grey paste undo", true, false},
                                            {"undo", undo, "no-undo no-paste normal", false, false},
                                            {"cut again", cut, "grey paste undo", true, false},
                                            {"copy over a cut", copy, "normal paste", false, true},
                                            {"undo of a copy", undo, "", false, true},
                                            {"paste", paste, pasted, false, false},
                                            {"a copy pastes once", paste, "", false, false}}) {
    if (Data1.RecordCount() == 0) Select("A");
    SelectRecords({1});
    (Clipboard.*step.Command)();
    EXPECT_EQ(Views.Take(), QLatin1String(step.Views)) << step.Name;
    EXPECT_EQ(Clipboard.IsCutPending(), step.Cut) << step.Name;
    EXPECT_EQ(Clipboard.CopySource() != nullptr, step.Copy) << step.Name;
  }
  SelectRecords({1});
  Clipboard.RecordCut_Click();
  Views.Take();
  Clipboard.RecordPaste_Click();
  EXPECT_EQ(Views.Take(), QStringLiteral("no-undo normal list page menus"));
}

TEST_F(RecordClipboardTest, WithoutASelectionAPendingCommandPastesNothing) {
  Select("A");
  SelectRecords({1});
  Clipboard.RecordCut_Click();
  const QString links = AllLinks();
  Data1.SelBookmarks.Clear();
  Views.Take();
  Clipboard.RecordCopy_Click();
  EXPECT_EQ(Views.Take(), QString());
  EXPECT_TRUE(Clipboard.IsCutPending());
  Select("C");
  Clipboard.RecordPaste_Click();
  EXPECT_EQ(AllLinks(), links);
  EXPECT_FALSE(Clipboard.IsCutPending());
}

TEST_F(RecordClipboardTest, AFolderThatGoesTakesTheCommandWithIt) {
  for (const bool cut : {true, false}) {
    Select("B/x");
    Node* folder = Tree.SelectedItem();
    SelectRecords({3});
    cut ? Clipboard.RecordCut_Click() : Clipboard.RecordCopy_Click();
    Views.Take();
    Tree.Remove(cut ? folder : folder->Parent());
    EXPECT_EQ(Views.Take(), cut ? QStringLiteral("no-undo no-paste normal") : QString());
    if (cut) Tree.Add(Tree.SelectedItem(), QStringLiteral("x"))->SetTag(QStringLiteral("00020001"));
    Select("C");
    Clipboard.RecordPaste_Click();
    EXPECT_EQ(Places(3), QStringLiteral("00020001"));
  }
}

TEST_F(RecordClipboardTest, APasteThatFailsLeavesEveryPlace) {
  Select("A");
  SelectRecords({1, 2});
  Clipboard.RecordCut_Click();
  const QString links = AllLinks();
  Node* tooDeep = Tree.Add(Tree.Root(), QStringLiteral("too deep"));
  tooDeep->SetTag(QString(44, QLatin1Char('1')));
  Tree.Select(tooDeep);
  EXPECT_THROW(Clipboard.RecordPaste_Click(), platform::RuntimeError);
  EXPECT_EQ(AllLinks(), links);
  EXPECT_EQ(Catalogue.Value(QStringLiteral("SELECT Count(*) FROM ActPhotoLinks")), QStringLiteral("2"));
}

}  // namespace
}  // namespace veldrin::records
