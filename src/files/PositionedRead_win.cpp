// SPDX-License-Identifier: MIT
#include "PositionedRead.h"

std::optional<qint64> readPositioned(const QFile & /*file*/, qint64 /*position*/, char * /*bytes*/,
                                     qint64 /*byteCount*/)
{
    return std::nullopt;
}
