// SPDX-License-Identifier: MIT
#ifndef CFIXEDSTRING_H
#define CFIXEDSTRING_H

#include <j6Core_export.h>

#include <QByteArray>
#include <QDataStream>
#include <QDebug>
#include <QSharedData>
#include <QSharedDataPointer>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <cstddef>

/**
 * @brief A fixed field of N UTF-16 units, exactly as a device stores it: the one design of CString32,
 * CString64 and CString128.
 *
 * The field is zero-terminated when its text is shorter than N units and not terminated when it fills the
 * field. What lies behind the terminator is kept: it takes part in equality, in byteArray() and in the stream
 * form. In memory and in the byte form the units are little-endian.
 *
 * Objects are implicitly shared values: a copy costs one reference count, a change detaches. Copies may be
 * used and destroyed in different threads (the count is atomic); one object must not be changed by two
 * threads at once.
 *
 * Nothing here fails loudly: longer input is cut to the field without a message, unsuitable variants change
 * nothing.
 *
 * The three classes differ in these points only:
 *
 * | class      | `str()` of an empty field | bytes that are no UTF-16 | FF FF pairs | other QVariants taken |
 * |------------|---------------------------|--------------------------|-------------|-----------------------|
 * | CString32  | null                      | the raw bytes            | removed     | -                     |
 * | CString64  | null                      | an empty string          | removed     | CString32             |
 * | CString128 | empty                     | an empty string          | kept        | CString64, CString32  |
 *
 * The third and fourth column are about fromByteArray(), whose `ok` is false for bytes that are not UTF-16.
 *
 * @code
 * CString32 name(QStringLiteral("Spindle 1"));
 * name.str();       // "Spindle 1"
 * name.byteArray(); // 64 bytes: 53 00 70 00 ... 31 00, then zeros
 * @endcode
 */
template<typename Derived, std::size_t N>
class J6CORE_EXPORT CFixedString
{
public:
    /// @brief Number of UTF-16 units of the field.
    static constexpr int unitCount = int(N);
    /// @brief Number of bytes of the field and of its stream form.
    static constexpr int byteCount = 2 * int(N);

    /// @brief All units zero.
    CFixedString();
    /// @brief The text's units, cut to N; see operator=(const QString &).
    CFixedString(const QString &text);
    /// @brief The bytes as raw field content, cut to 2N, zeros behind them.
    CFixedString(const QByteArray &bytes);
    /// @brief All N units.
    CFixedString(const unsigned short (&units)[N]);
    /// @brief An empty field on which operator=(const QVariant &) has been called.
    CFixedString(const QVariant &variant);

    /// @brief Copies the text's units. A shorter text is followed by one zero unit and what was behind it
    /// stays; a text of N or more units fills the field without a terminator.
    Derived &operator=(const QString &text);
    /// @brief Copies at most 2N raw bytes over the start of the field; no terminator is written and the rest
    /// stays. An odd count leaves a half-written unit.
    Derived &operator=(const QByteArray &bytes);
    /// @brief Copies all N units.
    Derived &operator=(const unsigned short (&units)[N]);
    /**
     * @brief Takes the variant's value by its type; the first that fits: a QString as text; a QByteArray as
     * raw bytes if it is at most 2N bytes of UTF-16; a value of this class (one that QVariant can convert to
     * it is converted, a failed conversion empties the field); a shorter fixed string as the class table
     * says. Any other variant changes nothing.
     */
    Derived &operator=(const QVariant &variant);

    /// @brief The text: the units up to the first zero unit, or all N. Whether an empty field gives a null or
    /// an empty text: see the class table.
    QString str() const;
    operator QString() const { return str(); }

    /// @brief All 2N bytes of the field, the terminator and what follows it included.
    QByteArray byteArray() const;
    operator QByteArray() const { return byteArray(); }

    /// @brief True when the text is empty.
    bool isNull() const;

    /// @brief True when the field's bytes decode as UTF-16; see isUTF16().
    bool isValid() const;

    /// @brief True when Qt's text codec "UTF-16" finds no invalid character in the bytes.
    static bool isUTF16(const QByteArray &bytes);

    /**
     * @brief A string from the raw bytes of a device, the first 2N of them, if they are UTF-16.
     * @param bytes the field content, any length
     * @param ok set true when the bytes are UTF-16, else false; may be null
     * @return the string; for other input and for FF FF byte pairs (at any position) see the class table
     */
    static Derived fromByteArray(const QByteArray &bytes, bool *ok = nullptr);

    /// @brief Equality of all N units, those behind the terminator included.
    bool operator==(const Derived &other) const;
    bool operator!=(const Derived &other) const { return !(*this == other); }

    /// @brief How the two texts compare: less than 0, 0 or more than 0, as QString::compare() tells of both
    /// str(). What lies behind the terminators does not count. The texts are compared in place.
    int compareText(const Derived &other) const;

    /// @brief Writes the N units, each as a 16-bit integer in the stream's byte order; no length, no
    /// terminator.
    friend QDataStream &operator<<(QDataStream &stream, const Derived &string)
    {
        return string.write(stream);
    }
    /// @brief Reads N units. Units that the stream does not hold are zero; its status tells.
    friend QDataStream &operator>>(QDataStream &stream, Derived &string) { return string.read(stream); }
    /// @brief Writes str() as a QString is written (quoted unless the stream is in noquote mode).
    friend QDebug operator<<(QDebug debug, const Derived &string) { return string.print(debug); }

protected:
    CFixedString(const CFixedString &) = default;
    CFixedString &operator=(const CFixedString &) = default;
    ~CFixedString() = default;

    bool copyUnits(unsigned short *units) const;

private:
    struct Block : public QSharedData
    {
        unsigned short units[N] = {};
    };

    void assignText(const QString &text);
    void assignBytes(const QByteArray &bytes);
    void assignVariant(const QVariant &variant);
    QStringView text() const;
    QDataStream &write(QDataStream &stream) const;
    QDataStream &read(QDataStream &stream);
    QDebug print(QDebug debug) const;
    Derived &self() { return static_cast<Derived &>(*this); }

    QSharedDataPointer<Block> mBlock;
};

#endif // CFIXEDSTRING_H
