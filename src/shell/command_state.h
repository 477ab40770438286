// What commands the user sees and may choose, as pure functions of the program's state.
#pragma once

namespace veldrin::shell {

/// The buttons of `tbarToolBar` by their numbers; those of the views are the views' codes.
enum ToolbarButton : int {
  DataViewCode = 1,
  ImageViewCode = 2,
  FormViewCode = 4,
  AddNewCode = 5,
  ImagePlayCode = 7,
  ExitProgramCode = 9,
  QueryDatabaseCode = 12,
  FindRecordCode = 13,
  GetPhotosCode = 15,
  EmailPhotosCode = 16,
  MakeWebPagesCode = 17,
  ImageListCode = 19,
  ImageGalleryCode = 20,
  SetupMusicCode = 22
};

constexpr bool IsView(int code) {
  return code == DataViewCode || code == ImageViewCode || code == FormViewCode || code == AddNewCode ||
         code == ImagePlayCode;
}

/// The tabs of `SSTab1`. Data View and Image View share the first.
enum Tab : int { BrowseTab = 0, FormTab = 1, AddTab = 2, PlayTab = 3 };

/// The tab that a view stands on.
Tab TabOfView(int view);

/// Which commands are visible in a view.
struct ViewMenuState {
  bool Query = false;     ///< Query Database
  bool Find = false;      ///< Find Record, and the separator in front of the two in the menu
  bool Photos = false;    ///< Get Photo(s) and E-Mail Photo(s), the Photo menu
  bool WebPages = false;  ///< Make Web Page(s), the reports
  bool operator==(const ViewMenuState&) const = default;
};

ViewMenuState ViewMenusFor(int view);

/// Whether the Photo menu's own "Make Web Page(s)..." is set in a view: it isn't touched where its menu is
/// hidden.
constexpr bool SetsPhotoWeb(int view) { return view != AddNewCode && view != ImagePlayCode; }

struct RecordMenuInput {
  int ShownTab = BrowseTab;
  bool HasRecords = false;
  bool NodeIsRoot = false;
  bool NodeHasChildren = false;
  bool NodeIsUnorganized = false;  ///< the selected node's text is "!UNORGANIZED"
  bool ParentIsRoot = false;
  bool RecordsCut = false;
  bool RecordsCopied = false;
  bool NodeIsAboveSource = false;  ///< IsAboveFolder of the selected node and the node copied from
  bool UndoCutShown = false;
};

/// Which commands on records are enabled.
struct RecordMenuState {
  bool RecordAdd = false;
  bool RecordEdit = false;
  bool RecordDel = false;
  bool RecordRmv = false;
  bool RecordCut = false;
  bool RecordCopy = false;
  bool RecordPaste = false;    ///< and FolderRcdPaste
  bool RecordUndoCut = false;  ///< visible, with its separator
  bool RecordAll = false;
  bool Records = false;  ///< query, search, get, e-mail, web pages, reports
  bool operator==(const RecordMenuState&) const = default;
};

RecordMenuState RecordMenusFor(const RecordMenuInput& input);

}  // namespace veldrin::shell
