#pragma once
// Deleting on the desktop host without ever leaving the tree that was asked
// for: a symbolic link is removed, never what it points to.

#include <string>

namespace fw::desktop {

/// Removes a file or a symbolic link (of any target); false for a folder.
bool DeleteEntry(const std::string& path);

/// Removes a folder with its content, walking by directory handles
/// (openat/unlinkat with O_NOFOLLOW), so that a link inside the tree, or a
/// folder swapped for a link while the walk runs, is removed as a link and
/// its target stays. A path that is itself a link removes the link only.
/// Refuses the root folder and home (also when reached through links); false
/// if anything of the tree stayed.
bool DeleteTree(const std::string& path, const std::string& home);

} // namespace fw::desktop
