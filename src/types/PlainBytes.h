// SPDX-License-Identifier: MIT
#ifndef PLAINBYTES_H
#define PLAINBYTES_H

#include <QByteArray>
#include <QtGlobal>

#include <cstring>
#include <type_traits>

// The same bytes as another plain type of the same size: a record as its word, a float as its IEEE 754 bits.
template<typename To, typename From>
To bitsOf(const From &from)
{
    static_assert(sizeof(To) == sizeof(From), "the same number of bytes");
    static_assert(std::is_trivially_copyable<To>::value && std::is_trivially_copyable<From>::value,
                  "plain values");
    To to{};
    std::memcpy(&to, &from, sizeof to);
    return to;
}

// A 4- or 8-byte record as one unsigned little-endian word.
template<typename Record>
auto wordOf(const Record &record)
{
    return bitsOf<std::conditional_t<sizeof(Record) == 4, quint32, quint64>>(record);
}

// A plain value's bytes, little-endian as in memory.
template<typename T>
QByteArray bytesOf(const T &value)
{
    static_assert(std::is_trivially_copyable<T>::value, "plain values");
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

// The first bytes at `data` as a plain value; the caller has checked that there are enough.
template<typename T>
T loadAs(const char *data)
{
    static_assert(std::is_trivially_copyable<T>::value, "plain values");
    T value{};
    std::memcpy(&value, data, sizeof value);
    return value;
}

#endif // PLAINBYTES_H
