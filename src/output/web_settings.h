// What the web dialog leaves behind for the export.
#pragma once

#include <QString>

namespace veldrin::output {

struct WebSettings {
  QString WebDir;    ///< full path of the web directory
  QString WebTitle;  ///< title and heading of the pages
  int PageType = 1;  ///< 1: thumbnails, 0: a list
  bool WebOK = false;
  QString LastDir;  ///< the directory in which the last web was made
};

}  // namespace veldrin::output
