// SPDX-License-Identifier: MIT
#ifndef ZLIBCRC_H
#define ZLIBCRC_H

#include <QByteArray>

#include <optional>

// The CRC-32 as zlib computes it. Nothing where the build has no zlib.
std::optional<quint32> zlibCrc32(const QByteArray &data);

#endif // ZLIBCRC_H
