// SPDX-License-Identifier: MIT
#ifndef OWNMOUNTS_H
#define OWNMOUNTS_H

#include <QByteArray>
#include <QString>

namespace faults {

// Gives the process mounts of its own: whatever it mounts, nobody else sees it, and it is gone with the
// process. To be called at the start of main(), as long as there is one thread. False where the system does
// not allow it; a user who is not root needs user namespaces, and is root in one afterwards.
bool enterOwnMounts();

// A file system in memory of this many bytes and at most 64 files, mounted on a directory while this lives.
class SmallDisk
{
public:
    SmallDisk(const QString &directory, qint64 size);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool isMounted() const { return mIsMounted; }

    // Fills it with a hidden file until so many pages (of 4 KiB) are free.
    bool leave(int pages) const;

private:
    QByteArray mDirectory;
    bool mIsMounted;
};

// enterOwnMounts() and a file system of the own for the trees of the sweeps: what they do beside these is not
// seen by others.
bool mountOwnMemory();

} // namespace faults

#endif // OWNMOUNTS_H
