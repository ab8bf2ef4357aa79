// SPDX-License-Identifier: MIT
#ifndef KARCHIVESCAN_H
#define KARCHIVESCAN_H

#include <QString>

#include <optional>

// The number of files that KDE's KArchive finds in a tar archive, name, size and place of each asked for; -1
// when it cannot read it. Nothing where the build has no KArchive.
std::optional<int> kArchiveCount(const QString &fileName);

#endif // KARCHIVESCAN_H
