#include "output/get_photos.h"

#include <QSet>

#include "controls/error_box.h"

namespace veldrin::output {

// The dialog has gone with its pointer when the work is told of.
void PhotoGetter::GetPhotos() {
  catalogue::Choice choice = Chosen();
  if (choice.Photos.empty()) return;
  controls::TrapWithBox(&Window, [&] {
    QStringList names;
    for (const auto& photo : TakePhotos(*Engine.OpenDatabase(ThePaths.WorkFile), choice, Window))
      names << StoredName(photo);
    if (names.isEmpty()) return;
    std::optional<base::WorkReport> report;
    {
      frmGet dialog(ThePaths, LastGetDir, Work, &Window, Copy);
      dialog.StillTheSame = [&] {
        QSet<QString> same;
        for (const auto& photo : CheckChosen(*Engine.OpenDatabase(ThePaths.WorkFile), choice.Photos).Same)
          same << StoredName(photo);
        return same;
      };
      dialog.List1().addItems(names);
      dialog.exec();
      report = dialog.Report();
    }
    if (report) Tell(*report);
  });
}

}  // namespace veldrin::output
