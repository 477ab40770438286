// What another machine has changed since it was shown, and a command has left alone, told in a box.
#pragma once

#include <QWidget>
#include <vector>

namespace veldrin::folders {

/// The rows of the folder are not what the tree shows, and nothing was done.
void TellFolderChanged(QWidget* window);
/// The photos, by number, are gone or others now. Says nothing of none.
void TellPhotosChanged(QWidget* window, const std::vector<int>& photos);

}  // namespace veldrin::folders
