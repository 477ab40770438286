// The folder menu in its states, the edit of a name, what waits for a paste.
#include <QLineEdit>
#include <QTest>

#include "tour/tour.h"

namespace veldrin::tour {

namespace {

// A click on a folder given by its names from the top down.
void Click(Tour& tour, const QStringList& names) {
  controls::Node* node = tour.Tree().Root();
  for (const QString& name : names) {
    controls::Node* child = node->Child();
    while (child != nullptr && child->Text() != name) child = child->Next();
    if (child == nullptr) throw std::runtime_error("no folder " + name.toStdString());
    node = child;
  }
  tour.Tree().Select(node);
  Q_EMIT tour.Tree().NodeClick(node);
}

void Menus(Tour& tour) {
  Click(tour, {});
  tour.SaveFolderMenu("14-menu-root");
  Click(tour, {QStringLiteral("Travels"), QStringLiteral("!UNORGANIZED")});
  tour.SaveFolderMenu("14-menu-unorganized");
  Click(tour, {QStringLiteral("Travels"), QStringLiteral("Italy")});
  tour.SaveFolderMenu("14-menu-folder");
  tour.Tree().SelectedItem()->setExpanded(true);
  tour.Choose("FolderCut");
  tour.SaveFolderMenu("14-menu-cut-folder");
  Click(tour, {QStringLiteral("Nature")});
  tour.Save("14-cut-subtree");
  tour.SaveFolderMenu("14-menu-paste");
  tour.Choose("FolderUndoCut");
}

QLineEdit& Editor(Tour& tour) { return *tour.Tree().findChild<QLineEdit*>(); }

// Esc takes the name back.
void Names(Tour& tour) {
  Click(tour, {QStringLiteral("Travels"), QStringLiteral("Norway")});
  tour.Choose("FolderRen");
  tour.Save("15-label-edit");
  Editor(tour).setText(QStringLiteral("A name that is a good deal longer than the tree is wide"));
  tour.Save("15-label-edit-long");
  Editor(tour).setText(QStringLiteral("Italy"));
  tour.SaveModal("15-duplicate-name", [&tour] { QTest::keyClick(&Editor(tour), Qt::Key_Return); });
  tour.Save("15-label-edit-again");
  QTest::keyClick(&Editor(tour), Qt::Key_Escape);
  tour.SaveModal("15-delete-question", [&tour] { tour.Choose("FolderDel"); });
}

void CutRecords(Tour& tour) {
  // Records are cut from a folder without others in it.
  Click(tour, {QStringLiteral("Cities")});
  tour.GoTo(4);
  for (int i = 0; i < 3; ++i) QTest::keyClick(&tour.Get("TDBGrid1"), Qt::Key_Up, Qt::ShiftModifier);
  tour.Choose("RecordCut");
  tour.Save("16-cut-records-data-view");
  tour.SaveMenu("RecordMenu", QPoint(400, 260), "16-record-menu-after-cut");
  tour.GoTo(0);
  tour.Choose("MainImage");
  tour.Save("16-cut-records-image-view");
  tour.Choose("RecordUndoCut");
  tour.Save("16-cut-taken-back");
  tour.Choose("MainData");
  tour.SelectFolder(QStringLiteral("Photos"));
}

}  // namespace

void TakeFolderPictures(Tour& tour) {
  Menus(tour);
  Names(tour);
  CutRecords(tour);
}

}  // namespace veldrin::tour
