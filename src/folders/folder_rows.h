// What the folder commands do in the catalogue. A command gives all its statements one database, in one
// group, so that a crash leaves the catalogue as it was or as it is to be.
#pragma once

#include "controls/tree_view.h"
#include "engine/dao/database.h"
#include "folders/folder_writer.h"

namespace veldrin::folders {

/// Gives all nodes below a node, which has its key, their keys and rows. Raises the engine's errors, 3078
/// below the tenth level.
void AssignFolderKeys(FolderWriter& writer, controls::Node& node);

/// The same for a node and all below it. Its parent has its key.
void StoreFolders(engine::Database& database, controls::Node& node);

/// Files the photos of a subtree at the parent of its top: each that has no link below the parent yet, or for
/// a top-level folder, none among the photos without a folder. Raises the errors of the engine.
void MoveLinksToParent(engine::Database& database, const controls::Node& node);

/// Removes the rows of a subtree, children before their parents, and its nodes. Raises the engine's errors.
void DeleteFolderNodes(engine::Database& database, controls::TreeView& tree, controls::Node& node);

}  // namespace veldrin::folders
