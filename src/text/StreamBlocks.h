// SPDX-License-Identifier: MIT
#ifndef STREAMBLOCKS_H
#define STREAMBLOCKS_H

#include <QDataStream>
#include <QIODevice>

// Whether several fields may go through the stream together: that costs an eighth, and bytes and status stay
// what they are field by field. A sequential device may take or give fewer bytes at a time than it would one by
// one; one in text mode leaves out carriage returns, but not in a look ahead; one that is not open for it warns.
inline bool movesBlocks(const QDataStream &stream, QIODevice::OpenModeFlag mode)
{
    const QIODevice *const device = stream.device();
    return device != nullptr && !device->isSequential()
           && (device->openMode() & (mode | QIODevice::Text)) == mode;
}

#endif // STREAMBLOCKS_H
