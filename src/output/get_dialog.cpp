#include "output/get_dialog.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>
#include <atomic>
#include <utility>

#include "base/failure.h"
#include "controls/msg_box.h"
#include "controls/named.h"

namespace veldrin::output {

using controls::Named;

frmGet::frmGet(const catalogue::Paths& paths, QString& lastGetDir, controls::LongWork& work, QWidget* parent,
               CopyFunction copy)
    : QDialog(parent),
      ThePaths(paths),
      LastGetDir(lastGetDir),
      Work(work),
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
    base::ResumeNext([&] { Chooser->Dir1().SetPath(controls::UsersPictures()); });
    return;
  }
  const QString last = std::exchange(LastGetDir, QString());
  Chooser->Dir1().SetPath(last);
  LastGetDir = last;
}

bool frmGet::IsRefused(const QString& directory) {
  if (!IsOwnDirectory(ThePaths, directory)) return false;
  controls::MsgBox(this, QStringLiteral("The directory '%1' belongs to Veldrin.").arg(directory),
                   controls::vbExclamation, QStringLiteral("Information"));
  return true;
}

void frmGet::CopyTo(const QString& target, const QString& name) const {
  Copy(ThePaths.ImageDir + name, target);
  if (!QFileInfo(target).isFile())
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(target));
}

void frmGet::NoteFailure(const QStringList& names, const QString& reason) {
  qsizetype index = TheReport->Done;
  TheReport->Failures.push_back({names.value(index), reason});
  while (++index < names.size()) TheReport->Failures.push_back({names[index], QStringLiteral("not tried")});
}

void frmGet::LeaveOutChanged(QStringList& names) {
  if (!StillTheSame) return;
  const QSet<QString> same = StillTheSame();
  names.removeIf([&](const QString& name) {
    if (same.contains(name)) return false;
    TheReport->Failures.push_back({name, QStringLiteral("changed by another machine")});
    return true;
  });
}

void frmGet::CopyAll(const QStringList& names, const QString& directory) {
  controls::Progress progress(Work, QStringLiteral("Copying Photos...."), static_cast<int>(names.size()));
  std::atomic<int> copied = 0;
  const auto copy = [&] {
    for (const QString& name : names) {
      if (progress.IsStopped()) return;
      CopyTo(directory + QLatin1Char('/') + name, name);
      ++copied;
    }
  };
  const auto note = qScopeGuard([&] {
    TheReport->Done = copied;
    TheReport->Stopped = progress.IsStopped() && copied < names.size();
  });
  progress.Run(copy, [&] { return copied.load(); });
}

void frmGet::OkBttn_Click() {
  if (IsRefused(Chooser->Path())) return;
  const controls::BusyPointer busy;
  TheReport = base::WorkReport{
      QStringLiteral("photos"), QStringLiteral("copied to %1").arg(Chooser->Path()), 0, {}, false};
  QStringList names;
  for (int i = 0; i < TheList->count(); ++i) names << TheList->item(i)->text();
  try {
    LeaveOutChanged(names);
    CopyAll(names, Chooser->Path());
  } catch (const base::RuntimeError& error) {
    NoteFailure(names, ReasonOf(error));
    StillBusy.emplace();
    controls::MsgBox(this, QStringLiteral("File Transfer Error !"), controls::vbExclamation,
                     QStringLiteral("Error"));
    return;
  }
  if (TheReport->Done > 0) LastGetDir = Chooser->Path();
  accept();
}

}  // namespace veldrin::output
