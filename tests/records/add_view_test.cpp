#include "records/add_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>

#include "controls/dir_list.h"
#include "controls/file_list.h"
#include "controls/tree_view.h"
#include "records/control_drag.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

class Adding : public testing::Test, public test::Controls {
 protected:
  Adding() {
    Root = &View;
    Folder = Tree.Add(Tree.Add(nullptr, "Photos"), "Holidays");
    Folder->SetTag("0001");
    Catalogue.AddFolder("0001", "Holidays");
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = "tblPhotos";
    Data1.Refresh();
    test::WritePicture(Pictures.filePath("a wide.jpg"), QSize(200, 50));
    test::WritePicture(Pictures.filePath("b tall.bmp"), QSize(50, 200));
    test::WritePicture(Pictures.filePath("c.jpg"), QSize(2000, 1000));
    test::WriteFile(Pictures.filePath("d broken.jpg"), "no picture");
    test::WriteFile(Pictures.filePath("e.txt"), "text");
    View.show();
    View.FillFileTypes();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&View));
  }

  bool Shows(const char* name) { return Get(name).isVisible(); }
  controls::FileListBox& Files() { return Get<controls::FileListBox>("FileToSel"); }

  void ClickFile(int index, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(Files().viewport(), Qt::LeftButton, keys,
                      Files().visualItemRect(Files().item(index)).center());
  }

  // Drops data on the folder as the window system does; true when it was taken.
  bool Drop(const QMimeData& data) {
    QWidget& target = Get("ImgFolder");
    const QPoint middle = target.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted()) QCoreApplication::sendEvent(&target, &drop);
    return enter.isAccepted() && drop.isAccepted();
  }
  void DropPicture() { ASSERT_TRUE(Drop(*MakeControlDrag(Get("picNew")))); }

  std::string ShownParts() {
    QStringList parts;
    for (const char* name : {"ImgNew", "ImageNew", "imageCross"})
      if (Shows(name)) parts << name;
    return parts.join(u' ').toStdString();
  }
  // Whether the files can be chosen, and not their data entered; never both.
  bool IsChoosing() {
    const bool enabled = Files().isEnabled();
    for (const char* name : {"Drive1", "Dir1", "FileType"}) EXPECT_EQ(Get(name).isEnabled(), enabled) << name;
    EXPECT_EQ(Shows("DataPanel"), !enabled);
    return enabled;
  }

  test::TestCatalogue Catalogue;
  QTemporaryDir Pictures;
  controls::TreeView Tree;
  controls::Node* Folder;
  catalogue::RecordList Data1{Catalogue.Engine()};
  AddView View{Data1,
               Tree,
               Catalogue.Paths(),
               Catalogue.Engine(),
               Pictures.path(),
               [this](const base::WorkReport& report) { Told = base::DoneText(report); }};
  QString Told;
};

TEST_F(Adding, FiltersByFileTypeAndMarksWhatIsSelected) {
  const std::tuple<int, Qt::KeyboardModifiers, const char*> steps[] = {
      {0, {}, "ImgNew"},
      {1, {}, "ImgNew"},
      {2, Qt::ControlModifier, "ImgNew ImageNew"},
      {2, Qt::ControlModifier, "ImgNew imageCross"},
      {3, Qt::ControlModifier, ""},  // broken
      {0, {}, "ImgNew"}};
  for (const auto& [file, keys, shown] : steps) {
    ClickFile(file, keys);
    EXPECT_EQ(ShownParts(), shown) << file;
    EXPECT_TRUE(Get("picNew").rect().contains(Get("ImgNew").geometry()));
  }
  EXPECT_EQ(Get("ImgNew").width(), Get("picNew").width());
  Get<QComboBox>("FileType").setCurrentIndex(1);
  EXPECT_EQ(Files().ListCount(), 1);
  EXPECT_EQ(ShownParts(), "");
  View.FillFileTypes();
  EXPECT_EQ(Get<QComboBox>("FileType").currentIndex(), 1) << "a second call changes nothing";
}

// The platform of the tests ends a drag at once; what it carries is dropped by hand.
TEST_F(Adding, OnlyThePictureDraggedOntoTheFolderOpensTheEntryOfData) {
  QMimeData otherProgram;
  otherProgram.setData("application/x-veldrin-control-1", "picNew");
  EXPECT_FALSE(Drop(otherProgram));
  Drop(*MakeControlDrag(Get("FileToSel")));
  ClickFile(0);
  QWidget& picture = Get("ImgNew");
  const QPoint from = picture.rect().center();
  QTest::mouseClick(&picture, Qt::LeftButton, {}, from);
  EXPECT_EQ(Get("picNew").findChild<QDrag*>(), nullptr) << "a click is no drag";
  EXPECT_TRUE(IsChoosing());
  QTest::mousePress(&picture, Qt::LeftButton, {}, from);
  QMouseEvent move(QEvent::MouseMove, from + QPoint(30, 10), picture.mapToGlobal(from + QPoint(30, 10)),
                   Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&picture, &move);
  const auto* drag = Get("picNew").findChild<QDrag*>();
  ASSERT_NE(drag, nullptr);
  EXPECT_TRUE(Drop(*drag->mimeData()));
  EXPECT_FALSE(IsChoosing());
  Click("newCancelBttn");
  EXPECT_TRUE(IsChoosing());
}

TEST_F(Adding, StoresTheSelectionIntoTheFolderOfTheTree) {
  Catalogue.AddPhoto(7, "earlier", {});
  ClickFile(2);
  ClickFile(0, Qt::ControlModifier);
  DropPicture();
  for (const auto& [name, text] :
       {std::pair{"nTitle", "By the sea"}, {"nDescription", "one line"}, {"nMadeBy", ""}}) {
    EXPECT_TRUE(Get(name).hasFocus()) << name;
    QTest::keyClicks(&Get(name), text);
    QTest::keyClick(&Get(name), Qt::Key_Return);
  }
  Get<QCheckBox>("chkRemove").setChecked(true);
  Tree.Select(Folder);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(Catalogue.RowsText("SELECT PhotoID, ImageType, Title, Description, MadeBy FROM tblPhotos "
                               "WHERE PhotoID > 7"),
            "8|jpg|By the sea|one line|<null> 9|jpg|By the sea|one line|<null>");
  EXPECT_EQ(Catalogue.RowsText("SELECT Left(IDNo, 8), PhotoID FROM tblPhotoLinks ORDER BY PhotoID"),
            "00010000|8 00010000|9");
  EXPECT_EQ(QImage(Catalogue.Paths().ImageDir + "8.jpg").width(), 200) << "in the order of the list";
  EXPECT_EQ(Data1.Field("PhotoID").toInt(), 8) << "on the first new record";
  EXPECT_TRUE(IsChoosing());
  EXPECT_EQ(ShownParts(), "");
  EXPECT_EQ(Files().ListCount(), 2) << "the removed files have left the list";
  EXPECT_EQ(Field("nTitle").text(), "By the sea") << "kept for the next batch";
}

}  // namespace
}  // namespace veldrin::records
