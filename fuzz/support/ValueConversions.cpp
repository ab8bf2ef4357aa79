// SPDX-License-Identifier: MIT
// Conversion of any value to every type, and comparison of any two.
#include "ValueChecks.h"

#include <Properties.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace {

// The tag that a value has after conversion.
NTypes::eTypes_t convertedTag(NTypes::eTypes_t from, NTypes::eTypes_t to)
{
    if (to == NTypes::E_DS402_DIO_ARRAY)
        return NTypes::E_DS402_U32_ARRAY;
    return from == NTypes::E_BYTEARRAY && to == NTypes::E_I8 ? NTypes::E_U8 : to;
}

void checkConversion(const CVariant &value, NTypes::eTypes_t target)
{
    CVariant inPlace(value);
    bool ok = true;
    bool okInPlace = false;
    const CVariant converted = value.convertTo(target, &ok);
    require(&inPlace.convertTo(target, &okInPlace) == &inPlace, "a conversion gives the value itself");
    require(isSame(converted, inPlace), "both forms of a conversion do the same");
    if (!value.canConvertTo(target)) {
        require(isSame(converted, value), "what cannot be converted does not change");
        require(ok && !okInPlace, "what cannot be converted leaves the flag alone");
        return;
    }
    require(ok == okInPlace, "both forms of a conversion tell the same");
    require(converted.type() == convertedTag(value.type(), target), "the tag is as documented");
    if (ok || target == NTypes::E_UNKNOWN || !isCatalogued(target))
        return;
    const QByteArray bytes = converted.toByteArray();
    require(std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0'; }),
            "what cannot be read after all becomes zero");
}

template<typename Float>
bool isWithin(Float a, Float b, Float tolerance)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return std::fabs(a - b) <= tolerance;
}

enum class Class { Unsigned, Signed, Single, Double, Text, Word, Bytes, Held };

Class classOf(NTypes::eTypes_t type)
{
    if (type == NTypes::E_F32 || type == NTypes::E_F64)
        return type == NTypes::E_F32 ? Class::Single : Class::Double;
    if (type == NTypes::E_I64 || type == NTypes::E_DATETIME)
        return Class::Signed;
    if (type == NTypes::E_U64 || type == NTypes::E_VERSION_4)
        return Class::Unsigned;
    if (type >= NTypes::E_U8 && type <= NTypes::E_I32)
        return type % 2 == 0 ? Class::Signed : Class::Unsigned;
    if (type >= NTypes::E_STRING32 && type <= NTypes::E_CHAR)
        return Class::Text;
    if (type >= NTypes::E_VERSION && type <= NTypes::E_COMMAND)
        return Class::Word;
    return type >= NTypes::E_2DF32F32 && type <= NTypes::E_DS402_U32_ARRAY ? Class::Bytes : Class::Held;
}

// The rules of equality by way of the readers alone.
bool isPlainlyEqual(const CVariant &a, const CVariant &b)
{
    switch (classOf(a.type())) {
    case Class::Unsigned:
        return b.canConvertTo(NTypes::E_U64) && a.toU64() == b.toU64();
    case Class::Signed:
        return b.canConvertTo(NTypes::E_I64) && a.toI64() == b.toI64();
    case Class::Single:
        return b.canConvertTo(NTypes::E_F32) && isWithin(a.toF32(), b.toF32(), FLT_EPSILON);
    case Class::Double:
        return b.canConvertTo(NTypes::E_F64) && isWithin(a.toF64(), b.toF64(), DBL_EPSILON);
    case Class::Text:
        return a.toStr() == b.toStr();
    case Class::Word:
        return b.canConvertTo(NTypes::E_U32) && a.toU32() == b.toU32();
    case Class::Bytes:
        return a.toByteArray() == b.toByteArray();
    case Class::Held:
        break;
    }
    return heldBy(a) == heldBy(b);
}

bool isPlainlyLess(const CVariant &a, const CVariant &b)
{
    switch (classOf(a.type())) {
    case Class::Unsigned:
        return a.toU64() < b.toU64();
    case Class::Signed:
        return a.toI64() < b.toI64();
    case Class::Single:
        return a.toF32() < b.toF32();
    case Class::Double:
        return a.toF64() < b.toF64();
    case Class::Text:
        return a.toStr() < b.toStr();
    case Class::Word:
        return a.toU32() < b.toU32();
    case Class::Bytes:
    case Class::Held:
        break;
    }
    return false;
}

// Whether the value can be read as the number by which values of its type are compared. One that cannot (a
// null value, a four-part version, something else held than the tag says) counts as 0 on the left side and as
// equal to nothing on the right one. Without a type the equality is QVariant's own, which converts the right
// side into the left one's type and is not symmetric either.
bool isComparable(const CVariant &value)
{
    switch (classOf(value.type())) {
    case Class::Unsigned:
        return value.canConvertTo(NTypes::E_U64);
    case Class::Signed:
        return value.canConvertTo(NTypes::E_I64);
    case Class::Word:
        return value.canConvertTo(NTypes::E_U32);
    case Class::Held:
        return false;
    default:
        return true;
    }
}

// Whether the value is less than, equal to or greater than any other such value of its type.
bool isOrderedExactly(const CVariant &value)
{
    const Class kind = classOf(value.type());
    return isComparable(value)
           && (kind == Class::Unsigned || kind == Class::Signed || kind == Class::Text
               || kind == Class::Word);
}

void checkTolerance(const CVariant &a, const CVariant &b)
{
    require(a.compareValueFd(b, -1) == a.compareValue(b), "negative digits are no tolerance of their own");
    if (!isFloatingPoint(a.type())) {
        require(a.compareValueFd(b, 2) == a.compareValue(b), "only floating point has a tolerance");
        return;
    }
    for (int digits = 0; digits < 8; ++digits)
        require(!a.compareValueFd(b, digits + 1) || a.compareValueFd(b, digits),
                "what is equal to more digits is equal to fewer");
}

void checkSameType(const CVariant &a, const CVariant &b)
{
    // cppcheck-suppress knownConditionTrueFalse ; that it is always true is what is checked
    require(!isComparable(a) || !isComparable(b) || (a == b) == (b == a), "equality is symmetric");
    if (classOf(a.type()) == Class::Bytes || classOf(a.type()) == Class::Held)
        return;
    // cppcheck-suppress knownConditionTrueFalse ; that it is always true is what is checked
    require((a < b) == (b > a), "less one way is greater the other way");
    require(!(a < b) || !(b < a), "two values are not less than each other");
    if (isOrderedExactly(a) && isOrderedExactly(b))
        require(int(a < b) + int(a == b) + int(a > b) == 1, "a value is less, equal or greater");
}

void checkOneWay(const CVariant &a, const CVariant &b)
{
    require(a.compareValue(b) == isPlainlyEqual(a, b), "equality follows from the readers");
    require((a < b) == isPlainlyLess(a, b), "order follows from the readers");
    require((a == b) == (a.type() == b.type() && a.compareValue(b)), "equal values have the same tag");
    require((a != b) == !(a == b), "unequal is not equal");
    require((a >= b) == !(a < b) && (a <= b) == !(a > b), "at least is not less");
    checkTolerance(a, b);
}

} // namespace

void checkConversions(const CVariant &value)
{
    for (int target = -1; target <= 33; ++target)
        checkConversion(value, tagOf(target));
    require(value.canConvertTo(value.type()), "every value can be converted to its own type");
}

void checkComparison(const CVariant &a, const CVariant &b)
{
    checkOneWay(a, b);
    checkOneWay(b, a);
    if (a.type() == b.type())
        checkSameType(a, b);
    if (isOrderedExactly(a))
        require(a == CVariant(a), "a value equals its copy");
}
