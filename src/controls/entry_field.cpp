#include "controls/entry_field.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QTextCursor>
#include <functional>

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

// The last characters of what came in go, so that the text around it stays.
class TextLimit : public QObject {
 public:
  TextLimit(QPlainTextEdit& field, int maxLength) : QObject(&field), Field(field), MaxLength(maxLength) {
    connect(field.document(), &QTextDocument::contentsChange, this,
            [this](int at, int, int added) { End = at + added; });
    connect(&field, &QPlainTextEdit::textChanged, this, &TextLimit::Cut);
  }

 private:
  void Cut() {
    const QString text = Field.toPlainText();
    qsizetype excess = text.size() - MaxLength;
    if (excess <= 0) return;
    // The end that is reported may count the document's closing mark.
    const qsizetype end = std::min<qsizetype>(End, text.size());
    if (excess < end && text.at(end - excess).isLowSurrogate()) ++excess;
    QTextCursor cursor(Field.document());
    cursor.setPosition(static_cast<int>(std::max<qsizetype>(end - excess, 0)));
    cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
    cursor.joinPreviousEditBlock();
    cursor.removeSelectedText();
    cursor.endEditBlock();
  }

  QPlainTextEdit& Field;
  qsizetype MaxLength;
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

void LimitText(QPlainTextEdit& field, int maxLength) { new TextLimit(field, maxLength); }

}  // namespace veldrin::controls
