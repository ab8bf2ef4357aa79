// SPDX-License-Identifier: MIT
// A value as a bit array and back; bit i of the array is bit i of the value.
#include <CVariant.h>

#include <CDataTypeParser.h>

#include "CVariantHeld.h"
#include "PlainBytes.h"
#include "diagnostics/LogLine.h"

#include <algorithm>

namespace {

QBitArray bitsOf(const char *data, int byteCount)
{
    return QBitArray::fromBits(data, qsizetype(8) * byteCount);
}

// Byte arrays are shown in the widths of the integers.
int shownBytes(int size)
{
    if (size > 7)
        return 8;
    if (size > 3)
        return 4;
    return std::min(size, 2);
}

template<typename Integer>
Integer integerOf(const QBitArray &bits)
{
    constexpr int width = 8 * int(sizeof(Integer));
    std::make_unsigned_t<Integer> value = 0;
    for (int i = 0; i < std::min(bits.size(), width); ++i) {
        if (bits.testBit(i))
            value = static_cast<decltype(value)>(value | (decltype(value)(1) << i));
    }
    return static_cast<Integer>(value);
}

} // namespace

QBitArray CVariant::toBitArray() const
{
    QBitArray bits;
    bool hasBits = false;
    visitNumber(mType, [&](auto held) {
        using Type = typename decltype(held)::Type;
        if constexpr (std::is_integral<Type>::value) {
            const auto value = heldAs<Type>(mValue);
            bits = bitsOf(reinterpret_cast<const char *>(&value), sizeof value);
            hasBits = true;
        }
    });
    if (hasBits)
        return bits;
    if (mType != NTypes::E_BYTEARRAY) {
        logWarning(
            QStringLiteral("CVariant::toBitArray() : Data type '%1 (%2)' is not supported in this method.")
                .arg(mType)
                .arg(CDataTypeParser::typeToStr(mType)));
        return QBitArray();
    }
    const QByteArray bytes = mValue.toByteArray();
    if (bytes.isEmpty())
        logWarning(QStringLiteral("CVariant::toBitArray() : Data is empty."));
    else
        bits = bitsOf(bytes.constData(), shownBytes(bytes.size()));
    return bits;
}

CVariant CVariant::fromBitArray(const QBitArray &bits, NTypes::eTypes_t type)
{
    CVariant result;
    visitNumber(type, [&](auto held) {
        using Type = typename decltype(held)::Type;
        if constexpr (std::is_integral<Type>::value)
            result.assign(integerOf<Type>(bits), type);
    });
    if (result.type() == NTypes::E_UNKNOWN) {
        logWarning(
            QStringLiteral("CVariant::fromBitArray : Data type %1 (%2) is not supported in this method.")
                .arg(type)
                .arg(CDataTypeParser::typeToStr(type)));
    }
    return result;
}

CVariant &CVariant::fromBitArray(const QBitArray &bits)
{
    return *this = fromBitArray(bits, mType == NTypes::E_UNKNOWN ? NTypes::E_U64 : mType);
}

CVariant::CVariant(const QBitArray &bits, NTypes::eTypes_t type) : CVariant(fromBitArray(bits, type)) {}

CVariant &CVariant::operator=(const QBitArray &bits)
{
    return fromBitArray(bits);
}
