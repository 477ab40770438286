#include "output/record_choice.h"

#include "controls/msg_box.h"

namespace veldrin::output {

std::vector<catalogue::CheckedPhotos::Photo> TakePhotos(engine::Database& database,
                                                        const catalogue::Choice& choice, QWidget& window) {
  catalogue::CheckedPhotos checked = CheckChosen(database, choice.Photos);
  std::vector<int>& others = checked.Changed;
  others.insert(others.end(), checked.Gone.begin(), checked.Gone.end());
  if (!others.empty()) {
    controls::MsgBox(&window, catalogue::ChangedPhotosText(others), controls::vbExclamation,
                     QStringLiteral("Error"));
  }
  return checked.Same;
}

}  // namespace veldrin::output
