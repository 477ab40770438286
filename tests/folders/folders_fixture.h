// What the folders ask of the views and menus, noted.
#pragma once

#include <QStringList>
#include <utility>

#include "folders/folder_browser.h"

namespace veldrin::folders {

class FakeViews : public FolderViews, public catalogue::RecordViews {
 public:
  void ShowFolderRecords() override { Log << QStringLiteral("show"); }
  void SetFolderMenus() override {}
  void SetRecordMenus() override {}
  void ShowFolderUndoCut(bool visible) override { UndoVisible = visible; }
  void EnableFolderPaste(bool enabled) override { PasteEnabled = enabled; }
  void PopupFolderMenu() override { Log << QStringLiteral("popup"); }
  bool PreviewIsOn() const override { return false; }
  void SetPreview(bool) override {}
  void SetSliderMax(int) override {}
  void InitThumbScroll() override {}

  QString Take() { return std::exchange(Log, {}).join(QLatin1Char(' ')); }
  QStringList Log;
  bool UndoVisible = false;
  bool PasteEnabled = false;
};

}  // namespace veldrin::folders
