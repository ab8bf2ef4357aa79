// SPDX-License-Identifier: MIT
#include "ZlibCrc.h"

#ifdef J6CORE_HAS_ZLIB

#include <zlib.h>

std::optional<quint32> zlibCrc32(const QByteArray &data)
{
    const auto *const bytes = reinterpret_cast<const Bytef *>(data.constData());
    return static_cast<quint32>(crc32(0, bytes, static_cast<uInt>(data.size())));
}

#else

std::optional<quint32> zlibCrc32(const QByteArray & /*data*/)
{
    return std::nullopt;
}

#endif
