// Which command of the main window calls what.
#include <QShortcut>
#include <functional>
#include <vector>

#include "shell/main_window.h"

namespace veldrin::shell {

// A name that is being edited is finished before a command runs: storing it reads the list anew, and a
// command must not find another record or folder than the user saw when it began.
void frmMain::OnChoice(QAction& action, const std::function<void()>& handler) {
  connect(&action, &QAction::triggered, this, [this, handler] {
    if (tvTreeView->EndLabelEdit()) handler();
  });
}

// A button's key takes no focus, and so ends no edit by itself.
void frmMain::OnChoice(QPushButton& button, const std::function<void()>& handler) {
  connect(&button, &QPushButton::clicked, this, [this, handler] {
    if (tvTreeView->EndLabelEdit()) handler();
  });
}

void frmMain::OnChoice(const char* item, const std::function<void()>& handler) {
  OnChoice(Bars->Item(item), handler);
}

void frmMain::ConnectCommands() {
  ConnectViewCommands();
  ConnectFolderCommands();
  ConnectRecordCommands();
  ConnectFinding();
  ConnectOutput();
  ConnectShow();
  OnChoice("FileSetup", [this] { FileSetup_Click(); });
  OnChoice("FileExit", [this] { close(); });
  OnChoice("HelpHelp", [this] { HelpHelp_Click(); });
  OnChoice("HelpAbout", [this] { HelpAbout_Click(); });
}

void frmMain::ConnectViewCommands() {
  for (int number = DataViewCode; number <= SetupMusicCode; ++number) {
    OnChoice(Bars->Button(number), [this, number] { tbarToolBar_ButtonClick(number); });
  }
  const auto press = [this](const char* item, int number) {
    OnChoice(item, [this, number] { tbarToolBar_ButtonClick(number); });
  };
  press("MainData", DataViewCode);
  press("MainImage", ImageViewCode);
  press("MainForm", FormViewCode);
  press("MainAdd", AddNewCode);
  press("MainPlay", ImagePlayCode);
  press("RecordAdd", AddNewCode);
  press("RecordEdit", FormViewCode);

  OnChoice(TheDataView->Button("RefreshBttn"), [this] { RefreshBttn_Click(); });
  OnChoice(TheDataView->Button("ResetBttn"), [this] { ResetBttn_Click(); });
  const auto* refresh = new QShortcut(QKeySequence::Refresh, this);
  connect(refresh, &QShortcut::activated, this, [this] {
    if (SSTab1->currentIndex() == BrowseTab || CurrentView == FormViewCode) RefreshBttn_Click();
  });
}

void frmMain::ConnectFolderCommands() {
  using folders::FolderCommands;
  const auto call = [this](const char* item, void (FolderCommands::*handler)()) {
    OnChoice(item, [this, handler] { (TheFolderCommands.get()->*handler)(); });
  };
  call("FolderUndoCut", &FolderCommands::FolderUndoCut_Click);
  call("FolderAdd", &FolderCommands::FolderAdd_Click);
  call("FolderRen", &FolderCommands::FolderRen_Click);
  call("FolderDel", &FolderCommands::FolderDel_Click);
  call("FolderCut", &FolderCommands::FolderCut_Click);
  call("FolderCopy", &FolderCommands::FolderCopy_Click);
  call("FolderPaste", &FolderCommands::FolderPaste_Click);
}

void frmMain::ConnectRecordCommands() {
  OnChoice("RecordDel", [this] { TheDeletePhotos->RecordDel_Click(); });
  OnChoice("RecordRmv", [this] { TheDeletePhotos->RecordRmv_Click(); });
  OnChoice("RecordUndoCut", [this] { Clipboard->RecordUndoCut_Click(); });
  OnChoice("RecordCut", [this] { Clipboard->RecordCut_Click(); });
  OnChoice("RecordCopy", [this] { Clipboard->RecordCopy_Click(); });
  for (const char* item : {"RecordPaste", "FolderRcdPaste"})
    OnChoice(item, [this] { Clipboard->RecordPaste_Click(); });
  OnChoice("RecordAll", [this] {
    Data1.SelectAll();
    if (CurrentView == ImageViewCode) ThumbPannel->ShowFromCurrentRecord();
  });
  // Of the two views that have a selection: in a text field the keys select the text.
  const auto* all = new QShortcut(QKeySequence::SelectAll, TheDataView);
  connect(all, &QShortcut::activated, &Bars->Item("RecordAll"), &QAction::trigger);

  const auto view = [this] { TheExternalViewer.ViewBttn_Click(); };
  OnChoice(TheDataView->Button("ViewBttn"), view);
  connect(TheDataView, &browse::DataView::ImgPreview_DblClick, this, view);
  connect(TheFormView, &records::FormView::FormImage_DblClick, this, view);
}

void frmMain::ConnectFinding() {
  const auto search = [this] { TheRecordSearch.SearchBttn_Click(); };
  OnChoice(TheDataView->Button("QueryBttn"), [this] { TheQuery->QueryBttn_Click(); });
  OnChoice(TheDataView->Button("SearchBttn(0)"), search);
  OnChoice(TheFormView->Button("SearchBttn(1)"), search);
  OnChoice("RecordQuery", [this] { TheQuery->RecordQuery_Click(); });
  OnChoice("RecordSearch", search);
  // A click lifts the button, or puts it down, whatever the dialog is left by.
  connect(&Bars->Button(QueryDatabaseCode), &QAction::toggled, this, &frmMain::ShowQueryState);
}

void frmMain::ConnectOutput() {
  struct Command {
    std::function<void()> Handler;
    std::vector<const char*> Items;
    std::vector<QPushButton*> Buttons;
  };
  const auto ofData = [this](const char* name) { return &TheDataView->Button(name); };
  const auto ofForm = [this](const char* name) { return &TheFormView->Button(name); };
  const Command commands[] = {
      {[this] { Output->Copies.GetPhotos(); },
       {"FileGet", "PhotoGet"},
       {ofData("GetMBttn"), ofForm("GetSBttn")}},
      {[this] { Output->Mail.SendPhotos(); },
       {"FileEmail", "PhotoEmail"},
       {ofData("EmailMBttn"), ofForm("EmailSBttn")}},
      {[this] { Output->Export.WebBttn_Click(); }, {"FileWeb", "PhotoWeb"}, {ofData("WebBttn")}},
      {[this] { Output->Report.PrintBttn_Click(); }, {}, {ofData("PrintBttn")}},
      {[this] { Output->Report.ReportList_Click(); }, {"ReportList"}, {}},
      {[this] { Output->Report.ReportGallery_Click(); }, {"ReportGallery"}, {}}};
  for (const Command& command : commands) {
    for (const char* item : command.Items) OnChoice(item, command.Handler);
    for (QPushButton* button : command.Buttons) OnChoice(*button, command.Handler);
  }
}

void frmMain::ConnectShow() {
  const auto press = [this](const char* item, int button) {
    OnChoice(item, [this, button] { TheImagePlay->tbarShow_ButtonClick(button); });
  };
  press("MusicPlay", show::MusicOnOff);
  press("MusicSetup", show::SetupMusic);
  const auto mirror = [this] { Bars->Item("MusicPlay").setChecked(TheShowSettings.MusicOn); };
  connect(TheImagePlay, &show::ImagePlay::MusicSwitched, this, mirror);
  // The item checks itself, also when the command doesn't run.
  connect(&Bars->Item("MusicPlay"), &QAction::triggered, this, mirror);
}

}  // namespace veldrin::shell
