// SPDX-License-Identifier: MIT
#include "OutputFile.h"

#include "InputFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

namespace j6tool {

namespace {

Error cannotWrite(const QString &fileName, const QString &why)
{
    return fileError(fileName, QStringLiteral("cannot be written: %1").arg(why));
}

Error existsAlready(const QString &fileName)
{
    return fileError(fileName, QStringLiteral("exists already; nothing is overwritten"));
}

// QSaveFile takes what this user may do with a file, root for example, for what its owner may.
bool keepMode(QSaveFile &file, const QFileInfo &target)
{
    constexpr QFileDevice::Permissions ofThisUser =
        QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;
    return !target.exists() || file.setPermissions(target.permissions() & ~ofThisUser);
}

} // namespace

bool writeAll(QFileDevice &file, const QByteArray &bytes)
{
    // A write that ends early says why only when it is asked to go on.
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return false;
        written += count;
    }
    if (file.flush())
        return true;
    file.flush(); // here, too, the reason is told only when it is asked to go on
    return false;
}

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
    if (!file.open(QIODevice::WriteOnly) || !keepMode(file, target) || !writeAll(file, contents))
        return cannotWrite(fileName, file.errorString());
    // QSaveFile does this, too, but would replace the file when it fails.
    if (!isOnDisk(file))
        return cannotWrite(fileName, QStringLiteral("the disk does not keep it"));
    if (std::optional<Error> error = beforeReplacing())
        return error;
    if (!file.commit())
        return cannotWrite(fileName, file.errorString());
    return std::nullopt;
}

std::optional<Error> makeFile(const QString &fileName, const QByteArray &contents,
                              const std::function<std::optional<Error>()> &beforeNaming)
{
    const QFileInfo target(fileName);
    if (target.exists() || target.isSymLink())
        return existsAlready(fileName);
    QTemporaryFile file(QDir(target.path()).filePath(QStringLiteral("XXXXXX.part")));
    if (!file.open() || !writeAll(file, contents) || !file.setPermissions(newFilePermissions()))
        return cannotWrite(fileName, file.errorString());
    if (!isOnDisk(file))
        return cannotWrite(fileName, QStringLiteral("the disk does not keep it"));
    if (std::optional<Error> error = beforeNaming())
        return error;
    if (!file.rename(fileName))
        return QFileInfo::exists(fileName) ? existsAlready(fileName)
                                           : cannotWrite(fileName, file.errorString());
    file.setAutoRemove(false);
    return std::nullopt;
}

bool isSameFile(const QString &a, const QString &b)
{
    const QString path = QFileInfo(a).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(b).canonicalFilePath();
}

} // namespace j6tool
