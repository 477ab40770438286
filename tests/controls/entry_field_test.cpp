#include "controls/entry_field.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextCursor>

#include "base/text_length.h"
#include "support/test_support.h"

namespace veldrin::controls {
namespace {

constexpr int Length = 4;

struct LineField : QLineEdit {
  QString Text() const { return text(); }
  int Cursor() const { return cursorPosition(); }
  void Set(const QString& text, int cursor) {
    setText(text);
    setCursorPosition(cursor);
  }
};

struct LinesField : QPlainTextEdit {
  QString Text() const { return ExactText(*this); }
  int Cursor() const { return textCursor().position(); }
  void Set(const QString& text, int cursor) {
    setPlainText(text);
    QTextCursor place = textCursor();
    place.setPosition(cursor);
    setTextCursor(place);
  }
};

template <class Field>
struct LimitedField : testing::Test {
  LimitedField() { LimitText(TheField, Length); }
  Field TheField;
};
using Fields = testing::Types<LineField, LinesField>;
TYPED_TEST_SUITE(LimitedField, Fields);

TYPED_TEST(LimitedField, TakesWholeCharactersOfWhatIsPasted) {
  const struct {
    QString Text;
    int Cursor;
    QString Pasted;
    QString Result;
    int End;
  } cases[] = {{"abc", 3, "de", "abcd", 4},
               {"abc", 3, "🏔🏔", "abc🏔", 5},
               {"🏔🏔🏔", 6, "🏔x", "🏔🏔🏔🏔", 8},
               {"abcd", 4, "🏔", "abcd", 4},
               {"a🏔d", 1, "xyz", "ax🏔d", 2},
               {"a🏔d", 3, "🏔🏔", "a🏔🏔d", 5},
               {"🏔🏔🏔🏔", 2, "x", "🏔🏔🏔🏔", 2},
               {"abc", 3, QString(QChar(0xD83C)) + "x", "abc" + QString(QChar(0xD83C)), 4},
               {"ab", 1, QString(QChar(0xDFD4)) + "🏔z", "a" + QString(QChar(0xDFD4)) + "🏔b", 4},
               {"", 0, "e\u0301e\u0301e\u0301", "e\u0301e\u0301", 4}};
  auto& field = this->TheField;
  for (const auto& [text, cursor, pasted, result, end] : cases) {
    SCOPED_TRACE((text + " + " + pasted).toStdString());
    field.Set(text, cursor);
    QGuiApplication::clipboard()->setText(pasted);
    field.paste();
    EXPECT_EQ(field.Text(), result);
    EXPECT_EQ(field.Cursor(), end);
    field.undo();
    EXPECT_EQ(field.Text(), text);
    field.redo();
    EXPECT_EQ(field.Text(), result);
  }
}

TYPED_TEST(LimitedField, TakesBackWhatWasTypedAndNoMore) {
  auto& field = this->TheField;
  field.Set("🏔🏔", 2);
  QTest::keyClicks(&field, "xyz");
  EXPECT_EQ(field.Text(), "🏔xy🏔");
  for (int i = 0; i < 9; ++i) {
    field.undo();
    EXPECT_LE(base::TextLength(field.Text()), Length);
  }
  EXPECT_EQ(field.Text(), "🏔🏔");
  field.Set("🏔🏔🏔🏔🏔x", 0);
  EXPECT_EQ(field.Text(), "🏔🏔🏔🏔") << "what the program sets is cut as well";
  field.undo();
  EXPECT_EQ(field.Text(), "🏔🏔🏔🏔");
}

}  // namespace
}  // namespace veldrin::controls
