// SPDX-License-Identifier: MIT
#include "OutputFile.h"

#include "InputFile.h"

#include <QFileInfo>
#include <QSaveFile>

namespace j6tool {

std::optional<Error> replaceFile(const QString &fileName, const QByteArray &contents,
                                 const std::function<std::optional<Error>()> &beforeReplacing)
{
    // A device or a pipe would be replaced by a file of its name.
    const QFileInfo target(fileName);
    if (target.isDir())
        return fileError(fileName, QStringLiteral("is a directory"));
    if (target.exists() && !target.isFile())
        return fileError(fileName, QStringLiteral("is no regular file"));
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush())
        return fileError(fileName, QStringLiteral("cannot be written: %1").arg(file.errorString()));
    if (std::optional<Error> error = beforeReplacing())
        return error;
    if (!file.commit())
        return fileError(fileName, QStringLiteral("cannot be written: %1").arg(file.errorString()));
    return std::nullopt;
}

bool isSameFile(const QString &a, const QString &b)
{
    const QString path = QFileInfo(a).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(b).canonicalFilePath();
}

} // namespace j6tool
