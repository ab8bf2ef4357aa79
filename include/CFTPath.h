// SPDX-License-Identifier: MIT
#ifndef CFTPATH_H
#define CFTPATH_H

#include <j6Core_export.h>

#include <QList>
#include <QMap>
#include <QString>

/**
 * @brief The fixed places of a device's own file system, which the tools reach by file transfer.
 *
 * A place is an entry point: it has an absolute path on the device and a symbolic name for display and
 * storage.
 *
 * | entry point   | device path, toPath()   | symbolic name, toString() |
 * |---------------|-------------------------|---------------------------|
 * | E_CONSTCONFIG | /opt/VANTORIS/etc/conf/ | CONSTCONFIG               |
 * | E_COMPANY     | /VANTORIS/              | VANTORIS                  |
 * | E_OPT_COMPANY | /opt/VANTORIS/          | OPT/VANTORIS              |
 * | E_TMP         | /tmp/                   | TMP                       |
 * | E_ROOT        | /                       | ROOT                      |
 * | E_OPT         | /opt/                   | OPT                       |
 * | E_APPDATA     | /appdata/               | APPDATA                   |
 *
 * Device paths have "/" between their parts, whatever the platform of the tool. Upper and lower case differ
 * everywhere. Nothing is logged: what is unknown gives INVALID_STR or E_INVALID.
 *
 * All functions are reentrant and may be called in static initialisers.
 *
 * @code
 * const QString motor = CFTPath::toPath(CFTPath::E_CONSTCONFIG) + QStringLiteral("motor.xml");
 * CFTPath::fromPath(motor);                                // E_CONSTCONFIG
 * CFTPath::toRelativePath(motor, CFTPath::E_OPT_COMPANY);  // "etc/conf/motor.xml"
 * CFTPath::toString(CFTPath::E_OPT_COMPANY);               // "OPT/VANTORIS"
 * @endcode
 */
class J6CORE_EXPORT CFTPath
{
public:
    /// @brief An entry point. Each is a single bit.
    enum EEntryPoint : qint32 {
        E_INVALID = 0,
        E_CONSTCONFIG = 1,
        E_COMPANY = 2,
        E_OPT_COMPANY = 4,
        E_TMP = 8,
        E_ROOT = 16,
        E_OPT = 32,
        E_APPDATA = 64
    };

    /// @brief Path and name of what is no entry point.
    static constexpr char INVALID_STR[] = "<invalid>";

    /// @name Names of the standard sub-directories, to be put behind the path of an entry point. Filled at
    /// library load, never changed afterwards; in a program that links the library statically they may still
    /// be missing while its own static objects are built.
    /// @{
    static const QString PATH_AUTOSTART;      ///< "autostart/"
    static const QString PATH_BIN;            ///< "bin/"
    static const QString PATH_CONFIGURATIONS; ///< "configurations/"
    static const QString PATH_CONF;           ///< "conf/"
    static const QString PATH_PARAM;          ///< "param/"
    static const QString PATH_FIRMWARE;       ///< "firmware/"
    static const QString PATH_LOGIC;          ///< "logic/"
    static const QString PATH_SUBDEVICES;     ///< "subdevices/"
    /// @}

    /// @brief The device path, with "/" at both ends; INVALID_STR for anything but the seven of the table.
    static QString toPath(CFTPath::EEntryPoint entryPoint);

    /// @brief A new map of the seven symbolic names, and of INVALID_STR for E_INVALID.
    static QMap<CFTPath::EEntryPoint, QString> entryStrMap();

    /// @brief The symbolic name; INVALID_STR for anything but the seven of the table.
    static QString toString(CFTPath::EEntryPoint entryPoint);

    /// @brief The entry point of this symbolic name; E_INVALID if there is none. Inverse of toString().
    static CFTPath::EEntryPoint toEntryPoint(const QString &name);

    /// @brief The seven entry points in ascending order, behind E_INVALID.
    static QList<CFTPath::EEntryPoint> entryPoints();

    /**
     * @brief The entry point in which a path lies; E_INVALID if there is none.
     *
     * In ascending order, E_INVALID first, the entry point is the first one whose symbolic name stands at the
     * start of the path or behind its first character, whatever that is ("TMP/x", "/TMP/x"), or whose device
     * path the path begins with. A path that begins with "/" and none of the names and paths up to E_TMP is
     * thus in E_ROOT, "/opt/x" and "/APPDATA/x", too: E_OPT and E_APPDATA are found as "OPT/x" and
     * "APPDATA/x" only. That order is kept on purpose.
     */
    static CFTPath::EEntryPoint fromPath(const QString &path);

    /**
     * @brief The path relative to an entry point, without "/" at its start: "/tmp/a" in E_TMP is "a".
     *
     * A path without "/" at its start is given one before. Outside of the entry point it is returned with it.
     */
    static QString toRelativePath(const QString &path, CFTPath::EEntryPoint entryPoint);
};

#endif // CFTPATH_H
