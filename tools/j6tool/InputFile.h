// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INPUTFILE_H
#define J6TOOL_INPUTFILE_H

#include "Result.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <optional>

namespace j6tool {

// "file: what is wrong"
Error fileError(const QString &fileName, const QString &what);

// Opens the file for reading. Directories, missing and unreadable files are errors that name the file.
std::optional<Error> openInput(QFile &file);

// The next bytes of the file, fewer than `size` only at its end.
Result<QByteArray> readBlock(QFile &file, int size);

// An error if the file, which was read to its end, has had so many bytes once: what was read is a part of it.
std::optional<Error> shrinkage(const QFile &file, qint64 sizeAtFirst);

// The whole file, if it has at most `limit` bytes; pipes and devices are read up to the limit, too.
Result<QByteArray> readInput(const QString &fileName, int limit);

} // namespace j6tool

#endif // J6TOOL_INPUTFILE_H
