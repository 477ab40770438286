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

/// Removes the rows of a subtree, children before their parents. Raises the engine's errors.
void DeleteFolderRows(engine::Database& database, const controls::Node& node);

/// Whether no other row stands beside a folder's own below its parent. Raises the engine's errors.
bool IsOnlyRow(engine::Database& database, const controls::Node& node);

// Another machine may have changed a folder, or deleted it and given its key to another one. To be asked
// within the group of writes that relies on it; each raises the engine's errors.

/// Whether a folder has the row that its node shows; the root always has. A pseudo-folder is as its parent.
bool RowIsAsShown(engine::Database& database, const controls::Node& node);
/// Whether that is so for all folders of a subtree, and there are no others.
bool SubtreeIsAsShown(engine::Database& database, const controls::Node& node);

}  // namespace veldrin::folders
