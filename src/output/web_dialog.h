// The dialog that asks where an export goes, what its title is and which kind of pages it has.
#pragma once

#include <QDialog>

#include "catalogue/paths.h"
#include "controls/directory_chooser.h"
#include "output/web_settings.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace veldrin::output {

/// `frmWeb`. Its settings outlive its closing: it opens again on the last directory and the last kind.
class frmWeb : public QDialog, public WebSettings {
  Q_OBJECT

 public:
  explicit frmWeb(const catalogue::Paths& paths, QWidget* parent = nullptr);

  /// WebOK tells afterwards whether it was left by OK; the web directory is there then if it could be made.
  void ShowModal();

 private:
  void Form_Load();
  void Arrange();
  QLabel* MakeLabel(const char* name, const char* text, QWidget* buddy);
  QRadioButton* MakeOption(int index, const char* text);
  QPushButton* MakeButton(const char* name, const char* text, void (frmWeb::*handler)());
  void ShowDirectory();

  void PgOption_Click(int index);
  /// Asks before an earlier web goes. What can't be deleted or made is passed over.
  void OkBttn_Click();
  void CancelBttn_Click() { reject(); }
  QString ReplaceQuestion(const QString& name) const;
  bool MayReplace(const QString& name);

  const catalogue::Paths& ThePaths;
  QLineEdit* txtWebTitle = nullptr;
  QLineEdit* txtWebName = nullptr;
  QRadioButton* PgOption[2] = {};
  controls::DirectoryChooser* Choosers = nullptr;
};

}  // namespace veldrin::output
