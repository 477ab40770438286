#include "output/record_choice.h"

#include "folders/change_boxes.h"

namespace veldrin::output {

std::vector<catalogue::CheckedPhotos::Photo> TakePhotos(engine::Database& database, catalogue::Choice& choice,
                                                        QWidget& window) {
  NoteLooks(database, choice.Photos);
  catalogue::CheckedPhotos checked = CheckChosen(database, choice.Photos);
  folders::TellPhotosChanged(&window, checked.Others());
  return checked.Same;
}

}  // namespace veldrin::output
