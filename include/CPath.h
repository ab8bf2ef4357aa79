// SPDX-License-Identifier: MIT
#ifndef CPATH_H
#define CPATH_H

#include <j6Core_export.h>

#include <QString>

/**
 * @brief Where the tools of the family keep their files, and small helpers for paths and file names.
 *
 * Programs live in "bin/" below the installation root; everything else follows from there. For a program
 * `/opt/tessera/bin/tool`, its user's home `/home/ada` and no XDG_* variable set:
 *
 * | function             | directory                                | holds                            |
 * |----------------------|------------------------------------------|----------------------------------|
 * | installPath()        | /opt/tessera/                            | the installation                 |
 * | binPath(), libPath() | /opt/tessera/bin/                        | programs and their libraries     |
 * | etcPath() and below  | /opt/tessera/etc/                        | read-only configuration and data |
 * | appdataPath()        | /home/ada/.local/share/VANTORIS/tessera/ | writable configuration, logs     |
 * | userdataPath()       | /home/ada/Documents/VANTORIS/tessera/    | the user's own files             |
 * | programdataPath()    | $PROGRAMDATA/VANTORIS/tessera/           | what all products share          |
 *
 * Directories end with "/" and have "/" between their parts on every platform. A directory is created only
 * where `create` is true. No function reports a failure: one that could not be created shows when files are
 * opened in it.
 *
 * The directories need the QCoreApplication: its path, its name and its organization. Without one Qt warns
 * and the installation root is the parent of the current directory.
 *
 * All functions are reentrant and may be called in static initialisers, in whatever order; they do not use
 * the constants below.
 *
 * @code
 * CPath::motorPath(true);                                        // created if it is missing
 * CPath::addFileNameToPath(CPath::logPath(true), QStringLiteral("tool.log"));
 * CPath::addPathToPath(QStringLiteral("/data"), QStringLiteral("axis")); // "/data/axis/"
 * CPath::cleanFileName(QStringLiteral("/data/axis: X?.txt"));    // "/data/axis X.txt"
 * @endcode
 */
class J6CORE_EXPORT CPath
{
public:
    /// @name Names of directories, relative, each with a "/" at its end. Filled at library load, never
    /// changed afterwards; in a program that links the library statically they may still be missing while its
    /// own static objects are built.
    /// @{
    static const QString CPATH_BIN;        ///< "bin/"
    static const QString CPATH_LIB;        ///< "lib/"; for callers, libPath() does not use it
    static const QString CPATH_ETC;        ///< "etc/"
    static const QString CPATH_TXT;        ///< "etc/txt/"
    static const QString CPATH_IMG;        ///< "etc/image/"
    static const QString CPATH_DOC;        ///< "etc/doc/"
    static const QString CPATH_CCONF;      ///< "etc/conf/"
    static const QString CPATH_CCONFODICT; ///< "etc/conf/odict/"
    static const QString CPATH_CDATA;      ///< "etc/data/"
    static const QString CPATH_CONF;       ///< "conf/"
    static const QString CPATH_LOG;        ///< "log/"
    static const QString CPATH_MOT;        ///< "motor/"
    static const QString CPATH_PAR;        ///< "param/"
    static const QString CPATH_DAT;        ///< "data/"
    static const QString CPATH_PRJ;        ///< "project/"
    static const QString CPATH_PLUGINS;    ///< "plugins/"; for callers
    static const QString CPATH_COMPANY;    ///< "VANTORIS/", the maker
    static const QString CPATH_TESSERA;    ///< "tessera/", the family
    /// @}

    /// @name Base locations. Only programdataPath() can create its directory.
    /// @{

    /// @brief The installation root: the parent of the program's directory.
    static QString installPath();
    /// @brief The name of the installation root, without "/": "tessera" for /opt/tessera/.
    static QString productName();
    /**
     * @brief The product's directory in the user's application data (QStandardPaths::AppDataLocation):
     * location, "/VANTORIS/", productName() and "/".
     *
     * Where the platform appends the names of the application and of the organization to the location, they
     * are taken off. They are used as regular expressions (`QRegExp`), not as plain texts: in "Drive+" the
     * plus repeats the e, so that this name stays; a name that is no valid expression stays, too.
     */
    static QString appdataPath();
    /// @brief The product's directory in the user's documents (QStandardPaths::DocumentsLocation).
    static QString userdataPath();
    /// @brief The machine-wide directory of the whole family: the environment variable PROGRAMDATA and
    /// "/VANTORIS/tessera/". An unset variable counts as empty.
    static QString programdataPath(bool create);
    /// @}

    /// @name Directories of the installation.
    /// @{
    static QString binPath(bool create); ///< programs
    /// @brief The same as binPath(): the libraries of the family live beside the programs.
    static QString libPath(bool create);
    static QString etcPath(bool create);              ///< everything that is only read
    static QString txtPath(bool create);              ///< texts
    static QString imagePath(bool create);            ///< images
    static QString docPath(bool create);              ///< documents
    static QString constConfigPath(bool create);      ///< read-only configuration
    static QString constConfigOdictPath(bool create); ///< object dictionaries
    static QString constDataPath(bool create);        ///< read-only data
    /// @}

    /// @name Directories of the user's application data.
    /// @{
    static QString configPath(bool create); ///< writable configuration
    static QString logPath(bool create);    ///< logs
    /// @}

    /// @name Directories of the user's documents.
    /// @{
    static QString motorPath(bool create);   ///< motors
    static QString paramPath(bool create);   ///< parameters
    static QString dataPath(bool create);    ///< data
    static QString projectPath(bool create); ///< projects
    /// @}

    /**
     * @brief Creates the directory with all its parents if `create` is true and it does not exist.
     *
     * A directory that was just made can be read, written and entered by its owner and its group, and read
     * and entered by everybody else (0775), whatever the process's umask. An existing directory and the
     * parents keep the permissions that they have.
     *
     * @return `path`, always and unchanged
     */
    static QString createDirIfWanted(QString path, bool create);

    // In the helpers a separator is "/" or the platform's own, QDir::separator(). They add "/".

    /// @brief Whether the name holds a separator anywhere.
    static bool doesFilenameContainPath(const QString &fileName);
    /// @brief Places a bare file name in the directory of `referenceFile`; the result is absolute. A name
    /// that is empty or contains a path is returned unchanged.
    static QString prependPathIfNoPathIsGiven(const QString &fileName, const QString &referenceFile);
    /// @brief The bare file name of `filePath` if the file lies in the directory `dirPath`, else `filePath`
    /// unchanged. Directories are compared as QDir compares them. Inverse of prependPathIfNoPathIsGiven()
    /// with a reference file in that directory.
    static QString trimPathIfPathIsEqual(const QString &filePath, const QString &dirPath);
    /// @brief The directory of a file, absolute and without "/" at its end; empty for an empty path.
    static QString filePath(const QString &path);

    /// @brief Appends "/" unless there is a separator at the end; the empty path becomes "/".
    static QString ensurePathSeparatorAtEnd(QString path);
    /// @brief Inserts "/" unless there is a separator at the start; the empty path becomes "/".
    static QString ensurePathSeparatorAtStart(const QString &path);
    /// @brief Takes off one separator at the start, if there is one.
    static QString removePathSeparatorAtStart(const QString &path);
    /// @brief Takes off one separator at the end, if there is one: "a//" becomes "a/".
    static QString removePathSeparatorAtEnd(const QString &path);
    /// @brief The directory `subPath` in the directory `path`, with a separator at the end. A separator at
    /// the start of `subPath` stays.
    static QString addPathToPath(const QString &path, const QString &subPath);
    /// @brief The file `fileName` in the directory `path`.
    static QString addFileNameToPath(const QString &path, const QString &fileName);

    /**
     * @brief Makes the file name at the end of a path acceptable for every platform, as far as this goes.
     *
     * White space at both ends of the name is taken off and each run within it becomes one blank; then the
     * seven characters < > : ! ? | " are removed. An asterisk and a backslash stay.
     *
     * @return the absolute directory, "/" and the name: behind the root directory there are two "/", and the
     * empty path becomes "/"
     */
    static QString cleanFileName(const QString &path);

    /// @brief Whether two paths are equal: upper and lower case do not differ, "\" counts as "/" on every
    /// platform, and one separator may be missing at the end. The file system is not asked.
    static bool compare(const QString &a, const QString &b);
};

#endif // CPATH_H
