// SPDX-License-Identifier: MIT
#include "TreeEntries.h"

#include <QDirIterator>

std::vector<TreeEntry> treeEntriesByQt(const QString &directory)
{
    std::vector<TreeEntry> entries;
    QDirIterator walk(directory, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QString subPath = walk.next().mid(directory.size());
        if (subPath.startsWith(QLatin1Char('/')))
            subPath.remove(0, 1);
        if (walk.fileInfo().isFile() || walk.fileInfo().isDir())
            entries.push_back({subPath, walk.fileInfo().isDir()});
    }
    return entries;
}
