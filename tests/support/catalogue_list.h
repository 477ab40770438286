// A catalogue of a test's own with what shows it: the tree of folders and the list of records.
#pragma once

#include "base/work_report.h"
#include "catalogue/record_source.h"
#include "controls/progress.h"
#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "support/test_support.h"

namespace veldrin::test {

struct CatalogueList {
  CatalogueList() { Data1.DatabaseName = Catalogue.Paths().WorkFile; }

  /// Photos without regard to folders, all or those of a condition.
  void Open(const QString& where = {}) {
    Data1.RecordSource = "SELECT tblPhotos.* FROM tblPhotos" + where;
    Data1.Refresh();
  }
  void LoadFolders() { folders::LoadFolderTree(Tree, Catalogue.Engine(), Catalogue.Paths().WorkFile); }
  /// The numbers of the list's photos.
  std::string Ids() const {
    QStringList ids;
    for (int i = 0; i < Data1.RecordCount(); ++i) ids << QString::number(Data1.BookmarkAt(i));
    return ids.join(u' ').toStdString();
  }

  TestCatalogue Catalogue;
  QWidget Window;
  controls::LongWork Work{Window};
  controls::TreeView Tree{&Window};
  catalogue::RecordList Data1{Catalogue.Engine()};
  catalogue::RecordSource Source{Data1, [this] { return folders::SelectedFolderKey(Tree); },
                                 Catalogue.Engine(), Catalogue.Paths()};
  QString Told;  ///< what became of the last work, its lines joined by "|"
  const base::TellWork Tell = [this](const base::WorkReport& report) {
    Told = report.IsAllDone() ? DoneText(report) : FailureText(report).replace(u'\r', u'|');
  };
};

}  // namespace veldrin::test
