// SPDX-License-Identifier: MIT
#ifndef CIPV6ADDRESS_H
#define CIPV6ADDRESS_H

#include <j6Core_export.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <array>
#include <cstddef>

class QDataStream;
class QDebug;

/**
 * @brief An IPv6 address: 16 raw bytes and their colon-separated text.
 *
 * The eight 16-bit groups are stored low byte first, not in network order: byte 2i is the low byte and byte
 * 2i + 1 the high byte of group i, and group 0 is the first of the text.
 *
 * A value object is used by one thread at a time; copies are independent. Only a text reports failure.
 *
 * @code
 * CIPv6Address address(QStringLiteral("FE80:0000:0:0:0:0:0:0001"));
 * address.byteArray().toHex(); // "80fe0000000000000000000000000100"
 * address.str();               // "fe80:0:0:0:0:0:0:1"
 * @endcode
 */
class J6CORE_EXPORT CIPv6Address
{
public:
    /// @brief The zero address.
    CIPv6Address();
    CIPv6Address(const CIPv6Address &other);
    /// @brief The 16 bytes at `bytes`; the zero address when that is null.
    CIPv6Address(const unsigned char *bytes);
    /// @brief The 16 bytes of the array; the zero address when it has another size.
    CIPv6Address(const QByteArray &bytes);
    /// @brief The zero address on which setAddress(const QVariant &) has been called.
    CIPv6Address(const QVariant &variant);
    /// @brief The zero address on which setAddress(const QString &) has been called.
    CIPv6Address(const QString &text);
    virtual ~CIPv6Address();

    CIPv6Address &operator=(const CIPv6Address &other);
    /// @brief As setAddress(const QVariant &).
    CIPv6Address &operator=(const QVariant &variant);
    /// @brief As setAddress(const QString &), without its result.
    CIPv6Address &operator=(const QString &text);

    /// @brief Copies 16 bytes from `bytes`; a null pointer changes nothing.
    void setAddress(const unsigned char *bytes);
    /// @brief Copies the array's bytes. An array of another size than 16 changes nothing, without a message.
    void setAddress(const QByteArray &bytes);
    /// @brief Takes a QByteArray as setAddress(const QByteArray &) does; a variant of any other type, one of
    /// text or without a value too, clears the address.
    void setAddress(const QVariant &variant);
    /**
     * @brief Takes the address from its text, eight groups of one to four hexadecimal digits.
     *
     * The text is matched as `^([0-9a-fA-F]{1,4}|:|0)(:([0-9a-fA-F]{0,4})|){7}$`, which lets more pass than
     * is read: a text of other than eight groups, compressed ("::1") or short ("1:2"), changes nothing, and
     * an empty group among eight ("1::2:3:4:5:6:7") keeps its two bytes.
     *
     * @return true when the text matches, whether or not it changed anything. Otherwise false: the address is
     * cleared and one warning logged, "CIPv6Address::setAddress() : %1 is not a IPv6-Address.", with the text
     * in it as it is. Inverse of str().
     */
    bool setAddress(const QString &text);

    /// @brief The eight groups in lower-case hexadecimal without leading zeros, joined with ":". There is no
    /// "::" compression: the zero address is "0:0:0:0:0:0:0:0".
    QString str() const;
    operator QString() const { return str(); }

    /// @brief The 16 bytes as they are stored.
    QByteArray byteArray() const;
    /// @brief A QVariant that holds byteArray().
    operator QVariant() const { return byteArray(); }

    /// @brief Byte i of the 16; no range check.
    unsigned char &operator[](int i) { return mBytes[static_cast<std::size_t>(i)]; }
    /// @copydoc operator[](int)
    const unsigned char &operator[](int i) const { return mBytes[static_cast<std::size_t>(i)]; }

    /// @brief Equality of all 16 bytes.
    bool operator==(const CIPv6Address &other) const { return mBytes == other.mBytes; }
    bool operator!=(const CIPv6Address &other) const { return !(*this == other); }

    /// @brief Sets all bytes to zero.
    void clear();

    /// @brief Writes the 16 bytes as they are stored, without a prefix.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CIPv6Address &address);
    /// @brief Reads 16 bytes. Those that the stream does not hold are zero; its status tells.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CIPv6Address &address);

private:
    static constexpr int byteCount = 16;

    std::array<unsigned char, byteCount> mBytes{};
};

Q_DECLARE_TYPEINFO(CIPv6Address, Q_MOVABLE_TYPE);

/// @brief Writes `"CIPv6Address(fe80:0:0:0:0:0:0:1)"`, quoted as a QString is.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CIPv6Address &address);

#endif // CIPV6ADDRESS_H
