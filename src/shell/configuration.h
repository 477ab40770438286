// The configuration: two values of an ini file, from which every path of a run is derived once, at start.
#pragma once

#include <QString>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"
#include "shell/app.h"

namespace veldrin::shell {

/// The browser of a machine whose user chose none.
inline QString DefaultBrowser() { return QStringLiteral("/usr/bin/xdg-open"); }

/// Below the program directory.
QString IniFileOf(const QString& programPath);

/// Empty for what is missing; at most 254 characters.
QString ReadIniString(const QString& section, const QString& key, const QString& file);

/// Whether it was written is of no concern to the caller.
void WriteIniString(const QString& section, const QString& key, const QString& value, const QString& file);

/// Fills the paths, makes the working copy and opens the catalogue. What fails before that is passed over.
/// Returns whether the catalogue is open; where it isn't, a box has told so.
bool LoadConfiguration(catalogue::Paths& paths, engine::DBEngine& engine, const App& app);

}  // namespace veldrin::shell
