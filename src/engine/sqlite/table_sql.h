// The definition of a table in SQLite's words.
#pragma once

#include <QString>

#include "engine/dao/table_def.h"

namespace veldrin::engine {

/// As a statement may name a table or a column, whatever it is called.
QString QuoteName(const QString& name);

/// Makes the table in the opened file, with the checks that keep its fields within their sizes.
QString TableSql(const TableDef& table);

}  // namespace veldrin::engine
