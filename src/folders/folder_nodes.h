// What the folder commands do with nodes alone; no row is read or written here.
#pragma once

#include <QString>

#include "controls/tree_view.h"

namespace veldrin::folders {

/// The key of the selected folder; empty when it is the root, which shows every photo, or none.
QString SelectedFolderKey(const controls::TreeView& tree);

/// The grey is the only record of which folders are cut.
inline bool IsNodeCut(const controls::Node& node) { return node.IsGrey(); }

/// Sets the colour of a node and of all below it: grey, or the normal one.
void SetNodeColor(controls::Node& node, bool grey);

/// Whether another folder of the same parent has the name, to the letter. An empty name is replaced by the
/// node's own.
bool IsDuplicateFolder(const controls::Node& node, QString& name);

/// Gives the selected node its "!UNORGANIZED" if it has no children yet. The selection stays.
void AddUnorganizedNode(controls::TreeView& tree);

/// Whether a copy of `source` and all below it can stand under `target`: not in itself, and no deeper than
/// the catalogue has levels.
bool TakesCopyOf(const controls::Node& target, const controls::Node& source);

/// The "!UNORGANIZED" that alone is left beside a node and goes with it; null where others are left.
controls::Node* LastBeside(const controls::Node& node);

/// Raises 28 when `target` stands in the subtree of `source`: the copy would go on copying itself.
void RequireOutside(const controls::Node& target, const controls::Node& source);

/// Removes a node whose rows can't be stored, and when it was the first below its parent, the "!UNORGANIZED"
/// that came with it: a node without a key would pass for the whole catalogue.
void TakeBackNode(controls::TreeView& tree, controls::Node& added, bool isFirst);

}  // namespace veldrin::folders
