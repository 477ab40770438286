#include "show/audio_dialog.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "base/failure.h"
#include "controls/busy_pointer.h"
#include "controls/msg_box.h"
#include "controls/named.h"
#include "controls/progress.h"
#include "desktop/file_copy.h"
#include "show/music.h"

namespace veldrin::show {

using base::ResumeNext;
using controls::FileListBox;
using controls::Named;

namespace {

QString FullName(const FileListBox& list, int index) {
  const QString separator = list.Path().endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
  return list.Path() + separator + list.List(index);
}

}  // namespace

frmAudio::frmAudio(FileListBox& musicList, QString musicDir, QWidget* parent, QString audioDir)
    : QDialog(parent),
      MusicList(musicList),
      MusicDir(std::move(musicDir)),
      AudioDir(std::move(audioDir)),
      Choosers(new controls::DirectoryChooser(this)) {
  setObjectName(QStringLiteral("frmAudio"));
  setWindowTitle(QStringLiteral("Select Audio FIles"));
  Arrange();
  connect(Choosers, &controls::DirectoryChooser::Change, this,
          [this] { FileToSel->SetPath(Choosers->Path()); });
  Form_Load();
}

frmAudio::~frmAudio() { ListMusic(MusicList, MusicDir); }

void frmAudio::Form_Load() {
  ResumeNext([&] { Choosers->Drive1().SetDrive(AudioDir); });
  ResumeNext([&] { Choosers->Dir1().SetPath(AudioDir); });
  ResumeNext([&] { FileToSel->SetPath(AudioDir); });
  FileToSel->SetPattern(MusicPattern());
  ListMusic(*FileToPlay, MusicDir);
}

void frmAudio::Arrange() {
  auto* buttons = new QVBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(MakeButton("AddBttn", "&Add", &frmAudio::AddBttn_Click));
  buttons->addWidget(MakeButton("RmvBttn", "&Rmv", &frmAudio::RmvBttn_Click));
  buttons->addStretch(1);
  buttons->addWidget(MakeButton("CloseBttn", "&Close", &frmAudio::CloseBttn_Click));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 14, 16, 16);
  row->setSpacing(12);
  row->addWidget(Choosers, 3);
  row->addWidget(MakeList("FileToSel", "lblSel", "Files to Select:", FileToSel), 4);
  row->addLayout(buttons);
  row->addWidget(MakeList("FileToPlay", "lblPlay", "Files to Play:", FileToPlay), 4);
  resize(860, 420);
}

QWidget* frmAudio::MakeList(const char* listName, const char* labelName, const char* caption,
                            FileListBox*& list) {
  auto* panel = new QWidget(this);
  auto* label = Named(new QLabel(QLatin1String(caption), panel), labelName);
  list = Named(new FileListBox(panel), listName);
  label->setBuddy(list);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(label);
  column->addWidget(list, 1);
  return panel;
}

QPushButton* frmAudio::MakeButton(const char* name, const char* caption, void (frmAudio::*handler)()) {
  auto* button = Named(new QPushButton(QLatin1String(caption), this), name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, handler);
  return button;
}

void frmAudio::AddBttn_Click() {
  base::WorkReport report{QStringLiteral("files"), QStringLiteral("added"), 0, {}, false};
  {
    const controls::BusyPointer busy;
    QStringList names;
    for (int i = 0; i < FileToSel->ListCount(); ++i) {
      if (FileToSel->Selected(i)) names << FileToSel->List(i);
    }
    const QString directory = FileToSel->Path();
    controls::LongWork work(*this);
    controls::Progress progress(work, QStringLiteral("Copying Music...."), static_cast<int>(names.size()));
    for (const QString& name : names) {
      report.Stopped = !progress.Step(report.Done);
      if (report.Stopped) break;
      progress.Run([&] { Add(directory + QLatin1Char('/') + name, name, report); });
    }
  }
  ListMusic(*FileToPlay, MusicDir);
  const QString failures = FailureText(report);
  if (!failures.isEmpty())
    controls::MsgBox(this, failures, controls::vbExclamation, QStringLiteral("Information"));
}

void frmAudio::Add(const QString& file, const QString& name, base::WorkReport& report) {
  try {
    desktop::CopyFile(file, MusicDir + name);
    ++report.Done;
  } catch (const base::RuntimeError& error) {
    // The error of a copy onto itself.
    const bool isThere = error.Number() == base::errPermissionDenied;
    report.Failures.push_back(
        {name, isThere ? QStringLiteral("it is among the files to play") : ReasonOf(error)});
  }
}

void frmAudio::RmvBttn_Click() {
  for (int i = 0; i < FileToPlay->ListCount(); ++i) {
    if (FileToPlay->Selected(i)) QFile::remove(FullName(*FileToPlay, i));
  }
  ListMusic(*FileToPlay, MusicDir);
}

}  // namespace veldrin::show
