// SPDX-License-Identifier: MIT
#ifndef LIBARCHIVESCAN_H
#define LIBARCHIVESCAN_H

#include <QString>

#include <optional>

// The number of members that libarchive finds in a tar archive, name and size of each asked for; -1 when it
// cannot read it. Nothing where the build has no libarchive.
std::optional<int> libArchiveCount(const QString &fileName);

#endif // LIBARCHIVESCAN_H
