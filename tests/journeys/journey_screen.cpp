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
  if (Tab != shell::BrowseTab) return Position < 0 ? 0 : List[static_cast<size_t>(Position)];
  if (!Page) return GridNumber.toInt();
  return Framed < 0 ? 0 : Cells[static_cast<size_t>(Framed)].Caption.section(u':', 0, 0).toInt();
}

QString Screen::CurrentTitle() const {
  if (Tab == shell::FormTab) return FormTitle;
  if (Tab != shell::BrowseTab) return {};
  if (!Page) return GridTitle;
  return Framed < 0 ? QString() : Cells[static_cast<size_t>(Framed)].Caption.section(QStringLiteral(": "), 1);
}

ScreenReader::ScreenReader(shell::frmMain& window)
    : Window(window),
      Tree(Child<controls::TreeView>(window, QStringLiteral("tvTreeView"))),
      Tabs(Child<QStackedWidget>(window, QStringLiteral("SSTab1"))),
      Page(Child(window, QStringLiteral("ThumbPannel"))),
      Grid(Child<browse::RecordGrid>(window, QStringLiteral("TDBGrid1"))),
      Scroll(Child<QScrollBar>(window, QStringLiteral("ThumbVScroll"))),
      Slider(Child<QSlider>(window, QStringLiteral("Slider1"))),
      Frame(Child(window, QStringLiteral("shpThumb"))),
      Navigator(Child<browse::DataNavigator>(window, QStringLiteral("Data1"))),
      PreviewOn(Child<QRadioButton>(window, QStringLiteral("PreviewOption(0)"))),
      Preview(Child<QLabel>(window, QStringLiteral("ImgPreview"))),
      FormNumber(Child<QLabel>(window, QStringLiteral("ePhotoID"))),
      FormCounter(Child<QLabel>(window, QStringLiteral("eRcdCount"))),
      FormTitle(Child<QLineEdit>(window, QStringLiteral("eTitle"))),
      FormMaker(Child<QLineEdit>(window, QStringLiteral("eMadeBy"))) {
  for (int i = 0; i < browse::CellCount; ++i) {
    Cells[i] = &Child<browse::PictureCell>(window, Element("picThumb", i));
    Images[i] = &Child<browse::ThumbImage>(window, Element("ImgThumb", i));
    Captions[i] = &Child<browse::ThumbCaption>(window, Element("ThumbTitle", i));
    Marks[i] = &Child(window, Element("shpMark", i));
  }
  for (int i = 0; i < 2; ++i) FormImages[i] = &Child<QLabel>(window, Element("FormImage", i));
}

Screen ScreenReader::Read() const {
  Screen screen;
  screen.Tab = Tabs.currentIndex();
  screen.Page = Page.isVisible();
  if (Tree.SelectedItem() != nullptr) screen.Folder = Tree.SelectedItem()->Tag();
  if (const auto* editor = Tree.viewport()->findChild<QLineEdit*>();
      editor != nullptr && editor->isVisible()) {
    screen.Naming = true;
    screen.NameTyped = editor->text();
  }
  screen.Counter = Navigator.Caption().trimmed();
  screen.PreviewOn = PreviewOn.isChecked();
  screen.Preview = PictureOf(Preview);
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
  for (int i = 0; i < browse::CellCount; ++i) {
    screen.Cells[i] = {Cells[i]->isVisible(), Captions[i]->Caption(), PictureOf(*Images[i]),
                       Marks[i]->isVisible()};
    if (Frame.isVisible() && Frame.geometry().contains(Cells[i]->geometry())) screen.Framed = i;
  }
  screen.FrameShown = Frame.isVisible();
}

void ScreenReader::ReadForm(Screen& screen) const {
  screen.FormNumber = FormNumber.text();
  screen.FormCounter = FormCounter.text();
  screen.FormTitle = FormTitle.text();
  screen.FormMaker = FormMaker.text();
  for (const QLabel* image : FormImages)
    if (const Seen seen = PictureOf(*image)) screen.FormImage = seen;
}

QString ScreenReader::HiddenFocus() const {
  const QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr) return QStringLiteral("nothing has the focus");
  if (focus->window() != &Window) return {};
  const QPoint middle = focus->mapTo(&Window, focus->rect().center());
  if (focus == &Window || IsWithin(Window.childAt(middle), focus)) return {};
  return QStringLiteral("%1 %2 has the focus and is covered")
      .arg(QLatin1String(focus->metaObject()->className()), focus->objectName());
}

}  // namespace veldrin::test
