// SPDX-License-Identifier: MIT
#ifndef J6TOOL_OUTPUTFILE_H
#define J6TOOL_OUTPUTFILE_H

#include "Result.h"

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <functional>
#include <optional>

namespace j6tool {

// Replaces the file atomically: it holds its old contents or all of the new ones. beforeReplacing() is
// called when the new ones are on the disk and only that last step is left; if it gives an error, the file
// stays as it is. Directories, devices and pipes are refused.
std::optional<Error> replaceFile(const QString &fileName, const QByteArray &contents,
                                 const std::function<std::optional<Error>()> &beforeReplacing);

// Makes a file in one step that is not there before: nothing is overwritten. beforeNaming() is called when
// only that last step is left; if it gives an error, no file is made.
std::optional<Error> makeFile(const QString &fileName, const QByteArray &contents,
                              const std::function<std::optional<Error>()> &beforeNaming);

// Writes the bytes and empties the file's buffer. If it fails, the file's errorString() tells why.
bool writeAll(QFileDevice &file, const QByteArray &bytes);

// Whether all that was written to the open file and flushed is where it survives a power failure.
bool isOnDisk(const QFileDevice &file);

// Those of a file that a program makes and says nothing about.
QFileDevice::Permissions newFilePermissions();

// Whether both names lead to one file that exists.
bool isSameFile(const QString &a, const QString &b);

} // namespace j6tool

#endif // J6TOOL_OUTPUTFILE_H
