// Commands at random, each compared with what a model makes of it.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <random>

#include "catalogue/schema.h"
#include "folders/folder_commands.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"
#include "records/catalogue_model.h"
#include "records/delete_photos.h"
#include "records/record_clipboard.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

using platform::Node;
using test::CatalogueModel;
using test::ModelNode;
using test::Place;

constexpr int PhotoCount = 12;
constexpr int MostNodes = 40;

QString KeyOf(const Place& place) {
  QString key;
  for (const int number : place) key += folders::PadKey(number, folders::SegmentLength);
  return key;
}

QString KeyOf(const CatalogueModel& model, ModelNode node) {
  return node.Unorganized ? folders::UnorganizedKey(KeyOf(model.At(node))) : KeyOf(model.At(node));
}

class SilentViews : public folders::FolderViews,
                    public ClipboardViews,
                    public DeleteViews,
                    public catalogue::RecordViews {
 public:
  bool FormViewIsShown() const override { return FormView; }
  void ShowFolderRecords() override {}
  void SetFolderMenus() override {}
  void SetRecordMenus() override {}
  void ShowFolderUndoCut(bool) override {}
  void EnableFolderPaste(bool) override {}
  void PopupFolderMenu() override {}
  void SetSelectionGrey(bool) override {}
  void EnableRecordPaste(bool) override {}
  void ShowRecordUndoCut(bool) override {}
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override {}

  bool FormView = false;
};

// Temporary files in memory, as far as there is room: thousands of flushed writes would wait for the disk.
class MemoryDirectory {
 public:
  MemoryDirectory() {
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable()) qputenv("TMPDIR", "/dev/shm");
  }
  ~MemoryDirectory() { qputenv("TMPDIR", Before); }
  MemoryDirectory(const MemoryDirectory&) = delete;
  MemoryDirectory& operator=(const MemoryDirectory&) = delete;

 private:
  QByteArray Before = qgetenv("TMPDIR");
};

class CatalogueProperty : public testing::Test {
 protected:
  CatalogueProperty()
      : Data1(Catalogue.Engine()),
        Looked(Catalogue.Engine()),
        Source(Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Look(Looked, Tree, Catalogue.Engine(), Catalogue.Paths(), Views),
        Browser(Tree, Search, Source, Views),
        Folders(Tree, Browser, Views, Catalogue.Engine(), Catalogue.Paths()),
        Clipboard(Data1, Tree, Source, Catalogue.Engine(), Catalogue.Paths(), Views),
        Deleting(Source, Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views, Tree) {
    Data1.DatabaseName = Looked.DatabaseName = Catalogue.Paths().WorkFile;
    AddPhotos();
    folders::LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile);
    Select({});
  }

  // --- chance ---

  int Pick(int count) { return static_cast<int>(Random() % static_cast<unsigned>(count)); }
  bool Seldom() { return Pick(6) == 0; }
  QString PickName() {
    static const QStringList names = {QStringLiteral("a"),
                                      QStringLiteral("A"),
                                      QStringLiteral("it's"),
                                      QStringLiteral("b"),
                                      QStringLiteral("!UNORGANIZED"),
                                      QString()};
    return names[Pick(static_cast<int>(names.size()))];
  }
  // Rather one without folders in it, and with photos.
  ModelNode PickNode() {
    const auto nodes = Model.Nodes();
    ModelNode node;
    for (int tries = 0; tries < 2; ++tries) {
      node = nodes[static_cast<size_t>(Pick(static_cast<int>(nodes.size())))];
      if (!Model.HasChildren(node) && !Model.Shows(node).empty()) break;
    }
    return node;
  }
  // Selects so many in six of the photos shown, seldom none.
  std::vector<int> SelectPhotos(int inSix) {
    std::vector<int> photos;
    for (const int photo : Model.Shows(Model.Selected)) {
      if (Pick(6) < inSix) photos.push_back(photo);
    }
    if (Seldom()) photos.clear();
    std::shuffle(photos.begin(), photos.end(), Random);
    Data1.SelBookmarks.Clear();
    for (const int photo : photos) Data1.SelBookmarks.Add(photo);
    return photos;
  }
  // Runs what asks first; seldom the answer is no.
  bool IsSure(const std::function<void()>& asks) {
    const bool sure = !Seldom();
    test::AnswerBoxes(asks, {sure ? QMessageBox::Yes : QMessageBox::No});
    return sure;
  }

  // --- the commands, here and there ---

  Node* Find(ModelNode node) {
    const QString key = KeyOf(Model, node);
    for (int i = 1; i <= Tree.Count(); ++i) {
      if (Tree.NodeAt(i)->Tag() == key) return Tree.NodeAt(i);
    }
    throw std::runtime_error("no node " + key.toStdString());
  }

  void Select(ModelNode node) {
    Model.Selected = node;
    Browser.LastNodeIndex = -1;
    Tree.Select(Find(node));
    Browser.tvTreeView_NodeClick(*Tree.SelectedItem());
  }

  // Types names into the open editor until one is accepted.
  void TypeName() {
    for (QString name = PickName();; name = QStringLiteral("new %1").arg(++NamesMade)) {
      auto* editor = Tree.findChild<QLineEdit*>();
      ASSERT_NE(editor, nullptr);
      editor->setText(name);
      const bool accepted = Model.Rename(Model.Selected.Folder, name);
      test::AnswerBoxes([this] { Tree.EndLabelEdit(); },
                        accepted ? QList<QMessageBox::StandardButton>{} : QList{QMessageBox::Ok});
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      if (accepted) return;
    }
  }

  void FolderAdd() {
    Folders.FolderAdd_Click();
    Model.Add(QStringLiteral("New Folder"));
    if (!Seldom()) return TypeName();
    Tree.EndLabelEdit(false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Select(Model.Selected);
  }
  void FolderRen() {
    Folders.FolderRen_Click();
    TypeName();
  }
  void FolderDel() {
    if (IsSure([this] { Folders.FolderDel_Click(); })) Model.Delete(Model.Selected.Folder);
  }
  void FolderPaste() {
    Folders.FolderPaste_Click();
    if (Model.Paste()) TypeName();
  }
  void Stage(bool cut) {
    const std::vector<int> photos = SelectPhotos(4);
    cut ? Clipboard.RecordCut_Click() : Clipboard.RecordCopy_Click();
    Model.Stage(photos, cut);
  }
  void TakeAway(void (DeletePhotos::*click)(), void (CatalogueModel::*takeAway)(int)) {
    std::vector<int> photos = SelectPhotos(1);
    Data1.SetAbsolutePosition(Pick(Data1.RecordCount()));
    Views.FormView = Seldom();
    if (photos.empty() || Views.FormView) photos = {Data1.Bookmark()};
    if (!IsSure([this, click] { (Deleting.*click)(); })) return;
    for (const int photo : photos) (Model.*takeAway)(photo);
  }
  // As many as there were.
  void AddPhotos() {
    while (Model.AllPhotos.size() < PhotoCount) {
      Catalogue.AddPhoto(++PhotosMade, QStringLiteral("photo"), {QString()});
      Model.AddPhoto(PhotosMade);
    }
  }

  // --- what the menus allow ---

  bool TakesFolders() const {
    return !Model.Selected.Unorganized && !Model.Folders.at(Model.Selected.Folder).Grey;
  }
  bool IsChangeable() const { return TakesFolders() && !CatalogueModel::IsRoot(Model.Selected); }
  bool HasRoom(int levels, int nodes) const {
    return static_cast<int>(Model.At(Model.Selected).size()) + levels <= catalogue::LevelCount &&
           static_cast<int>(Model.Nodes().size()) + nodes <= MostNodes;
  }
  bool CanPasteFolder() const {
    if (!Model.PendingFolder || !TakesFolders()) return false;
    const int source = Model.PendingFolder->Source.Folder;
    // A copy into itself ends in an error.
    return !test::IsBelow(Model.At(Model.Selected), Model.Folders.at(source).At) &&
           HasRoom(Model.Height(source) + 1, static_cast<int>(Model.Nodes(source).size()));
  }
  bool IsLeaf() const {
    return !Model.Shows(Model.Selected).empty() && !CatalogueModel::IsRoot(Model.Selected) &&
           !Model.HasChildren(Model.Selected);
  }

  struct Command {
    const char* Name;
    int Weight;
    bool Allowed;
    std::function<void()> Run;
    std::function<void()> RunModel = [] {};
  };

  std::vector<Command> FolderEntries() {
    return {
        {"FolderAdd", 3, TakesFolders() && HasRoom(1, 2), [this] { FolderAdd(); }},
        {"FolderRen", 1, IsChangeable(), [this] { FolderRen(); }},
        {"FolderDel", 1, IsChangeable(), [this] { FolderDel(); }},
        {"FolderCut", 1, IsChangeable(), [this] { Folders.FolderCut_Click(); }, [this] { Model.Cut(); }},
        {"FolderCopy", 1, IsChangeable(), [this] { Folders.FolderCopy_Click(); }, [this] { Model.Copy(); }},
        {"FolderUndoCut", 1, Model.PendingFolder && Seldom(), [this] { Folders.FolderUndoCut_Click(); },
         [this] { Model.UndoCut(); }},
        {"FolderPaste", 4, CanPasteFolder(), [this] { FolderPaste(); }}};
  }
  std::vector<Command> RecordEntries() {
    const bool some = Data1.RecordCount() > 0;
    return {{"RecordCut", 6, IsLeaf(), [this] { Stage(true); }},
            {"RecordCopy", 12, IsLeaf() && !Model.Selected.Unorganized, [this] { Stage(false); }},
            {"RecordUndoCut", 1, Model.PendingRecords && Seldom(),
             [this] { Clipboard.RecordUndoCut_Click(); }, [this] { Model.UndoRecordCut(); }},
            {"RecordPaste", 12, Model.CanPasteRecords(), [this] { Clipboard.RecordPaste_Click(); },
             [this] { Model.PasteRecords(); }},
            {"RecordDel", 1, some && Seldom(),
             [this] { TakeAway(&DeletePhotos::RecordDel_Click, &CatalogueModel::DeletePhoto); }},
            {"RecordRmv", 2, some && !Model.At(Model.Selected).empty(),
             [this] { TakeAway(&DeletePhotos::RecordRmv_Click, &CatalogueModel::Remove); }},
            {"new photos", 1, Model.AllPhotos.size() < PhotoCount, [this] { AddPhotos(); },
             [this] { Select(Model.Selected); }}};
  }

  void Step() {
    if (Pick(3) > 0) {
      Select(PickNode());
      Log << QStringLiteral("select ") + KeyOf(Model, Model.Selected);
    }
    std::vector<Command> allowed;
    for (const auto& commands : {FolderEntries(), RecordEntries()}) {
      for (const Command& command : commands)
        if (command.Allowed) allowed.insert(allowed.end(), static_cast<size_t>(command.Weight), command);
    }
    if (allowed.empty()) return;
    const Command& command = allowed[static_cast<size_t>(Pick(static_cast<int>(allowed.size())))];
    Log << QLatin1String(command.Name);
    ++Runs[command.Name];
    command.Run();
    command.RunModel();
  }

  // --- the comparison ---

  QStringList FoldersOfModel() const {
    QStringList folders;
    for (const ModelNode node : Model.Nodes()) {
      const auto& folder = Model.Folders.at(node.Folder);
      folders << Line(KeyOf(Model, node), node.Unorganized ? QStringLiteral("!UNORGANIZED") : folder.Name,
                      folder.Grey);
    }
    return folders;
  }
  static QStringList FoldersOfTree(const Node& node) {
    QStringList folders = {Line(node.Tag(), node.Text(), node.IsGrey())};
    for (const Node* child = node.Child(); child != nullptr; child = child->Next())
      folders << FoldersOfTree(*child);
    return folders;
  }
  static QString Line(const QString& key, const QString& name, bool grey) {
    return key + QLatin1Char('|') + name + (grey ? QStringLiteral("|grey") : QString());
  }
  QStringList FoldersOfTables() {
    QStringList levels;
    for (int level = 1; level <= catalogue::LevelCount; ++level)
      levels << QStringLiteral("SELECT IDNo, FolderName FROM ") + catalogue::LevelTable(level);
    return Catalogue.Rows(levels.join(QStringLiteral(" UNION ALL ")));
  }

  QStringList LinksOfModel() const {
    QStringList links;
    for (const auto& [place, photos] : Model.Photos) {
      for (const int photo : photos)
        links << QStringLiteral("%1|%2").arg(folders::LinkKey(KeyOf(place))).arg(photo);
    }
    return links;
  }

  static std::set<int> PhotosOf(const catalogue::RecordList& list) {
    std::set<int> photos;
    for (const auto& row : list.Recordset().ReadRows(0, list.RecordCount())) photos.insert(row[0].toInt());
    return photos;
  }

  void Compare() {
    EXPECT_EQ(FoldersOfTree(*Tree.Root()), FoldersOfModel());
    QStringList named;
    for (const QString& folder : FoldersOfModel().mid(1)) named << folder.section(QLatin1Char('|'), 0, 1);
    QStringList stored = FoldersOfTables();
    named.sort();
    stored.sort();
    EXPECT_EQ(stored, named);
    EXPECT_EQ(
        Catalogue.Rows(QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks ORDER BY IDNo, PhotoID")),
        LinksOfModel());
    EXPECT_EQ(Catalogue.Rows(QStringLiteral(
                  "SELECT PhotoID FROM tblPhotos WHERE PhotoID NOT IN (SELECT PhotoID FROM tblPhotoLinks)")),
              QStringList());
    CompareReached();
    EXPECT_EQ(Tree.SelectedItem(), Find(Model.Selected));
    EXPECT_EQ(PhotosOf(Data1), Model.Shows(Model.Selected));
    EXPECT_EQ(Clipboard.IsCutPending() || Clipboard.CopySource() != nullptr,
              Model.PendingRecords.has_value());
    EXPECT_EQ(Folders.HasPending(), Model.PendingFolder.has_value());
  }

  // Some folder leads to each photo, but for those that a Remove hides.
  void CompareReached() {
    const auto unreached = Model.Unreached();
    EXPECT_TRUE(std::includes(Model.Hidden.begin(), Model.Hidden.end(), unreached.begin(), unreached.end()));
    if (Model.HasChildren({})) Model.Hidden = unreached;
    if (!unreached.empty()) ++Runs["hidden"];
  }

  // Looks at one node in so many through a list of its own.
  void CompareShown(int oneIn) {
    Node* selected = Tree.SelectedItem();
    for (const ModelNode node : Model.Nodes()) {
      if (Pick(oneIn) > 0) continue;
      Tree.Select(Find(node));
      Look.SetRecordSource();
      EXPECT_EQ(PhotosOf(Looked), Model.Shows(node)) << KeyOf(Model, node).toStdString();
    }
    Tree.Select(selected);
  }

  MemoryDirectory Memory;
  test::TestCatalogue Catalogue;
  platform::TreeView Tree;
  QLineEdit Search;
  SilentViews Views;
  catalogue::RecordList Data1;
  catalogue::RecordList Looked;
  catalogue::RecordSource Source;
  catalogue::RecordSource Look;
  folders::FolderBrowser Browser;
  folders::FolderCommands Folders;
  RecordClipboard Clipboard;
  DeletePhotos Deleting;

  CatalogueModel Model;
  std::mt19937 Random;
  int NamesMade = 0;
  int PhotosMade = 0;
  QStringList Log;
  std::map<std::string, int> Runs;
};

// VELDRIN_SEED repeats a run, VELDRIN_STEPS makes it longer.
TEST_F(CatalogueProperty, CommandsDoWhatTheModelSays) {
  bool given = false;
  unsigned seed = qEnvironmentVariable("VELDRIN_SEED").toUInt(&given);
  if (!given) seed = std::random_device()();
  const int asked = qEnvironmentVariableIntValue("VELDRIN_STEPS");
  const int steps = asked > 0 ? asked : 2000;
  Random.seed(seed);
  for (int step = 1; step <= steps; ++step) {
    Step();
    Compare();
    CompareShown(step % 50 == 0 ? 1 : 16);
    if (!HasFailure()) continue;
    FAIL() << "VELDRIN_SEED=" << seed << " failed at step " << step << " after\n"
           << Log.mid(std::max<qsizetype>(0, Log.size() - 25)).join(QLatin1Char('\n')).toStdString();
  }
  for (const auto& [command, runs] : Runs) RecordProperty(command, runs);
}

}  // namespace
}  // namespace veldrin::records
