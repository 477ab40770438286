#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QToolBar>
#include <algorithm>

#include "controls/dir_list.h"
#include "controls/file_list.h"
#include "journeys/journey_steps.h"
#include "records/control_drag.h"

namespace veldrin::test {

namespace {

bool ClickIn(Walk& walk, QDialog& dialog, const char* button) {
  return walk.Click(Child(dialog, QLatin1String(button)));
}

// Comes by a button of the shown view, by its menu or from the toolbar.
bool Open(Walk& walk, int way, const char* ofData, const char* ofForm, const char* item, int button) {
  if (way % 3 == 0) return walk.Choose(item);
  if (way % 3 == 1) {
    auto& bar = Child<QToolBar>(walk.On().Window, "tbarToolBar");
    auto& action = Child<QAction>(bar, QStringLiteral("tbarToolBar(%1)").arg(button));
    return action.isVisible() && action.isEnabled() && walk.Click(*bar.widgetForAction(&action));
  }
  if (walk.Before.Tab == shell::BrowseTab) return walk.Click(ofData);
  return walk.Before.Tab == shell::FormTab && ofForm != nullptr && walk.Click(ofForm);
}

// How it begins.
QString ReportOf(size_t photos, const char* deed) {
  return (photos == 0 ? "No" : QString::number(photos)) + (photos == 1 ? " photo " : " photos ") + deed;
}

// --- query, find, get -------------------------------------------------------------------------------------

void AskQuery(Walk& walk, int a, int b) {
  const bool accepted = b % 4 != 0;
  const bool byType = b % 4 == 1;
  const QString text = a % 7 == 0 ? "nobody" : byType ? "jpg" : QString::number(a % 10);
  bool asked = false;
  walk.OnDialog("frmQry", [&](QDialog& dialog) {
    asked = true;
    ClickIn(walk, dialog, "ClearBttn");
    QTest::keyClicks(&Child(dialog, QLatin1String(byType ? "qImage" : "qTitle")), text);
    ClickIn(walk, dialog, accepted ? "OkBttn" : "CancelBttn");
  });
  Open(walk, a, "QueryBttn", nullptr, "RecordQuery", shell::QueryDatabaseCode);
  if (!asked || !accepted) return;
  walk.Model.ClearQuery();
  (byType ? walk.Model.QueryType : walk.Model.QueryTitle) = text;
}

void FindRecord(Walk& walk, int a, int b) {
  if (walk.Before.Naming) return;
  const bool next = b % 3 == 1;
  const bool cancelled = b % 7 == 6;
  const QString text = a % 5 == 0 ? "nobody" : QStringLiteral("t%1").arg(a % 30);
  const auto& list = walk.Before.List;
  int found = -1;
  for (int i = next ? walk.Before.Position + 1 : 0; found < 0 && i < std::ssize(list); ++i) {
    const auto row = walk.Model.Rows.find(list[i]);
    if (row != walk.Model.Rows.end() && row->second.Title.contains(text)) found = i;
  }
  bool asked = false;
  walk.OnDialog("frmSearch", [&](QDialog& dialog) {
    asked = true;
    Child<QComboBox>(dialog, "FldName").setCurrentText("Title");
    auto& value = Child<QLineEdit>(dialog, "MatchVal");
    value.selectAll();
    QTest::keyClicks(&value, text);
    ClickIn(walk, dialog, cancelled ? "CancelBttn" : next ? "NextBttn" : "FindBttn");
  });
  if (!cancelled && found < 0) walk.AnswerBox("Record not fund!", QMessageBox::Ok, false);
  Open(walk, a, "SearchBttn(0)", "SearchBttn(1)", "RecordSearch", shell::FindRecordCode);
  if (!asked || cancelled || walk.Before.Tab > shell::FormTab) return;
  const int position = found < 0 ? walk.Before.Position : found;
  if (position >= 0) walk.ExpectCurrent(list[position]);
}

// The files of those that have one come, up to the first that hasn't.
void GetPhotos(Walk& walk, int a, int b) {
  for (const QString& name : QDir(walk.GotDir()).entryList(QDir::Files))
    QFile::remove(walk.GotDir() + u'/' + name);
  const std::vector<int> photos = walk.Pointed();
  const bool accepted = b % 4 != 0;
  bool asked = false;
  walk.AnswerBox("File Transfer Error", QMessageBox::Ok, false);
  for (size_t got = 0; got < photos.size(); ++got)
    walk.AnswerBox(qPrintable(ReportOf(got, "copied to ")), QMessageBox::Ok, false);
  walk.OnDialog("frmGet", [&](QDialog& dialog) {
    asked = true;
    Child<controls::DirListBox>(dialog, "Dir1").SetPath(walk.GotDir());
    if (accepted) ClickIn(walk, dialog, "OkBttn");
    if (dialog.isVisible()) ClickIn(walk, dialog, "CancelBttn");
  });
  Open(walk, a, "GetMBttn", "GetSBttn", "PhotoGet", shell::GetPhotosCode);
  if (!asked || walk.Before.Naming) return;
  QStringList expected;
  bool known = true;
  for (const int photo : photos) {
    const auto row = walk.Model.Rows.find(photo);
    known &= row != walk.Model.Rows.end() && !walk.Changed.contains(photo);
    if (!known || row->second.Image.isNull() || !accepted) break;
    expected << QStringLiteral("%1.%2").arg(photo).arg(row->second.ImageType);
  }
  QStringList got = QDir(walk.GotDir()).entryList(QDir::Files);
  for (QStringList* names : {&got, &expected}) names->sort();
  if (known && got != expected) walk.Fail("got", got.join(u' ') + " expected: " + expected.join(u' '));
}

// --- Form View --------------------------------------------------------------------------------------------

void TypeOver(Walk& walk, const char* name, bool clear) {
  auto& field = Child<QLineEdit>(walk.On().Window, name);
  if (!walk.Click(field)) return;
  field.selectAll();
  clear ? walk.Key(Qt::Key_Delete) : walk.Type(walk.NewText());
}

void TypeInForm(Walk& walk, int a, int b) { TypeOver(walk, a % 3 == 0 ? "eMadeBy" : "eTitle", b % 9 == 0); }

void SaveForm(Walk& walk, int, int) {
  if (walk.Before.Tab != shell::FormTab || walk.Before.Naming) return;
  const int number = walk.Before.FormNumber.toInt();
  walk.AnswerBox("Error Code: 3021", QMessageBox::Ok, false);
  if (!walk.Click("SaveBttn") || walk.Before.List.empty()) return;
  walk.ExpectOn({number}, [&](JourneyModel& model, int photo) {
    model.Rows.at(photo).Title = walk.Before.FormTitle;
    model.Rows.at(photo).MadeBy = walk.Before.FormMaker;
  });
}

void UndoForm(Walk& walk, int, int) {
  if (walk.Before.Tab == shell::FormTab) walk.Click("UndoBttn");
}

// --- Add New ----------------------------------------------------------------------------------------------

// The platform of the tests ends a drag at once; what it carries is dropped by hand.
void DropPicture(const Walk& walk) {
  auto& window = walk.On().Window;
  Drop(Child(window, "ImgFolder"), *records::MakeControlDrag(Child(window, "picNew")));
}

void ChooseFiles(Walk& walk, int a, int b) {
  if (walk.Before.Tab != shell::AddTab) return;
  auto& files = Child<controls::FileListBox>(walk.On().Window, "FileToSel");
  if (!files.isEnabled() || files.ListCount() == 0) return;
  const auto click = [&](int index, Qt::KeyboardModifiers keys) {
    walk.Click(*files.viewport(), files.visualItemRect(files.item(index % files.ListCount())).center(), keys);
  };
  click(a, {});
  if (b % 3 == 0) click(a + 1 + b % 5, Qt::ControlModifier);
  if (b % 4 != 0) WaitForPictures();
  if (Child(walk.On().Window, "ImgNew").isVisible()) DropPicture(walk);
}

void TypeForNew(Walk& walk, int, int b) { TypeOver(walk, b % 3 == 0 ? "nMadeBy" : "nTitle", false); }

void SaveNew(Walk& walk, int, int b) {
  if (walk.Before.Tab != shell::AddTab) return;
  if (b % 5 == 0) return static_cast<void>(walk.Click("newCancelBttn"));
  if (b % 5 == 1) walk.Click("chkRemove");
  auto& window = walk.On().Window;
  auto& files = Child<controls::FileListBox>(window, "FileToSel");
  QStringList names;
  for (int i = 0; i < files.ListCount(); ++i)
    if (files.Selected(i)) names << files.List(i);
  const QString title = Child<QLineEdit>(window, "nTitle").text();
  const QString maker = Child<QLineEdit>(window, "nMadeBy").text();
  const QString folder = walk.Model.Selected;
  const auto& save = Child(window, "newSaveBttn");
  if (std::any_of(names.begin(), names.end(), [&](auto& name) { return walk.Pictures.at(name).Colour == 0; }))
    walk.AnswerBox(qPrintable(ReportOf(names.size(), "stored in ")), QMessageBox::Ok,
                   !walk.Before.Naming && walk.InSight(save, save.rect().center()));
  if (!walk.Click("newSaveBttn")) return;
  walk.ExpectAt({folder}, [&](JourneyModel& model) {
    int number = model.NextNumber();
    for (const QString& name : names) {
      JourneyModel::Photo photo = walk.Pictures.at(name);
      photo.Birth = walk.NewBirth();
      photo.Title = title;
      photo.MadeBy = maker;
      if (photo.Colour == 0) {
        photo.ImageType = "jpg";
        photo.Image = QByteArray();
      }
      model.Store(number++, photo, folder);
    }
  });
}

}  // namespace

std::span<const StepKind> DialogSteps() {
  static const StepKind kinds[] = {STEP(AskQuery, 4),    STEP(FindRecord, 3), STEP(GetPhotos, 2),
                                   STEP(TypeInForm, 5),  STEP(SaveForm, 5),   STEP(UndoForm, 1),
                                   STEP(ChooseFiles, 8), STEP(TypeForNew, 6), STEP(SaveNew, 8)};
  return kinds;
}

}  // namespace veldrin::test
