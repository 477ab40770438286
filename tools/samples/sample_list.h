// The sample photographs: what is painted, and how it is filed.
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <span>

#include "samples/scenes.h"

namespace veldrin::samples {

struct Sample {
  const char* Name;  ///< of the file; its extension tells the type
  Scene Paint;
  const Light& (*Hour)();
  quint32 Seed;
  QSize Size;   ///< upright
  int Variant;  ///< of the type: see WriteSample
  const char* Date;
  const char* Title;
  const char* MadeBy;
  const char* Description;
  /// Paths of folders, joined by "|"; none for a photo that is filed in no folder.
  const char* Folders;
};

std::span<const Sample> Samples();

/// The folders in the order of their making, parents first, their names joined by "/".
QStringList SampleFolders();

}  // namespace veldrin::samples
