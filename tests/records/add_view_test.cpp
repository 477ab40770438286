#include "records/add_view.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "platform/control_drag.h"
#include "platform/dir_list.h"
#include "platform/file_list.h"
#include "platform/tree_view.h"
#include "support/test_support.h"

namespace veldrin::records {
namespace {

class Adding : public testing::Test {
 protected:
  Adding() {
    Catalogue.AddFolder(QStringLiteral("0000"), QStringLiteral("!UNORGANIZED"));
    Catalogue.AddFolder(QStringLiteral("0001"), QStringLiteral("Holidays"));
    Folder = Tree.Add(Tree.Add(nullptr, QStringLiteral("Photos")), QStringLiteral("Holidays"));
    Folder->SetTag(QStringLiteral("0001"));
    Tree.Select(Folder);
    Data1.DatabaseName = Catalogue.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("tblPhotos");
    Data1.Refresh();
    test::WritePicture(PicturePath(QStringLiteral("a wide.jpg")), QSize(200, 50));
    test::WritePicture(PicturePath(QStringLiteral("b tall.bmp")), QSize(50, 200));
    test::WritePicture(PicturePath(QStringLiteral("c.jpg")), QSize(2000, 1000), Qt::darkBlue);
    test::WriteFile(PicturePath(QStringLiteral("d broken.jpg")), "no picture");
    test::WriteFile(PicturePath(QStringLiteral("e.txt")), "text");
    View = std::make_unique<AddView>(Data1, Tree, Catalogue.Paths(), Catalogue.Engine(), Pictures.path());
    View->show();
    View->FillFileTypes();
    EXPECT_TRUE(QTest::qWaitForWindowActive(View.get()));
  }

  QString PicturePath(const QString& name) const { return Pictures.path() + QLatin1Char('/') + name; }

  template <class Widget = QWidget>
  Widget& Find(const char* name) {
    auto* widget = View->findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *widget;
  }
  bool Shows(const char* name) { return Find(name).isVisible(); }
  platform::FileListBox& Files() { return Find<platform::FileListBox>("FileToSel"); }

  void ClickFile(int index, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(Files().viewport(), Qt::LeftButton, keys,
                      Files().visualItemRect(Files().item(index)).center());
  }
  void ClickButton(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }

  // Drops data on the folder as the window system does; true when it was taken.
  bool Drop(const QMimeData& data) {
    QWidget& target = Find("ImgFolder");
    const QPoint middle = target.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted()) QCoreApplication::sendEvent(&target, &drop);
    return enter.isAccepted() && drop.isAccepted();
  }
  void DropPicture() { ASSERT_TRUE(Drop(*platform::MakeControlDrag(Find("picNew")))); }

  bool ChoosersEnabled() {
    const bool enabled = Files().isEnabled();
    for (const char* name : {"Drive1", "Dir1", "FileType"})
      EXPECT_EQ(Find(name).isEnabled(), enabled) << name;
    return enabled;
  }

  test::TestCatalogue Catalogue;
  QTemporaryDir Pictures;
  platform::TreeView Tree;
  platform::Node* Folder;
  catalogue::RecordList Data1{Catalogue.Engine()};
  std::unique_ptr<AddView> View;
};

TEST_F(Adding, FillsTheFileTypesOnceAndFiltersByThem) {
  auto& types = Find<QComboBox>("FileType");
  ASSERT_EQ(types.count(), 8);
  EXPECT_EQ(types.itemText(0), QStringLiteral("All File(*.bmp;*.dib;*.gif;*.jpg;*.pcd;*.pcx;*.tga)"));
  EXPECT_EQ(types.itemText(7), QStringLiteral("Targa(*.tga)"));
  EXPECT_EQ(Files().ListCount(), 4);
  types.setFocus();
  QTest::keyClick(&types, Qt::Key_Down);
  EXPECT_EQ(Files().ListCount(), 1);

  Find<platform::DirListBox>("Dir1").SetPath(QStringLiteral("/"));
  View->FillFileTypes();
  EXPECT_EQ(types.count(), 8);
  EXPECT_EQ(Files().Path(), QStringLiteral("/")) << "a second call changes nothing";
}

TEST_F(Adding, WithoutItsStartDirectoryItBeginsElsewhere) {
  AddView other(Data1, Tree, Catalogue.Paths(), Catalogue.Engine(), PicturePath(QStringLiteral("none")));
  other.FillFileTypes();
  EXPECT_EQ(other.findChild<QComboBox*>(QStringLiteral("FileType"))->count(), 8);
  EXPECT_TRUE(QFileInfo(other.findChild<platform::FileListBox*>()->Path()).isDir());
}

TEST_F(Adding, WhileAnotherRoutineWalksTheListTheFilesStay) {
  const catalogue::RepositionGuard guard(Data1);
  Find<platform::DirListBox>("Dir1").SetPath(QStringLiteral("/"));
  EXPECT_EQ(Files().Path(), Pictures.path());
}

TEST_F(Adding, ThePreviewFillsItsBoxAndMarksWhatIsSelected) {
  const QSize box = Find("picNew").size();
  constexpr int margin = 400 / 15;
  struct Step {
    const char* Name;
    int File;
    Qt::KeyboardModifiers Keys;
    QSize Preview;  ///< invalid: hidden
    bool Multi;
    bool Cross;
  };
  const Step steps[] = {
      {"wide", 0, {}, {box.width(), box.width() / 4}, false, false},
      {"tall", 1, {}, {box.height() / 4, box.height()}, false, false},
      {"second", 2, Qt::ControlModifier, {box.width() - margin, (box.width() - margin) / 2}, true, false},
      {"taken out", 2, Qt::ControlModifier, {box.width(), box.width() / 2}, false, true},
      {"broken", 3, Qt::ControlModifier, {}, false, false},
      {"wide again", 0, {}, {box.width(), box.width() / 4}, false, false},
  };
  for (const Step& step : steps) {
    ClickFile(step.File, step.Keys);
    EXPECT_EQ(Shows("ImgNew"), step.Preview.isValid()) << step.Name;
    EXPECT_EQ(Shows("ImageNew"), step.Multi) << step.Name;
    EXPECT_EQ(Shows("imageCross"), step.Cross) << step.Name;
    if (!step.Preview.isValid()) continue;
    const QRect shown = Find("ImgNew").geometry();
    EXPECT_NEAR(shown.width(), step.Preview.width(), 1) << step.Name;
    EXPECT_NEAR(shown.height(), step.Preview.height(), 1) << step.Name;
    EXPECT_NEAR(shown.center().x(), box.width() / 2, 1) << step.Name;
    EXPECT_NEAR(shown.center().y(), box.height() / 2, 1) << step.Name;
  }
  Files().SetPattern(QStringLiteral("*"));
  EXPECT_FALSE(Shows("ImgNew"));
}

TEST_F(Adding, OnlyThePictureOpensTheEntryOfData) {
  QMimeData text;
  text.setText(QStringLiteral("picNew"));
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(PicturePath(QStringLiteral("c.jpg")))});
  QMimeData otherProgram;
  otherProgram.setData(QStringLiteral("application/x-veldrin-control-1"), "picNew");
  for (const QMimeData* data : {&text, &files, &otherProgram}) EXPECT_FALSE(Drop(*data));
  Drop(*platform::MakeControlDrag(Find("FileToSel")));
  EXPECT_FALSE(Shows("DataPanel"));
  EXPECT_TRUE(ChoosersEnabled());

  DropPicture();
  EXPECT_TRUE(Shows("DataPanel"));
  EXPECT_FALSE(ChoosersEnabled());

  ClickFile(0);
  ClickButton("newCancelBttn");
  EXPECT_FALSE(Shows("DataPanel"));
  EXPECT_TRUE(ChoosersEnabled());
}

// The platform of the tests ends a drag at once; what it carries is dropped by hand.
TEST_F(Adding, ThePictureIsDraggedWhenThePointerMovesWithTheButtonDown) {
  ClickFile(0);
  QWidget& picture = Find("ImgNew");
  const QPoint from = picture.rect().center();
  const auto drag = [&] { return Find("picNew").findChild<QDrag*>(); };
  QTest::mouseMove(&picture, from + QPoint(60, 0));
  QTest::mouseClick(&picture, Qt::LeftButton, {}, from);
  EXPECT_EQ(drag(), nullptr) << "a click is no drag";

  QTest::mousePress(&picture, Qt::LeftButton, {}, from);
  QMouseEvent move(QEvent::MouseMove, from + QPoint(30, 10), picture.mapToGlobal(from + QPoint(30, 10)),
                   Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&picture, &move);
  ASSERT_NE(drag(), nullptr);
  EXPECT_FALSE(drag()->pixmap().isNull());
  EXPECT_TRUE(Drop(*drag()->mimeData()));
  EXPECT_TRUE(Shows("DataPanel"));
}

TEST_F(Adding, EnterGoesFromFieldToField) {
  ClickFile(0);
  DropPicture();
  auto& title = Find<QLineEdit>("nTitle");
  auto& description = Find<QPlainTextEdit>("nDescription");
  auto& madeBy = Find<QLineEdit>("nMadeBy");
  QTest::mouseClick(&title, Qt::LeftButton);
  QTest::keyClicks(&title, QStringLiteral("Title"));
  QTest::keyClick(&title, Qt::Key_Return);
  EXPECT_TRUE(description.hasFocus());
  QTest::keyClicks(&description, QStringLiteral("Description"));
  QTest::keyClick(&description, Qt::Key_Enter);
  EXPECT_TRUE(madeBy.hasFocus());
  EXPECT_EQ(description.toPlainText(), QStringLiteral("Description"));
  QTest::keyClick(&madeBy, Qt::Key_Return);
  EXPECT_TRUE(Find("newSaveBttn").hasFocus());

  // Each way into a field selects all of it.
  QTest::mouseClick(&title, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_TRUE(QTest::qWaitFor([&] { return title.selectedText() == QStringLiteral("Title"); }));
  QTest::keyClick(&title, Qt::Key_Tab);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return description.textCursor().selectedText() == QStringLiteral("Description"); }));
}

TEST_F(Adding, TheFieldsTakeWhatTheirColumnsTake) {
  ClickFile(0);
  DropPicture();
  for (const auto& [name, length] : {std::pair{"nTitle", 60}, std::pair{"nMadeBy", 26}}) {
    auto& field = Find<QLineEdit>(name);
    field.clear();
    QTest::keyClicks(&field, QString(length + 1, QLatin1Char('x')));
    EXPECT_EQ(field.text().size(), length) << name;
  }
  auto& description = Find<QPlainTextEdit>("nDescription");
  description.setPlainText(QString(200, QLatin1Char('a')) + QStringLiteral("end"));
  description.moveCursor(QTextCursor::Start);
  description.insertPlainText(QString(51, QLatin1Char('b')) + QStringLiteral("\U0001F4F7\n."));
  const QString text = description.toPlainText();
  EXPECT_TRUE(text.startsWith(QString(51, QLatin1Char('b')) + QChar(u'a'))) << text.toStdString();
  EXPECT_TRUE(text.endsWith(QStringLiteral("aend"))) << "what was there before stays";
  description.setPlainText(QString(300, QLatin1Char('c')));
  EXPECT_EQ(description.toPlainText(), QString(255, QLatin1Char('c')));
  description.moveCursor(QTextCursor::End);
  QTest::keyClicks(&description, QStringLiteral("d"));
  EXPECT_EQ(description.toPlainText(), QString(255, QLatin1Char('c')));
}

TEST_F(Adding, StoresTheSelectionIntoTheFolderOfTheTree) {
  Catalogue.AddPhoto(7, QStringLiteral("earlier"), {});
  ClickFile(2);
  ClickFile(0, Qt::ControlModifier);
  DropPicture();
  QTest::keyClicks(&Find("nTitle"), QStringLiteral("By the sea"));
  Find<QCheckBox>("chkRemove").setChecked(true);
  Tree.Select(Tree.Root());
  Tree.Select(Folder);
  ClickButton("newSaveBttn");

  EXPECT_EQ(
      Catalogue.Rows(QStringLiteral(
          "SELECT PhotoID, ImageType, Title, MadeBy FROM tblPhotos WHERE PhotoID > 7 ORDER BY PhotoID")),
      QStringList({QStringLiteral("8|jpg|By the sea|<null>"), QStringLiteral("9|jpg|By the sea|<null>")}));
  EXPECT_EQ(Catalogue.Rows(QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks ORDER BY PhotoID")),
            QStringList({QStringLiteral("0001%1|8").arg(QString(36, QLatin1Char('0'))),
                         QStringLiteral("0001%1|9").arg(QString(36, QLatin1Char('0')))}));
  EXPECT_EQ(QImage(Catalogue.Paths().ImageDir + QStringLiteral("8.jpg")).width(), 200)
      << "in the order of the list";
  EXPECT_EQ(Data1.Field(QStringLiteral("PhotoID")).toInt(), 8) << "on the first new record";
  EXPECT_FALSE(Shows("DataPanel"));
  EXPECT_FALSE(Shows("ImgNew") || Shows("ImageNew") || Shows("imageCross"));
  EXPECT_TRUE(ChoosersEnabled());
  EXPECT_EQ(Files().ListCount(), 2) << "the removed files have left the list";
  EXPECT_EQ(Find<QLineEdit>("nTitle").text(), QStringLiteral("By the sea")) << "kept for the next batch";
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Adding, WithNothingSelectedNothingIsStored) {
  DropPicture();
  ClickButton("newSaveBttn");
  EXPECT_EQ(Data1.RecordCount(), 0);
  EXPECT_FALSE(Shows("DataPanel"));
}

// Nothing of the view may be cut off at the size of its place, nor at that of a window that is higher.
TEST_F(Adding, EverythingHasItsRoom) {
  DropPicture();
  for (const int height : {654, 900}) {
    View->resize(829, height);
    EXPECT_LE(View->minimumSizeHint().height(), 654);
    EXPECT_LE(View->minimumSizeHint().width(), 829);
    for (const QWidget* part : View->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (!part->isVisible()) continue;
      EXPECT_TRUE(View->rect().contains(part->geometry())) << part->objectName().toStdString();
    }
  }
}

}  // namespace
}  // namespace veldrin::records
