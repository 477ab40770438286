// The part of the tour that shows the picture show.
#pragma once

#include <QPixmap>
#include <functional>

#include "shell/main_window.h"

/// Opens Image Play, plays, goes to the whole screen and opens the music dialog. `save` takes the pictures
/// with their names; `musicDir` gets some files.
void ShowTour(veldrin::shell::frmMain& window, const QString& musicDir,
              const std::function<void(const QPixmap&, const char*)>& save);
