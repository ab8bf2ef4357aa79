// SPDX-License-Identifier: MIT
#include "TreeEntries.h"

std::optional<std::vector<TreeEntry>> treeEntries(const QString &directory)
{
    // To Qt, the empty path is a drive.
    return directory.isEmpty() ? std::vector<TreeEntry>() : treeEntriesByQt(directory);
}
