// SPDX-License-Identifier: MIT
#include "NumberStream.h"

#include "HeldInPlace.h"
#include "PlainBytes.h"
#include "text/StreamBlocks.h"

#include <QtEndian>

#include <array>
#include <cmath>
#include <limits>

namespace {

// Qt's type number, its null flag, the number, the tag.
constexpr int flagAt = sizeof(quint32);
constexpr int numberAt = flagAt + int(sizeof(quint8));
constexpr int tagSize = sizeof(qint32);
constexpr int longestForm = numberAt + int(sizeof(quint64)) + tagSize;

constexpr int bitsPerByte = 8;
constexpr int wordBits = 64;

// The bytes of a number in a stream, 0 for what is no number. A float is written as a double.
int sizeInStream(quint32 type)
{
    switch (type) {
    case QMetaType::UChar:
    case QMetaType::SChar:
        return 1;
    case QMetaType::UShort:
    case QMetaType::Short:
        return 2;
    case QMetaType::UInt:
    case QMetaType::Int:
        return 4;
    case QMetaType::ULongLong:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return 8;
    default:
        return 0;
    }
}

// Older streams number the types in another way.
bool hasPlainForm(const QDataStream &stream)
{
    return stream.version() >= QDataStream::Qt_5_0 && stream.status() == QDataStream::Ok
           && stream.floatingPointPrecision() == QDataStream::DoublePrecision;
}

template<typename Number>
void store(Number number, char *to, bool isBigEndian)
{
    if (isBigEndian)
        qToBigEndian(number, to);
    else
        qToLittleEndian(number, to);
}

template<typename Number>
Number load(const char *from, bool isBigEndian)
{
    return isBigEndian ? qFromBigEndian<Number>(from) : qFromLittleEndian<Number>(from);
}

} // namespace

bool writeNumber(QDataStream &stream, const QVariant &value, NTypes::eTypes_t tag)
{
    const quint32 type = HeldInPlace::typeIn(value);
    const int size = sizeInStream(type);
    if (size == 0 || !hasPlainForm(stream) || !takesBlocks(stream))
        return false;
    const bool isBigEndian = stream.byteOrder() == QDataStream::BigEndian;
    quint64 bits = HeldInPlace::bitsIn(value);
    if (type == QMetaType::Float)
        bits = bitsOf<quint64>(static_cast<double>(HeldInPlace::valueIn<float>(value)));

    std::array<char, longestForm> form{};
    store(type, form.data(), isBigEndian);
    store(isBigEndian ? bits << (wordBits - bitsPerByte * size) : bits, &form[numberAt], isBigEndian);
    store(static_cast<qint32>(tag), form.data() + numberAt + size, isBigEndian);
    stream.writeRawData(form.data(), numberAt + size + tagSize);
    return true;
}

bool readNumber(QDataStream &stream, QVariant &empty, NTypes::eTypes_t &tag)
{
    if (!hasPlainForm(stream) || !givesBlocks(stream))
        return false;
    std::array<char, longestForm> form{};
    const qint64 available = stream.device()->peek(form.data(), longestForm);
    if (available < numberAt)
        return false;
    const bool isBigEndian = stream.byteOrder() == QDataStream::BigEndian;
    const auto type = load<quint32>(form.data(), isBigEndian);
    const int size = sizeInStream(type);
    const int formSize = numberAt + size + tagSize;
    if (size == 0 || form[flagAt] != 0 || available < formSize)
        return false;

    auto bits = load<quint64>(&form[numberAt], isBigEndian);
    if (isBigEndian)
        bits >>= wordBits - bitsPerByte * size;
    if (type == QMetaType::Float) {
        const auto number = bitsOf<double>(bits);
        if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max()))
            return false;
        bits = bitsOf<quint32>(static_cast<float>(number));
    }
    if (stream.skipRawData(formSize) != formSize)
        return false;
    HeldInPlace::put(empty, type, bits);
    tag = static_cast<NTypes::eTypes_t>(load<qint32>(form.data() + numberAt + size, isBigEndian));
    return true;
}
