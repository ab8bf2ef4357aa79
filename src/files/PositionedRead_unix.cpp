// SPDX-License-Identifier: MIT
#include "PositionedRead.h"

#include <QFile>

#include <cerrno>
#include <limits>

#include <unistd.h>

std::optional<qint64> readPositioned(const QFile &file, qint64 position, char *bytes, qint64 byteCount)
{
    if (position < 0 || position > std::numeric_limits<off_t>::max() - byteCount)
        return std::nullopt;
    qint64 done = 0;
    ssize_t count = 1;
    while (done < byteCount && count > 0) {
        do {
            count = pread(file.handle(), bytes + done, std::size_t(byteCount - done), off_t(position + done));
        } while (count < 0 && errno == EINTR);
        done += count > 0 ? count : 0;
    }
    return count < 0 && done == 0 ? std::nullopt : std::make_optional(done);
}
