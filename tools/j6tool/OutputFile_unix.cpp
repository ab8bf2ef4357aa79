// SPDX-License-Identifier: MIT
#include "OutputFile.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace j6tool {

bool isOnDisk(const QFileDevice &file)
{
    // What keeps nothing, or cannot, says that this makes no sense there.
    return fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

QFileDevice::Permissions newFilePermissions()
{
    const mode_t mask = umask(0); // the only way to ask for it; this program has one thread
    umask(mask);
    QFileDevice::Permissions permissions;
    permissions.setFlag(QFileDevice::WriteOwner, (mask & S_IWUSR) == 0);
    permissions.setFlag(QFileDevice::ReadOwner, (mask & S_IRUSR) == 0);
    permissions.setFlag(QFileDevice::WriteGroup, (mask & S_IWGRP) == 0);
    permissions.setFlag(QFileDevice::ReadGroup, (mask & S_IRGRP) == 0);
    permissions.setFlag(QFileDevice::WriteOther, (mask & S_IWOTH) == 0);
    permissions.setFlag(QFileDevice::ReadOther, (mask & S_IROTH) == 0);
    return permissions;
}

} // namespace j6tool
