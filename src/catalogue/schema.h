// The connection to the catalogue: a working copy of the machine's own, made anew at each start, that links
// the permanent tables and holds the working tables and the stored query.
#pragma once

#include <QString>

#include "catalogue/paths.h"
#include "platform/dao/db_engine.h"

namespace veldrin::catalogue {

constexpr int LevelCount = 10;

/// "tblLevel" and the number.
QString LevelTable(int level);

/// Copies the template below the program directory to TempDir and sets Paths::WorkFile and the engine's
/// account. On failure shows "Unable to Connect to the Access Tables." and returns false.
bool CreateWorkFile(Paths& paths, platform::DBEngine& engine, const QString& programPath);

/// Links, creates and fills the working copy. On failure shows "Unable to Initialize User Tables." and
/// returns false; the half-built copy stays.
bool OpenCatalogue(const Paths& paths, platform::DBEngine& engine);

/// Deletes the working copy, if one was made. A failure is of no importance: the next start replaces the
/// file.
void DeleteWorkFile(const Paths& paths);

}  // namespace veldrin::catalogue
