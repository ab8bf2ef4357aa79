// SPDX-License-Identifier: MIT
// Queries, copies, bits and texts of any value.
#include "ValueChecks.h"

#include <CDataTypeParser.h>

#include <Properties.h>

#include <algorithm>

namespace {

// Qt's stream form, which tells any two values of one type apart.
QByteArray streamed(const QVariant &held)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << held;
    return bytes;
}

// Whether two values of one type are the same, bit by bit: the usual ones without a stream, which costs a
// hundred times as much.
bool areSame(const QVariant &a, const QVariant &b, int type)
{
    const auto isPlain = [type] { return (QMetaType::typeFlags(type) & QMetaType::NeedsDestruction) == 0; };
    if (type == QMetaType::QByteArray)
        return a.toByteArray() == b.toByteArray();
    if (type == QMetaType::QString)
        return a.toString() == b.toString();
    if (type == qMetaTypeId<CString32>() || type == qMetaTypeId<CString64>()
        || type == qMetaTypeId<CString128>())
        return a == b;
    if (type != QMetaType::UnknownType && isPlain())
        return std::memcmp(a.constData(), b.constData(), static_cast<std::size_t>(QMetaType::sizeOf(type)))
               == 0;
    return streamed(a) == streamed(b);
}

bool holdSame(const QVariant &a, const QVariant &b)
{
    const int type = a.userType();
    return type == b.userType() && a.isNull() == b.isNull() && areSame(a, b, type);
}

unsigned int expectedSize(const CVariant &value)
{
    const int held = heldBy(value).toByteArray().size();
    if (value.type() == NTypes::E_UNKNOWN || !isCatalogued(value.type()))
        return 0;
    if (isNumber(value.type()))
        return static_cast<unsigned int>(std::max(held, int(value.typeSize())));
    const bool isBytes = value.type() == NTypes::E_2DF32F32 || value.type() == NTypes::E_BYTEARRAY;
    return isBytes ? static_cast<unsigned int>(held) : value.typeSize();
}

void checkQueries(const CVariant &value)
{
    const QVariant held = heldBy(value);
    require(value.size() == expectedSize(value) && value.count() == value.size(),
            "the size is as documented");
    require(value.typeSize() == CDataTypeParser::typeSize(value.type()),
            "the type's size is the catalogue's");
    require(value.isNull() == (held.isNull() || value.type() == NTypes::E_UNKNOWN),
            "a value is null without a type or when the held one is");
    require(value.type() != NTypes::E_UNKNOWN || !value.isValid(), "a value without a type is not valid");
    if (isFixedString(value.type()))
        require(!value.isValid() || value.isUTF16(value.toByteArray()), "a valid string is UTF-16");
    else if (value.type() != NTypes::E_UNKNOWN)
        require(value.isValid() == held.isValid(), "a value is valid when any is held");
}

void checkCopies(const CVariant &value)
{
    CVariant copy(value);
    require(isSame(copy, value), "a copy is the same");
    CVariant assigned(QStringLiteral("replaced"));
    assigned = copy;
    require(isSame(assigned, value), "an assigned value is the same");
    const CVariant moved(std::move(copy));
    require(isSame(moved, value), "a moved value is the same");
    assigned.setDefaultValue(NTypes::E_U16);
    require(isSame(moved, value), "a copy does not change with another");
}

void checkBits(const CVariant &value)
{
    const NTypes::eTypes_t type = value.type();
    const QBitArray bits = value.toBitArray();
    const bool isInteger = isNumber(type) && !isFloatingPoint(type);
    const int held = heldBy(value).toByteArray().size();
    if (isInteger) {
        require(bits.size() == 8 * int(value.typeSize()), "the bits are those of the type's width");
        const CVariant back = CVariant::fromBitArray(bits, type);
        require(back.type() == type && back.toByteArray() == value.toByteArray(),
                "an integer comes back from its bits");
        require(CVariant(bits, type).toByteArray() == value.toByteArray(), "the constructor takes bits too");
    } else if (type == NTypes::E_BYTEARRAY) {
        const int bytes = held >= 8 ? 8 : held >= 4 ? 4 : held >= 2 ? 2 : held;
        require(bits.size() == 8 * bytes, "the bits of bytes are those of the integer that they hold");
    } else {
        require(bits.isEmpty(), "other types have no bits");
    }
}

// What raw bytes a type gives, whatever is held.
void checkBytes(const CVariant &value)
{
    const QByteArray bytes = value.toByteArray();
    const NTypes::eTypes_t type = value.type();
    require(bytes == value.operator QByteArray(), "the operator gives the same bytes");
    if (isNumber(type) || isRecord(type))
        require(bytes.size() == int(value.typeSize()), "the bytes have the type's size");
    if (isFixedString(type))
        require(bytes.size() == int(value.typeSize()), "a fixed string gives its whole field");
    if (isCharField(type) || type == NTypes::E_CHAR)
        require(bytes.endsWith('\0'), "an 8-bit text ends with a zero byte");
}

} // namespace

bool isCatalogued(NTypes::eTypes_t type)
{
    return CDataTypeParser::mDataSizeMap.contains(type);
}

NTypes::eTypes_t takeTag(InputReader &reader)
{
    const int number = reader.take<quint8>();
    if (number == 0xff)
        return tagOf(reader.take<qint32>());
    return tagOf(number < 40 ? number : number % 33);
}

bool isSame(const CVariant &a, const CVariant &b)
{
    return a.type() == b.type() && holdSame(heldBy(a), heldBy(b));
}

std::size_t sizeOfHeld(const CVariant &value)
{
    const QVariant held = heldBy(value);
    return static_cast<std::size_t>(held.toByteArray().size())
           + static_cast<std::size_t>(held.toString().size());
}

void checkForms(const CVariant &value)
{
    checkQueries(value);
    checkCopies(value);
    checkBits(value);
    checkBytes(value);
}

void checkValue(const CVariant &value)
{
    // All calls together and what they are compared with: 100 bytes and 60 bytes per byte were measured.
    const std::size_t size = sizeOfHeld(value);
    checkForms(value);
    bounded(131072 + 256 * size, "the texts of a value take its size", [&value] { checkTexts(value); });
    bounded(65536 + 160 * size, "the readers of a value take its size", [&value] { checkReaders(value); });
    checkConversions(value);
    checkComparison(value, value);
}
