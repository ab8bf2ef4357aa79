// SPDX-License-Identifier: MIT
#ifndef TREEENTRIES_H
#define TREEENTRIES_H

#include <QString>

#include <optional>
#include <vector>

// What lies below a directory, as a walk of Qt with QDir::AllEntries and QDir::NoDotAndDotDot finds it.
struct TreeEntry
{
    QString subPath;  // behind the directory's own path and a separator
    bool isDirectory; // or a link to one, which is not descended into
};

// The entries at all depths, a directory before what is in it. Nothing if a directory cannot be listed to its
// end, or it is not to be found out what an entry is: Qt's walks end there without a word. A directory that
// does not exist or is none has no entries.
std::optional<std::vector<TreeEntry>> treeEntries(const QString &directory);

// The same by Qt, which does not tell what it could not list.
std::vector<TreeEntry> treeEntriesByQt(const QString &directory);

#endif // TREEENTRIES_H
