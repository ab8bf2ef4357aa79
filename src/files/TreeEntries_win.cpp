// SPDX-License-Identifier: MIT
#include "TreeEntries.h"

std::optional<std::vector<TreeEntry>> treeEntries(const QString &directory)
{
    return treeEntriesByQt(directory);
}
