// SPDX-License-Identifier: MIT
#ifndef VARIANTSAMPLES_H
#define VARIANTSAMPLES_H

#include "VariantCases.h"

#include <CDataTypeParser.h>
#include <CVariant.h>

#include <QRandomGenerator>
#include <QVector>

#include <array>
#include <climits>
#include <algorithm>
#include <cstring>

// Values that the tests of CVariant share: one of every type in each form it is held in, and random ones.
namespace VariantSamples {

// Every tag that a value can have.
constexpr std::array<int, 31> valueTags = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 12, 13, 14, 15, 16, 17,
                                           18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32};

// Numbers that are no tag.
constexpr std::array<int, 8> strayTags = {11, 33, 34, 40, -1, -2, INT_MAX, INT_MIN};

// A row name: the enumerator, or the number of a stray tag.
inline QByteArray tagName(int tag)
{
    const bool known = CDataTypeParser::mTypeEnumMap.contains(typeOf(tag));
    return known ? CDataTypeParser::typeToEnum(typeOf(tag)).toLatin1()
                 : QByteArray("tag ") + QByteArray::number(tag);
}

// Qt's stream form of a held value: its type and its content, which tell two held values apart.
inline QByteArray streamed(const QVariant &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << value;
    return bytes;
}

// A variant that holds just this value under just this tag, whatever that makes.
inline CVariant tagged(const QVariant &value, int tag)
{
    CVariant variant;
    variant.setRawData(value, typeOf(tag));
    return variant;
}

inline CVariant bytesValue(const QByteArray &bytes)
{
    return tagged(bytes, NTypes::E_BYTEARRAY);
}

template<typename Record>
QByteArray bytesOf(const Record &record)
{
    static_assert(std::is_trivially_copyable<Record>::value, "plain values");
    QByteArray bytes(static_cast<int>(sizeof record), '\0');
    std::copy_n(reinterpret_cast<const char *>(&record), sizeof record, bytes.begin());
    return bytes;
}

template<typename Record>
Record recordOf(const QByteArray &bytes)
{
    static_assert(std::is_trivially_copyable<Record>::value, "plain values");
    Record record = {};
    std::memcpy(&record, bytes.constData(), qMin(sizeof record, static_cast<std::size_t>(bytes.size())));
    return record;
}

// The record or number of raw bytes as a variant holds it after construction.
template<typename T>
CVariant valueOf(const char *digits)
{
    return CVariant(recordOf<T>(fromHex(digits)));
}

template<std::size_t N>
CVariant charField(const QByteArray &text)
{
    char field[N] = {};
    std::memcpy(field, text.constData(), qMin(static_cast<std::size_t>(text.size()), N));
    return CVariant(field);
}

// The raw bytes of the sample of a number, a record or an array; empty for texts.
inline QByteArray sampleBytes(int tag)
{
    static const QMap<int, const char *> rows = {
        {1, "C8"},                        // 200
        {2, "9C"},                        // -100
        {3, "60EA"},                      // 60000
        {4, "D08A"},                      // -30000
        {5, "00286BEE"},                  // 4000000000
        {6, "006CCA88"},                  // -2000000000
        {7, "0000C03F"},                  // 1.5
        {8, "8877665544332211"},          // 0x1122334455667788
        {9, "788899AABBCCDDEE"},          // -0x1122334455667788
        {10, "00000000000002C0"},         // -2.25
        {16, "590706050403E507"},         // 2021-03-04 05:06:07.89
        {21, "2C010502"},                 // 2.5.300
        {22, "0A01A8C0"},                 // 192.168.1.10
        {23, "EFBEADDE"},                 // 0xDEADBEEF
        {24, "0000C03F000020C0"},         // 1.5, -2.5
        {25, "010203"},                   //
        {26, "02000020400300"},           // 2, 2.5, 3
        {27, "0100FEFF0300"},             // 1, -2, 3
        {28, "01000000FEFFFFFF03000000"}, // 1, -2, 3
        {29, "0100000002000000FFFFFFFF"}, // 1, 2, 4294967295
        {30, "01000200FFFF"},             // 1, 2, 65535
        {31, "0300000004000000FEFFFFFF"}, // 3, 4, 4294967294
        {32, "0400030002000100"},         // 1.2.3.4
    };
    return fromHex(rows.value(tag, ""));
}

// The sample of a type as its constructor holds it; 24, 25 and 29, which have none, as raw data gives them.
inline CVariant typedSample(int tag)
{
    const QByteArray bytes = sampleBytes(tag);
    switch (tag) {
    case 1:
        return CVariant(recordOf<unsigned char>(bytes));
    case 2:
        return CVariant(recordOf<signed char>(bytes));
    case 3:
        return CVariant(recordOf<unsigned short>(bytes));
    case 4:
        return CVariant(recordOf<short>(bytes));
    case 5:
        return CVariant(recordOf<unsigned int>(bytes));
    case 6:
        return CVariant(recordOf<int>(bytes));
    case 7:
        return CVariant(recordOf<float>(bytes));
    case 8:
        return CVariant(recordOf<unsigned long long>(bytes));
    case 9:
        return CVariant(recordOf<long long>(bytes));
    case 10:
        return CVariant(recordOf<double>(bytes));
    case 12:
        return CVariant(CString32(QStringLiteral("Spindle 1")));
    case 13:
        return charField<64>("Axis 1");
    case 14:
        return CVariant(CString128(QStringLiteral("Vorschub 50 \u20AC")));
    case 15:
        return charField<256>("Axis 1, gear box");
    case 16:
        return CVariant(recordOf<NTypes::sDateTime_t>(bytes));
    case 17:
        return CVariant(CString64(QStringLiteral("Drehmoment Achse X")));
    case 18:
        return charField<128>("Axis 1, motor");
    case 19:
        return CVariant(QChar(QLatin1Char('A')));
    case 20:
        return CVariant('x');
    case 21:
        return CVariant(recordOf<NTypes::sVersion_t>(bytes));
    case 22:
        return CVariant(recordOf<NTypes::uIPv4HAddr_t>(bytes));
    case 23:
        return CVariant(recordOf<NTypes::sCommand_t>(bytes));
    case 26:
        return CVariant(recordOf<NTypes::sDs402Record01_t>(bytes));
    case 27:
        return CVariant(recordOf<NTypes::sDs402Array_t<short>>(bytes));
    case 28:
        return CVariant(recordOf<NTypes::sDs402Array_t<int>>(bytes));
    case 30:
        return CVariant(recordOf<NTypes::sDs402Array_t<unsigned short>>(bytes));
    case 31:
        return CVariant(recordOf<NTypes::sDs402Array_t<unsigned int>>(bytes));
    case 32:
        return CVariant(recordOf<NTypes::sVersion4_t>(bytes));
    case 24:
    case 25:
    case 29:
        return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), typeOf(tag));
    default:
        return CVariant();
    }
}

// The sample of a type as raw data gives it: 8- and 16-bit integers are held widened to int.
inline CVariant rawSample(int tag)
{
    const QByteArray bytes = sampleBytes(tag);
    return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), typeOf(tag));
}

inline QByteArray randomBytes(int size, QRandomGenerator &generator)
{
    QByteArray bytes;
    bytes.reserve(size);
    while (bytes.size() < size)
        bytes.append(static_cast<char>(generator.bounded(256)));
    return bytes;
}

// Text of up to `maximum` characters from U+0020 to `last`.
inline QString randomText(int maximum, int last, QRandomGenerator &generator)
{
    QString text;
    const int length = generator.bounded(maximum + 1);
    while (text.size() < length)
        text.append(QChar(static_cast<ushort>(generator.bounded(0x20, last + 1))));
    return text;
}

} // namespace VariantSamples

#endif // VARIANTSAMPLES_H
