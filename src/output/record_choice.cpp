#include "output/record_choice.h"

#include "folders/change_boxes.h"

namespace veldrin::output {

std::vector<catalogue::CheckedPhotos::Photo> TakePhotos(engine::Database& database,
                                                        const catalogue::Choice& choice, QWidget& window) {
  catalogue::CheckedPhotos checked = CheckChosen(database, choice.Photos);
  folders::TellPhotosChanged(&window, checked.Others());
  return checked.Same;
}

}  // namespace veldrin::output
