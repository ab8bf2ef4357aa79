// SPDX-License-Identifier: MIT
#ifndef OWNMOUNTS_H
#define OWNMOUNTS_H

#include <QString>

namespace faults {

// Gives the process mounts of its own: whatever it mounts, nobody else sees it, and it is gone with the
// process. To be called at the start of main(), as long as there is one thread. False where the system does
// not allow it; a user who is not root needs user namespaces, and is root in one afterwards.
bool enterOwnMounts();

// A file system in memory of this many bytes, mounted on a directory.
bool mountMemory(const QString &directory, qint64 size);

// The same on the directory of the sweeps, so that what they do outside of their trees is not seen by others.
bool mountOwnMemory();

} // namespace faults

#endif // OWNMOUNTS_H
