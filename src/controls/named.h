// Controls have the names by which handlers, tests and the desktop's helpers find them.
#pragma once

#include <QObject>

#include "base/runtime_error.h"

namespace veldrin::controls {

/// Names a new object: `Named(new QLabel(parent), "lblTitle")`.
template <class Object>
Object* Named(Object* object, const char* name) {
  object->setObjectName(QLatin1String(name));
  return object;
}

/// The object of a name and type below `root`. Raises 3265 for one that isn't there, which is a mistake in
/// the program.
template <class Object>
Object& Get(const QObject& root, const QString& name) {
  if (auto* found = root.findChild<Object*>(name)) return *found;
  throw base::RuntimeError(base::errItemNotFound,
                           QStringLiteral("Item not found in this collection: %1").arg(name));
}

}  // namespace veldrin::controls
