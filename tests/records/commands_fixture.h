// The commands on records over a tree of folders.
#pragma once

#include <gtest/gtest.h>

#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "support/silent_views.h"
#include "support/test_support.h"

namespace veldrin::test {

class CommandsTest : public testing::Test {
 protected:
  CommandsTest() { Data1.DatabaseName = Catalogue.Paths().WorkFile; }

  void LoadFolders() { folders::LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile); }
  controls::Node* Find(const QString& key) {
    for (int i = 1; i <= Tree.Count(); ++i)
      if (Tree.NodeAt(i)->Tag() == key) return Tree.NodeAt(i);
    throw std::runtime_error("no node " + key.toStdString());
  }

  const bool InMemory = UseMemoryDisk();
  TestCatalogue Catalogue;
  controls::TreeView Tree;
  catalogue::RecordList Data1{Catalogue.Engine()};
  SilentViews Views;
  catalogue::RecordSource Source{Data1, [this] { return folders::SelectedFolderKey(Tree); },
                                 Catalogue.Engine(), Catalogue.Paths(), Views};
  records::RecordClipboard Clipboard{Data1, Tree, Source, Catalogue.Engine(), Catalogue.Paths(), Views};
  records::DeletePhotos Deletion{Source, Data1, Tree, Catalogue.Engine(), Catalogue.Paths(), Views, Tree};
};

}  // namespace veldrin::test
