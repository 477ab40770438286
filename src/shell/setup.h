// The dialog in which the two values of the configuration are changed, for the next start.
#pragma once

#include <QDialog>
#include <QString>

class QLineEdit;
class QRadioButton;

namespace veldrin::shell {

/// Shows what stands in the ini file, not what the run is using.
class frmSetup : public QDialog {
  Q_OBJECT

 public:
  explicit frmSetup(QString iniFile, QWidget* parent = nullptr);

 private:
  /// One of the two choices: a frame with two option buttons and the panel that belongs to the second.
  struct Choice {
    QRadioButton* Option[2] = {};
    QWidget* Panel = nullptr;
    QLineEdit* Text = nullptr;

    void Load(const QString& value) const;
    /// Empty for the first option.
    QString Value() const;
  };

  Choice MakeChoice(const char* frame, const char* title, const char* option, const char* first,
                    const char* second, const char* panel, const char* caption, const char* text);
  void MakeButtons();
  void Form_Load();
  void dirOption_Click(int index);
  void webOption_Click(int index);
  void bttnOK_Click();
  void bttnCancel_Click() { reject(); }

  QString IniFile;
  Choice Directory;
  Choice Browser;
};

}  // namespace veldrin::shell
