// SPDX-License-Identifier: MIT
#ifndef CTEMPORARYDIR_H
#define CTEMPORARYDIR_H

#include <j6Core_export.h>

#include <QString>
#include <QTemporaryDir>

/**
 * @brief A directory with a name of its own in the system's temporary directory, for as long as the object
 * lives.
 *
 * A thin owner of a QTemporaryDir with Qt's default name template. It is made with the object, readable by
 * its owner alone. An object owns its directory and is neither copied nor moved; it is used by one thread at
 * a time.
 *
 * @code
 * const CTemporaryDir scratch;
 * if (scratch.isValid())
 *     unpackFirmware(CPath::addFileNameToPath(scratch.path(), QStringLiteral("bundle.tar")));
 * // removed here, with all that lies in it
 * @endcode
 */
class J6CORE_EXPORT CTemporaryDir
{
public:
    /// @brief Makes the directory; isValid() tells whether that succeeded.
    CTemporaryDir();
    CTemporaryDir(const CTemporaryDir &other) = delete;
    CTemporaryDir &operator=(const CTemporaryDir &other) = delete;
    /// @brief Removes the directory with all that lies in it if autoRemove() is on.
    ~CTemporaryDir();

    /// @brief Whether the destructor removes the directory; on at first.
    void setAutoRemove(bool autoRemove);
    /// @brief What setAutoRemove() has set.
    bool autoRemove() const;
    /// @brief Whether the directory was made.
    bool isValid() const;
    /// @brief The directory's path; empty if it was not made.
    QString path() const;
    /// @brief Removes the directory with all that lies in it at once. False if it was not made or something
    /// could not be removed. The path stays as it was.
    bool remove();

private:
    QTemporaryDir mDirectory;
};

#endif // CTEMPORARYDIR_H
