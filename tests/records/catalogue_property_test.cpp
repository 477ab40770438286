// Commands at random, each compared with what a model makes of it.

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <random>

#include "catalogue/schema.h"
#include "folders/folder_commands.h"
#include "records/catalogue_model.h"
#include "records/commands_fixture.h"

namespace veldrin::records {
namespace {

using controls::Node;
using test::CatalogueModel;

constexpr int PhotoCount = 12;
constexpr int MostNodes = 40;
constexpr int WholeRun = 2000;

class CatalogueProperty : public test::CommandsTest {
 protected:
  CatalogueProperty() {
    AddPhotos();
    LoadFolders();
    Select({});
  }

  // --- chance ---

  int Pick(qsizetype count) { return static_cast<int>(Random() % static_cast<unsigned>(count)); }
  bool Seldom() { return Pick(6) == 0; }
  QString PickName() {
    const char* names[] = {"a", "A", "it's", "b", "!UNORGANIZED", ""};
    return QLatin1String(names[Pick(std::size(names))]);
  }
  // Rather one without folders in it, and with photos.
  QString PickNode() {
    const QStringList nodes = Model.Nodes();
    const QString node = nodes[Pick(nodes.size())];
    return Model.HasChildren(node) || Model.Shows(node).empty() ? nodes[Pick(nodes.size())] : node;
  }
  // Selects so many in six of the photos shown, seldom none.
  std::vector<int> SelectPhotos(int inSix) {
    std::vector<int> photos;
    for (const int photo : Model.Shows(Model.Selected))
      if (Pick(6) < inSix) photos.push_back(photo);
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

  void Select(const QString& node) {
    Model.Selected = node;
    Tree.Select(Find(node));
    Navigation.ShowAnew();
  }

  // Types names into the open editor until one is accepted.
  void TypeName() {
    bool accepted = false;
    for (QString name = PickName(); !accepted; name = QStringLiteral("new %1").arg(++NamesMade)) {
      auto* editor = Tree.findChild<QLineEdit*>();
      ASSERT_NE(editor, nullptr);
      editor->setText(name);
      accepted = Model.Rename(name);
      EndEdit(true, accepted ? 0 : 1);
    }
  }
  void EndEdit(bool keep, int boxes) {
    test::AnswerBoxes([&] { Tree.EndLabelEdit(keep); }, {boxes, QMessageBox::Ok});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void FolderAdd() {
    Folders.FolderAdd_Click();
    Model.Add(QStringLiteral("New Folder"));
    if (!Seldom()) return TypeName();
    EndEdit(false, 0);
    Select(Model.Selected);
  }
  void FolderDel() {
    if (IsSure([this] { Folders.FolderDel_Click(); })) Model.Delete(Model.Selected);
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
    FormView = Seldom();
    if (photos.empty() || FormView) photos = {Data1.Bookmark()};
    if (!IsSure([this, click] { (Deletion.*click)(); })) return;
    for (const int photo : photos) (Model.*takeAway)(photo);
  }
  // As many as there were.
  void AddPhotos() {
    while (Model.Photos.size() < PhotoCount) {
      Catalogue.AddPhoto(++PhotosMade, QStringLiteral("photo"), {QString()});
      Model.AddPhoto(PhotosMade);
    }
  }

  // --- what the menus allow ---

  bool TakesFolders() const {
    return !CatalogueModel::IsUnorganized(Model.Selected) && !Tree.SelectedItem()->IsGrey();
  }
  // For so many nodes, in each other or not.
  bool HasRoom(qsizetype nodes) const {
    return Model.Selected.size() / 4 + nodes <= catalogue::LevelCount &&
           Model.Nodes().size() + nodes <= MostNodes;
  }
  // A copy into itself ends in an error.
  bool CanPasteFolder() const {
    if (!Model.PendingFolder || Model.Selected.startsWith(Model.PendingFolder->Source)) return false;
    return TakesFolders() && HasRoom(Model.Nodes(Model.PendingFolder->Source).size());
  }

  struct Command {
    const char* Name;
    int Weight;
    bool Allowed;
    std::function<void()> Run;
    std::function<void()> RunModel = [] {};
  };

  std::vector<Command> Commands() {
    const QString& node = Model.Selected;
    const bool isChangeable = TakesFolders() && !node.isEmpty();
    const bool some = Data1.RecordCount() > 0;
    const bool isLeaf = some && !node.isEmpty() && !Model.HasChildren(node);
    return {{"FolderAdd", 3, TakesFolders() && HasRoom(1), [this] { FolderAdd(); }},
            {"FolderRen", 1, isChangeable, [this] { Folders.FolderRen_Click(); }, [this] { TypeName(); }},
            {"FolderDel", 1, isChangeable, [this] { FolderDel(); }},
            {"FolderCut", 1, isChangeable, [this] { Folders.FolderCut_Click(); }, [this] { Model.Cut(); }},
            {"FolderCopy", 1, isChangeable, [this] { Folders.FolderCopy_Click(); }, [this] { Model.Copy(); }},
            {"FolderUndoCut", 1, Model.PendingFolder && Seldom(), [this] { Folders.FolderUndoCut_Click(); },
             [this] { Model.UndoCut(); }},
            {"FolderPaste", 4, CanPasteFolder(), [this] { FolderPaste(); }},
            {"RecordCut", 6, isLeaf, [this] { Stage(true); }},
            {"RecordCopy", 12, isLeaf && !CatalogueModel::IsUnorganized(node), [this] { Stage(false); }},
            {"RecordUndoCut", 1, Model.PendingRecords.has_value(),
             [this] { Clipboard.RecordUndoCut_Click(); }, [this] { Model.UndoRecordCut(); }},
            {"RecordPaste", 12, Model.CanPasteRecords(), [this] { Clipboard.RecordPaste_Click(); },
             [this] { Model.PasteRecords(); }},
            {"RecordDel", 1, some && Pick(3) == 0,
             [this] { TakeAway(&DeletePhotos::RecordDel_Click, &CatalogueModel::DeletePhoto); }},
            {"RecordRmv", 2, some && !CatalogueModel::PlaceOf(node).isEmpty(),
             [this] { TakeAway(&DeletePhotos::RecordRmv_Click, &CatalogueModel::Remove); }},
            {"new photos", 1, Model.Photos.size() < PhotoCount, [this] { AddPhotos(); },
             [this] { Select(Model.Selected); }}};
  }

  void Step() {
    if (Pick(3) > 0) {
      Select(PickNode());
      Log << QStringLiteral("select ") + Model.Selected;
    }
    std::vector<Command> allowed;
    for (const Command& command : Commands()) {
      Runs.try_emplace(command.Name);
      if (command.Allowed) allowed.insert(allowed.end(), command.Weight, command);
    }
    if (allowed.empty()) return;
    const Command& command = allowed[Pick(std::ssize(allowed))];
    Log << QLatin1String(command.Name);
    ++Runs[command.Name];
    command.Run();
    command.RunModel();
  }

  // --- the comparison ---

  QStringList FoldersOfModel() const {
    QStringList lines;
    for (const QString& node : Model.Nodes()) {
      const bool isFolder = !CatalogueModel::IsUnorganized(node);
      lines << node + u'|' + (isFolder ? Model.Folders.at(node) : QStringLiteral("!UNORGANIZED"));
    }
    return lines;
  }
  static QStringList FoldersOfTree(const Node& node) {
    QStringList lines = {node.Tag() + u'|' + node.Text()};
    for (const Node* child = node.Child(); child != nullptr; child = child->Next())
      lines << FoldersOfTree(*child);
    return lines;
  }
  QStringList FoldersOfTables() {
    QStringList folders;
    for (int level = 1; level <= catalogue::LevelCount; ++level)
      folders << Catalogue.Rows(QStringLiteral("SELECT IDNo, FolderName FROM ") +
                                catalogue::LevelTable(level));
    std::ranges::sort(folders, {}, [](const QString& row) { return row.section(QLatin1Char('|'), 0, 0); });
    return folders;
  }
  QStringList LinksOfModel() const {
    QStringList links;
    for (const auto& [key, photo] : Model.Links)
      links << QStringLiteral("%1|%2").arg(key.leftJustified(40, QLatin1Char('0'))).arg(photo);
    return links;
  }
  static std::set<int> PhotosOf(const catalogue::RecordList& list) {
    std::set<int> photos;
    for (const auto& row : list.Recordset().ReadRows(0, list.RecordCount())) photos.insert(row[0].toInt());
    return photos;
  }

  void Compare() {
    EXPECT_EQ(FoldersOfTree(*Tree.Root()), FoldersOfModel());
    EXPECT_EQ(FoldersOfTables(), FoldersOfModel().mid(1));
    EXPECT_EQ(
        Catalogue.Rows(QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks ORDER BY IDNo, PhotoID")),
        LinksOfModel());
    EXPECT_EQ(Tree.SelectedItem(), Find(Model.Selected));
    EXPECT_EQ(PhotosOf(Data1), Model.Shows(Model.Selected));
    EXPECT_EQ(Clipboard.IsCutPending() || Clipboard.CopySource() != nullptr,
              Model.PendingRecords.has_value());
    EXPECT_EQ(Folders.HasPending(), Model.PendingFolder.has_value());
  }

  QLineEdit Search;
  folders::FolderNavigation Navigation{Tree, Search, Source};
  folders::FolderCommands Folders{Tree, Navigation, Catalogue.Engine(), Catalogue.Paths()};

  CatalogueModel Model;
  std::mt19937 Random;
  int NamesMade = 0;
  int PhotosMade = 0;
  QStringList Log;
  std::map<std::string, int> Runs;
};

// VELDRIN_SEED repeats a run, VELDRIN_STEPS makes it longer or shorter.
TEST_F(CatalogueProperty, CommandsDoWhatTheModelSays) {
  const QString given = qEnvironmentVariable("VELDRIN_SEED");
  const unsigned seed = given.isEmpty() ? std::random_device()() : given.toUInt();
  const int steps = qEnvironmentVariable("VELDRIN_STEPS", QString::number(WholeRun)).toInt();
  Random.seed(seed);
  for (int step = 1; step <= steps; ++step) {
    Step();
    Compare();
    if (!HasFailure()) continue;
    FAIL() << "VELDRIN_SEED=" << seed << " failed at step " << step << " after\n"
           << Log.mid(std::max<qsizetype>(0, Log.size() - 25)).join(QLatin1Char('\n')).toStdString();
  }
  for (const auto& [command, runs] : Runs) {
    RecordProperty(command, runs);
    EXPECT_TRUE(runs > 0 || steps < WholeRun) << command << ", VELDRIN_SEED=" << seed;
  }
}

}  // namespace
}  // namespace veldrin::records
