// SPDX-License-Identifier: MIT
#ifndef VALUECHECKS_H
#define VALUECHECKS_H

#include <CVariant.h>
#include <InputReader.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

// What has to hold of every CVariant, however it came about: a value from a device, a text that somebody
// typed, a stream, or a QVariant that does not even fit its tag.

// Everything below for one value.
void checkValue(const CVariant &value);

// The queries, the copies, the bits and the raw bytes.
void checkForms(const CVariant &value);

// The canonical, hexadecimal and localised texts.
void checkTexts(const CVariant &value);

// Every reader, in each of its shapes.
void checkReaders(const CVariant &value);

// Conversion to every type.
void checkConversions(const CVariant &value);

// Equality and order of two values of any types, both ways.
void checkComparison(const CVariant &a, const CVariant &b);

// What a call with an input of so many bytes may ask for: what Qt and the library build on first use, a line
// for the log, and some copies of the input.
constexpr std::size_t allowance(int inputSize)
{
    return 65536 + 32 * static_cast<std::size_t>(inputSize);
}

// How many bytes and characters a value has, as far as it has any.
std::size_t sizeOfHeld(const CVariant &value);

// A number up to 39 is a tag or a stray one close by; 0xff announces any 32-bit number; others are tags.
NTypes::eTypes_t takeTag(InputReader &reader);

constexpr NTypes::eTypes_t tagOf(int number)
{
    return static_cast<NTypes::eTypes_t>(number);
}

// Whether the number is a tag of the catalogue.
bool isCatalogued(NTypes::eTypes_t type);

// A plain initialisation of a QVariant is ambiguous: a CVariant converts to much else.
inline QVariant heldBy(const CVariant &value)
{
    return value.operator QVariant();
}

// What an unsupported type gives.
inline bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

// The tag of a text without a type: the shortest string that holds it and a zero, or the longest.
inline NTypes::eTypes_t tagOfText(const QString &text)
{
    if (text.size() <= 63)
        return NTypes::E_STRING32;
    return text.size() <= 127 ? NTypes::E_STRING64 : NTypes::E_STRING128;
}

// The same tag, and the same value of the same Qt type, bit by bit.
bool isSame(const CVariant &a, const CVariant &b);

inline CVariant tagged(const QVariant &held, NTypes::eTypes_t type)
{
    return CVariant().setRawData(held, type);
}

inline CVariant rawValue(const QByteArray &bytes, NTypes::eTypes_t type)
{
    return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
}

// A number or record as it lies in memory, and back; bytes that are missing are 0.
template<typename Plain>
QByteArray bytesOf(const Plain &value)
{
    static_assert(std::is_trivially_copyable<Plain>::value, "plain values");
    return QByteArray(reinterpret_cast<const char *>(&value), int(sizeof value));
}

template<typename Plain>
Plain plainOf(const QByteArray &bytes)
{
    static_assert(std::is_trivially_copyable<Plain>::value, "plain values");
    Plain value{};
    std::memcpy(&value, bytes.constData(), qMin(sizeof value, static_cast<std::size_t>(bytes.size())));
    return value;
}

// Whether a type is a number, or one of the records: the types whose memory is the raw form.
constexpr bool isNumber(NTypes::eTypes_t type)
{
    return type >= NTypes::E_U8 && type <= NTypes::E_F64;
}

constexpr bool isFloatingPoint(NTypes::eTypes_t type)
{
    return type == NTypes::E_F32 || type == NTypes::E_F64;
}

constexpr bool isRecord(NTypes::eTypes_t type)
{
    return type == NTypes::E_DATETIME || (type >= NTypes::E_VERSION && type <= NTypes::E_COMMAND)
           || (type >= NTypes::E_DS402_ACC_REC && type <= NTypes::E_VERSION_4);
}

constexpr bool isFixedString(NTypes::eTypes_t type)
{
    return type == NTypes::E_STRING32 || type == NTypes::E_STRING64 || type == NTypes::E_STRING128;
}

constexpr bool isCharField(NTypes::eTypes_t type)
{
    return type == NTypes::E_CHARSTR64 || type == NTypes::E_CHARSTR128 || type == NTypes::E_CHARSTR256;
}

#endif // VALUECHECKS_H
