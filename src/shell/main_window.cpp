#include "shell/main_window.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScreen>
#include <QStandardPaths>

#include "base/failure.h"
#include "catalogue/schema.h"
#include "controls/error_box.h"
#include "controls/named.h"
#include "controls/twips.h"
#include "desktop/program_start.h"
#include "folders/folder_menus.h"
#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "shell/about.h"
#include "shell/layout.h"
#include "shell/setup.h"

namespace veldrin::shell {

using base::ResumeNext;
using base::ToPixels;
using base::ToTwips;
using controls::MoveTwips;
using controls::Named;

frmMain::frmMain(const App& app, const catalogue::Paths& paths, engine::DBEngine& engine,
                 std::unique_ptr<show::Media> media)
    : TheApp(app),
      ThePaths(paths),
      Engine(engine),
      Data1(engine),
      Media(std::move(media)),
      Inside(new QWidget(this)),
      TheRecordSearch(
          Data1, browse::GridFields(),
          [this] {
            if (ThumbPannel->isVisible()) ThumbPannel->ShowThumbnails(Data1.AbsolutePosition());
          },
          *this),
      TheExternalViewer(Data1, engine, paths, *this) {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(App::Title());
  setCentralWidget(Inside);
  Status = new StatusLine(Data1, this);
  setStatusBar(Status);
  const base::TellWork tell = [this](const base::WorkReport& report) { Status->Tell(report); };
  BePatient();
  MakeHeader();
  MakePanes(tell);
  Source = std::make_unique<catalogue::RecordSource>(
      Data1, [this] { return folders::SelectedFolderKey(*tvTreeView); }, Engine, ThePaths);
  const catalogue::Chooser chosen = [this] { return Data1.Chosen(CurrentView != FormViewCode); };
  Folders = std::make_unique<folders::FolderNavigation>(*tvTreeView, *txtFldrSearch, *Source);
  TheDeletePhotos = std::make_unique<records::DeletePhotos>(chosen, *Source, *tvTreeView, Engine, ThePaths,
                                                            *this, Work, tell);
  TheFolderCommands =
      std::make_unique<folders::FolderCommands>(*tvTreeView, *Folders, Engine, ThePaths, tell);
  Clipboard = std::make_unique<records::RecordClipboard>(Data1, *tvTreeView, *Source, Engine, ThePaths, tell);
  TheQuery = std::make_unique<find::Query>(
      *Source, Data1, [this](const auto& dialog) { HoldShow(dialog); }, *this);
  Output = std::make_unique<OutputCommands>(
      Data1, chosen, *tvTreeView, Engine, ThePaths, *this, Work,
      [this] { Bars->Menu("ReportMenu").popup(QCursor::pos()); }, tell);
  ConnectViews();
  ConnectCommands();
  setMinimumWidth(ToPixels(LeastWindowWidth));
  menuBar()->ensurePolished();
  resize(ToPixels(DesignWidth),
         ToPixels(DesignHeight) + menuBar()->sizeHint().height() + Status->sizeHint().height());
}

// No event waits longer for another machine than people notice; what is worth a longer wait is tried again
// while the windows live on.
void frmMain::BePatient() {
  constexpr int noticed = 40;  // milliseconds
  if (Engine.LockTimeout > noticed) Engine.LockTimeout = noticed;
  Engine.Patient = [this](const std::function<void()>& action) {
    Engine.LockTimeout == 0 ? action() : Work.Retry(action);
  };
  Engine.Beside = [this](const auto& work, const auto& stop) { Work.RunBeside(work, stop); };
}

frmMain::~frmMain() {
  Engine.Patient = {};
  Engine.Beside = {};
  // The views go before the list that they show, which is a member and would go first.
  Output.reset();
  TheFolderCommands.reset();
  Clipboard.reset();
  Folders.reset();
  delete takeCentralWidget();
  catalogue::DeleteWorkFile(ThePaths);
}

// --- the parts --------------------------------------------------------------------------------------------

void frmMain::MakeHeader() {
  picHeader = Named(new QWidget(Inside), "picHeader");
  MoveTwips(*picHeader, 0, 0, DesignWidth, HeaderHeight);
  QLabel* label = Named(new QLabel(QStringLiteral("FOLDER SEARCH"), picHeader), "lblFldrSearch");
  QFont small = label->font();
  small.setPointSizeF(small.pointSizeF() * 0.75);
  label->setFont(small);
  MoveTwips(*label, 75, 15, 2000, 180);
  txtFldrSearch = Named(new QLineEdit(picHeader), "txtFldrSearch");
  txtFldrSearch->setClearButtonEnabled(true);
  MoveTwips(*txtFldrSearch, 60, 210, 2025, 360);
  bttnGo = Named(new QPushButton(QStringLiteral("Go"), picHeader), "bttnGo");
  MoveTwips(*bttnGo, 2130, 210, 570, 360);
  Bars = std::make_unique<CommandBars>(*menuBar(), *picHeader);
}

void frmMain::MakePanes(const base::TellWork& tell) {
  tvTreeView = Named(new controls::TreeView(Inside), "tvTreeView");
  MoveTwips(*tvTreeView, 0, PaneTop, DesignSplitterLeft, DesignHeight - PaneTop);
  pcMainWin = Named(new QWidget(Inside), "pcMainWin");
  MoveTwips(*pcMainWin, DesignSplitterLeft + SplitterGap, PaneTop, TabWidth, DesignHeight - PaneTop);
  SSTab1 = Named(new QStackedWidget(pcMainWin), "SSTab1");
  MoveTwips(*SSTab1, 0, 0, TabWidth, DesignHeight - PaneTop);

  TheDataView = new browse::DataView(Data1, ThePaths, Pictures, SSTab1);
  ThumbPannel = new browse::ThumbnailPage(Data1, Engine, ThePaths, TheDataView);
  TheFormView = new records::FormView(Data1, ThePaths, Engine, Pictures, SSTab1);
  TheAddView = new records::AddView(Data1, *tvTreeView, ThePaths, Engine,
                                    QStandardPaths::writableLocation(QStandardPaths::PicturesLocation), Work,
                                    tell, Pictures);
  // The list of the music directory is never shown itself.
  MusicList = Named(new controls::FileListBox(Inside), "AudioFileList");
  MusicList->hide();
  TheMusic = std::make_unique<show::Music>(TheShowSettings, *MusicList, ThePaths.MusicDir, *Media);
  TheImagePlay = new show::ImagePlay({Data1, ThePaths, TheShowSettings, *TheMusic}, Pictures, SSTab1);
  for (QWidget* panel : std::initializer_list<QWidget*>{TheDataView, TheFormView, TheAddView, TheImagePlay}) {
    SSTab1->addWidget(panel);
  }
  bttnSplitter = new Splitter(Inside, [this](float position) { ArrangeMainWindow(position); });
  bttnSplitter->Place(DesignSplitterLeft, PaneTop, DesignHeight - PaneTop);
}

void frmMain::ConnectViews() {
  connect(SSTab1, &QStackedWidget::currentChanged, this, &frmMain::SSTab1_Click);
  const auto popUp = [this](const char* menu) {
    return [this, menu] { Bars->Menu(menu).popup(QCursor::pos()); };
  };
  connect(&TheDataView->TDBGrid1(), &browse::RecordGrid::RecordMenuRequested, this, popUp("RecordMenu"));
  connect(ThumbPannel, &browse::ThumbnailPage::RecordMenuRequested, this, popUp("RecordMenu"));
  connect(Folders.get(), &folders::FolderNavigation::FolderMenuRequested, this, popUp("FolderMenu"));
  connect(Folders.get(), &folders::FolderNavigation::FolderShown, this, [this] {
    SetFolderMenus();
    SetRecordMenus();
  });
  connect(TheFolderCommands.get(), &folders::FolderCommands::Changed, this, &frmMain::SetFolderMenus);
  connect(Clipboard.get(), &records::RecordClipboard::Changed, this,
          [this] { Bars->ApplyPending(RecordMenusFor(RecordMenus())); });
  connect(Clipboard.get(), &records::RecordClipboard::SelectionGrey, this, &frmMain::SetSelectionGrey);
  connect(Clipboard.get(), &records::RecordClipboard::Pasted, this, &frmMain::SetRecordMenus);
  connect(TheDeletePhotos.get(), &records::DeletePhotos::Deleted, Clipboard.get(),
          &records::RecordClipboard::Forget);
  connect(TheFormView, &records::FormView::Saved, Clipboard.get(), &records::RecordClipboard::Renew);
  connect(&Data1, &catalogue::RecordList::Refreshed, this, &frmMain::ShowQueryState);
  OnChoice(*bttnGo, [this] { Folders->bttnGo_Click(); });
  connect(txtFldrSearch, &QLineEdit::returnPressed, this, [this] {
    if (tvTreeView->EndLabelEdit()) Folders->bttnGo_Click();
  });
}

// --- start and stop ---------------------------------------------------------------------------------------

void frmMain::Form_Load() {
  const QRect area = screen()->availableGeometry();
  move(area.left() + (area.width() - width()) / 2, area.top());
  TheDataView->PreviewOption(0).setChecked(true);
  folders::LoadFolderTree(*tvTreeView, Engine, ThePaths.WorkFile);
  Data1.DatabaseName = ThePaths.WorkFile;
  Source->ClearQuery();
  Folders->ShowAnew();
  SetViewControls(DataViewCode);
  LoadMusic();
  tvTreeView->setFocus();
}

void frmMain::LoadMusic() {
  TheShowSettings = show::ShowSettings{};
  TheShowSettings.MusicOn = Media->HasSoundCard();
  QAction& play = Bars->Item("MusicPlay");
  play.setChecked(TheShowSettings.MusicOn);
  play.setEnabled(TheShowSettings.MusicOn);
  TheImagePlay->Button(show::MusicOnOff).setEnabled(TheShowSettings.MusicOn);
  TheImagePlay->SetShowButtons();
  show::ListMusic(*MusicList, ThePaths.MusicDir);
}

void frmMain::Form_Unload() {
  // The timer stops with the show, and so does its sound.
  TheImagePlay->tbarShow_ButtonClick(show::StopPlay);
  MusicList->clear();
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (!tvTreeView->EndLabelEdit()) return event->ignore();
  Form_Unload();
  event->accept();
}

// --- views ------------------------------------------------------------------------------------------------

void frmMain::tbarToolBar_ButtonClick(int number) {
  if (IsView(number)) {
    ResumeNext([&] { SetViewControls(number); });
    ResumeNext([&] { ShowView(); });
    return;
  }
  controls::TrapWithBox(this, [&] {
    switch (number) {
      case ExitProgramCode:
        close();
        return;
      case QueryDatabaseCode:
        return TheQuery->RecordQuery_Click();
      case FindRecordCode:
        return TheRecordSearch.SearchBttn_Click();
      case GetPhotosCode:
        return Output->Copies.GetPhotos();
      case EmailPhotosCode:
        return Output->Mail.SendPhotos();
      case MakeWebPagesCode:
        return Output->Export.WebBttn_Click();
      case ImageListCode:
        return Output->Report.ReportList_Click();
      case ImageGalleryCode:
        return Output->Report.ReportGallery_Click();
      case SetupMusicCode:
        return TheImagePlay->tbarShow_ButtonClick(show::SetupMusic);
      default:
        return;
    }
  });
}

void frmMain::SetViewControls(int view) {
  Bars->EnableView(CurrentView, true);
  CurrentView = view;
  Bars->EnableView(CurrentView, false);
  Bars->Apply(ViewMenusFor(CurrentView), CurrentView);
}

// The show leaves the list where it ends before another view shows it. Grid and thumbnails lie in one place:
// the one that is not to be seen is hidden, so that no key and no focus reaches it.
void frmMain::ShowView() {
  if (SSTab1->currentIndex() == PlayTab) TheImagePlay->tbarShow_ButtonClick(show::StopPlay);
  const Tab tab = TabOfView(CurrentView);
  if (tab != BrowseTab) return SSTab1->setCurrentIndex(tab);
  QWidget& grid = TheDataView->TDBGrid1();
  const bool thumbnails = CurrentView == ImageViewCode;
  QWidget& shown = thumbnails ? *ThumbPannel : grid;
  QWidget& hidden = thumbnails ? grid : *ThumbPannel;
  // The tab would give the focus to what had it last.
  const auto keepFocus = [&] {
    const QWidget* focus = focusWidget();
    if (focus != nullptr && (focus == &hidden || hidden.isAncestorOf(focus))) shown.setFocus();
  };
  shown.show();
  keepFocus();
  hidden.hide();
  ThumbPannel->SetButtonsVisible(thumbnails);
  SSTab1->setCurrentIndex(tab);
  keepFocus();
  if (thumbnails) ThumbPannel->TakeFocus();
}

void frmMain::SSTab1_Click() {
  if (SSTab1->currentIndex() == AddTab) TheAddView->FillFileTypes();
  SetRecordMenus();
}

void frmMain::ShowQueryState() {
  const QStringList criteria = find::DescribeQuery(Source->Query);
  TheDataView->SetQueryNote(criteria);
  Bars->ShowQueryHolds(!criteria.isEmpty());
}

void frmMain::RefreshBttn_Click() {
  if (Data1.RecordCount() == 0) return;
  if (CurrentView == ImageViewCode) return ThumbPannel->Redraw();
  if (CurrentView != DataViewCode) return TheFormView->ShowFormImage();
  if (TheDataView->PreviewOption(0).isChecked()) TheDataView->PreviewOption_Click(0);
}

void frmMain::ResetBttn_Click() {
  Source->ClearQuery();
  Source->SetRecordSource();
}

void frmMain::SetSelectionGrey(bool grey) {
  browse::RecordGrid& grid = TheDataView->TDBGrid1();
  grid.SetGridSelColor(grey ? browse::DimmedColor : grid.GridSelColor());
  ThumbPannel->SetMarkColor(grey ? browse::DimmedColor : ThumbPannel->MarkColor());
}

// --- menus ------------------------------------------------------------------------------------------------

void frmMain::SetFolderMenus() {
  const controls::Node& node = *tvTreeView->SelectedItem();
  folders::FolderMenuInput input;
  input.IsRoot = node.Index() == 1;
  input.IsUnorganized = folders::IsUnorganized(node);
  input.IsCut = folders::IsNodeCut(node);
  input.IsDeepest = folders::GetNodeLevel(node) == catalogue::LevelCount;
  input.TakesPaste = TheFolderCommands->TakesPaste(node);
  input.UndoCutShown = TheFolderCommands->UndoCutIsShown();
  Bars->Apply(folders::FolderMenusFor(input));
}

RecordMenuInput frmMain::RecordMenus() const {
  const controls::Node& node = *tvTreeView->SelectedItem();
  RecordMenuInput input;
  input.ShownTab = SSTab1->currentIndex();
  input.HasRecords = Data1.RecordCount() >= 1;
  input.NodeIsRoot = node.Index() == 1;
  input.NodeHasChildren = node.Children() > 0;
  input.NodeIsUnorganized = folders::IsUnorganized(node);
  input.ParentIsRoot = node.Parent() != nullptr && node.Parent()->Index() == 1;
  input.RecordsCut = Clipboard->IsCutPending();
  const controls::Node* source = Clipboard->CopySource();
  input.RecordsCopied = source != nullptr;
  input.NodeIsAboveSource = source != nullptr && folders::IsAboveFolder(node, *source);
  input.UndoCutShown = Clipboard->UndoCutIsShown();
  return input;
}

// --- layout -----------------------------------------------------------------------------------------------

void frmMain::ArrangeMainWindow(float position) {
  const MainLayout layout = PanesFor(position, ToTwips(Inside->width()), ToTwips(Inside->height()));
  picHeader->resize(Inside->width(), picHeader->height());
  MoveTwips(Bars->tbarToolBar(), ToolbarLeft, 0, ToTwips(picHeader->width()) - ToolbarLeft, HeaderHeight);
  MoveTwips(*tvTreeView, 0, PaneTop, layout.SplitterLeft, layout.PaneHeight);
  MoveTwips(*pcMainWin, layout.MainLeft, PaneTop, layout.MainWidth, layout.PaneHeight);
  const int height = pcMainWin->height();
  SSTab1->resize(SSTab1->width(), height);
  TheDataView->SetContentHeight(height);
  ThumbPannel->resize(ThumbPannel->width(), height);
  ThumbPannel->ThumbVScroll().resize(ThumbPannel->ThumbVScroll().width(), height);
  bttnSplitter->Place(layout.SplitterLeft, PaneTop, layout.PaneHeight);
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  ResumeNext([&] { ArrangeMainWindow(bttnSplitter->Left()); });
}

void frmMain::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  // The menu bar has its final height only now.
  ResumeNext([&] { ArrangeMainWindow(bttnSplitter->Left()); });
}

// --- dialogs and help -------------------------------------------------------------------------------------

void frmMain::HoldShow(const std::function<void()>& dialog) {
  const auto onShow = [this] { return CurrentView == ImagePlayCode; };
  if (!onShow()) return dialog();
  const int playState = TheImagePlay->TheShow().Suspend();
  const auto resume = qScopeGuard([&] {
    if (onShow()) TheImagePlay->TheShow().Resume(playState);
  });
  dialog();
}

void frmMain::FileSetup_Click() {
  HoldShow([this] { frmSetup(ThePaths.IniFile, this).exec(); });
}

void frmMain::HelpAbout_Click() { frmAbout(this).exec(); }

void frmMain::HelpHelp_Click() {
  desktop::Shell(ThePaths.BrowserPath + QLatin1Char(' ') + TheApp.Path() +
                 QStringLiteral("/help/welcome.htm"));
}

}  // namespace veldrin::shell
