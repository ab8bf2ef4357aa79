// SPDX-License-Identifier: MIT
#ifndef CTARFILEINFO_H
#define CTARFILEINFO_H

#include <j6Core_export.h>

#include <QMetaType>
#include <QString>
#include <QtGlobal>

class QDebug;

/**
 * @brief One member of a tar archive as CTar lists it: what it is, its name, and where its data lies.
 *
 * A record: the fields are public and are read and written directly. Changing one changes nothing in a CTar.
 *
 * A value is used by one thread at a time, copies are independent. Nothing here fails.
 *
 * @code
 * const CTarFileInfo info = archive.info(0);
 * if (info.type == CTarFileInfo::E_TYPE_FILE)
 *     qInfo() << info.name << info.size;
 * @endcode
 */
class J6CORE_EXPORT CTarFileInfo
{
public:
    /// @brief What a member is, by the type flag of its header (POSIX ustar).
    enum EFileType : qint32 {
        E_TYPE_OTHER = 0,    ///< invalid, or any flag but those below: hard links, devices, extended headers
        E_TYPE_FILE = 1,     ///< regular file, flag '0' or NUL
        E_TYPE_LINK = 2,     ///< symbolic link, flag '2'
        E_TYPE_DIRECTORY = 3 ///< directory, flag '5'
    };

    int type = E_TYPE_OTHER; ///< one of EFileType
    QString name;            ///< as stored; the bytes are taken as Latin-1
    QString linkName;        ///< the target of a link as stored, likewise; of other members mostly empty
    qint64 size = 0;         ///< length of the data in bytes
    qint64 offset = 0;       ///< position of the member's header; its data starts 512 bytes behind

    /// @brief A cleared record.
    CTarFileInfo() = default;

    /// @brief Makes the type E_TYPE_OTHER, both texts empty, size and offset 0.
    void clear();
    /// @brief Whether the type is not E_TYPE_OTHER. A member that is neither file nor symbolic link nor
    /// directory is not valid in this sense, although it is listed and its data can be read.
    bool isValid() const { return type != E_TYPE_OTHER; }

    /// @brief Equality of all fields.
    bool operator==(const CTarFileInfo &other) const;
    bool operator!=(const CTarFileInfo &other) const { return !(*this == other); }
};

Q_DECLARE_TYPEINFO(CTarFileInfo, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CTarFileInfo)

/// @brief Writes `"CTarFileInfo(1, etc/axis.csv, , 1234, 512)"`: type, name, link, size and offset, quoted as
/// a QString is.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CTarFileInfo &info);

#endif // CTARFILEINFO_H
