// SPDX-License-Identifier: MIT
#include "TrashDirectory_unix.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// The standard leaves the number of names to try open. This many equal names are a trash that nobody
// empties.
constexpr int maxAttempts = 1000000;

constexpr mode_t forUserOnly = S_IRWXU;
constexpr int maxNameLength = NAME_MAX;

const QByteArray &infoSuffix()
{
    static const QByteArray suffix = QByteArrayLiteral(".trashinfo");
    return suffix;
}

FileDescriptor openDirectory(int parent, const QByteArray &name, int flags = O_NOFOLLOW)
{
    return FileDescriptor(openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags));
}

// A directory that is made when it is missing. A link in its place does not count, wherever it leads.
FileDescriptor openOrMakeDirectory(int parent, const QByteArray &name)
{
    mkdirat(parent, name.constData(), forUserOnly); // if it fails, opening fails or the directory is there
    return openDirectory(parent, name);
}

void makePath(const QByteArray &path)
{
    for (int end = path.indexOf('/', 1); end > 0; end = path.indexOf('/', end + 1))
        mkdir(path.left(end).constData(), forUserOnly);
    mkdir(path.constData(), forUserOnly);
}

FileDescriptor ifOwn(FileDescriptor directory)
{
    struct stat status = {};
    const bool own =
        directory.isOpen() && fstat(directory.number(), &status) == 0 && status.st_uid == geteuid();
    return own ? std::move(directory) : FileDescriptor();
}

FileDescriptor ifSticky(FileDescriptor directory)
{
    struct stat status = {};
    const bool sticky =
        directory.isOpen() && fstat(directory.number(), &status) == 0 && (status.st_mode & S_ISVTX) != 0;
    return sticky ? std::move(directory) : FileDescriptor();
}

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The first bytes of a UTF-8 text, without a character that would be cut.
QByteArray cutBetweenCharacters(const QByteArray &text, int size)
{
    constexpr int longestRest = 3; // bytes of a character behind its first; more are no UTF-8
    int end = std::min(size, text.size());
    while (end < text.size() && end > size - longestRest && isContinuationByte(text.at(end)))
        --end;
    return text.left(end);
}

// The end of a file name that tells its kind, with the dot. Of ".profile" and of what is too long for that:
// none.
QByteArray kindSuffix(const QByteArray &fileName)
{
    constexpr int longest = 32;
    const int dot = fileName.lastIndexOf('.');
    return dot > 0 && fileName.size() - dot <= longest ? fileName.mid(dot) : QByteArray();
}

// A new entry of a directory, taken back unless it is kept or something else has taken its place.
class Placeholder
{
public:
    Placeholder(int directory, const QByteArray &name) : mDirectory(directory), mName(name) {}
    Placeholder(const Placeholder &) = delete;
    Placeholder &operator=(const Placeholder &) = delete;

    ~Placeholder()
    {
        struct stat status = {};
        if (mMade && fstatat(mDirectory, mName.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0
            && status.st_dev == mStatus.st_dev && status.st_ino == mStatus.st_ino)
            unlinkat(mDirectory, mName.constData(), S_ISDIR(mStatus.st_mode) ? AT_REMOVEDIR : 0);
    }

    // 0 or the number of the error, EEXIST if the name is taken.
    int makeFile(const QByteArray &content)
    {
        FileDescriptor file(openat(mDirectory, mName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                   S_IRUSR | S_IWUSR));
        if (!file.isOpen())
            return errno;
        if (fstat(file.number(), &mStatus) != 0)
            return errno;
        mMade = true;
        if (write(file.number(), content.constData(), static_cast<std::size_t>(content.size()))
            != content.size())
            return ENOSPC;
        const bool isKept = content.isEmpty() || file.sync();
        return isKept && file.close() ? 0 : EIO;
    }

    int makeDirectory()
    {
        if (mkdirat(mDirectory, mName.constData(), forUserOnly) != 0
            || fstatat(mDirectory, mName.constData(), &mStatus, AT_SYMLINK_NOFOLLOW) != 0)
            return errno;
        mMade = true;
        return 0;
    }

    void keep() { mMade = false; }

private:
    int mDirectory;
    QByteArray mName;
    struct stat mStatus = {};
    bool mMade = false;
};

} // namespace

QByteArray trashInfoText(const QByteArray &origin, const QDateTime &deletionTime)
{
    // The time is local and has no zone; ISO 8601 gives a date-time in local time none.
    return "[Trash Info]\nPath=" + origin.toPercentEncoding("/")
           + "\nDeletionDate=" + deletionTime.toLocalTime().toString(Qt::ISODate).toLatin1() + '\n';
}

QByteArray trashName(const QByteArray &fileName, int attempt)
{
    const QByteArray kind = kindSuffix(fileName);
    const QByteArray end = (attempt == 1 ? QByteArray() : '.' + QByteArray::number(attempt)) + kind;
    const int room = maxNameLength - infoSuffix().size() - end.size();
    return cutBetweenCharacters(fileName.left(fileName.size() - kind.size()), room) + end;
}

TrashDirectory::TrashDirectory(FileDescriptor directory)
{
    if (directory.isOpen()) {
        mFiles = openOrMakeDirectory(directory.number(), QByteArrayLiteral("files"));
        mInfo = openOrMakeDirectory(directory.number(), QByteArrayLiteral("info"));
    }
}

TrashDirectory TrashDirectory::atPath(const QByteArray &path)
{
    makePath(path);
    // A user may keep the own trash elsewhere and leave a link.
    return TrashDirectory(openDirectory(AT_FDCWD, path, 0));
}

TrashDirectory TrashDirectory::ofFileSystem(const QByteArray &mountPoint)
{
    const FileDescriptor top = openDirectory(AT_FDCWD, mountPoint);
    if (!top.isOpen())
        return TrashDirectory(FileDescriptor());
    const QByteArray user = QByteArray::number(geteuid());

    const FileDescriptor shared = ifSticky(openDirectory(top.number(), QByteArrayLiteral(".Trash")));
    if (shared.isOpen()) {
        TrashDirectory trash(ifOwn(openOrMakeDirectory(shared.number(), user)));
        if (trash.isUsable())
            return trash;
    }
    return TrashDirectory(ifOwn(openOrMakeDirectory(top.number(), ".Trash-" + user)));
}

int TrashDirectory::take(const QByteArray &path, const QByteArray &origin,
                         const QDateTime &deletionTime) const
{
    const QByteArray fileName = path.mid(path.lastIndexOf('/') + 1);
    const QByteArray text = trashInfoText(origin, deletionTime);
    int error = EEXIST;
    for (int attempt = 1; error == EEXIST && attempt <= maxAttempts; ++attempt)
        error = takeAs(trashName(fileName, attempt), path, text);
    return error;
}

int TrashDirectory::takeAs(const QByteArray &name, const QByteArray &path, const QByteArray &text) const
{
    struct stat status = {};
    if (lstat(path.constData(), &status) != 0)
        return errno;
    // On the disk before the file is moved: after a power failure the desktop would not show a file without.
    Placeholder info(mInfo.number(), name + infoSuffix());
    if (const int error = info.makeFile(text))
        return error;
    // Moving replaces what has the name without a word; an entry of our own makes sure that it is nothing.
    Placeholder place(mFiles.number(), name);
    if (const int error = S_ISDIR(status.st_mode) ? place.makeDirectory() : place.makeFile(QByteArray()))
        return error;
    if (renameat(AT_FDCWD, path.constData(), mFiles.number(), name.constData()) != 0)
        return errno;
    info.keep();
    place.keep();
    return 0;
}
