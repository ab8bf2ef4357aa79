// SPDX-License-Identifier: MIT
// Equality with tolerance, and order.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "HeldInPlace.h"
#include "text/PowersOfTen.h"

#include <cfloat>
#include <cmath>
#include <optional>

namespace {

// How a type's values are compared.
enum class Comparison { Unsigned, Signed, Single, Double, Text, Word, Bytes, Held };

Comparison comparisonOf(NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_U16:
    case NTypes::E_U32:
    case NTypes::E_U64:
    case NTypes::E_VERSION_4:
        return Comparison::Unsigned;
    case NTypes::E_I8:
    case NTypes::E_I16:
    case NTypes::E_I32:
    case NTypes::E_I64:
    case NTypes::E_DATETIME:
        return Comparison::Signed;
    case NTypes::E_F32:
        return Comparison::Single;
    case NTypes::E_F64:
        return Comparison::Double;
    case NTypes::E_STRING32:
    case NTypes::E_CHARSTR64:
    case NTypes::E_STRING128:
    case NTypes::E_CHARSTR256:
    case NTypes::E_STRING64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_UTF16CHAR:
    case NTypes::E_CHAR:
        return Comparison::Text;
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
    case NTypes::E_COMMAND:
        return Comparison::Word;
    case NTypes::E_2DF32F32:
    case NTypes::E_BYTEARRAY:
    case NTypes::E_DS402_ACC_REC:
    case NTypes::E_DS402_I16_ARRAY:
    case NTypes::E_DS402_I32_ARRAY:
    case NTypes::E_DS402_DIO_ARRAY:
    case NTypes::E_DS402_U16_ARRAY:
    case NTypes::E_DS402_U32_ARRAY:
        return Comparison::Bytes;
    default:
        return Comparison::Held;
    }
}

// The difference of two infinities is no number, so infinity does not equal itself.
template<typename Float>
bool isWithin(Float a, Float b, Float tolerance)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return std::fabs(a - b) <= tolerance;
}

bool isWithinSingle(const CVariant &a, const CVariant &b, float tolerance)
{
    return b.canConvertTo(NTypes::E_F32) && isWithin(a.toF32(), b.toF32(), tolerance);
}

bool isWithinDouble(const CVariant &a, const CVariant &b, double tolerance)
{
    return b.canConvertTo(NTypes::E_F64) && isWithin(a.toF64(), b.toF64(), tolerance);
}

// Equality of two values of one tag that are held as it says: all but floating point by their bits.
bool equalInPlace(const QVariant &a, const QVariant &b, NTypes::eTypes_t type)
{
    using namespace HeldInPlace;
    if (type == NTypes::E_F32)
        return isWithin(valueIn<float>(a), valueIn<float>(b), FLT_EPSILON);
    if (type == NTypes::E_F64)
        return isWithin(valueIn<double>(a), valueIn<double>(b), DBL_EPSILON);
    const Form &form = formOf(type);
    return bitsIn(a, form) == bitsIn(b, form);
}

// Whether two fixed strings of one class have the same text; nothing where one of them is held otherwise.
std::optional<bool> equalStrings(const QVariant &a, const QVariant &b, NTypes::eTypes_t type)
{
    std::optional<bool> equal;
    visitFixedString(type, [&](auto held) {
        using String = typename decltype(held)::Type;
        const auto *const left = heldAt<String>(a);
        const auto *const right = heldAt<String>(b);
        if (left != nullptr && right != nullptr)
            equal = left->compareText(*right) == 0;
    });
    return equal;
}

} // namespace

bool CVariant::compareValue(const CVariant &other) const
{
    const HeldInPlace::Form &form = HeldInPlace::formOf(mType);
    // E_VERSION_4 goes the long way: it cannot be read as the number that its comparison asks for.
    if (mType == other.mType && mType != NTypes::E_VERSION_4 && HeldInPlace::holds(mValue, form)
        && HeldInPlace::holds(other.mValue, form))
        return equalInPlace(mValue, other.mValue, mType);
    if (mType == other.mType) {
        const std::optional<bool> equal = equalStrings(mValue, other.mValue, mType);
        if (equal)
            return *equal;
    }

    switch (comparisonOf(mType)) {
    case Comparison::Unsigned:
        return other.canConvertTo(NTypes::E_U64) && toU64() == other.toU64();
    case Comparison::Signed:
        return other.canConvertTo(NTypes::E_I64) && toI64() == other.toI64();
    case Comparison::Single:
        return isWithinSingle(*this, other, FLT_EPSILON);
    case Comparison::Double:
        return isWithinDouble(*this, other, DBL_EPSILON);
    case Comparison::Text:
        return toStr() == other.toStr();
    case Comparison::Word:
        return other.canConvertTo(NTypes::E_U32) && toU32() == other.toU32();
    case Comparison::Bytes:
        return toByteArray() == other.toByteArray();
    case Comparison::Held:
        break;
    }
    return mValue == other.mValue;
}

bool CVariant::compareValueFd(const CVariant &other, int digits) const
{
    if (digits >= 0 && mType == NTypes::E_F32)
        return isWithinSingle(*this, other, static_cast<float>(powerOfTen(-digits)));
    if (digits >= 0 && mType == NTypes::E_F64)
        return isWithinDouble(*this, other, powerOfTen(-digits));
    return compareValue(other);
}

bool CVariant::operator<(const CVariant &other) const
{
    switch (comparisonOf(mType)) {
    case Comparison::Unsigned:
        return toU64() < other.toU64();
    case Comparison::Signed:
        return toI64() < other.toI64();
    case Comparison::Single:
        return toF32() < other.toF32();
    case Comparison::Double:
        return toF64() < other.toF64();
    case Comparison::Text:
        return toStr() < other.toStr();
    case Comparison::Word:
        return toU32() < other.toU32();
    case Comparison::Bytes:
    case Comparison::Held:
        break;
    }
    return false;
}

bool CVariant::operator>(const CVariant &other) const
{
    switch (comparisonOf(mType)) {
    case Comparison::Unsigned:
        return toU64() > other.toU64();
    case Comparison::Signed:
        return toI64() > other.toI64();
    case Comparison::Single:
        return toF32() > other.toF32();
    case Comparison::Double:
        return toF64() > other.toF64();
    case Comparison::Text:
        return toStr() > other.toStr();
    case Comparison::Word:
        return toU32() > other.toU32();
    case Comparison::Bytes:
    case Comparison::Held:
        break;
    }
    return false;
}
