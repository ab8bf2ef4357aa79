// SPDX-License-Identifier: MIT
#ifndef J6TOOL_FILECHECKSUMS_H
#define J6TOOL_FILECHECKSUMS_H

#include "Result.h"

#include <QString>

namespace j6tool {

struct FileChecksums
{
    qint64 size = 0;
    quint32 crc32 = 0;
    quint16 crc16Modbus = 0; // initial value 0xFFFF
    quint16 crc16Ccitt = 0;  // initial value 0xFFFF
};

// The file is read block by block: its size does not matter.
Result<FileChecksums> checksumsOfFile(const QString &fileName);

} // namespace j6tool

#endif // J6TOOL_FILECHECKSUMS_H
