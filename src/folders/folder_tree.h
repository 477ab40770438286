// The folders of the catalogue as nodes of the tree, and the making of a folder's row. The tree is filled
// once and kept in step with the tables by hand.
#pragma once

#include <QString>

#include "controls/tree_view.h"
#include "engine/dao/db_engine.h"

namespace veldrin::folders {

/// Fills the empty tree: the root "Photos" with an empty key, and the folders of all levels below it. Selects
/// the root. Raises the engine's errors.
void LoadFolderTree(controls::TreeView& tree, engine::DBEngine& engine, const QString& workFile);

inline QString NewFolderName() { return QStringLiteral("New Folder"); }

/// Adds a child "New Folder" of the selected node and selects it. Writes no row.
void AddFolderNode(controls::TreeView& tree);

/// 0 for the root, 1 for a top-level folder.
int GetNodeLevel(const controls::Node& node);

/// Writes the row of one new folder and returns its key; see FolderWriter.
QString AddFolderRecord(engine::DBEngine& engine, const QString& workFile, int level, const QString& name,
                        const QString& parentKey);

/// Whether the node is the pseudo-folder of its parent's own photos.
bool IsUnorganized(const controls::Node& node);

/// Whether a copy taken from `source` would be of no use at `target`, which shows those photos already: the
/// root, a folder above the source, or the "!UNORGANIZED" of the source or of a folder above it.
bool IsAboveFolder(const controls::Node& target, const controls::Node& source);

/// The "!UNORGANIZED" child; null where there is none. The last child is never looked at.
const controls::Node* FindUnorganizedChild(const controls::Node& node);

}  // namespace veldrin::folders
