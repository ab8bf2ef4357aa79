// SPDX-License-Identifier: MIT
#ifndef CDEVICEITEM_H
#define CDEVICEITEM_H

#include <CSubDeviceItem.h>
#include <NTypes.h>
#include <j6Core_export.h>

#include <QByteArray>
#include <QHostAddress>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QtGlobal>

#include <type_traits>

class QDataStream;
class QDebug;

// The addresses are inline: they are complete before every static object that is defined behind this header,
// whether the library is linked dynamically or statically.

/// @brief 169.254.0.0, the network of the IPv4 link-local addresses (RFC 3927; 16 bits of prefix).
inline const QHostAddress cLinkLocalNetwork(quint32(0xA9FE0000));
/// @brief 192.168.100.1, the address that a device has until it is given another.
inline const QHostAddress cDefaultDeviceAddress(quint32(0xC0A86401));

/// @brief The user-rights block that a device granted: 32 bytes, kept as they are.
struct sUserRights_t
{
    quint8 bytes[32];
};

static_assert(sizeof(sUserRights_t) == 32 && std::is_trivial<sUserRights_t>::value, "a plain block");

/// @brief Equality of all 32 bytes.
J6CORE_EXPORT bool operator==(const sUserRights_t &a, const sUserRights_t &b);
J6CORE_EXPORT bool operator!=(const sUserRights_t &a, const sUserRights_t &b);

Q_DECLARE_TYPEINFO(sUserRights_t, Q_PRIMITIVE_TYPE);

/**
 * @brief One drive controller, found on the network or taken from a stored list: how to reach it, its texts
 * and numbers, the user rights that it granted, and its sub-devices.
 *
 * A record: the members are public and are read and written directly. What the flags, the texts and numbers
 * 1 and 2 and the bytes of the user rights mean is the tools' business; here they are kept, compared and
 * streamed. Copies share their texts and sub-devices until one is changed.
 *
 * Sub-devices are held by number. Asked for a number that the device does not have, the getters answer as a
 * default CSubDeviceItem does, and the setters do nothing.
 *
 * No operation reports or logs an error.
 *
 * The stream form is the members in declaration order, in the stream's version and byte order; no magic and
 * no version of its own. Integers have the width of their member (the address type is a 32-bit integer, a
 * flag 8-bit), the user rights are their 32 bytes, and the sub-devices are a QMap: its count, a 32-bit
 * integer, and then its pairs of 8-bit number and CSubDeviceItem from the highest number to the lowest.
 *
 * Reentrant; a value is used by one thread at a time, copies may be shared between threads.
 *
 * @code
 * const auto wired = static_cast<CDeviceItem::EHostAddrType>(1);   // the tools number the kinds
 * CDeviceItem drive(QStringLiteral("Spindle drive"), wired, cDefaultDeviceAddress, 5000,
 *                   QStringLiteral("SN 4711"));
 * drive.isValid();                                                 // true
 * drive.addSubDevice(CSubDeviceItem(0, QStringLiteral("Axis X")), 3);
 * drive.setAvailableParamSets(0x5, 3);                             // sets 0 and 2 of sub-device 3
 * drive.availableParamSetCount(3);                                 // 2
 * drive.activeParamSet(9);                                         // -1: there is no sub-device 9
 * @endcode
 */
class J6CORE_EXPORT CDeviceItem
{
public:
    /// @brief The kind of the host address. The tools number the kinds; any 32-bit number is kept.
    enum EHostAddrType : qint32 {
        E_HOST_ADDR_NONE = 0 ///< no usable address
    };

    QString mIdentifier; ///< what tells the device from others, a serial number for example
    EHostAddrType mHostAddrType = E_HOST_ADDR_NONE;
    QHostAddress mHostAddress; ///< null when it is not known
    quint16 mPort = 0;         ///< 0 when it is not known
    bool mFlag1 = false;
    bool mFlag2 = false;
    qint32 mDeviceKey = 0; ///< the key in its CDeviceList, which sets it; an unsigned number there
    QString mName;
    QString mText1;
    qint32 mValue1 = 0;
    QString mText2;
    qint32 mValue2 = 0;
    sUserRights_t mUserRights = {};
    QMap<unsigned char, CSubDeviceItem> mSubDevices; ///< by sub-device number

    /// @brief A device without an address: texts empty, numbers 0, flags false, user rights zero, no
    /// sub-devices.
    CDeviceItem() = default;
    /// @brief A device of this name, address and identifier, for the rest as by default.
    CDeviceItem(QString name, CDeviceItem::EHostAddrType type, QHostAddress address, unsigned short port,
                QString identifier);

    /// @brief Whether the device can be reached: its address is not null, its port is not 0 and the kind of
    /// its address is not E_HOST_ADDR_NONE.
    bool isValid() const;

    /// @brief Takes the user rights from `data` if it has exactly 32 bytes, else changes nothing.
    /// Inverse of userlevelData().
    void setUserlevelData(const QByteArray &data);
    /// @brief The 32 bytes of the user rights.
    QByteArray userlevelData() const;
    /// @brief The user rights.
    sUserRights_t userRights() const;

    /// @brief Holds a copy of `sub` under `number` in place of the sub-device that was there, and gives the
    /// copy that number, whatever the one of `sub` is. `sub` may be one of mSubDevices itself.
    void addSubDevice(const CSubDeviceItem &sub, unsigned char number);
    /// @brief Holds a copy of `sub` under its own number, 0..254, in place of the sub-device that was there.
    /// @return false, with nothing changed, when `sub` is not valid (its number is 255)
    bool setSubDevice(const CSubDeviceItem &sub);

    /// @name The getters of sub-device `sub`; without such a sub-device 0, empty, 0, version 0.0.0 and -1.
    /// @{
    unsigned long long availableParamSets(unsigned char sub) const;
    QMap<unsigned short, QString> availableParamSetNames(unsigned char sub) const;
    int availableParamSetCount(unsigned char sub) const;
    NTypes::sVersion_t paramVersion(unsigned char sub) const;
    short activeParamSet(unsigned char sub) const;
    /// @}

    /// @name The setters of sub-device `sub`; without such a sub-device nothing happens.
    /// @{
    void setAvailableParamSets(unsigned long long mask, unsigned char sub);
    void setAvailableParamSetNames(unsigned short *names, unsigned char sub);
    /// @return what the sub-device's setter returns; false without such a sub-device
    bool setActiveParamSet(short set, unsigned char sub);
    /// @}

    /// @brief Equality of all members; addresses by QHostAddress's equality, which ignores an IPv6 scope.
    bool operator==(const CDeviceItem &other) const;
    bool operator!=(const CDeviceItem &other) const;
};

Q_DECLARE_TYPEINFO(CDeviceItem, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CDeviceItem)

/// @brief Writes the kind as a 32-bit integer.
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, CDeviceItem::EHostAddrType type);
/// @brief Reads a 32-bit integer; whatever it is, it is kept.
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CDeviceItem::EHostAddrType &type);

/// @brief Writes the stream form of the class comment.
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CDeviceItem &device);
/**
 * @brief Reads what operator<<() wrote.
 *
 * Where the stream runs short or is corrupt, the members are what Qt's stream operators leave, and the
 * stream's status tells: numbers and missing bytes are 0, texts and sub-devices empty. An address is null
 * after an unknown protocol byte, but 0.0.0.0 where that byte itself is missing. A flag is true for every
 * byte but 0.
 */
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CDeviceItem &device);

/// @brief Writes `"CDeviceItem(Spindle drive, 192.168.100.1:5000)"`, name, address and port, quoted as a
/// QString is. An IPv6 address stands in brackets; of a null address there is only the port.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CDeviceItem &device);

#endif // CDEVICEITEM_H
