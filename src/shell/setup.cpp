#include "shell/setup.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "controls/entry_field.h"
#include "controls/msg_box.h"
#include "controls/named.h"
#include "shell/configuration.h"

namespace veldrin::shell {

using controls::Named;

namespace {

QString DirectoriesSection() { return QStringLiteral("Directories"); }
QString DatabaseKey() { return QStringLiteral("Database"); }
QString ProgramsSection() { return QStringLiteral("Programs"); }
QString BrowserKey() { return QStringLiteral("Webbrowser"); }

QPushButton* MakeButton(QWidget* parent, const char* name, const char* text) {
  QPushButton* button = Named(new QPushButton(QLatin1String(text), parent), name);
  button->setMinimumWidth(92);
  return button;
}

}  // namespace

void frmSetup::Choice::Load(const QString& value) const {
  Text->setText(value);
  Option[value.isEmpty() ? 0 : 1]->setChecked(true);
}

QString frmSetup::Choice::Value() const { return Option[1]->isChecked() ? Text->text() : QString(); }

frmSetup::frmSetup(QString iniFile, QWidget* parent) : QDialog(parent), IniFile(std::move(iniFile)) {
  setObjectName(QStringLiteral("frmSetup"));
  setWindowTitle(QStringLiteral("Program Setup"));
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 18, 20, 18);
  all->setSpacing(14);
  Directory = MakeChoice("frameDir", "Directory Setup", "dirOption", "Local Database", "Database on Network",
                         "dirPanel", "Directory of Db :", "txtDirectory");
  Browser = MakeChoice("frameWeb", "Web Browser Setup", "webOption", "Default Browser", "User Chosen Browser",
                       "webPanel", "Path of Brwsr :", "txtBrowser");
  MakeButtons();
  for (const int i : {0, 1}) {
    connect(Directory.Option[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) dirOption_Click(i);
    });
    connect(Browser.Option[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) webOption_Click(i);
    });
  }
  Form_Load();
  all->setSizeConstraint(QLayout::SetFixedSize);
}

frmSetup::Choice frmSetup::MakeChoice(const char* frame, const char* title, const char* option,
                                      const char* first, const char* second, const char* panel,
                                      const char* caption, const char* text) {
  QGroupBox* box = Named(new QGroupBox(QLatin1String(title), this), frame);
  box->setFixedWidth(470);
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(16, 12, 16, 12);
  column->setSpacing(8);
  Choice choice;
  const char* texts[] = {first, second};
  for (const int i : {0, 1}) {
    choice.Option[i] = new QRadioButton(QLatin1String(texts[i]), box);
    choice.Option[i]->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(option)).arg(i));
    column->addWidget(choice.Option[i]);
  }
  choice.Panel = Named(new QWidget(box), panel);
  // The dialog keeps its size when the panel goes.
  QSizePolicy policy = choice.Panel->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  choice.Panel->setSizePolicy(policy);
  choice.Text = Named(new QLineEdit(choice.Panel), text);
  controls::InstallEntryManners(*choice.Text);
  auto* label = new QLabel(QLatin1String(caption), choice.Panel);
  label->setBuddy(choice.Text);
  label->setMinimumWidth(112);
  auto* row = new QHBoxLayout(choice.Panel);
  row->setContentsMargins(22, 0, 0, 0);
  row->addWidget(label);
  row->addWidget(choice.Text, 1);
  column->addWidget(choice.Panel);
  layout()->addWidget(box);
  return choice;
}

void frmSetup::MakeButtons() {
  QPushButton* bttnOK = MakeButton(this, "bttnOK", "&OK");
  QPushButton* bttnCancel = MakeButton(this, "bttnCancel", "&Cancel");
  bttnOK->setDefault(true);
  connect(bttnOK, &QPushButton::clicked, this, &frmSetup::bttnOK_Click);
  connect(bttnCancel, &QPushButton::clicked, this, &frmSetup::bttnCancel_Click);
  auto* row = new QHBoxLayout;
  row->setSpacing(10);
  row->addStretch(1);
  row->addWidget(bttnOK);
  row->addWidget(bttnCancel);
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void frmSetup::Form_Load() {
  Directory.Load(ReadIniString(DirectoriesSection(), DatabaseKey(), IniFile));
  Browser.Load(ReadIniString(ProgramsSection(), BrowserKey(), IniFile));
}

void frmSetup::dirOption_Click(int index) { Directory.Panel->setVisible(index != 0); }

void frmSetup::webOption_Click(int index) { Browser.Panel->setVisible(index != 0); }

void frmSetup::bttnOK_Click() {
  WriteIniString(DirectoriesSection(), DatabaseKey(), Directory.Value(), IniFile);
  WriteIniString(ProgramsSection(), BrowserKey(), Browser.Value(), IniFile);
  QWidget* owner = parentWidget();
  accept();
  QCoreApplication::processEvents();
  controls::MsgBox(
      owner,
      QStringLiteral("If you made any change, you need to restate the program to have it to take place!"),
      controls::vbExclamation, QStringLiteral("Information"));
}

}  // namespace veldrin::shell
