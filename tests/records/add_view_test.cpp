#include "records/add_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDrag>

#include "controls/dir_list.h"
#include "controls/file_list.h"
#include "pictures/picture_cache.h"
#include "records/control_drag.h"
#include "support/catalogue_list.h"

namespace veldrin::records {
namespace {

class Adding : public testing::Test, public test::Controls, public test::CatalogueList {
 protected:
  Adding() {
    Root = &View;
    Catalogue.AddFolder("0001", "Holidays");
    LoadFolders();
    Open();
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
    test::WaitForPictures();
  }

  bool Drop(const QMimeData& data) { return test::Drop(Get("ImgFolder"), data); }

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

  QTemporaryDir Pictures;
  pictures::PictureCache Cache;
  AddView View{Data1, Tree, Catalogue.Paths(), Catalogue.Engine(), Pictures.path(), Work, Tell, Cache};
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

// What is stored, and where, is looked at by the journey.
TEST_F(Adding, ASaveShowsTheFirstNewRecordAndKeepsTheTexts) {
  Catalogue.AddPhoto(7, "earlier", {});
  ClickFile(2);
  ClickFile(0, Qt::ControlModifier);
  ASSERT_TRUE(Drop(*MakeControlDrag(Get("picNew"))));
  for (const auto& [name, text] :
       {std::pair{"nTitle", "By the sea"}, {"nDescription", "one line"}, {"nMadeBy", ""}}) {
    EXPECT_TRUE(Get(name).hasFocus()) << name;
    QTest::keyClicks(&Get(name), text);
    QTest::keyClick(&Get(name), Qt::Key_Return);
  }
  Get<QCheckBox>("chkRemove").setChecked(true);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(Catalogue.RowsText("SELECT Title, Description, MadeBy FROM tblPhotos WHERE PhotoID = 9"),
            "By the sea|one line|<null>");
  EXPECT_EQ(Told, "2 photos stored in Photos");
  EXPECT_EQ(Data1.Field("PhotoID").toInt(), 8) << "on the first new record";
  EXPECT_TRUE(IsChoosing());
  EXPECT_EQ(Files().ListCount(), 2) << "the removed files have left the list";
  EXPECT_EQ(Field("nTitle").text(), "By the sea") << "kept for the next batch";
  Tree.Select(Tree.NodeAt(2));
  Catalogue.Execute({"UPDATE tblLevel1 SET FolderName = 'theirs'"});
  ClickFile(0);
  ASSERT_TRUE(Drop(*MakeControlDrag(Get("picNew"))));
  Click("newSaveBttn");
  EXPECT_TRUE(Told.contains("(The folder was changed by another machine)")) << Told.toStdString();
  EXPECT_FALSE(IsChoosing()) << "for another try";
}

}  // namespace
}  // namespace veldrin::records
