// SPDX-License-Identifier: MIT
#ifndef STREAMBLOCKS_H
#define STREAMBLOCKS_H

#include <QDataStream>
#include <QIODevice>

// Whether several fields may go through the stream together, which costs an eighth: bytes, status and
// warnings must be what they are field by field. A sequential device may take or give fewer bytes at a time
// than it would one by one.
inline bool takesBlocks(const QDataStream &stream)
{
    const QIODevice *const device = stream.device();
    return device != nullptr && !device->isSequential();
}

// In text mode carriage returns are left out, but not of a look ahead; a device that is not open for reading
// warns of each access.
inline bool givesBlocks(const QDataStream &stream)
{
    constexpr auto looked = QIODevice::ReadOnly | QIODevice::Text;
    return takesBlocks(stream) && (stream.device()->openMode() & looked) == QIODevice::ReadOnly;
}

#endif // STREAMBLOCKS_H
