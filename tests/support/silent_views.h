// What the commands ask of the main window, in its place: nothing shows, and what was asked can be looked at.
#pragma once

#include <QStringList>
#include <utility>

#include "catalogue/record_source.h"
#include "find/find_views.h"
#include "folders/folder_navigation.h"
#include "output/record_choice.h"
#include "records/delete_photos.h"
#include "records/record_clipboard.h"

namespace veldrin::test {

class SilentViews : public catalogue::RecordViews,
                    public folders::FolderViews,
                    public records::DeleteViews,
                    public records::ClipboardViews,
                    public find::FindViews,
                    public output::OutputViews {
 public:
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override {}
  bool FormViewIsShown() const override { return FormView; }
  void ShowFolderRecords() override { Log << QStringLiteral("show"); }
  void SetFolderMenus() override {}
  void SetRecordMenus() override {}
  void ShowFolderUndoCut(bool) override {}
  void EnableFolderPaste(bool) override {}
  void PopupFolderMenu() override { Log << QStringLiteral("popup"); }
  void SetSelectionGrey(bool grey) override { Grey = grey; }
  void EnableRecordPaste(bool) override {}
  void ShowRecordUndoCut(bool) override {}
  void HoldShow(const std::function<void()>& dialog) override {
    ShowIsHeld = true;
    dialog();
    ShowIsHeld = false;
  }

  /// The views that were asked for since the last look.
  QString Take() { return std::exchange(Log, {}).join(QLatin1Char(' ')); }

  bool FormView = false;
  bool Grey = false;
  bool ShowIsHeld = false;
  QStringList Log;
};

}  // namespace veldrin::test
