// SPDX-License-Identifier: MIT
#ifndef STREAMBLOCKS_H
#define STREAMBLOCKS_H

#include <QDataStream>
#include <QIODevice>

// Whether several fields may go through the stream together, which costs an eighth: bytes and status must be
// what they are field by field. A sequential device may take or give fewer bytes at a time than it would one
// by one; in text mode carriage returns are left out, but not of a look ahead; a device that is not open for
// this warns of each access.
inline bool movesBlocks(const QDataStream &stream, QIODevice::OpenModeFlag mode)
{
    const QIODevice *const device = stream.device();
    return device != nullptr && !device->isSequential()
           && (device->openMode() & (mode | QIODevice::Text)) == mode;
}

#endif // STREAMBLOCKS_H
