// `frmMain`: puts the parts of the program together, connects them and switches the views.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QStackedWidget>
#include <functional>
#include <memory>

#include "browse/data_view.h"
#include "browse/external_viewer.h"
#include "browse/thumbnail_page.h"
#include "catalogue/record_list.h"
#include "catalogue/record_source.h"
#include "controls/file_list.h"
#include "controls/progress.h"
#include "controls/tree_view.h"
#include "find/find_record.h"
#include "find/query.h"
#include "folders/folder_commands.h"
#include "folders/folder_navigation.h"
#include "pictures/picture_cache.h"
#include "records/add_view.h"
#include "records/delete_photos.h"
#include "records/form_view.h"
#include "records/record_clipboard.h"
#include "shell/app.h"
#include "shell/command_bars.h"
#include "shell/output_commands.h"
#include "shell/splitter.h"
#include "shell/status_line.h"
#include "show/image_play.h"
#include "show/media_player.h"
#include "show/music.h"

namespace veldrin::shell {

class frmMain : public QMainWindow {
 public:
  /// Paths and engine must outlive the window. Nothing is read before Form_Load.
  frmMain(const App& app, const catalogue::Paths& paths, engine::DBEngine& engine,
          std::unique_ptr<show::Media> media = std::make_unique<show::MediaPlayer>());
  /// Deletes the working copy.
  ~frmMain() override;

  /// Loads the tree and the whole catalogue and enters Data View. Raises what is wrong with the catalogue.
  void Form_Load();

  /// Presses a button of the toolbar by its number; the menus press the same ones. Passes over errors.
  void tbarToolBar_ButtonClick(int number);
  /// What all views show.
  const catalogue::RecordList& List() const { return Data1; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  /// Runs a dialog for which a show on its tab waits.
  void HoldShow(const std::function<void()>& dialog);

  void MakeHeader();
  void MakePanes(const base::TellWork& tell);
  void ConnectViews();
  void OnChoice(QAction& action, const std::function<void()>& handler);
  void OnChoice(QPushButton& button, const std::function<void()>& handler);
  void OnChoice(const char* item, const std::function<void()>& handler);
  void ConnectCommands();
  void ConnectViewCommands();
  void ConnectFolderCommands();
  void ConnectRecordCommands();
  void ConnectFinding();
  void ConnectOutput();
  void ConnectShow();
  void LoadMusic();
  void Form_Unload();

  void SetViewControls(int view);
  void ShowView();
  void SSTab1_Click();
  void SetFolderMenus();
  RecordMenuInput RecordMenus() const;
  void SetRecordMenus() { Bars->Apply(RecordMenusFor(RecordMenus())); }
  void SetSelectionGrey(bool grey);
  void ShowQueryState();
  void ArrangeMainWindow(float position);

  void RefreshBttn_Click();
  void ResetBttn_Click();
  void FileSetup_Click();
  void HelpHelp_Click();
  void HelpAbout_Click();

  void BePatient();

  const App& TheApp;
  const catalogue::Paths& ThePaths;
  engine::DBEngine& Engine;

  controls::LongWork Work{*this};
  catalogue::RecordList Data1;
  pictures::PictureCache Pictures;
  show::ShowSettings TheShowSettings;
  std::unique_ptr<show::Media> Media;
  int CurrentView = DataViewCode;

  // The controls belong to the window.
  QWidget* Inside;
  QWidget* picHeader;
  QLineEdit* txtFldrSearch;
  QPushButton* bttnGo;
  controls::TreeView* tvTreeView;
  QWidget* pcMainWin;
  QStackedWidget* SSTab1;
  browse::DataView* TheDataView;
  browse::ThumbnailPage* ThumbPannel;
  records::FormView* TheFormView;
  records::AddView* TheAddView;
  show::ImagePlay* TheImagePlay;
  controls::FileListBox* MusicList;
  std::unique_ptr<show::Music> TheMusic;
  Splitter* bttnSplitter;
  StatusLine* Status;

  std::unique_ptr<CommandBars> Bars;
  std::unique_ptr<catalogue::RecordSource> Source;
  std::unique_ptr<folders::FolderNavigation> Folders;
  std::unique_ptr<folders::FolderCommands> TheFolderCommands;
  std::unique_ptr<records::DeletePhotos> TheDeletePhotos;
  std::unique_ptr<records::RecordClipboard> Clipboard;
  std::unique_ptr<find::Query> TheQuery;
  find::RecordSearch TheRecordSearch;
  browse::ExternalViewer TheExternalViewer;
  std::unique_ptr<OutputCommands> Output;
};

}  // namespace veldrin::shell
