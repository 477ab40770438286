#include "controls/entry_field.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QTextCursor>
#include <algorithm>
#include <functional>

#include "base/text_length.h"

namespace veldrin::controls {

namespace {

class FocusSelection : public QObject {
 public:
  FocusSelection(QWidget& field, std::function<void()> selectAll)
      : QObject(&field), SelectAll(std::move(selectAll)) {
    field.installEventFilter(this);
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusIn) GotFocus(static_cast<QFocusEvent*>(event)->reason());
    return false;
  }

 private:
  // After the click that gave the focus, which would take the selection away again.
  void GotFocus(Qt::FocusReason reason) {
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
    QMetaObject::invokeMethod(this, SelectAll, Qt::QueuedConnection);
  }

  std::function<void()> SelectAll;
};

class EntryManners : public FocusSelection {
 public:
  EntryManners(QWidget& field, std::function<void()> selectAll)
      : FocusSelection(field, std::move(selectAll)), Field(field) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    FocusSelection::eventFilter(watched, event);
    return event->type() == QEvent::KeyPress && KeyPress(static_cast<QKeyEvent*>(event)->key());
  }

 private:
  bool KeyPress(int key) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(&Field, &tab);
    return true;
  }

  QWidget& Field;
};

// The text without so many of the last characters in front of `end`, where what came in ends, that the limit
// holds: the text around it stays. `end` becomes the place of the cut.
QString TextThatFits(const QString& text, qsizetype& end, int maxLength) {
  const qsizetype place = base::PlaceBefore(text, end, base::TextLength(text) - maxLength);
  const QString rest = text.mid(end);
  end = place;
  return base::CutText(text.left(place) + rest, maxLength);
}

// What has to be replaced in one text to make it another.
struct TextChange {
  TextChange(const QString& before, const QString& after) {
    const auto shorter = std::min(before.size(), after.size());
    const auto begin = std::mismatch(before.begin(), before.begin() + shorter, after.begin()).first;
    Begin = static_cast<int>(begin - before.begin());
    const auto end = std::mismatch(before.rbegin(), before.rbegin() + shorter - Begin, after.rbegin()).first;
    const auto tail = end - before.rbegin();
    Removed = static_cast<int>(before.size() - tail) - Begin;
    Inserted = after.mid(Begin, after.size() - tail - Begin);
  }

  int Begin;
  int Removed;
  QString Inserted;
};

// With blanks in the place of what would break the line.
QString OneLine(QString text) {
  for (QChar& sign : text) {
    const bool breaks = sign.category() == QChar::Other_Control || sign == QChar::LineSeparator ||
                        sign == QChar::ParagraphSeparator;
    if (breaks) sign = QLatin1Char(' ');
  }
  return text;
}

// A change that makes the text too long, or of several lines, is taken back and made anew as far as there is
// room: cut off afterwards, it would come again with each undo.
class LineLimit : public QObject {
 public:
  LineLimit(QLineEdit& field, int maxLength) : QObject(&field), Field(field), MaxLength(maxLength) {
    connect(&field, &QLineEdit::textChanged, this, &LineLimit::Cut);
  }

 private:
  void Cut(const QString& text) {
    const QString line = OneLine(text);
    const bool fits = base::TextLength(line) <= MaxLength;
    if (fits && line == text) return;
    qsizetype place = Field.cursorPosition();
    const QString fitting = fits ? line : TextThatFits(line, place, MaxLength);
    if (!Field.isUndoAvailable()) return Field.setText(fitting);
    Field.undo();
    if (const QString before = Field.text(); before != fitting) {
      const TextChange change(before, fitting);
      Field.setSelection(change.Begin, change.Removed);
      Field.insert(change.Inserted);
    }
    Field.setCursorPosition(static_cast<int>(place));
  }

  QLineEdit& Field;
  int MaxLength;
};

class LinesLimit : public QObject {
 public:
  LinesLimit(QPlainTextEdit& field, int maxLength) : QObject(&field), Field(field), MaxLength(maxLength) {
    connect(field.document(), &QTextDocument::contentsChange, this,
            [this](int at, int, int added) { End = at + added; });
    connect(&field, &QPlainTextEdit::textChanged, this, &LinesLimit::Cut);
  }

 private:
  void Cut() {
    const QString text = ExactText(Field);
    if (base::TextLength(text) <= MaxLength) return;
    // The end that is reported may count the document's closing mark.
    qsizetype place = std::min<qsizetype>(End, text.size());
    const QString fitting = TextThatFits(text, place, MaxLength);
    if (Field.document()->isUndoAvailable()) Field.undo();
    Field.document()->clearUndoRedoStacks(QTextDocument::RedoStack);
    QTextCursor cursor(Field.document());
    if (const QString before = ExactText(Field); before != fitting) {
      const TextChange change(before, fitting);
      cursor.setPosition(change.Begin);
      cursor.setPosition(change.Begin + change.Removed, QTextCursor::KeepAnchor);
      cursor.insertText(change.Inserted);
    }
    cursor.setPosition(static_cast<int>(place));
    Field.setTextCursor(cursor);
  }

  QPlainTextEdit& Field;
  int MaxLength;
  int End = 0;
};

}  // namespace

void SelectOnFocus(QLineEdit& field) {
  new FocusSelection(field, [&field] { field.selectAll(); });
}

void InstallEntryManners(QLineEdit& field) {
  new EntryManners(field, [&field] { field.selectAll(); });
}

void InstallEntryManners(QPlainTextEdit& field) {
  field.setTabChangesFocus(true);
  new EntryManners(field, [&field] { field.selectAll(); });
}

QString ExactText(const QPlainTextEdit& field) {
  return field.document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void LimitText(QLineEdit& field, int maxLength) { new LineLimit(field, maxLength); }

void LimitText(QPlainTextEdit& field, int maxLength) { new LinesLimit(field, maxLength); }

}  // namespace veldrin::controls
