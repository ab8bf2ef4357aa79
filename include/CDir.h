// SPDX-License-Identifier: MIT
#ifndef CDIR_H
#define CDIR_H

#include <Nj6Global.h>
#include <j6Core_export.h>

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>

/**
 * @brief File-system chores of the tools: copy, remove, move to the trash, list.
 *
 * A failed operation returns false. Where it says so, it also prints a diagnosis to the process's standard
 * output through the C library, in the local 8-bit encoding: such a line begins with a line feed, has none at
 * its end and is written out at once. A path that holds a NUL character is no path: it is neither copied nor
 * removed, has no entries, and is printed with a "?" there.
 *
 * Relative paths are relative to the current directory; removeDirectory() alone is different. Separators are
 * "/", on Windows "\" as well.
 *
 * Two sorts of listing differ in what they show. entryInfoList() and entryInfoListRecursive() follow their
 * filter, and an Nj6Global::EDirFilter always shows hidden entries. The tree walks (copyDirectoryRecursive(),
 * listFilesAndDirectories(), listFileAndDirInfos()) pass over hidden files and over hidden directories with
 * all that lies in them. No walk descends into a link to a directory; such a link counts as a directory.
 * Pipes, devices and links that lead nowhere are in no listing, unless QDir::System asks for them.
 *
 * All functions are reentrant. What other threads and processes do to the same files meanwhile is not guarded
 * against.
 *
 * @code
 * CDir::copyDirectoryRecursive(QStringLiteral("/data/axis"), QStringLiteral("/backup/axis"));
 * CDir::getRelativeSubPath(QStringLiteral("/data"), QStringLiteral("/data/axis/x.par")); // "axis/x.par"
 * const QStringList parameterFiles = {QStringLiteral("*.par")};
 * CDir::entryInfoList(QStringLiteral("/data/axis"), parameterFiles, Nj6Global::eDirFilterFiles);
 * if (CDir::moveToTrash(QStringLiteral("/data/axis/x.par")) != 0)
 *     tellTheUser();
 * @endcode
 */
class J6CORE_EXPORT CDir
{
public:
    /// @name Removing for good.
    /// @{

    /// @brief Removes a file, or a link itself: QFile::remove().
    static bool removeFile(const QString &path);
    /// @brief Removes one empty directory. A relative path is relative to the system's temporary directory,
    /// not to the current one.
    static bool removeDirectory(const QString &path);
    /// @brief Removes a directory with all that lies in it: QDir::removeRecursively(), which returns true for
    /// a directory that does not exist. The empty path removes nothing and is false: it would be the current
    /// directory. A link to a directory is followed: what lies in that directory is removed, the link stays,
    /// and the result is false.
    static bool removeDirectoryRecursive(const QString &path);
    /**
     * @brief Removes a file or an empty directory; never a directory that holds something.
     *
     * @return whether the path does not exist afterwards. That is true for a path that did not exist, too,
     * and for one that cannot be looked up, in a directory that may not be entered for example.
     *
     * A file that cannot be removed prints "\n CDir::removeFileOrDirectory: unable to remove " and the path.
     * Anything else is removed by removeDirectory(), relative to the temporary directory. When that fails, as
     * it does for a path that does not exist, the same is printed, then "\n " with listFilesAndDirectories(),
     * one path per line, then "\n--------------": it shows what is in the way.
     */
    static bool removeFileOrDirectory(const QString &path);
    /// @brief removeFileOrDirectory() for every path in order, all of them whatever happens. Whether all of
    /// them were true; so it is for an empty list.
    static bool removeFilesByPathList(const QStringList &paths);
    /// @}

    /**
     * @brief Moves a file, a link itself or a directory with all that lies in it to the desktop's trash.
     *
     * | result | meaning |
     * |---|---|
     * | 0 | it lies in the trash |
     * | 10 | the path does not exist; a link that leads nowhere does not, as for QFile::exists() |
     * | 1 | it could not be moved, or its absolute path has more than 259 UTF-16 units; it is where it was |
     *
     * The absolute path is QFileInfo::absoluteFilePath(), without "..". Where that is another file, because
     * the ".." stand behind a link to a directory, nothing is moved.
     *
     * On Windows the shell moves it to the recycle bin, without a question. Where there is no recycle bin, on
     * a network drive for example, the shell removes it for good. A whole drive or share stays where it is,
     * and so does a device such as "//./C:/".
     *
     * Elsewhere the trash is the one of the freedesktop.org trash standard 1.0: "Trash" in XDG_DATA_HOME
     * if that is an absolute path, else in "$HOME/.local/share"; for another file system ".Trash/<uid>" or
     * ".Trash-<uid>" where that is mounted. Directories are made as needed, only for the user, but never HOME
     * itself: without a home nothing is moved. Nothing is ever copied, overwritten or lost. A link that leads
     * to a directory is the link, whether or not a separator stands behind it.
     */
    static int moveToTrash(const QString &path);

    /// @name Copying. Nothing that exists is overwritten.
    ///
    /// A directory that is missing is made with all its parents. It can then be read, written and entered by
    /// its owner and its group, and read and entered by everybody else (0775), whatever the process's umask.
    /// What is in the way of a directory, a file for example, gets these permissions as well.
    /// @{

    /// @brief Copies a file (QFile::copy()), making the directory of `target` if it is missing. On failure
    /// prints "\nCDir::copyFile unable to copy " and the target. The target gets its name when all of it is
    /// written: a copy that fails leaves none, and one that is true has no byte less than the source had at
    /// first. The disk is asked to keep it through a power failure; what it answers is not looked at.
    static bool copyFile(const QString &source, const QString &target);
    /// @brief Makes the directory `target` if it is missing. `source` is not read: the caller copies what is
    /// in it, or calls copyDirectoryRecursive(). On failure prints "\nCDir::copyDirectory unable to create "
    /// and the target.
    static bool copyDirectory(const QString &source, const QString &target);
    /**
     * @brief Copies what lies in the directory `source`, at all depths, into the directory `target`: files
     * with copyFile(), directories with copyDirectory(). Hidden files and directories are not copied.
     *
     * It stops at the first failure, a file that exists in the target for example. False; what was copied
     * until then stays. It is false without a message, before anything is copied, when a directory in the
     * source cannot be read to its end (Windows does not tell): a copy that is true is complete. What is
     * copied is found out before the first file is: `target` may lie in `source`. A source that is empty,
     * missing or no directory gives true, and nothing is made. An empty `target` is refused, without a
     * message: it would be the root directory. So is a source that holds a NUL character.
     */
    static bool copyDirectoryRecursive(const QString &source, const QString &target);
    /// @}

    /// @name Listing. What cannot be read is missing in a list, and nothing tells it.
    /// @{

    /// @brief The entries of a directory, sorted by name as QDir does it. Name filters are wildcards such as
    /// "*.par", of which one must match; none means all. The empty path is the current directory. Empty if
    /// there is no such directory.
    static QFileInfoList entryInfoList(const QString &path, const QStringList &nameFilters,
                                       QFlags<QDir::Filter> filters);
    /// @brief The same with toDirFilter().
    static QFileInfoList entryInfoList(const QString &path, const QStringList &nameFilters,
                                       Nj6Global::EDirFilter filter);
    /// @brief The entries of a directory, sorted by name, but for those whose file name is in the list, upper
    /// and lower case being different.
    static QFileInfoList entryInfoList(const QString &path, Nj6Global::EDirFilter filter,
                                       const QStringList &excludedNames);
    /// @brief The entries of a directory at all depths, unsorted. Directories are searched whether or not the
    /// filters show them; hidden ones only with QDir::Hidden. Empty for the empty path.
    static QFileInfoList entryInfoListRecursive(const QString &path, const QStringList &nameFilters,
                                                QFlags<QDir::Filter> filters);
    /// @brief The same with toDirFilter().
    static QFileInfoList entryInfoListRecursive(const QString &path, const QStringList &nameFilters,
                                                Nj6Global::EDirFilter filter);
    /// @brief The path itself, whether or not it exists, then the path of every entry below it but hidden
    /// ones, unsorted.
    static QStringList listFilesAndDirectories(const QString &path);
    /// @brief The same as records.
    static QFileInfoList listFileAndDirInfos(const QString &path);
    /// @brief Qt's flags for a filter: QDir::Hidden and QDir::NoDotAndDotDot, with QDir::Dirs and QDir::Files
    /// as the filter says. Neither of them, so that nothing is listed, for a number that is no enumerator.
    static QFlags<QDir::Filter> toDirFilter(Nj6Global::EDirFilter filter);
    /// @}

    /// @name Paths.
    /// @{

    /**
     * @brief The path of an entry relative to a directory above it: "b/c.txt" for "C:/a" and "C:/a/b/c.txt".
     *
     * Empty if both are equal or `path` does not begin with `basePath`; upper and lower case differ. Texts
     * are compared, not names: "/ab/c" begins with "/a" and is "../ab/c". Paths that are both relative are
     * seen from one root, wherever that is, and so are paths with drive letters where there are no drives.
     * The file system is not asked.
     */
    static QString getRelativeSubPath(const QString &basePath, const QString &path);
    /// @brief CPath::addPathToPath().
    static QString addPathToPath(const QString &path, const QString &subPath);
    /// @brief CPath::addFileNameToPath().
    static QString addFileNameToPath(const QString &path, const QString &fileName);
    /// @}
};

#endif // CDIR_H
