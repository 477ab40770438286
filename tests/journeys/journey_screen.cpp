#include "journeys/journey_screen.h"

#include <QApplication>
#include <QRadioButton>

namespace veldrin::test {

namespace {

QString Element(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

Seen PictureOf(const QLabel& label) {
  if (!label.isVisible()) return {};
  const QImage image = label.pixmap(Qt::ReturnByValue).toImage();
  if (image.isNull()) return {};
  return image.pixel(image.width() / 2, image.height() / 2);
}

bool IsWithin(const QWidget* inner, const QWidget* outer) {
  return inner == outer || (inner != nullptr && outer->isAncestorOf(inner));
}

}  // namespace

int Screen::Current() const {
  if (List.empty()) return 0;
  if (Tab == shell::FormTab) return FormNumber.toInt();
  if (Tab != shell::BrowseTab) return Position < 0 ? 0 : List[Position];
  if (!Page) return GridNumber.toInt();
  return Framed < 0 ? 0 : Cells[Framed].Caption.section(u':', 0, 0).toInt();
}

QString Screen::TitleOf(int number) const {
  if (Tab != shell::BrowseTab) return {};
  const QString text = QString::number(number);
  if (!Page) return GridNumber == text ? GridTitle : QString();
  for (const CellOnScreen& cell : Cells)
    if (cell.Caption.startsWith(text + u':')) return cell.Caption.section(QStringLiteral(": "), 1);
  return {};
}

ScreenReader::ScreenReader(shell::frmMain& window)
    : Window(window),
      Tree(Child<controls::TreeView>(window, "tvTreeView")),
      Grid(Child<browse::RecordGrid>(window, "TDBGrid1")),
      Scroll(Child<QScrollBar>(window, "ThumbVScroll")),
      Slider(Child<QSlider>(window, "Slider1")) {
  for (int i = 0; i < browse::CellCount; ++i) {
    Cells[i] = &Child<browse::PictureCell>(window, Element("picThumb", i));
    Images[i] = &Child<browse::ThumbImage>(window, Element("ImgThumb", i));
    Captions[i] = &Child<browse::ThumbCaption>(window, Element("ThumbTitle", i));
    Marks[i] = &Child(window, Element("shpMark", i));
  }
}

Screen ScreenReader::Read() const {
  Screen screen;
  screen.Tab = Child<QStackedWidget>(Window, "SSTab1").currentIndex();
  screen.Page = Child(Window, "ThumbPannel").isVisible();
  if (Tree.SelectedItem() != nullptr) screen.Folder = Tree.SelectedItem()->Tag();
  if (const auto* editor = Tree.viewport()->findChild<QLineEdit*>();
      editor != nullptr && editor->isVisible()) {
    screen.Naming = true;
    screen.NameTyped = editor->text();
  }
  screen.Counter = Child<browse::DataNavigator>(Window, "Data1").Caption().trimmed();
  screen.PreviewOn = Child<QRadioButton>(Window, "PreviewOption(0)").isChecked();
  screen.Preview = PictureOf(Child<QLabel>(Window, "ImgPreview"));
  const QModelIndex row = Grid.currentIndex();
  screen.GridRow = row.row();
  screen.GridNumber = row.siblingAtColumn(0).data().toString();
  screen.GridTitle = row.siblingAtColumn(2).data().toString();
  if (screen.Page) ReadPage(screen);
  if (screen.Tab == shell::FormTab) ReadForm(screen);

  const catalogue::RecordList& list = Window.List();
  screen.Position = list.AbsolutePosition();
  for (int i = 0; i < list.RecordCount(); ++i) screen.List.push_back(list.BookmarkAt(i));
  for (int i = 0; i < list.SelBookmarks.Count(); ++i) screen.Selected.push_back(list.SelBookmarks[i]);
  return screen;
}

void ScreenReader::ReadPage(Screen& screen) const {
  const QWidget& frame = Child(Window, "shpThumb");
  for (int i = 0; i < browse::CellCount; ++i) {
    screen.Cells[i] = {Cells[i]->isVisible(), Captions[i]->Caption(), PictureOf(*Images[i]),
                       Marks[i]->isVisible()};
    if (frame.isVisible() && frame.geometry().contains(Cells[i]->geometry())) screen.Framed = i;
  }
  screen.FrameShown = frame.isVisible();
}

void ScreenReader::ReadForm(Screen& screen) const {
  screen.FormNumber = Child<QLabel>(Window, "ePhotoID").text();
  screen.FormCounter = Child<QLabel>(Window, "eRcdCount").text();
  screen.FormTitle = Child<QLineEdit>(Window, "eTitle").text();
  screen.FormMaker = Child<QLineEdit>(Window, "eMadeBy").text();
  for (const char* image : {"FormImage(0)", "FormImage(1)"})
    if (const Seen seen = PictureOf(Child<QLabel>(Window, image))) screen.FormImage = seen;
}

QString ScreenReader::HiddenFocus() const {
  const QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) return "nothing has the focus";
  if (focus->window() != &Window) return {};
  const QPoint middle = focus->mapTo(&Window, focus->rect().center());
  if (focus == &Window || IsWithin(Window.childAt(middle), focus)) return {};
  return QStringLiteral("%1 %2 has the focus and is covered")
      .arg(QLatin1String(focus->metaObject()->className()), focus->objectName());
}

}  // namespace veldrin::test
