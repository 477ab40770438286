#include "output/web_dialog.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include "base/failure.h"
#include "controls/entry_field.h"
#include "controls/msg_box.h"
#include "controls/named.h"
#include "output/web_directory.h"

namespace veldrin::output {

using base::ResumeNext;
using controls::Named;

frmWeb::frmWeb(const catalogue::Paths& paths, QWidget* parent) : QDialog(parent), ThePaths(paths) {
  setObjectName(QStringLiteral("frmWeb"));
  setWindowTitle(QStringLiteral("Make Web Page(s)"));
}

void frmWeb::ShowModal() {
  Form_Load();
  exec();
}

// --- the controls -----------------------------------------------------------------------------------------

// The title is taken over from the option only when that changes.
void frmWeb::Form_Load() {
  if (layout() == nullptr) Arrange();
  txtWebTitle->clear();
  txtWebName->setText(QStringLiteral("My Web Pictures"));
  ShowDirectory();
  {
    const QSignalBlocker quiet(PgOption[1]);
    PgOption[1]->setChecked(true);
  }
  PgOption[PageType]->setChecked(true);
  WebOK = false;
  txtWebTitle->setFocus();
  txtWebTitle->selectAll();
}

// The last directory may have gone since.
void frmWeb::ShowDirectory() {
  const auto show = [this](const QString& path) { return ResumeNext([&] { Choosers->SetPath(path); }); };
  if (LastDir.isEmpty() || !show(LastDir)) show(controls::UsersPictures());
}

// Built when it is first shown: the program's start needs no list of directories.
void frmWeb::Arrange() {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(16, 14, 16, 16);
  grid->setVerticalSpacing(8);
  txtWebTitle = Named(new QLineEdit(this), "txtWebTitle");
  txtWebName = Named(new QLineEdit(this), "txtWebName");
  controls::SelectOnFocus(*txtWebTitle);
  controls::SelectOnFocus(*txtWebName);
  grid->addWidget(MakeLabel("Label2", "Web Title :", txtWebTitle), 0, 0);
  grid->addWidget(txtWebTitle, 0, 1, 1, 2);
  grid->addWidget(MakeLabel("Label1", "Web Name :", txtWebName), 1, 0);
  grid->addWidget(txtWebName, 1, 1, 1, 2);
  grid->addWidget(MakeOption(1, "Photo Image Gallery"), 2, 1);
  grid->addWidget(MakeOption(0, "Photo Image List"), 2, 2);
  Choosers = new controls::DirectoryChooser(this);
  grid->addWidget(MakeLabel("Label3", "Selected Directory:", &Choosers->Dir1()), 3, 0, 1, 3);
  grid->addWidget(Choosers, 4, 0, 1, 3);
  grid->setRowStretch(4, 1);
  grid->setColumnStretch(2, 1);
  auto* buttons = new QHBoxLayout;
  QPushButton* ok = MakeButton("OkBttn", "&OK", &frmWeb::OkBttn_Click);
  ok->setDefault(true);
  buttons->setSpacing(8);
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(MakeButton("CancelBttn", "&Cancel", &frmWeb::CancelBttn_Click));
  grid->addLayout(buttons, 5, 0, 1, 3);
  resize(460, 480);
}

QLabel* frmWeb::MakeLabel(const char* name, const char* text, QWidget* buddy) {
  auto* label = Named(new QLabel(QLatin1String(text), this), name);
  label->setBuddy(buddy);
  return label;
}

QRadioButton* frmWeb::MakeOption(int index, const char* text) {
  auto* option = new QRadioButton(QLatin1String(text), this);
  option->setObjectName(QStringLiteral("PgOption(%1)").arg(index));
  connect(option, &QRadioButton::toggled, this, [this, index](bool chosen) {
    if (chosen) PgOption_Click(index);
  });
  PgOption[index] = option;
  return option;
}

QPushButton* frmWeb::MakeButton(const char* name, const char* text, void (frmWeb::*handler)()) {
  auto* button = Named(new QPushButton(QLatin1String(text), this), name);
  connect(button, &QPushButton::clicked, this, handler);
  return button;
}

// --- what they do -----------------------------------------------------------------------------------------

void frmWeb::PgOption_Click(int index) {
  txtWebTitle->setText(index != 0 ? QStringLiteral("PHOTO IMAGE GALLERY")
                                  : QStringLiteral("PHOTO IMAGE LIST"));
}

// Whatever is in the directory goes with a Yes: what can't be of an earlier web is named before.
QString frmWeb::ReplaceQuestion(const QString& name) const {
  constexpr int mostNamed = 5;
  QString question = QStringLiteral("The web '%1' already exists, do you want to replace it?").arg(WebDir);
  const QStringList others = OtherFilesOfWeb(ThePaths, LastDir, name);
  if (others.isEmpty()) return question;
  question += others.size() == 1
                  ? QStringLiteral("\r\rThis also deletes a file that is no page or picture of it: ")
                  : QStringLiteral("\r\rThis also deletes %1 files that are no pages or pictures of it: ")
                        .arg(others.size());
  question += others.mid(0, mostNamed).join(QStringLiteral(", "));
  return question + (others.size() > mostNamed ? QStringLiteral(", ...") : QStringLiteral("."));
}

bool frmWeb::MayReplace(const QString& name) {
  if (controls::MsgBox(this, ReplaceQuestion(name),
                       controls::vbYesNo | controls::vbQuestion | controls::vbDefaultButton2,
                       QStringLiteral("Information")) != controls::vbYes)
    return false;
  if (!IsProgramsOwn(ThePaths, WebDir)) return true;
  controls::MsgBox(this, QStringLiteral("The directory '%1' belongs to Veldrin.").arg(WebDir),
                   controls::vbExclamation, QStringLiteral("Information"));
  return false;
}

void frmWeb::OkBttn_Click() {
  const QString name = txtWebName->text();
  LastDir = Choosers->Path();
  PageType = PgOption[0]->isChecked() ? 0 : 1;
  WebDir = LastDir + QLatin1Char('/') + name;
  WebTitle = txtWebTitle->text();
  const QFileInfo earlier(WebDir);
  if (earlier.exists() || earlier.isSymLink()) {
    if (!MayReplace(name)) {
      txtWebName->setFocus();
      return;
    }
    DeleteWeb(ThePaths, LastDir, name);
  }
  MakeWebDirectories(WebDir, PageType == 1);
  WebOK = true;
  accept();
}

}  // namespace veldrin::output
