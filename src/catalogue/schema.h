// The connection to the catalogue: a working copy of the machine's own, made anew at each start, that links
// the permanent tables and holds the working tables and the stored query.
#pragma once

#include <QString>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"

namespace veldrin::catalogue {

constexpr int LevelCount = 10;

/// "tblLevel" and the number.
QString LevelTable(int level);

/// Copies the template below the program directory to TempDir and sets Paths::WorkFile and the engine's
/// account. False when there is no template or no room for its copy; `why` takes the reason.
bool CreateWorkFile(Paths& paths, engine::DBEngine& engine, const QString& programPath,
                    QString* why = nullptr);

/// Links, creates and fills the working copy. False when the permanent catalogue is missing, damaged or
/// another program's, and `why` takes the reason; the half-built copy stays. True with a reason when the
/// catalogue is opened for reading alone, since its locks don't hold between machines.
bool OpenCatalogue(const Paths& paths, engine::DBEngine& engine, QString* why = nullptr);

/// Deletes the working copy, if one was made. A failure is of no importance: the next start replaces the
/// file.
void DeleteWorkFile(const Paths& paths);

}  // namespace veldrin::catalogue
