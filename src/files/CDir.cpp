// SPDX-License-Identifier: MIT
#include <CDir.h>

#include "SharedDirectory.h"
#include "Trash.h"
#include "TreeEntries.h"

#include <CPath.h>

#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace {

// When Qt copies or lists, a path that holds a NUL is what stands before it: another file.
bool isWholePath(const QString &path)
{
    return !path.contains(QChar::Null);
}

// The path as an absolute one. On Windows, Qt goes ".." at a root only in one of the paths that it compares;
// it warns of a path that holds a NUL when it makes it absolute.
QString belowRoot(const QString &path)
{
    const QString absolute = QDir::rootPath() + path;
    return isWholePath(absolute) ? QFileInfo(absolute).absoluteFilePath() : absolute;
}

// Nothing is below the empty path, which Qt takes for a drive on Windows; a walk of a path that holds a NUL
// would not end.
bool canBeWalked(const QString &path)
{
    return !path.isEmpty() && isWholePath(path);
}

// What the tree walks show: deliberately without QDir::Hidden, unlike an EDirFilter.
constexpr QDir::Filters treeFilter = QDir::AllEntries | QDir::NoDotAndDotDot;

// As an argument of a formatted print. The print would end at a NUL.
QByteArray printable(const QString &text)
{
    return text.toLocal8Bit().replace('\0', '?');
}

// The line feed at the beginning ends the line before: what is printed would wait for the next one.
void printDiagnosis(const char *message, const QString &path)
{
    std::printf("\n%s%s", message, printable(path).constData());
    std::fflush(stdout);
}

void printInTheWay(const QString &path)
{
    const QString listing = CDir::listFilesAndDirectories(path).join(QLatin1Char('\n'));
    std::printf("\n %s\n--------------", printable(listing).constData());
    std::fflush(stdout);
}

bool ensureDirectory(const QDir &directory)
{
    if (directory.exists())
        return true;
    const QString path = directory.absolutePath();
    const bool isNew = makeNewDirectory(path);
    const QFileInfo made(path);
    if (isNew || (made.exists() && !made.isDir()))
        QFile::setPermissions(path, sharedDirectory); // of what is in the way, too
    return isNew || made.isDir();
}

QFileInfoList entriesOf(QDirIterator &walk)
{
    QFileInfoList entries;
    while (walk.hasNext()) {
        walk.next();
        entries.append(walk.fileInfo());
    }
    return entries;
}

// Without its ".." a path is another file's if they stand behind a link to a directory.
bool isSameFile(const QString &path, const QString &absolutePath)
{
    return QFileInfo(path) == QFileInfo(absolutePath);
}

// The size of what is there; nothing if it cannot be found out.
std::optional<qint64> sizeOf(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() ? std::make_optional(file.size()) : std::nullopt;
}

// QFile::copy() is content with an empty file when it cannot find out the size of the source: of which there
// may be more at the end, but not less.
bool copyWhole(const QString &source, const QString &target)
{
    const std::optional<qint64> size = sizeOf(source);
    if (!size || !QFile::copy(source, target))
        return false;
    if (sizeOf(target) >= size)
        return true;
    QFile::remove(target);
    return false;
}

// The end of copyFile(). `isReady`: the target's directory is there.
bool copyWhenReady(bool isReady, const QString &source, const QString &target)
{
    if (isReady && copyWhole(source, target))
        return true;
    printDiagnosis("CDir::copyFile unable to copy ", target);
    return false;
}

// Copies a tree entry by entry. What is known from the walk is not found out again for every file: that its
// directory is there when the file before went to the same.
class TreeCopy
{
public:
    TreeCopy(const QString &source, const QString &target)
        : mSource(CPath::ensurePathSeparatorAtEnd(source)), mTarget(CPath::ensurePathSeparatorAtEnd(target))
    {}

    bool copy(const TreeEntry &entry)
    {
        const QString source = mSource + entry.subPath;
        const QString target = mTarget + entry.subPath;
        if (entry.isDirectory)
            return CDir::copyDirectory(source, target);
        const QString directory = target.left(target.lastIndexOf(QLatin1Char('/')) + 1);
        const bool isReady = std::exchange(mLastDirectory, directory) == directory;
        return isReady ? copyWhenReady(true, source, target) : CDir::copyFile(source, target);
    }

private:
    QString mSource;
    QString mTarget;
    QString mLastDirectory; // with the separator at its end, so that at first it is none
};

} // namespace

bool CDir::removeFile(const QString &path)
{
    return QFile::remove(path);
}

bool CDir::removeDirectory(const QString &path)
{
    return QDir(QDir::tempPath()).rmdir(path);
}

bool CDir::removeDirectoryRecursive(const QString &path)
{
    return !path.isEmpty() && QDir(path).removeRecursively();
}

bool CDir::removeFileOrDirectory(const QString &path)
{
    constexpr const char *message = " CDir::removeFileOrDirectory: unable to remove ";
    if (QFileInfo(path).isFile()) {
        if (!QFile::remove(path))
            printDiagnosis(message, path);
    } else if (!removeDirectory(path)) {
        printDiagnosis(message, path);
        printInTheWay(path);
    }
    return !QFile::exists(path);
}

bool CDir::removeFilesByPathList(const QStringList &paths)
{
    return std::count_if(paths.begin(), paths.end(), removeFileOrDirectory) == paths.size();
}

int CDir::moveToTrash(const QString &path)
{
    constexpr int moved = 0;
    constexpr int failed = 1;
    constexpr int missing = 10;
    if (!QFile::exists(path))
        return missing;
    const QString absolutePath = QFileInfo(path).absoluteFilePath();
    const bool canBeMoved = absolutePath.size() <= trash::maxPathLength && isSameFile(path, absolutePath);
    return canBeMoved && trash::moveToTrash(absolutePath) ? moved : failed;
}

bool CDir::copyFile(const QString &source, const QString &target)
{
    const bool isReady = !target.isEmpty() && isWholePath(source) && isWholePath(target)
                         && ensureDirectory(QFileInfo(target).absoluteDir());
    return copyWhenReady(isReady, source, target);
}

bool CDir::copyDirectory(const QString &source, const QString &target)
{
    Q_UNUSED(source)
    if (ensureDirectory(QDir(target)))
        return true;
    printDiagnosis("CDir::copyDirectory unable to create ", target);
    return false;
}

bool CDir::copyDirectoryRecursive(const QString &source, const QString &target)
{
    if (target.isEmpty() || !isWholePath(source))
        return false;
    if (source.isEmpty())
        return true;
    // What Qt makes of a source that begins with the prefix of a search path.
    const QString path = QDirIterator(source).path();
    // All of them before the first is copied: what arrives in a target within the source is not copied again.
    const std::optional<std::vector<TreeEntry>> entries = treeEntries(path);
    TreeCopy tree(path, target);
    return entries && std::all_of(entries->begin(), entries->end(), [&tree](const TreeEntry &entry) {
               return tree.copy(entry);
           });
}

QFileInfoList CDir::entryInfoList(const QString &path, const QStringList &nameFilters,
                                  QFlags<QDir::Filter> filters)
{
    return isWholePath(path) ? QDir(path).entryInfoList(nameFilters, filters, QDir::Name) : QFileInfoList();
}

QFileInfoList CDir::entryInfoList(const QString &path, const QStringList &nameFilters,
                                  Nj6Global::EDirFilter filter)
{
    return entryInfoList(path, nameFilters, toDirFilter(filter));
}

QFileInfoList CDir::entryInfoList(const QString &path, Nj6Global::EDirFilter filter,
                                  const QStringList &excludedNames)
{
    QFileInfoList entries = entryInfoList(path, QStringList(), filter);
    const auto isExcluded = [&](const QFileInfo &entry) { return excludedNames.contains(entry.fileName()); };
    entries.erase(std::remove_if(entries.begin(), entries.end(), isExcluded), entries.end());
    return entries;
}

QFileInfoList CDir::entryInfoListRecursive(const QString &path, const QStringList &nameFilters,
                                           QFlags<QDir::Filter> filters)
{
    if (!canBeWalked(path))
        return QFileInfoList();
    QDirIterator walk(path, nameFilters, filters, QDirIterator::Subdirectories);
    return entriesOf(walk);
}

QFileInfoList CDir::entryInfoListRecursive(const QString &path, const QStringList &nameFilters,
                                           Nj6Global::EDirFilter filter)
{
    return entryInfoListRecursive(path, nameFilters, toDirFilter(filter));
}

QStringList CDir::listFilesAndDirectories(const QString &path)
{
    QStringList paths = {path};
    if (!canBeWalked(path))
        return paths;
    QDirIterator walk(path, treeFilter, QDirIterator::Subdirectories);
    while (walk.hasNext())
        paths.append(walk.next());
    return paths;
}

QFileInfoList CDir::listFileAndDirInfos(const QString &path)
{
    return QFileInfoList{QFileInfo(path)} + entryInfoListRecursive(path, QStringList(), treeFilter);
}

QFlags<QDir::Filter> CDir::toDirFilter(Nj6Global::EDirFilter filter)
{
    constexpr QDir::Filters always = QDir::Hidden | QDir::NoDotAndDotDot;
    switch (filter) {
    case Nj6Global::eDirFilterAll:
        return always | QDir::Dirs | QDir::Files;
    case Nj6Global::eDirFilterFiles:
        return always | QDir::Files;
    case Nj6Global::eDirFilterDirs:
        return always | QDir::Dirs;
    default:
        return always;
    }
}

QString CDir::getRelativeSubPath(const QString &basePath, const QString &path)
{
    QString base = QDir::fromNativeSeparators(basePath);
    QString entry = QDir::fromNativeSeparators(path);
    if (entry == base || !entry.startsWith(base))
        return QString();
    // Qt has no relative path between relative paths, and a drive letter is one where there are no drives.
    if (QDir::isRelativePath(base) && QDir::isRelativePath(entry)) {
        base = belowRoot(base);
        entry = belowRoot(entry);
    }
    return QDir(base).relativeFilePath(entry);
}

QString CDir::addPathToPath(const QString &path, const QString &subPath)
{
    return CPath::addPathToPath(path, subPath);
}

QString CDir::addFileNameToPath(const QString &path, const QString &fileName)
{
    return CPath::addFileNameToPath(path, fileName);
}
