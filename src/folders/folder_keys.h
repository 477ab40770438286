// The arithmetic of folder keys: a folder's place in the tree is spelled in its key, four digits a level, the
// parent's key first; the root's key is empty.
#pragma once

#include <QString>

namespace veldrin::folders {

constexpr int SegmentLength = 4;
constexpr int LinkKeyLength = 40;

/// The name that marks the pseudo-folder of a folder's own photos; it sorts first among its siblings.
inline QString UnorganizedName() { return QStringLiteral("!UNORGANIZED"); }

/// The value in decimal with zeros on its left up to `width`; a longer one stays as it is.
QString PadKey(int value, int width);

/// The key of the "!UNORGANIZED" below a folder; its prefix is that of the links at the folder itself.
QString UnorganizedKey(const QString& parentKey);

/// The key under which photos of a folder are linked: the folder's key padded with zeros to 40 characters.
QString LinkKey(const QString& folderKey);

/// The level of a folder key: 0 for the root, 1 for a top-level folder.
int LevelOfKey(const QString& folderKey);

/// The statement that lists the folders of a level below a parent.
QString BuildLevelSql(int level, const QString& parentKey);

}  // namespace veldrin::folders
