// Data View: the grid of the list, the preview of its current record, the counter and the buttons of the
// first tab.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

#include "browse/data_navigator.h"
#include "browse/record_grid.h"
#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "controls/fitted_image.h"
#include "controls/picture_loader.h"

namespace veldrin::browse {

class DataView : public QWidget {
  Q_OBJECT

 public:
  /// The panel of the first tab.
  DataView(catalogue::RecordList& data1, const catalogue::Paths& paths, pictures::PictureCache& cache,
           QWidget* parent);

  RecordGrid& TDBGrid1() { return *Grid; }
  QRadioButton& PreviewOption(int index) { return *(index == 0 ? PreviewOn : PreviewOff); }

  /// A button of the tab by its name, which must be one of them, such as "RefreshBttn".
  QPushButton& Button(const char* name) const;
  void SetContentHeight(int pixels);

  /// After a move of the list: the counter and the preview follow, while the tab is shown.
  void Data1_Reposition();
  /// Tells below the buttons that a query holds and how to end it; nothing without lines.
  void SetQueryNote(const QStringList& lines);
  /// Switches the preview on (0) or off (1) and draws it anew.
  void PreviewOption_Click(int index);

 Q_SIGNALS:
  void ImgPreview_DblClick();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void MakePreview();
  void MakeButtons();
  void MakeQueryNote();
  void ShowPreview();
  void TakePreview(const QString& file, const pictures::Picture& picture);

  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  RecordGrid* Grid;
  QRadioButton* PreviewOn = nullptr;
  QRadioButton* PreviewOff = nullptr;
  QWidget* picPreview = nullptr;
  controls::FittedImage* ImgPreview = nullptr;
  controls::PictureLoader* Loader = nullptr;
  int FormerPlace = 0;
  bool IsRead = true;  ///< the record of the preview
  DataNavigator* Navigator = nullptr;
  QLabel* lblQuery = nullptr;
};

}  // namespace veldrin::browse
