#include "output/get_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <utility>

#include "base/failure.h"
#include "controls/msg_box.h"
#include "controls/named.h"

namespace veldrin::output {

using controls::Named;

frmGet::frmGet(QString imageDir, QString& lastGetDir, QWidget* parent, CopyFunction copy)
    : QDialog(parent),
      ImageDir(std::move(imageDir)),
      LastGetDir(lastGetDir),
      Copy(std::move(copy)),
      TheList(Named(new QListWidget(this), "List1")),
      Chooser(new controls::DirectoryChooser(this)) {
  setObjectName(QStringLiteral("frmGet"));
  setWindowTitle(QStringLiteral("Copy Photo(s) to Disk"));
  Arrange();
  Form_Load();
}

void frmGet::Arrange() {
  TheList->setUniformItemSizes(true);
  auto* panels = new QHBoxLayout;
  panels->setSpacing(16);
  panels->addWidget(MakePanel("Label2", "Selected File(s):", TheList, TheList), 2);
  panels->addWidget(MakePanel("Label3", "Selected Directory:", Chooser, &Chooser->Dir1()), 3);
  auto* ok = Named(new QPushButton(QStringLiteral("&OK"), this), "OkBttn");
  ok->setDefault(true);
  auto* cancel = Named(new QPushButton(QStringLiteral("&Cancel"), this), "CancelBttn");
  connect(ok, &QPushButton::clicked, this, &frmGet::OkBttn_Click);
  connect(cancel, &QPushButton::clicked, this, &frmGet::CancelBttn_Click);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 14, 16, 16);
  rows->setSpacing(14);
  rows->addLayout(panels, 1);
  rows->addLayout(buttons);
  resize(600, 420);
}

QWidget* frmGet::MakePanel(const char* labelName, const char* caption, QWidget* content, QWidget* buddy) {
  auto* panel = new QWidget(this);
  auto* label = Named(new QLabel(QLatin1String(caption), panel), labelName);
  label->setBuddy(buddy);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(label);
  column->addWidget(content, 1);
  return panel;
}

void frmGet::Form_Load() {
  if (LastGetDir.isEmpty()) {
    for (const auto place : {QStandardPaths::PicturesLocation, QStandardPaths::HomeLocation}) {
      const QString start = QStandardPaths::writableLocation(place);
      if (base::ResumeNext([&] { Chooser->Dir1().SetPath(start); })) return;
    }
    return;
  }
  const QString last = std::exchange(LastGetDir, QString());
  Chooser->Dir1().SetPath(last);
  LastGetDir = last;
}

void frmGet::OkBttn_Click() {
  const controls::BusyPointer busy;
  for (int i = 0; i < TheList->count(); ++i) {
    const QString name = TheList->item(i)->text();
    const QString target = Chooser->Path() + QLatin1Char('/') + name;
    const bool copied = base::ResumeNext([&] { Copy(ImageDir + name, target); });
    if (copied && QFileInfo(target).isFile()) continue;
    StillBusy.emplace();
    controls::MsgBox(this, QStringLiteral("File Transfer Error !"), controls::vbExclamation,
                     QStringLiteral("Error"));
    return;
  }
  LastGetDir = Chooser->Path();
  accept();
}

}  // namespace veldrin::output
