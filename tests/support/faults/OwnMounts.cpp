// SPDX-License-Identifier: MIT
#include "OwnMounts.h"

#include "FaultSweep.h"

#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace faults {

namespace {

bool write(const char *fileName, const QByteArray &content)
{
    QFile file(QString::fromLatin1(fileName));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(content) == content.size();
}

bool mountMemory(const QByteArray &directory, const QByteArray &size)
{
    const QByteArray options = "mode=1777,size=" + size;
    return mount("j6core", directory.constData(), "tmpfs", MS_NOSUID | MS_NODEV, options.constData()) == 0;
}

// In a user namespace of its own a process may mount; there its user is root.
bool enterAsUser()
{
    const QByteArray user = "0 " + QByteArray::number(geteuid()) + " 1";
    const QByteArray group = "0 " + QByteArray::number(getegid()) + " 1";
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/setgroups", "deny")
           && write("/proc/self/gid_map", group) && write("/proc/self/uid_map", user);
}

} // namespace

bool enterOwnMounts()
{
    const bool isOwn = geteuid() == 0 ? unshare(CLONE_NEWNS) == 0 : enterAsUser();
    // The kernel looks at neither source nor type, valgrind at both.
    return isOwn && mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0;
}

SmallDisk::SmallDisk(const QString &directory, qint64 size)
    : mDirectory(QFile::encodeName(directory)),
      mIsMounted(mountMemory(mDirectory, QByteArray::number(size) + ",nr_inodes=64"))
{}

SmallDisk::~SmallDisk()
{
    if (mIsMounted)
        umount2(mDirectory.constData(), MNT_DETACH);
}

bool SmallDisk::leave(int pages) const
{
    constexpr qint64 pageSize = 4096;
    QFile fill(QFile::decodeName(mDirectory) + QStringLiteral("/.fill"));
    if (!fill.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray page(int(pageSize), 'x');
    while (fill.write(page) == pageSize) {
    }
    return fill.size() >= pages * pageSize && fill.resize(fill.size() - pages * pageSize);
}

bool mountOwnMemory()
{
    return enterOwnMounts() && mountMemory(QFile::encodeName(sweepDirectory()), "64m");
}

} // namespace faults
