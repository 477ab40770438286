// A user at the main window: by mouse and keys only. What each step may change is said before its end, and
// everything is looked at after it.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <memory>
#include <span>

#include "journeys/journey_screen.h"
#include "journeys/other_machine.h"
#include "support/environment.h"
#include "support/test_support.h"

namespace veldrin::test {

struct Failure {
  std::string Invariant;
  std::string What;
};

class Walk;

struct StepKind {
  const char* Name;
  int Weight;
  void (*Act)(Walk& walk, int a, int b);
  bool TypesName = false;  ///< in the field that is open; any other step ends the typing
};

/// A step: what it is, and two numbers from which it takes its choices.
struct Step {
  const StepKind* Kind;
  int A;
  int B;
};

std::span<const StepKind> StepKinds();

/// Descriptions of errors that reached the application; it holds the last ones until they are taken.
QStringList TakeEscapedErrors();

class Walk {
 public:
  /// In a catalogue of its own.
  Walk();
  ~Walk();
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  /// Raises Failure.
  void Do(const Step& step);

  // --- for the steps: the user's eyes and hands ---

  JourneyModel Model;
  Screen Before;  ///< as the user saw it last
  const ScreenReader& On() const { return *Reader; }
  void Look();

  /// A click on what of a control is in sight; false when that place is covered.
  bool Click(QWidget& control, QPoint place, Qt::KeyboardModifiers keys = {},
             Qt::MouseButton button = Qt::LeftButton);
  bool Click(QWidget& control) { return Click(control, control.rect().center()); }
  bool Click(const char* control) { return Click(Child(*Window, QLatin1String(control))); }
  bool InSight(const QWidget& control, QPoint place) const;
  /// A command of the menus: from the one that is popped up, otherwise from the bar. False when it can't be
  /// chosen.
  bool Choose(const char* command);
  /// Without a choice from the menu that is popped up.
  void LeaveMenu();
  /// Goes to what has the focus.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  void Type(const QString& text);
  /// Shows a view by its button or its menu.
  void ShowView(int view, bool byMenu);

  /// The step's boxes, in any order. One that must come is missed when it doesn't.
  void AnswerBox(const char* begin, QMessageBox::StandardButton button, bool must = true);
  void OnDialog(const char* name, std::function<void(QDialog&)> handler);

  // --- what the step may lead to ---

  /// Another state in which the step may leave the catalogue; without any it leaves it as it was.
  JourneyModel& Outcome();
  /// The photos that a command for marked ones, otherwise the current one, takes.
  std::vector<int> Pointed() const;
  /// The step does this to each of these photos, and to no other.
  void ExpectOn(const std::vector<int>& photos, const std::function<void(JourneyModel&, int)>& effect);
  /// Whether a command on a folder meets what another machine did there or beside it.
  bool IsForeign(const QString& folder) const;
  /// The step changes folders or what is filed there; where another machine did so before, it may do nothing.
  void ExpectAt(const QStringList& folders, const std::function<void(JourneyModel&)>& effect);
  /// New folders get their numbers in the order in which the tree shows what they are copies of.
  void MayRenumber() { Renumbers = true; }
  /// These photos are marked then, unless the list is read anew.
  void ExpectSelection(std::vector<int> numbers);
  /// A click makes a photo the current one.
  void ExpectCurrent(int number) { Current = number; }
  void Fail(const char* invariant, const QString& what);

  // --- the world ---

  /// Another machine changes the catalogue to what the model is after it.
  void Elsewhere(const std::function<void(JourneyModel&)>& change);
  /// Another machine holds the catalogue for a while, `alone` or for writing.
  void HoldInNextStep(bool alone) { Holding = alone ? Hold::Alone : Hold::Writing; }
  void Restart();
  void FillPictures();
  JourneyModel::Photo NewPhoto(int kind);
  int NewBirth() { return ++Births; }
  QString NewText() { return QStringLiteral("t%1").arg(++Texts); }

  TestCatalogue Catalogue;
  QTemporaryDir Home;
  std::set<int> Changed;        ///< photos that another machine changed since the list was read
  bool PendingChanged = false;  ///< some of those that were cut or copied, since the start
  /// Folders that another machine changed since the start: whether they have gone or are others now, or have
  /// another name only.
  std::map<QString, bool> Foreign;
  bool TreeIsOld = false;                           ///< some were, and the tree may show what has gone
  std::map<QString, JourneyModel::Photo> Pictures;  ///< what can be added, by the file's name
  QString PicturesDir() const { return Home.path() + "/Pictures/"; }
  QString GotDir() const { return Home.path() + "/Got"; }
  int Refreshes = 0;  ///< of the list, in this step

 private:
  struct BoxRule {
    QString Begin;
    QMessageBox::StandardButton Button;
    bool Must;
    bool Came = false;
  };

  enum class Hold { None, Writing, Alone };
  void HoldCatalogue();
  void LetGo();

  void MakeCatalogue();
  void Start();
  void Settle();
  void KeepName();
  void MayKeepFormerName(const JourneyModel& before);
  bool LeavesForeignAlone(const Stored& stored) const;
  void AnswerModal();
  void AnswerBox(QMessageBox& box);
  bool IsAnother(int photo) const;

  void Check();
  void CheckStored();
  void TakeAsItIs(const Stored& stored);
  bool IsRenumbered(const Stored& stored, const Stored& expected) const;
  void CheckList();
  void CheckTree();
  void CheckCurrent();
  void CheckPage();
  void CheckForm();
  void CheckRanges();
  int ListCurrent() const;
  QString ListCounter() const;
  void Require(bool holds, const char* invariant, const QString& what);
  template <class Value>
  void Compare(const char* invariant, const Value& seen, const Value& expected);
  bool IsPictureOf(int number, const Seen& seen) const;

  Environment Places;
  shell::App TheApp;
  std::unique_ptr<shell::frmMain> Window;
  std::unique_ptr<ScreenReader> Reader;
  std::unique_ptr<OtherMachine> Other;
  QTimer Modals;
  QTimer Held;
  Hold Holding = Hold::None;

  // Of the step.
  Screen After;
  std::vector<JourneyModel> Outcomes;
  bool MayAdopt = false;
  bool Renumbers = false;
  std::vector<BoxRule> Boxes;
  std::map<QString, std::function<void(QDialog&)>> Dialogs;
  QPointer<QWidget> LastModal;
  QElapsedTimer Waited;
  std::optional<std::vector<int>> Selection;
  std::optional<int> Current;
  std::optional<Failure> First;
  bool Hurried = false;  ///< the user doesn't wait for pictures
  bool FolderMoved = false;
  bool FromMenu = false;

  // Of the run.
  int Births = 0;
  int Texts = 0;
  int SliderMax = 0;
  bool ListIsOld = false;         ///< another machine changed what it was read from
  std::map<int, int> BirthsRead;  ///< of all photos when the list was read
};

}  // namespace veldrin::test
