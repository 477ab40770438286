#include "shell/command_bars.h"

#include <QIcon>
#include <vector>

#include "controls/named.h"

namespace veldrin::shell {

namespace {

struct MenuItem {
  const char* Name;
  const char* Caption;  // null for a menu's line
  const char* Icon = nullptr;
};

struct MenuTable {
  const char* Name;
  const char* Caption;
  std::vector<MenuItem> Items;
};

const std::vector<MenuTable>& Menus() {
  static const std::vector<MenuTable> menus = {
      {"FileMenu",
       "&File",
       {{"FileGet", "&Get Photo(s)", "document-save-as"},
        {"FileEmail", "&E-Mail Photo(s)", "mail-send"},
        {"FileWeb", "Make &Web Page(s)", "text-html"},
        {"FileSep", nullptr},
        {"FileSetup", "Program &Setup...", "configure"},
        {"FileSep1", nullptr},
        {"FileExit", "E&xit the Program", "application-exit"}}},
      {"MainMenu",
       "&Main",
       {{"MainData", "&Data  View", "view-list-details"},
        {"MainImage", "&Image View", "view-list-icons"},
        {"MainForm", "&Form View", "view-form"},
        {"MainAdd", "&Add New", "list-add"},
        {"MainPlay", "Image &Play", "media-playback-start"}}},
      {"FolderMenu",
       "F&older",
       {{"FolderUndoCut", "&Undo Folder Cut", "edit-undo"},
        {"FolderSep", nullptr},
        {"FolderAdd", "&Add New Folder", "folder-new"},
        {"FolderRen", "&Rename Folder", "edit-rename"},
        {"FolderDel", "&Delete Folder", "edit-delete"},
        {"FolderSep1", nullptr},
        {"FolderCut", "Folder C&ut", "edit-cut"},
        {"FolderCopy", "Folder &Copy", "edit-copy"},
        {"FolderPaste", "Folder &Paste", "edit-paste"},
        {"FolderSep2", nullptr},
        {"FolderRcdPaste", "&Record Paste (to Folder)"}}},
      {"RecordMenu",
       "&Record",
       {{"RecordAdd", "&Add New Record", "list-add"},
        {"RecordEdit", "&Edit Record", "document-edit"},
        {"RecordDel", "&Delete Record", "edit-delete"},
        {"RecordRmv", "&Remove From Folder", "list-remove"},
        {"RecordSep", nullptr},
        {"RecordUndoCut", "&Undo Record Cut", "edit-undo"},
        {"RecordSep1", nullptr},
        {"RecordCut", "Record C&ut", "edit-cut"},
        {"RecordCopy", "Record &Copy", "edit-copy"},
        {"RecordPaste", "Record &Paste (to Folder)", "edit-paste"},
        {"RecordSep2", nullptr},
        {"RecordQuery", "&Query Database...", "view-filter"},
        {"RecordSearch", "&Search Record...", "edit-find"},
        {"RecordSep3", nullptr},
        {"RecordAll", "Select &All", "edit-select-all"}}},
      {"PhotoMenu",
       "P&hoto",
       {{"PhotoGet", "&Get Photo(s)...", "document-save-as"},
        {"PhotoEmail", "&E-Mail Photo(s)...", "mail-send"},
        {"PhotoWeb", "Make &Web Page(s)...", "text-html"}}},
      {"ReportMenu",
       "Re&port",
       {{"ReportList", "Photo Image &List", "view-list-text"},
        {"ReportGallery", "Photo Image Gallery", "view-grid"}}},
      {"MusicMenu",
       "M&usic",
       {{"MusicSetup", "&Setup Music...", "view-media-playlist"}, {"MusicPlay", "&Play Music"}}},
      {"HelpMenu",
       "&Help",
       {{"HelpHelp", "&Help Contents", "help-contents"},
        {"HelpSep", nullptr},
        {"HelpAbout", "&About the Program", "help-about"}}},
  };
  return menus;
}

struct ToolButton {
  int Number;
  const char* Text;
  const char* Icon;
};

constexpr ToolButton ToolButtons[] = {{DataViewCode, "Data View", "view-list-details"},
                                      {ImageViewCode, "Image View", "view-list-icons"},
                                      {FormViewCode, "Form View", "view-form"},
                                      {AddNewCode, "Add New", "list-add"},
                                      {ImagePlayCode, "Image Play", "media-playback-start"},
                                      {ExitProgramCode, "Exit Program", "application-exit"},
                                      {QueryDatabaseCode, "Query Database", "view-filter"},
                                      {FindRecordCode, "Find Record", "edit-find"},
                                      {GetPhotosCode, "Get Photo(s)", "document-save-as"},
                                      {EmailPhotosCode, "E-Mail Photo(s)", "mail-send"},
                                      {MakeWebPagesCode, "Make Web Page(s)", "text-html"},
                                      {ImageListCode, "Photo Image List", "view-list-text"},
                                      {ImageGalleryCode, "Photo Image Gallery", "view-grid"},
                                      {SetupMusicCode, "Setup Music", "view-media-playlist"}};

QString ButtonName(int number) { return QStringLiteral("tbarToolBar(%1)").arg(number); }

const char* ViewItem(int view) {
  switch (view) {
    case ImageViewCode:
      return "MainImage";
    case FormViewCode:
      return "MainForm";
    case AddNewCode:
      return "MainAdd";
    case ImagePlayCode:
      return "MainPlay";
    default:
      return "MainData";
  }
}

}  // namespace

CommandBars::CommandBars(QMenuBar& menuBar, QWidget& header) : MenuBar(menuBar) {
  MakeMenus();
  MakeToolbar(header);
}

void CommandBars::MakeMenus() {
  for (const MenuTable& table : Menus()) {
    QMenu* menu = controls::Named(MenuBar.addMenu(QLatin1String(table.Caption)), table.Name);
    for (const MenuItem& item : table.Items) {
      QAction* action =
          item.Caption == nullptr ? menu->addSeparator() : menu->addAction(QLatin1String(item.Caption));
      Actions.insert(QLatin1String(item.Name), controls::Named(action, item.Name));
      if (item.Icon != nullptr) action->setIcon(QIcon::fromTheme(QLatin1String(item.Icon)));
    }
  }
  for (const char* name : {"FolderUndoCut", "FolderSep", "RecordUndoCut", "RecordSep1"})
    Item(name).setVisible(false);
  Item("MusicPlay").setCheckable(true);
  Item("MusicPlay").setChecked(true);
}

void CommandBars::MakeToolbar(QWidget& header) {
  Toolbar = controls::Named(new QToolBar(&header), "tbarToolBar");
  Toolbar->setIconSize(QSize(24, 24));
  Toolbar->setToolButtonStyle(Qt::ToolButtonIconOnly);
  const auto add = [this](QAction* action, int number) {
    action->setObjectName(ButtonName(number));
    Actions.insert(action->objectName(), action);
  };
  int next = 1;
  for (const ToolButton& button : ToolButtons) {
    // Each number between two buttons is a separator.
    for (; next < button.Number; ++next) add(Toolbar->addSeparator(), next);
    add(Toolbar->addAction(QIcon::fromTheme(QLatin1String(button.Icon)), QLatin1String(button.Text)), next++);
  }
  Button(QueryDatabaseCode).setCheckable(true);
}

QAction& CommandBars::Find(const QString& name) const {
  if (QAction* action = Actions.value(name)) return *action;
  return controls::Get<QAction>(MenuBar, name);  // raises the error
}

QAction& CommandBars::Item(const char* name) const { return Find(QLatin1String(name)); }

QMenu& CommandBars::Menu(const char* name) const {
  return controls::Get<QMenu>(MenuBar, QLatin1String(name));
}

QAction& CommandBars::Button(int number) const { return Find(ButtonName(number)); }

void CommandBars::ShowQueryHolds(bool holds) {
  QAction& query = Button(QueryDatabaseCode);
  query.setChecked(holds);
  query.setToolTip(holds ? query.text() + QStringLiteral(" (a query holds; Reset or another folder ends it)")
                         : query.text());
}

void CommandBars::EnableView(int view, bool enabled) {
  Button(view).setEnabled(enabled);
  Item(ViewItem(view)).setEnabled(enabled);
}

void CommandBars::Apply(const ViewMenuState& state, int view) {
  Button(QueryDatabaseCode).setVisible(state.Query);
  Button(FindRecordCode).setVisible(state.Find);
  for (const int number : {GetPhotosCode, EmailPhotosCode}) Button(number).setVisible(state.Photos);
  for (const int number : {MakeWebPagesCode, ImageListCode, ImageGalleryCode})
    Button(number).setVisible(state.WebPages);
  Item("RecordQuery").setVisible(state.Query);
  for (const char* name : {"RecordSearch", "RecordSep2"}) Item(name).setVisible(state.Find);
  Menu("PhotoMenu").menuAction()->setVisible(state.Photos);
  Menu("ReportMenu").menuAction()->setVisible(state.WebPages);
  for (const char* name : {"FileGet", "FileEmail"}) Item(name).setVisible(state.Photos);
  Item("FileWeb").setVisible(state.WebPages);
  if (SetsPhotoWeb(view)) Item("PhotoWeb").setVisible(state.WebPages);
}

void CommandBars::Apply(const RecordMenuState& state) {
  Item("RecordAdd").setEnabled(state.RecordAdd);
  Item("RecordEdit").setEnabled(state.RecordEdit);
  Item("RecordDel").setEnabled(state.RecordDel);
  Item("RecordRmv").setEnabled(state.RecordRmv);
  Item("RecordCut").setEnabled(state.RecordCut);
  Item("RecordCopy").setEnabled(state.RecordCopy);
  Item("RecordAll").setEnabled(state.RecordAll);
  for (const char* name : {"RecordPaste", "FolderRcdPaste"}) Item(name).setEnabled(state.RecordPaste);
  for (const char* name : {"RecordQuery", "RecordSearch", "FileGet", "PhotoGet", "FileEmail", "PhotoEmail",
                           "FileWeb", "PhotoWeb", "ReportList", "ReportGallery"}) {
    Item(name).setEnabled(state.Records);
  }
}

void CommandBars::ApplyPending(const RecordMenuState& state) {
  Item("RecordPaste").setEnabled(state.RecordPaste);
  for (const char* name : {"RecordUndoCut", "RecordSep1"}) Item(name).setVisible(state.RecordUndoCut);
}

void CommandBars::Apply(const folders::FolderMenuState& state) {
  for (const char* name : {"FolderUndoCut", "FolderSep"}) Item(name).setVisible(state.FolderUndoCut);
  Item("FolderAdd").setEnabled(state.FolderAdd);
  Item("FolderRen").setEnabled(state.FolderRen);
  Item("FolderDel").setEnabled(state.FolderDel);
  Item("FolderCut").setEnabled(state.FolderCut);
  Item("FolderCopy").setEnabled(state.FolderCopy);
  Item("FolderPaste").setEnabled(state.FolderPaste);
}

}  // namespace veldrin::shell
