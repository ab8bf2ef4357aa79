// SPDX-License-Identifier: MIT
#ifndef J6TOOL_OUTPUTFILE_H
#define J6TOOL_OUTPUTFILE_H

#include "Result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace j6tool {

// Replaces the file atomically: it holds its old contents or all of the new ones. beforeReplacing() is called
// when only that last step is left; if it gives an error, the file stays as it is. Directories, devices and
// pipes are refused.
std::optional<Error> replaceFile(const QString &fileName, const QByteArray &contents,
                                 const std::function<std::optional<Error>()> &beforeReplacing);

// Whether both names lead to one file that exists.
bool isSameFile(const QString &a, const QString &b);

} // namespace j6tool

#endif // J6TOOL_OUTPUTFILE_H
