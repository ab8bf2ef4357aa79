// SPDX-License-Identifier: MIT
#ifndef NTYPES_H
#define NTYPES_H

#include <j6Core_export.h>

#include <QDataStream>
#include <QMetaType>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <type_traits>

/**
 * @brief The value types that a drive parameter can have: one tag enumeration and the records of the
 * composite kinds.
 *
 * Every record is a plain, trivially copyable value of exactly the stated size. Its memory is the parameter's
 * raw form, little-endian, so it can be copied byte for byte into and out of device data. Those that a typed
 * value can hold are registered with the Qt meta-type system when the library is loaded, under their
 * qualified names ("NTypes::sVersion_t", "NTypes::sDs402Array_t<int16_t>" ...), and those of up to 8 bytes
 * are held inside a `QVariant` without an allocation. A union is a second view of its record: it is never a
 * meta-type of its own.
 *
 * Stream operators write the fields in declaration order (arrays element by element) in the stream's byte
 * order; a floating-point field is written as its 32 IEEE 754 bits, whatever floating-point precision the
 * stream has. On a short read the missing fields are zero and the stream's status tells.
 *
 * All functions here are reentrant; distinct values may be used from different threads.
 */
namespace NTypes {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the records are the devices' little-endian bytes in memory");

/**
 * @brief The tag of a typed value. The numbers are part of every stored and streamed form.
 *
 * 11 is unassigned and stays so. Any 32-bit number may arrive from a stream: code that switches on a tag has
 * a default. Name, size and range of each tag: CDataTypeParser.
 */
enum eTypes_t : qint32 {
    E_UNKNOWN = 0,          ///< no type, not set
    E_U8 = 1,               ///< unsigned 8-bit integer
    E_I8 = 2,               ///< signed 8-bit integer
    E_U16 = 3,              ///< unsigned 16-bit integer
    E_I16 = 4,              ///< signed 16-bit integer
    E_U32 = 5,              ///< unsigned 32-bit integer
    E_I32 = 6,              ///< signed 32-bit integer
    E_F32 = 7,              ///< IEEE 754 single precision
    E_U64 = 8,              ///< unsigned 64-bit integer
    E_I64 = 9,              ///< signed 64-bit integer
    E_F64 = 10,             ///< IEEE 754 double precision
    E_STRING32 = 12,        ///< fixed string of 32 UTF-16 units, CString32
    E_CHARSTR64 = 13,       ///< fixed 8-bit character string of 64 bytes
    E_STRING128 = 14,       ///< fixed string of 128 UTF-16 units, CString128
    E_CHARSTR256 = 15,      ///< fixed 8-bit character string of 256 bytes
    E_DATETIME = 16,        ///< date and time, sDateTime_t
    E_STRING64 = 17,        ///< fixed string of 64 UTF-16 units, CString64
    E_CHARSTR128 = 18,      ///< fixed 8-bit character string of 128 bytes
    E_UTF16CHAR = 19,       ///< one UTF-16 unit
    E_CHAR = 20,            ///< one 8-bit character
    E_VERSION = 21,         ///< three-part version, sVersion_t
    E_IPV4ADDR = 22,        ///< IPv4 address, uIPv4HAddr_t
    E_COMMAND = 23,         ///< command word, sCommand_t
    E_2DF32F32 = 24,        ///< pair of single-precision values
    E_BYTEARRAY = 25,       ///< byte array of any length
    E_DS402_ACC_REC = 26,   ///< CiA 402 record, sDs402Record01_t
    E_DS402_I16_ARRAY = 27, ///< CiA 402 array, sDs402Array_t<short>
    E_DS402_I32_ARRAY = 28, ///< CiA 402 array, sDs402Array_t<int>
    E_DS402_DIO_ARRAY = 29, ///< CiA 402 digital-I/O array, sDs402Array_t<unsigned int>
    E_DS402_U16_ARRAY = 30, ///< CiA 402 array, sDs402Array_t<unsigned short>
    E_DS402_U32_ARRAY = 31, ///< CiA 402 array, sDs402Array_t<unsigned int>
    E_VERSION_4 = 32        ///< four-part version, sVersion4_t
};

/// @brief Three-part version, 4 bytes; text form major.minor.build. As a word: major * 2^24 + minor * 2^16 +
/// build.
struct sVersion_t
{
    quint16 build;
    quint8 minor;
    quint8 major;
};

/// @brief An sVersion_t and the same four bytes as one unsigned 32-bit word.
union uVersion_t {
    sVersion_t version;
    quint32 value;
};

/// @brief Four-part version of 16-bit numbers, 8 bytes; text form first.second.third.fourth, stored last part
/// first.
struct sVersion4_t
{
    quint16 fourth;
    quint16 third;
    quint16 second;
    quint16 first;
};

/// @brief An sVersion4_t and the same eight bytes as one unsigned 64-bit word; `first` is its most
/// significant part.
union uVersion4_t {
    sVersion4_t version;
    quint64 value;
};

/// @brief Four-part version of 8-bit numbers, 4 bytes; text form first.second.third.fourth, stored last part
/// first.
struct sVersion4x8_t
{
    quint8 fourth;
    quint8 third;
    quint8 second;
    quint8 first;
};

/// @brief IPv4 address as one 32-bit number in host byte order; the first octet of the dotted form is the top
/// byte.
union uIPv4HAddr_t {
    quint32 value;
};

/// @brief Command word, 4 bytes, handled everywhere as its unsigned 32-bit value.
struct sCommand_t
{
    quint32 value;
};

/// @brief An sCommand_t and the same four bytes as one unsigned 32-bit word.
union uCommand_t {
    sCommand_t command;
    quint32 value;
};

/// @brief Time of day, 4 bytes. The fields are read as signed numbers; out-of-range ones make no valid time.
struct sTime_t
{
    qint8 hundredths; ///< hundredths of a second, 0..99
    qint8 second;     ///< 0..59
    qint8 minute;     ///< 0..59
    qint8 hour;       ///< 0..23
};

/// @brief Calendar date, 4 bytes. The fields are read as signed numbers; out-of-range ones make no valid
/// date.
struct sDate_t
{
    qint8 day;   ///< 1..31
    qint8 month; ///< 1..12
    qint16 year; ///< the full year
};

/// @brief Date and time, 8 bytes; as a little-endian 64-bit word the date is the high half. All zero means
/// empty.
struct sDateTime_t
{
    sTime_t time;
    sDate_t date;
};

/// @brief An sDateTime_t and the same eight bytes as one unsigned 64-bit word. Stored as an sDateTime_t
/// everywhere.
union uDateTimeVal_t {
    sDateTime_t dateTime;
    quint64 value;
};

/// @brief CiA 402 array object: exactly three consecutive elements of short, int, unsigned short or unsigned
/// int.
template<typename T>
struct sDs402Array_t
{
    T entry[3];
};

#pragma pack(push, 1)
/// @brief CiA 402 record object, 7 bytes, packed without alignment: do not bind a reference to `value` or
/// `tail`.
struct sDs402Record01_t
{
    quint8 head;
    float value; ///< IEEE 754 single precision
    quint16 tail;
};
#pragma pack(pop)

/// @name Equality: all fields. A floating-point field is compared by its bits, so a NaN equals itself.
/// @{
J6CORE_EXPORT bool operator==(const sVersion_t &a, const sVersion_t &b);
J6CORE_EXPORT bool operator==(const sVersion4_t &a, const sVersion4_t &b);
J6CORE_EXPORT bool operator==(const sVersion4x8_t &a, const sVersion4x8_t &b);
J6CORE_EXPORT bool operator==(const uIPv4HAddr_t &a, const uIPv4HAddr_t &b);
J6CORE_EXPORT bool operator==(const sCommand_t &a, const sCommand_t &b);
J6CORE_EXPORT bool operator==(const sTime_t &a, const sTime_t &b);
J6CORE_EXPORT bool operator==(const sDate_t &a, const sDate_t &b);
J6CORE_EXPORT bool operator==(const sDateTime_t &a, const sDateTime_t &b);
J6CORE_EXPORT bool operator==(const sDs402Record01_t &a, const sDs402Record01_t &b);
/// @}

/// @name Order: that of the record's word; a version's leading part counts most, a date-time's signed year
/// (its other fields count as unsigned bytes).
/// @{
J6CORE_EXPORT bool operator<(const sVersion_t &a, const sVersion_t &b);
J6CORE_EXPORT bool operator<(const sVersion4_t &a, const sVersion4_t &b);
J6CORE_EXPORT bool operator<(const uIPv4HAddr_t &a, const uIPv4HAddr_t &b);
J6CORE_EXPORT bool operator<(const sCommand_t &a, const sCommand_t &b);
J6CORE_EXPORT bool operator<(const sDateTime_t &a, const sDateTime_t &b);
/// @}

/// @name Stream operators; each pair is the other's inverse.
/// @{
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sVersion_t &version);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sVersion_t &version);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sVersion4_t &version);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sVersion4_t &version);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sVersion4x8_t &version);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sVersion4x8_t &version);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const uIPv4HAddr_t &address);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, uIPv4HAddr_t &address);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sCommand_t &command);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sCommand_t &command);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sTime_t &time);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sTime_t &time);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sDate_t &date);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sDate_t &date);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sDateTime_t &dateTime);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sDateTime_t &dateTime);
J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const sDs402Record01_t &record);
J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, sDs402Record01_t &record);
/// @}

template<typename T>
bool operator==(const sDs402Array_t<T> &a, const sDs402Array_t<T> &b)
{
    return a.entry[0] == b.entry[0] && a.entry[1] == b.entry[1] && a.entry[2] == b.entry[2];
}

/// @name Inequality: not equal
/// @{
inline bool operator!=(const sVersion_t &a, const sVersion_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sVersion4_t &a, const sVersion4_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sVersion4x8_t &a, const sVersion4x8_t &b)
{
    return !(a == b);
}

inline bool operator!=(const uIPv4HAddr_t &a, const uIPv4HAddr_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sCommand_t &a, const sCommand_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sTime_t &a, const sTime_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sDate_t &a, const sDate_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sDateTime_t &a, const sDateTime_t &b)
{
    return !(a == b);
}

inline bool operator!=(const sDs402Record01_t &a, const sDs402Record01_t &b)
{
    return !(a == b);
}

template<typename T>
bool operator!=(const sDs402Array_t<T> &a, const sDs402Array_t<T> &b)
{
    return !(a == b);
}
/// @}

template<typename T>
QDataStream &operator<<(QDataStream &stream, const sDs402Array_t<T> &array)
{
    for (const T element : array.entry)
        stream << element;
    return stream;
}

template<typename T>
QDataStream &operator>>(QDataStream &stream, sDs402Array_t<T> &array)
{
    for (T &element : array.entry)
        stream >> element;
    return stream;
}

// The layouts are the devices': sizes, offsets and triviality are checked where they are declared.
template<typename Record, std::size_t Size>
constexpr bool isPlainRecord = (sizeof(Record) == Size && std::is_trivial<Record>::value
                                && std::is_standard_layout<Record>::value);

static_assert(sizeof(eTypes_t) == 4 && std::is_signed<std::underlying_type<eTypes_t>::type>::value,
              "signed 32-bit");
static_assert(isPlainRecord<sVersion_t, 4> && isPlainRecord<uVersion_t, 4>, "4 bytes");
static_assert(offsetof(sVersion_t, build) == 0 && offsetof(sVersion_t, minor) == 2
                  && offsetof(sVersion_t, major) == 3,
              "build, minor, major");
static_assert(isPlainRecord<sVersion4_t, 8> && isPlainRecord<uVersion4_t, 8>, "8 bytes");
static_assert(offsetof(sVersion4_t, fourth) == 0 && offsetof(sVersion4_t, third) == 2
                  && offsetof(sVersion4_t, second) == 4 && offsetof(sVersion4_t, first) == 6,
              "last part first");
static_assert(isPlainRecord<sVersion4x8_t, 4>, "4 bytes");
static_assert(offsetof(sVersion4x8_t, fourth) == 0 && offsetof(sVersion4x8_t, third) == 1
                  && offsetof(sVersion4x8_t, second) == 2 && offsetof(sVersion4x8_t, first) == 3,
              "last part first");
static_assert(isPlainRecord<uIPv4HAddr_t, 4>, "4 bytes");
static_assert(isPlainRecord<sCommand_t, 4> && isPlainRecord<uCommand_t, 4>, "4 bytes");
static_assert(isPlainRecord<sTime_t, 4> && isPlainRecord<sDate_t, 4>, "4 bytes");
static_assert(offsetof(sTime_t, hundredths) == 0 && offsetof(sTime_t, second) == 1
                  && offsetof(sTime_t, minute) == 2 && offsetof(sTime_t, hour) == 3,
              "hundredths first");
static_assert(offsetof(sDate_t, day) == 0 && offsetof(sDate_t, month) == 1 && offsetof(sDate_t, year) == 2,
              "day first");
static_assert(isPlainRecord<sDateTime_t, 8> && isPlainRecord<uDateTimeVal_t, 8>, "8 bytes");
static_assert(offsetof(sDateTime_t, time) == 0 && offsetof(sDateTime_t, date) == 4, "time half first");
static_assert(isPlainRecord<sDs402Array_t<short>, 6> && isPlainRecord<sDs402Array_t<unsigned short>, 6>,
              "6 bytes");
static_assert(isPlainRecord<sDs402Array_t<int>, 12> && isPlainRecord<sDs402Array_t<unsigned int>, 12>,
              "12 bytes");
static_assert(isPlainRecord<sDs402Record01_t, 7>, "7 bytes");
static_assert(offsetof(sDs402Record01_t, head) == 0 && offsetof(sDs402Record01_t, value) == 1
                  && offsetof(sDs402Record01_t, tail) == 5,
              "packed");

} // namespace NTypes

// Plain memory to Qt: held in place in a QVariant, moved by memcpy in containers.
Q_DECLARE_TYPEINFO(NTypes::sVersion_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sVersion4_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sVersion4x8_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::uIPv4HAddr_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sCommand_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDateTime_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDs402Record01_t, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDs402Array_t<int16_t>, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDs402Array_t<int32_t>, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDs402Array_t<uint16_t>, Q_PRIMITIVE_TYPE);
Q_DECLARE_TYPEINFO(NTypes::sDs402Array_t<uint32_t>, Q_PRIMITIVE_TYPE);

// The spelling here is the registered name.
Q_DECLARE_METATYPE(NTypes::sVersion_t)
Q_DECLARE_METATYPE(NTypes::sVersion4_t)
Q_DECLARE_METATYPE(NTypes::uIPv4HAddr_t)
Q_DECLARE_METATYPE(NTypes::sCommand_t)
Q_DECLARE_METATYPE(NTypes::sDateTime_t)
Q_DECLARE_METATYPE(NTypes::sDs402Record01_t)
Q_DECLARE_METATYPE(NTypes::sDs402Array_t<int16_t>)
Q_DECLARE_METATYPE(NTypes::sDs402Array_t<int32_t>)
Q_DECLARE_METATYPE(NTypes::sDs402Array_t<uint16_t>)
Q_DECLARE_METATYPE(NTypes::sDs402Array_t<uint32_t>)

#endif // NTYPES_H
