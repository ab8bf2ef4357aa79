// SPDX-License-Identifier: MIT
#ifndef TRASHDIRECTORY_UNIX_H
#define TRASHDIRECTORY_UNIX_H

#include "FileDescriptor_unix.h"

#include <QByteArray>
#include <QDateTime>

/*
 * One trash directory as the freedesktop.org trash standard 1.0 describes it: what was thrown away lies
 * in its "files/", and beside it in "info/" a text of the same name with ".trashinfo" behind says where it
 * came from and when.
 *
 * The directories are held open and not looked up again, so that nobody exchanges them meanwhile for links to
 * somewhere else. Paths are bytes, as the file system has them.
 */
class TrashDirectory
{
public:
    // The user's own trash at this absolute path; missing directories are made, for the user alone.
    static TrashDirectory atPath(const QByteArray &path);

    // The user's trash of the file system that is mounted here: ".Trash/<uid>" where an administrator has
    // made ".Trash" with the sticky bit, else ".Trash-<uid>". Neither may be a link, or belong to somebody
    // else.
    static TrashDirectory ofFileSystem(const QByteArray &mountPoint);

    // False when its directories are missing and cannot be made, or are no directories.
    bool isUsable() const { return mFiles.isOpen() && mInfo.isOpen(); }

    // Moves what is at the absolute path into a usable trash directory; a link itself, not what it leads to.
    // Nothing that lies in the trash is overwritten. `origin` is written down as its former place and
    // `deletionTime` as the local time. 0, or the number of the error: it is then where it was, and the trash
    // as it was.
    int take(const QByteArray &path, const QByteArray &origin, const QDateTime &deletionTime) const;

private:
    explicit TrashDirectory(FileDescriptor directory);

    // take() under this name. EEXIST: the name is taken.
    int takeAs(const QByteArray &name, const QByteArray &path, const QByteArray &text) const;

    FileDescriptor mFiles;
    FileDescriptor mInfo;
};

// The text of a ".trashinfo" file.
QByteArray trashInfoText(const QByteArray &origin, const QDateTime &deletionTime);

// The name in the trash that is tried first for this file name, second and so on: "a.txt", "a.2.txt", ...
// Names that would be too long with ".trashinfo" behind them are cut, between characters.
QByteArray trashName(const QByteArray &fileName, int attempt);

#endif // TRASHDIRECTORY_UNIX_H
