// SPDX-License-Identifier: MIT
#include "OutputFile.h"

namespace j6tool {

// Qt asks for it when it closes the file, and has no number of it before.
bool isOnDisk(const QFileDevice &file)
{
    Q_UNUSED(file)
    return true;
}

QFileDevice::Permissions newFilePermissions()
{
    return QFileDevice::ReadOwner | QFileDevice::WriteOwner;
}

} // namespace j6tool
