// The commands on records over a tree of folders.
#pragma once

#include <gtest/gtest.h>

#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "records/delete_photos.h"
#include "records/record_clipboard.h"
#include "support/test_support.h"

namespace veldrin::test {

class CommandsTest : public testing::Test {
 protected:
  CommandsTest() {
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    QObject::connect(&Deletion, &records::DeletePhotos::Deleted, &Clipboard,
                     &records::RecordClipboard::Forget);
  }

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
  bool FormView = false;
  catalogue::RecordSource Source{Data1, [this] { return folders::SelectedFolderKey(Tree); },
                                 Catalogue.Engine(), Catalogue.Paths()};
  // What the last command told: what was done, or what wasn't.
  QString Told;
  base::TellWork Tell = [this](const base::WorkReport& report) {
    Told = report.IsAllDone() ? DoneText(report) : FailureText(report);
  };
  records::RecordClipboard Clipboard{Data1, Tree, Source, Catalogue.Engine(), Catalogue.Paths(), Tell};
  records::DeletePhotos Deletion{[this] { return Data1.Chosen(!FormView); },
                                 Source,
                                 Tree,
                                 Catalogue.Engine(),
                                 Catalogue.Paths(),
                                 Tree,
                                 Tell};
};

}  // namespace veldrin::test
