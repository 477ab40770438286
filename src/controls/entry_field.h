// How people type into the program's text fields: a field that gets the focus selects its whole text, and
// Enter goes on to the next field, in fields of several lines as well.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

namespace veldrin::controls {

/// The first of these manners alone, for a field of a dialog that Enter closes.
void SelectOnFocus(QLineEdit& field);

/// Gives a field these manners, for its life.
void InstallEntryManners(QLineEdit& field);
void InstallEntryManners(QPlainTextEdit& field);

/// The text of a field of several lines as it was given to it; toPlainText makes blanks of fixed blanks.
QString ExactText(const QPlainTextEdit& field);

/// Cuts from what is typed or pasted into a field as much as it has no room for. The length is counted in
/// whole characters, as the catalogue counts it, and none of them is cut in two. A field of one line takes
/// blanks for line breaks.
void LimitText(QLineEdit& field, int maxLength);
void LimitText(QPlainTextEdit& field, int maxLength);

}  // namespace veldrin::controls
