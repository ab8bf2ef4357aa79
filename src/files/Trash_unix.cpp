// SPDX-License-Identifier: MIT
#include "Trash.h"

#include "TrashDirectory_unix.h"

#include <QDateTime>
#include <QFile>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <optional>

#include <sys/stat.h>

namespace {

// The path of the directory that holds this, of which the path is absolute and clean.
QByteArray parentOf(const QByteArray &path)
{
    const int separator = path.lastIndexOf('/');
    return separator > 0 ? path.left(separator) : QByteArrayLiteral("/");
}

QByteArray withSeparator(const QByteArray &directory)
{
    return directory.endsWith('/') ? directory : directory + '/';
}

std::optional<dev_t> deviceOf(const QByteArray &path)
{
    struct stat status = {};
    return stat(path.constData(), &status) == 0 ? std::make_optional(status.st_dev) : std::nullopt;
}

// The directory's path without links; empty if there is none.
QByteArray realPath(const QByteArray &directory)
{
    std::array<char, PATH_MAX> path = {};
    return QByteArray(realpath(directory.constData(), path.data()));
}

// Where the file system that holds this directory begins; both are without links.
QByteArray mountPointOf(const QByteArray &directory)
{
    const std::optional<dev_t> device = deviceOf(directory);
    QByteArray mountPoint = directory;
    while (mountPoint != "/" && deviceOf(parentOf(mountPoint)) == device)
        mountPoint = parentOf(mountPoint);
    return mountPoint;
}

// Where the user's own trash is or would be; empty if the user has no home. What a home holds is made as it
// is needed, but never a home.
QByteArray homeTrashPath()
{
    const QByteArray dataHome = qgetenv("XDG_DATA_HOME");
    if (dataHome.startsWith('/')) // the XDG base directory standard wants others to be ignored
        return withSeparator(dataHome) + "Trash";
    const QByteArray home = qgetenv("HOME");
    return home.startsWith('/') && deviceOf(withSeparator(home)) ? withSeparator(home) + ".local/share/Trash"
                                                                 : QByteArray();
}

// The file system that a path is on, or would be on if its last directories were made.
std::optional<dev_t> futureDeviceOf(QByteArray path)
{
    while (path != "/" && !deviceOf(path))
        path = parentOf(path);
    return deviceOf(path);
}

int moveToHomeTrash(const QByteArray &path, const QByteArray &trashPath)
{
    if (deviceOf(parentOf(path)) != futureDeviceOf(trashPath))
        return EXDEV; // nothing is made in vain
    const TrashDirectory trash = TrashDirectory::atPath(trashPath);
    return trash.isUsable() ? trash.take(path, path, QDateTime::currentDateTime()) : ENOENT;
}

int moveToTrashOfFileSystem(const QByteArray &path)
{
    const QByteArray directory = realPath(parentOf(path));
    if (directory.isEmpty())
        return ENOENT;
    const QByteArray mountPoint = mountPointOf(directory);
    const TrashDirectory trash = TrashDirectory::ofFileSystem(mountPoint);
    if (!trash.isUsable())
        return ENOENT;
    // The file system may be mounted elsewhere when it is taken back: the origin is relative to where it
    // begins.
    const QByteArray fullPath = withSeparator(directory) + path.mid(path.lastIndexOf('/') + 1);
    return trash.take(path, fullPath.mid(withSeparator(mountPoint).size()), QDateTime::currentDateTime());
}

} // namespace

namespace trash {

bool moveToTrash(const QString &path)
{
    QByteArray nativePath = QFile::encodeName(path);
    // A character that the file system's encoding lacks would make it the name of another file.
    if (path.size() > maxPathLength || QFile::decodeName(nativePath) != path)
        return false;
    // With a separator behind it, a link would be the directory that it leads to.
    while (nativePath.endsWith('/'))
        nativePath.chop(1);
    const QByteArray homeTrash = homeTrashPath();
    const bool isRoot = nativePath.isEmpty() || nativePath.endsWith("/.."); // a clean path has no other ".."
    if (isRoot || homeTrash.isEmpty())
        return false;
    const int error = moveToHomeTrash(nativePath, homeTrash);
    return error == 0 || (error == EXDEV && moveToTrashOfFileSystem(nativePath) == 0);
}

} // namespace trash
