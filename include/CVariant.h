// SPDX-License-Identifier: MIT
#ifndef CVARIANT_H
#define CVARIANT_H

#include <CDateTime.h>
#include <CString128.h>
#include <CString32.h>
#include <CString64.h>
#include <NTypes.h>
#include <j6Core_export.h>

#include <QBitArray>
#include <QByteArray>
#include <QChar>
#include <QDataStream>
#include <QDateTime>
#include <QDebug>
#include <QHostAddress>
#include <QLatin1String>
#include <QLocale>
#include <QString>
#include <QVariant>

/**
 * @brief One parameter value of a drive: a QVariant tagged with its NTypes::eTypes_t.
 *
 * | state           | type() | value held | isNull() | isValid() | made by |
 * |-----------------|--------|------------|----------|-----------|---------|
 * | empty           | 0      | none       | true     | false     | CVariant(), an unsupported type |
 * | typed, no value | a tag  | none       | true     | false     | too few raw bytes, CVariant(E_BYTEARRAY) |
 * | typed value     | a tag  | yes        | false    | true      | everything else |
 *
 * Some values differ from the last row: a fixed string that is not UTF-16 is not valid; the character U+0000
 * of type E_UTF16CHAR, a null byte array and a null QVariant that was stored are null although held. A typed
 * constructor holds the value in its exact Qt type; raw data and default values of 8- and 16-bit integers are
 * held widened to `int`. Readers accept both, and a value of another type than the tag says (setRawData(const
 * QVariant &, ...) checks nothing) is read as Qt converts it, else as 0 or empty.
 *
 * Nothing throws. A conversion reports failure through `ok` (null allowed) and returns 0, an all-zero record
 * or an empty value; an unsupported type is logged with one qWarning line that begins with the class and
 * member name. Raw bytes are the devices' little-endian form.
 *
 * A value object is used by one thread at a time; copies are independent. Numbers and records of up to 8
 * bytes are held in place: making and copying them allocates nothing.
 *
 * @code
 * CVariant speed = CVariant::fromByteArray(QByteArray::fromHex("E8030000"), NTypes::E_I32); // 1000
 * speed.toStr();                                                                           // "1000"
 * CVariant edited = CVariant::fromStr(QStringLiteral("1500"), speed.type());
 * if (!edited.compareValue(speed))
 *     device.write(edited.toByteArray()); // DC 05 00 00
 * @endcode
 */
class J6CORE_EXPORT CVariant
{
public:
    /// @name Construction. The type of the argument gives the tag.
    /// @{
    CVariant() = default;
    CVariant(const CVariant &other);
    CVariant(CVariant &&other) noexcept;
    virtual ~CVariant();
    CVariant(signed char value);
    CVariant(unsigned char value);
    CVariant(short value);
    CVariant(unsigned short value);
    CVariant(int value);
    CVariant(unsigned int value);
    CVariant(float value);
    CVariant(long long value);
    CVariant(unsigned long long value);
    CVariant(double value);
    CVariant(QChar value);
    CVariant(char value);
    /// All bytes are copied, zeros and what follows them included: the array is a field, not a C string.
    CVariant(const char (&text)[64]);
    CVariant(const char (&text)[128]);
    CVariant(const char (&text)[256]);
    CVariant(const unsigned short (&units)[32]);
    CVariant(const unsigned short (&units)[64]);
    CVariant(const unsigned short (&units)[128]);
    CVariant(const CString32 &value);
    CVariant(const CString64 &value);
    CVariant(const CString128 &value);
    CVariant(const NTypes::sDateTime_t &value);
    CVariant(const NTypes::uDateTimeVal_t &value);
    /// The date-time's fields in its own time spec, milliseconds cut to hundredths. Qt converts one with an
    /// offset to UTC and one with a zone to local time.
    CVariant(const CDateTime &value);
    CVariant(const QDateTime &value);
    CVariant(const NTypes::sVersion_t &value);
    CVariant(const NTypes::uVersion_t &value);
    CVariant(const NTypes::sVersion4_t &value);
    CVariant(const NTypes::uVersion4_t &value);
    CVariant(const NTypes::uIPv4HAddr_t &value);
    /// The address's IPv4 number; 0 for an address that is not IPv4.
    CVariant(const QHostAddress &value);
    CVariant(const NTypes::sCommand_t &value);
    CVariant(const NTypes::uCommand_t &value);
    CVariant(const NTypes::sDs402Record01_t &value);
    CVariant(const NTypes::sDs402Array_t<short> &value);
    CVariant(const NTypes::sDs402Array_t<int> &value);
    CVariant(const NTypes::sDs402Array_t<unsigned short> &value);
    CVariant(const NTypes::sDs402Array_t<unsigned int> &value);
    /// The type's default value, see defaultValue(); empty for a number above 32 or below 0.
    CVariant(NTypes::eTypes_t type);
    /// fromStr() of the text; the type's default value when that gives none. Empty for a type above 32 or
    /// below 0.
    CVariant(const QString &text, NTypes::eTypes_t type);
    CVariant(const QLatin1String &text, NTypes::eTypes_t type);
    CVariant(const char *text, NTypes::eTypes_t type);
    /// fromByteArray() of the bytes; the type's default value when that gives none.
    CVariant(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count = 1);
    /// The tag is deduced, see operator=(const QVariant &). The text and byte forms are the same call.
    CVariant(const QVariant &value);
    CVariant(const QString &text);
    CVariant(const QLatin1String &text);
    CVariant(const QByteArray &bytes);
    /// fromVariant() of the value.
    CVariant(const QVariant &value, NTypes::eTypes_t type);
    /// fromBitArray() of the bits.
    CVariant(const QBitArray &bits, NTypes::eTypes_t type);
    /// @}

    /// @name Assignment: value and tag are replaced together, as by the constructor from the same type.
    /// @{
    CVariant &operator=(const CVariant &other);
    CVariant &operator=(CVariant &&other) noexcept;
    CVariant &operator=(signed char value);
    CVariant &operator=(unsigned char value);
    CVariant &operator=(short value);
    CVariant &operator=(unsigned short value);
    CVariant &operator=(int value);
    CVariant &operator=(unsigned int value);
    CVariant &operator=(float value);
    CVariant &operator=(long long value);
    CVariant &operator=(unsigned long long value);
    CVariant &operator=(double value);
    CVariant &operator=(const QChar &value);
    CVariant &operator=(char value);
    CVariant &operator=(const char (&text)[64]);
    CVariant &operator=(const char (&text)[128]);
    CVariant &operator=(const char (&text)[256]);
    CVariant &operator=(const unsigned short (&units)[32]);
    CVariant &operator=(const unsigned short (&units)[64]);
    CVariant &operator=(const unsigned short (&units)[128]);
    CVariant &operator=(const CString32 &value);
    CVariant &operator=(const CString64 &value);
    CVariant &operator=(const CString128 &value);
    CVariant &operator=(const NTypes::sDateTime_t &value);
    CVariant &operator=(const CDateTime &value);
    CVariant &operator=(const QDateTime &value);
    CVariant &operator=(const NTypes::sVersion_t &value);
    CVariant &operator=(const NTypes::uVersion_t &value);
    CVariant &operator=(const NTypes::sVersion4_t &value);
    CVariant &operator=(const NTypes::uVersion4_t &value);
    CVariant &operator=(const NTypes::uIPv4HAddr_t &value);
    CVariant &operator=(const NTypes::sCommand_t &value);
    CVariant &operator=(const NTypes::uCommand_t &value);
    CVariant &operator=(const NTypes::sDs402Record01_t &value);
    CVariant &operator=(const NTypes::sDs402Array_t<short> &value);
    CVariant &operator=(const NTypes::sDs402Array_t<int> &value);
    CVariant &operator=(const NTypes::sDs402Array_t<unsigned short> &value);
    CVariant &operator=(const NTypes::sDs402Array_t<unsigned int> &value);
    /// A type is no value: construct with it, or call setDefaultValue().
    CVariant &operator=(NTypes::eTypes_t type) = delete;
    /// fromBitArray(const QBitArray &).
    CVariant &operator=(const QBitArray &bits);
    /**
     * The tag follows the QVariant's type: numbers, QChar, char, the records and the fixed strings their own
     * tag; `long` and `unsigned long` (their low 32 bits) E_I32 and E_U32; a text of up to 63 characters
     * E_STRING32, up to 127 E_STRING64, longer E_STRING128, cut to the field; 64, 128 or 256 bytes of UTF-16
     * the fixed string of that size, other bytes of these lengths the 8-bit string with a warning; any other
     * byte array E_BYTEARRAY. Any other type is logged and leaves an empty variant.
     */
    CVariant &operator=(const QVariant &value);
    CVariant &operator=(const QString &text);
    CVariant &operator=(const QLatin1String &text);
    CVariant &operator=(const QByteArray &bytes);
    /// @}

    /// @name Queries
    /// @{
    NTypes::eTypes_t type() const { return mType; }
    /// The catalogue size of the type in bytes, CDataTypeParser::typeSize().
    unsigned short typeSize() const;
    /// The size of the value: for a number the larger of its type size and the length of its decimal text
    /// (callers size buffers with it); the bytes held for 24 and 25; else the type size. 0 for an empty or
    /// unsupported type, the latter logged.
    unsigned int size() const;
    unsigned int count() const { return size(); }
    bool isNull() const;
    bool isValid() const;
    /// True when Qt's codec "UTF-16" finds no invalid character in the bytes.
    bool isUTF16(const QByteArray &bytes) const;
    /// The default of a type, independent of this value; 0 or empty, but a leading 2 in the CiA 402 arrays
    /// and record. Invalid for 0, 11, 24, 25 and numbers outside 0..32.
    QVariant defaultValue(NTypes::eTypes_t type) const;
    /// @}

    /// @name Raw data
    /// @{
    /// Sets the tag, and the value if the type has a default; else the old value stays.
    CVariant &setDefaultValue(NTypes::eTypes_t type);
    /**
     * Replaces the value by the first bytes at `data`. Too few bytes leave a null value of the type; more are
     * ignored but by E_BYTEARRAY, E_2DF32F32, and E_U8 and E_I8, which then hold all of them as a byte array.
     * E_CHAR gives an E_UTF16CHAR. A null pointer or a size above INT_MAX is as size 0. An unsupported type
     * is logged and leaves an empty variant. Inverse of toByteArray() for numbers and records.
     */
    CVariant &setRawData(const char *data, unsigned int size, NTypes::eTypes_t type);
    /// Stores value and tag as they are, unchecked.
    CVariant &setRawData(const QVariant &value, NTypes::eTypes_t type);
    static CVariant fromRawData(const char *data, unsigned int size, NTypes::eTypes_t type);
    /**
     * The raw bytes: numbers and records in their exact size, fixed strings all their bytes, 24 and 25 the
     * bytes held. 8-bit strings and characters: the Latin-1 bytes of their text and one zero byte.
     * E_UTF16CHAR and other types: QVariant::toByteArray().
     */
    QByteArray toByteArray() const;
    operator QByteArray() const { return toByteArray(); }
    /**
     * A value from exactly its raw bytes: a length that does not fit is logged and gives an empty variant.
     * Fixed strings take any length of UTF-16, 8-bit strings any length (cut to the field), E_BYTEARRAY any
     * above 0; E_CHAR reads text up to the first zero byte.
     * @param count number of elements that `bytes` holds; only E_2DF32F32 takes more than one
     */
    static CVariant fromByteArray(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count);
    static CVariant fromByteArray(const QByteArray &bytes, NTypes::eTypes_t type);
    /// With the variant's own type.
    CVariant &fromByteArray(const QByteArray &bytes);
    /// @}

    /// @name Numbers. Low-order bits without a range check; floating point is cut toward zero, and gives 0
    /// where it does not fit. Byte arrays give their first bytes. On failure 0, and `ok` false.
    /// @{
    unsigned char toU8(bool *ok = nullptr) const;
    signed char toI8(bool *ok = nullptr) const;
    unsigned short toU16(bool *ok = nullptr) const;
    short toI16(bool *ok = nullptr) const;
    unsigned int toU32(bool *ok = nullptr) const;
    int toI32(bool *ok = nullptr) const;
    float toF32(bool *ok = nullptr) const;
    unsigned long long toU64(bool *ok = nullptr) const;
    long long toI64(bool *ok = nullptr) const;
    double toF64(bool *ok = nullptr) const;
    operator unsigned char() const { return toU8(); }
    operator signed char() const { return toI8(); }
    operator unsigned short() const { return toU16(); }
    operator short() const { return toI16(); }
    operator unsigned int() const { return toU32(); }
    operator int() const { return toI32(); }
    operator float() const { return toF32(); }
    operator unsigned long long() const { return toU64(); }
    operator long long() const { return toI64(); }
    operator double() const { return toF64(); }
    /// @}

    /// @name Records. Their own type, integers of their size (bit by bit) and byte arrays of at least their
    /// size can be read. The reference forms return success; on failure the record is all zero.
    /// @{
    NTypes::sVersion_t toVersion(bool *ok = nullptr) const;
    bool toVersion(NTypes::sVersion_t &value) const;
    bool toVersion(NTypes::uVersion_t &value) const;
    NTypes::sVersion4_t toVersion4(bool *ok = nullptr) const;
    bool toVersion4(NTypes::sVersion4_t &value) const;
    bool toVersion4(NTypes::uVersion4_t &value) const;
    NTypes::uIPv4HAddr_t toIPv4Addr(bool *ok = nullptr) const;
    bool toIPv4Addr(NTypes::uIPv4HAddr_t &value) const;
    NTypes::sCommand_t toCommand(bool *ok = nullptr) const;
    bool toCommand(NTypes::sCommand_t &value) const;
    bool toCommand(NTypes::uCommand_t &value) const;
    NTypes::sDs402Record01_t toDS402Record01(bool *ok = nullptr) const;
    bool toDS402Record01(NTypes::sDs402Record01_t &value) const;
    /// The arrays are read from toByteArray() of exactly their size, whatever the type; on failure the
    /// reference forms leave the argument unchanged.
    NTypes::sDs402Array_t<short> toDS402Array01(bool *ok = nullptr) const;
    bool toDS402Array01(NTypes::sDs402Array_t<short> &value) const;
    NTypes::sDs402Array_t<int> toDS402Array02(bool *ok = nullptr) const;
    bool toDS402Array02(NTypes::sDs402Array_t<int> &value) const;
    NTypes::sDs402Array_t<unsigned int> toDS402Array10(bool *ok = nullptr) const;
    bool toDS402Array10(NTypes::sDs402Array_t<unsigned int> &value) const;
    /// The record's fields taken in the time spec, local time if none is given.
    CDateTime toDateTime(bool *ok = nullptr) const;
    CDateTime toDateTime(Qt::TimeSpec spec, bool *ok = nullptr) const;
    bool toDateTime(CDateTime &value) const;
    bool toDateTime(NTypes::sDateTime_t &value) const;
    bool toDateTime(NTypes::uDateTimeVal_t &value) const;
    operator NTypes::sVersion_t() const { return toVersion(); }
    operator NTypes::uVersion_t() const;
    operator NTypes::sVersion4_t() const { return toVersion4(); }
    operator NTypes::uVersion4_t() const;
    operator NTypes::uIPv4HAddr_t() const { return toIPv4Addr(); }
    operator NTypes::sCommand_t() const { return toCommand(); }
    operator NTypes::uCommand_t() const;
    operator NTypes::sDs402Record01_t() const { return toDS402Record01(); }
    operator NTypes::sDs402Array_t<short>() const { return toDS402Array01(); }
    operator NTypes::sDs402Array_t<int>() const { return toDS402Array02(); }
    operator NTypes::sDs402Array_t<unsigned short>() const;
    operator NTypes::sDs402Array_t<unsigned int>() const { return toDS402Array10(); }
    operator CDateTime() const { return toDateTime(); }
    operator NTypes::sDateTime_t() const;
    operator NTypes::uDateTimeVal_t() const;
    /// @}

    /// @name Fixed strings and characters, cut to the field where the text is longer
    /// @{
    /// Readable from all texts, characters and byte arrays; on failure an empty string.
    CString32 toString32(bool *ok = nullptr) const;
    CString64 toString64(bool *ok = nullptr) const;
    CString128 toString128(bool *ok = nullptr) const;
    bool toString32(CString32 &value) const;
    bool toString64(CString64 &value) const;
    bool toString128(CString128 &value) const;
    /// Copy the units of the whole field; false only for a null pointer. The units are zero when the value is
    /// no text.
    bool toString32(unsigned short *units) const;
    bool toString64(unsigned short *units) const;
    bool toString128(unsigned short *units) const;
    /// Readable from numbers, date-times and versions (their text), 8-bit strings and byte arrays (their
    /// bytes); the rest of the field is zero. False leaves it all zero.
    bool toCharStr64(char (&text)[64]) const;
    bool toCharStr128(char (&text)[128]) const;
    bool toCharStr256(char (&text)[256]) const;
    /// The first character of what the 8-bit string readers give; 0 for an empty text.
    char toChar(bool *ok = nullptr) const;
    bool toChar(char &value) const;
    /// The first unit of what the fixed-string readers give, or of at least two bytes; 0 for an empty text.
    QChar toUtf16Char(bool *ok = nullptr) const;
    bool toUtf16Char(QChar &value) const;
    operator CString32() const { return toString32(); }
    operator CString64() const { return toString64(); }
    operator CString128() const { return toString128(); }
    operator char() const { return toChar(); }
    operator QChar() const { return toUtf16Char(); }
    /// @}

    /// @name Conversion between types
    /// @{
    /// Whether the value can be read as the type. The matrix of sources and targets is part of the interface.
    bool canConvertTo(NTypes::eTypes_t type) const;
    /// Converts in place. Not convertible: nothing changes and `ok` is not written. Otherwise the tag
    /// changes, and a value that cannot be read after all (too few bytes) becomes zero with `ok` false.
    /// E_DS402_DIO_ARRAY becomes E_DS402_U32_ARRAY; bytes converted to an integer of up to 32 bits stay bytes
    /// (E_I8 then becomes E_U8).
    CVariant &convertTo(NTypes::eTypes_t type, bool *ok = nullptr);
    CVariant convertTo(NTypes::eTypes_t type, bool *ok = nullptr) const;
    /// @}

    /// @name Comparison
    /// @{
    /// Equality of the values as this value's type reads them, whatever the other's tag. Floating point:
    /// within the bare machine epsilon, absolute; two NaN are equal, infinity is not equal to itself.
    bool compareValue(const CVariant &other) const;
    /// As compareValue(), but floating point within 10^-digits; with negative digits exactly compareValue().
    bool compareValueFd(const CVariant &other, int digits) const;
    /// Same tag and equal values.
    bool operator==(const CVariant &other) const { return mType == other.mType && compareValue(other); }
    bool operator!=(const CVariant &other) const { return !(*this == other); }
    /// Order of the values as this value's type reads them, without a tolerance; what `other` cannot be read
    /// as counts as 0. Always false for types without an order: 0, 11, 24 to 31 and unknown ones.
    bool operator<(const CVariant &other) const;
    bool operator>(const CVariant &other) const;
    bool operator>=(const CVariant &other) const { return !(*this < other); }
    bool operator<=(const CVariant &other) const { return !(*this > other); }
    /// @}

    /// @name Text
    /// @{
    /// The canonical text, independent of the locale. Null for a null value.
    QString toStr() const;
    operator QString() const { return toStr(); }
    /// A date-time in the format; a null string for any other type.
    QString toStr(Qt::DateFormat format) const;
    QString toStr(QLocale::FormatType format) const;
    /// Floating point in the default locale with up to 6 significant digits; else toStr(). Null for a null
    /// value.
    QString toLocaleStr() const;
    /// The prefix and lower-case hexadecimal digits: integers and characters as a number in full width
    /// (negative ones in two's complement), a date-time as a number without padding, all others byte by byte.
    /// Floating point and untyped values: the prefix alone.
    QString toHex(const QString &prefix) const;
    /// The first `length` digits of toHex() (all if negative) in pairs with the separator between; an odd
    /// length takes the whole last pair.
    QString toHexSeperated(int length, const QString &separator) const;
    /**
     * A value of the type from its text; inverse of toStr() within the digits that it shows (floating point 6
     * or 15, no hundredths of a second) and for version parts up to 32767; larger parts give 0. Integers
     * accept "0x" and leading-zero octal; they are not checked against the range of 8 and 16 bits. A number
     * that does not parse is 0 with `ok` false; for other types `ok` is true when a value results. E_COMMAND
     * gives an E_U32. An unsupported type is logged and gives an empty variant; E_UNKNOWN gives one silently
     * and leaves `ok` unwritten.
     */
    static CVariant fromStr(const QString &text, NTypes::eTypes_t type, bool *ok = nullptr);
    /// With the variant's own type; its default value when parsing gives none.
    CVariant &fromStr(const QString &text, bool *ok = nullptr);
    /// @}

    /// @name Bit arrays: bit i is bit i of the value, least significant first
    /// @{
    /// 8 to 64 bits for integers; the leading 1, 2, 4 or 8 bytes of a byte array. Others are logged and give
    /// none.
    QBitArray toBitArray() const;
    /// Integers only: missing high bits are zero, surplus bits ignored. Others are logged and give an empty
    /// variant.
    static CVariant fromBitArray(const QBitArray &bits, NTypes::eTypes_t type);
    /// With the variant's own type, E_U64 when it has none.
    CVariant &fromBitArray(const QBitArray &bits);
    /// @}

    /// @name Exchange with QVariant
    /// @{
    operator QVariant() const { return mValue; }
    /// A value of the type from a QVariant; an unsupported type is logged and gives an empty variant.
    static CVariant fromVariant(const QVariant &value, NTypes::eTypes_t type);
    CVariant &fromVariant(const QVariant &value);
    /// @}

    /// @brief The held QVariant in Qt's own form, then the tag as a signed 32-bit integer.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CVariant &value);
    /**
     * @brief Inverse of the writing operator. Bytes need not be trusted: what may be held is a number, bool,
     * QChar, QString, QByteArray, QDate, QTime, QUuid, QUrl, QLocale, point, size, rectangle, line, or a
     * record or fixed string of this library. Any other type (containers, nested variants, other user types,
     * date-times with a zone to look up) is refused before it is loaded, and so is a stream older than Qt
     * 4.0. Then, and when the stream ends early, the status tells and the variant is empty.
     */
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CVariant &value);
    /// @brief Writes CVariant(NTypes::E_U16, 5): enumerator name and toStr(), unquoted.
    friend J6CORE_EXPORT QDebug operator<<(QDebug debug, const CVariant &value);

private:
    template<typename T>
    CVariant &assign(const T &value, NTypes::eTypes_t type);
    template<typename T>
    T toNumber(NTypes::eTypes_t target, bool *ok) const;
    template<typename Record>
    bool readRecord(Record &record, NTypes::eTypes_t target) const;
    template<typename FixedString>
    bool readFixedString(FixedString &string, NTypes::eTypes_t target) const;
    template<std::size_t N>
    bool readCharField(char (&text)[N], NTypes::eTypes_t target) const;
    bool readEightBitText(QByteArray &text, NTypes::eTypes_t target) const;
    template<typename String>
    static CVariant parsedString(const QString &text, NTypes::eTypes_t type);
    static CVariant textValue(const QString &text, NTypes::eTypes_t type);
    static CVariant parsedText(const QString &text, NTypes::eTypes_t type, bool *ok);
    static CVariant parsedNumber(const QString &text, NTypes::eTypes_t type, bool *ok);
    bool takePlainInteger(const QString &text, NTypes::eTypes_t type);
    QByteArray otherBytes() const;
    template<typename String, typename Make>
    void emplace(Make make, NTypes::eTypes_t type);
    bool takeFixedString(const QByteArray &bytes, NTypes::eTypes_t type);
    bool takeRaw(const char *data, int size, NTypes::eTypes_t type);
    void takeParsed(const CVariant &parsed, NTypes::eTypes_t type);
    void clear();
    void forgetHeld();

    // In a union, because a number or record needs no call into Qt to be destroyed.
    union {
        QVariant mValue = QVariant();
    };
    NTypes::eTypes_t mType = NTypes::E_UNKNOWN;
};

Q_DECLARE_TYPEINFO(CVariant, Q_MOVABLE_TYPE);

#endif // CVARIANT_H
