// Written pages in the user's browser.
#pragma once

#include <QString>

namespace veldrin::output {

/// Opens page 1 of a directory, which ends in a separator, with the program `browserPath`, and does not wait
/// for it. A run that wrote no page opens nothing. Raises 53 when the program can't be started.
void ShowPageInBrowser(const QString& browserPath, const QString& dir, bool gallery);

}  // namespace veldrin::output
