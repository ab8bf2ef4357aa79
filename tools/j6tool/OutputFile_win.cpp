// SPDX-License-Identifier: MIT
#include "OutputFile.h"

#include <io.h>

namespace j6tool {

bool isOnDisk(const QFileDevice &file)
{
    return _commit(file.handle()) == 0;
}

QFileDevice::Permissions newFilePermissions()
{
    return QFileDevice::ReadOwner | QFileDevice::WriteOwner;
}

} // namespace j6tool
