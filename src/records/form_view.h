// Form View: one photo at a time, large, with its texts to change.
#pragma once

#include <QWidget>

#include "catalogue/paths.h"
#include "catalogue/record_list.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace veldrin::controls {
class FittedImage;
class CaptionLabel;
class PictureLoader;
}  // namespace veldrin::controls
namespace veldrin::pictures {
class Picture;
class PictureCache;
}  // namespace veldrin::pictures

namespace veldrin::records {

/// `TabPannel(1)`. While it is visible it shows the current record. The texts are always open: Save writes
/// them, and a move to another record forgets what wasn't saved.
class FormView : public QWidget {
  Q_OBJECT

 public:
  /// The references must outlive the view.
  FormView(catalogue::RecordList& data1, const catalogue::Paths& paths, engine::DBEngine& engine,
           pictures::PictureCache& cache, QWidget* parent = nullptr);

  /// A button of the view by its name, which must be one of them.
  QPushButton& Button(const char* name) const;

  /// Fills the fields from the current record, read anew. Without one, or when its row can't be read, they
  /// are empty.
  void ShowFormRecord();
  /// Shows the image of the record that the fields show. The former one stands until it is ready; a record
  /// without a readable image shows none.
  void ShowFormImage();
  void SetReadOnly(bool readOnly);

  void First_Click();
  void Previous_Click();
  void Next_Click();
  void Last_Click();
  /// Writes at once which of the three texts were changed; an empty one as Null. An error of the writing
  /// shows its box, and all stays as it was, on the screen too.
  void SaveBttn_Click();
  /// The photo as it is now: its number may be another's.
  void UndoBttn_Click() { Follow(); }

 Q_SIGNALS:
  void FormImage_DblClick();
  /// The texts of a photo are stored; it looks so now.
  void Saved(const veldrin::catalogue::ChosenPhoto& photo);

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeImage();
  void MakeFields();
  void MakeNavigator();
  void MakeButtons();
  void Connect();
  QLabel* MakeLabel(const char* name, const QString& text, int left, int top, int width, int height);
  controls::CaptionLabel* MakeValue(const char* name, const char* captionName, const char* caption, int left,
                                    int top, int width);
  template <class Field>
  Field* MakeField(const char* name, const char* captionName, const char* caption, int left, int top,
                   int width, int height);

  void Follow();
  void HideImages();
  void TakeImage(const QString& file, const pictures::Picture& picture);
  struct Texts {
    QString Title, Description, MadeBy;
  };
  Texts TypedTexts() const;
  catalogue::ChosenPhoto WriteTexts(int photoId);
  void WriteRow(engine::Database& database, const std::vector<catalogue::ChosenPhoto>& photo,
                const Texts& typed) const;

  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  engine::DBEngine& Engine;
  bool IsRead = true;    ///< the current record
  int ShownPhotoID = 0;  ///< whose texts the fields were filled with; 0 for none
  Texts ShownTexts;
  bool IsSaving = false;
  int FormerPlace = 0;
  int ShowImageIndex = 0;  ///< which of the two images takes the next picture; the other one is shown

  QWidget* FormImagePannel = nullptr;
  controls::FittedImage* FormImage[2] = {};
  controls::PictureLoader* Loader = nullptr;
  QLineEdit* eTitle = nullptr;
  QLineEdit* eMadeBy = nullptr;
  QPlainTextEdit* eDescription = nullptr;
  controls::CaptionLabel* eDate = nullptr;
  controls::CaptionLabel* ePhotoID = nullptr;
  controls::CaptionLabel* eImageType = nullptr;
  QLabel* eRcdCount = nullptr;
  QLabel* eImageFile = nullptr;
};

}  // namespace veldrin::records
