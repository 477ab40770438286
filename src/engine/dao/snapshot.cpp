#include "engine/dao/snapshot.h"

#include "base/runtime_error.h"

namespace veldrin::engine {

std::vector<std::vector<Value>> Snapshot::ReadRows(int first, int count) const {
  return {Set.Rows.begin() + first, Set.Rows.begin() + first + count};
}

int Snapshot::FindPosition(const QString&, int) const {
  throw base::RuntimeError(base::errReadOnly,
                           QStringLiteral("Operation is not supported for this type of object."));
}

}  // namespace veldrin::engine
