// The folders of a catalogue of a test's own in the tree of a window.
#pragma once

#include "folders/folder_keys.h"
#include "folders/folder_navigation.h"
#include "support/catalogue_list.h"

namespace veldrin::folders {

struct FoldersTest : testing::Test, test::CatalogueList {
  FoldersTest() {
    Tree.setGeometry(0, 40, 300, 600);
    QObject::connect(&Navigation, &FolderNavigation::FolderShown, [this] { Log << "show"; });
    QObject::connect(&Navigation, &FolderNavigation::FolderMenuRequested, [this] { Log << "popup"; });
  }
  // What the window was told since the last look.
  QString Take() { return std::exchange(Log, {}).join(' '); }

  QString AddRow(const QString& name, const QString& parent = {}) {
    return AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, LevelOfKey(parent) + 1, name,
                           parent);
  }
  // Folders by their paths.
  void Load(const QString& paths) {
    QMap<QString, QString> keys;
    for (const QString& path : paths.split(' ', Qt::SkipEmptyParts)) {
      keys[path] = AddRow(path.section('/', -1), keys.value(path.section('/', 0, -2)));
    }
    LoadFolders();
    Window.show();
    Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
  }
  controls::Node* Find(const QString& path) {
    controls::Node* node = Tree.Root();
    for (const QString& name : path.split('/', Qt::SkipEmptyParts)) {
      node = node->Child();
      while (node->Text() != name) node = node->Next();
    }
    return node;
  }
  QPoint PointOf(const QString& path) { return Tree.visualItemRect(Find(path)).center(); }
  void Click(const QString& path, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(Tree.viewport(), button, {}, PointOf(path));
  }
  QString Selected() { return Tree.SelectedItem()->Text(); }

  QLineEdit Search{&Window};
  QStringList Log;
  FolderNavigation Navigation{Tree, Search, Source};
};

}  // namespace veldrin::folders
