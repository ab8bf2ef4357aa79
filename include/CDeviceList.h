// SPDX-License-Identifier: MIT
#ifndef CDEVICELIST_H
#define CDEVICELIST_H

#include <CDeviceItem.h>
#include <j6Core_export.h>

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QtGlobal>

class QDataStream;
class QDebug;

/**
 * @brief A named list of devices, held by key, with a note of where the list came from.
 *
 * Keys are unsigned 32-bit numbers. A device that was added knows its key: its `mDeviceKey` is the same 32
 * bits as a signed number. One that was read from a stream has there what the stream had. What source types,
 * address and values mean is the tools' business; here they are kept, compared and streamed. Copies share
 * their devices until one is changed.
 *
 * No operation reports or logs an error.
 *
 * Stream form, in the stream's version and byte order; no magic and no version of its own:
 *
 * | field              | form                                          |
 * |--------------------|-----------------------------------------------|
 * | list name          | QString                                       |
 * | source type        | 32-bit integer                                |
 * | devices            | QMap of 32-bit integers and CDeviceItems      |
 * | source address     | QHostAddress                                  |
 * | source values 1, 2 | 32-bit integers                               |
 *
 * A QMap is its count, a 32-bit integer, and then its pairs from the highest key to the lowest. A stream that
 * holds a key twice gives, as always with a QMap, two devices under that key: both count and are written
 * again, and the one that came later is the one that device() finds.
 *
 * Reentrant; a value is used by one thread at a time, copies may be shared between threads.
 *
 * @code
 * CDeviceList plant(QStringLiteral("Plant"), CDeviceList::E_SOURCE_NONE);
 * plant.addDevice(4, CDeviceItem());
 * plant.device(4).mDeviceKey;   // 4
 * plant.device(7).isValid();    // false: a default device, there is none under this key
 * CDeviceList found;
 * found.addDevice(4, CDeviceItem());
 * found.addDevice(5, CDeviceItem());
 * plant.unite(found);           // adds device 5 and keeps its own device 4
 * @endcode
 */
class J6CORE_EXPORT CDeviceList
{
public:
    /// @brief Where a list came from. The tools number the sources; any 32-bit number is kept.
    enum ESourceType : qint32 {
        E_SOURCE_NONE = 0 ///< not known
    };

    /// @brief An empty list without a name: source type E_SOURCE_NONE, source address null, source values -1
    /// and 0.
    CDeviceList() = default;
    /// @brief An empty list of this name and source type, for the rest as by default.
    CDeviceList(QString name, CDeviceList::ESourceType type);

    /// @brief The name of the list; it is given when the list is made.
    QString listName() const;

    /// @name Where the list came from. Each setter takes any value, which its getter then gives.
    /// @{
    ESourceType sourceType() const;
    QHostAddress sourceAddress() const;
    int sourceValue1() const;
    int sourceValue2() const;

    void setSourceType(ESourceType type);
    void setSourceAddress(const QHostAddress &address);
    void setSourceValue1(int value);
    void setSourceValue2(int value);
    /// @}

    /// @brief Whether there is a device under this key.
    bool contains(unsigned int key) const;
    /// @brief A copy of the device under this key; a default CDeviceItem, which is not valid, when there is
    /// none.
    CDeviceItem device(unsigned int key) const;
    /// @brief The keys of all devices, ascending.
    QList<unsigned int> keys() const;
    /// @brief The number of devices.
    int size() const;
    /// @brief The same as size().
    int count() const;

    /// @brief Holds a copy of `device` under `key` in place of the device that was there, and sets the copy's
    /// `mDeviceKey` to `key`.
    void addDevice(unsigned int key, const CDeviceItem &device);
    /// @brief Removes the device under `key`, if there is one.
    void removeDevice(unsigned int key);
    /// @brief Removes all devices. Name, source type, source address and source values stay.
    void clear();
    /// @brief Adds, as addDevice() does, the devices of `other` under whose keys this list has none. Where
    /// both have one, this list's stays; name, source type, source address and source values stay, too.
    void unite(const CDeviceList &other);

    /// @brief Equality of all that is held; addresses by QHostAddress's equality, which ignores an IPv6
    /// scope.
    bool operator==(const CDeviceList &other) const;
    bool operator!=(const CDeviceList &other) const;

    /// @brief Writes the stream form of the class comment.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CDeviceList &list);
    /// @brief Reads what operator<<() wrote. Where the stream runs short or is corrupt, the fields are what
    /// Qt's stream operators leave (as with a CDeviceItem), and its status tells. A fault among the devices
    /// leaves none of them.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CDeviceList &list);

private:
    QString mListName;
    ESourceType mSourceType = E_SOURCE_NONE;
    QMap<unsigned int, CDeviceItem> mDevices;
    QHostAddress mSourceAddress;
    qint32 mSourceValue1 = -1;
    qint32 mSourceValue2 = 0;
};

Q_DECLARE_TYPEINFO(CDeviceList, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CDeviceList)

/// @brief Writes the source type as a 32-bit integer.
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, CDeviceList::ESourceType type);
/// @brief Reads a 32-bit integer; whatever it is, it is kept.
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CDeviceList::ESourceType &type);

/// @brief Writes `"CDeviceList(Plant, 2)"`, name and number of devices, quoted as a QString is.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CDeviceList &list);

#endif // CDEVICELIST_H
