// SPDX-License-Identifier: MIT
// Conversion in place.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "diagnostics/LogLine.h"

namespace {

// Reads the variant as a value and makes it that value; the assignment sets the tag.
template<typename Value>
bool take(CVariant &variant, Value (CVariant::*read)(bool *) const)
{
    bool success = false;
    const Value value = (variant.*read)(&success);
    variant = value;
    return success;
}

template<std::size_t N>
bool takeCharField(CVariant &variant, bool (CVariant::*read)(char (&)[N]) const)
{
    char text[N];
    const bool success = (variant.*read)(text);
    variant = text;
    return success;
}

bool takeDateTime(CVariant &variant)
{
    // The record itself: by way of a calendar date-time an impossible one would change.
    NTypes::sDateTime_t record{};
    const bool success = variant.toDateTime(record);
    variant = record;
    return success;
}

bool takeU16Array(CVariant &variant)
{
    const bool success = variant.toByteArray().size() == int(sizeof(NTypes::sDs402Array_t<quint16>));
    variant = static_cast<NTypes::sDs402Array_t<unsigned short>>(variant);
    return success;
}

bool takeNumber(CVariant &variant, NTypes::eTypes_t target)
{
    switch (target) {
    case NTypes::E_U8:
        return take(variant, &CVariant::toU8);
    case NTypes::E_I8:
        return take(variant, &CVariant::toI8);
    case NTypes::E_U16:
        return take(variant, &CVariant::toU16);
    case NTypes::E_I16:
        return take(variant, &CVariant::toI16);
    case NTypes::E_U32:
        return take(variant, &CVariant::toU32);
    case NTypes::E_I32:
        return take(variant, &CVariant::toI32);
    case NTypes::E_F32:
        return take(variant, &CVariant::toF32);
    case NTypes::E_U64:
        return take(variant, &CVariant::toU64);
    case NTypes::E_I64:
        return take(variant, &CVariant::toI64);
    default:
        return take(variant, &CVariant::toF64);
    }
}

bool takeText(CVariant &variant, NTypes::eTypes_t target)
{
    switch (target) {
    case NTypes::E_STRING32:
        return take<CString32>(variant, &CVariant::toString32);
    case NTypes::E_STRING64:
        return take<CString64>(variant, &CVariant::toString64);
    case NTypes::E_STRING128:
        return take<CString128>(variant, &CVariant::toString128);
    case NTypes::E_CHARSTR64:
        return takeCharField(variant, &CVariant::toCharStr64);
    case NTypes::E_CHARSTR128:
        return takeCharField(variant, &CVariant::toCharStr128);
    case NTypes::E_CHARSTR256:
        return takeCharField(variant, &CVariant::toCharStr256);
    case NTypes::E_UTF16CHAR:
        return take<QChar>(variant, &CVariant::toUtf16Char);
    default:
        return take<char>(variant, &CVariant::toChar);
    }
}

bool takeRecord(CVariant &variant, NTypes::eTypes_t target)
{
    switch (target) {
    case NTypes::E_DATETIME:
        return takeDateTime(variant);
    case NTypes::E_VERSION:
        return take<NTypes::sVersion_t>(variant, &CVariant::toVersion);
    case NTypes::E_IPV4ADDR:
        return take<NTypes::uIPv4HAddr_t>(variant, &CVariant::toIPv4Addr);
    case NTypes::E_COMMAND:
        return take<NTypes::sCommand_t>(variant, &CVariant::toCommand);
    case NTypes::E_DS402_ACC_REC:
        return take<NTypes::sDs402Record01_t>(variant, &CVariant::toDS402Record01);
    case NTypes::E_DS402_I16_ARRAY:
        return take<NTypes::sDs402Array_t<short>>(variant, &CVariant::toDS402Array01);
    case NTypes::E_DS402_I32_ARRAY:
        return take<NTypes::sDs402Array_t<int>>(variant, &CVariant::toDS402Array02);
    case NTypes::E_DS402_U16_ARRAY:
        return takeU16Array(variant);
    case NTypes::E_VERSION_4:
        return take<NTypes::sVersion4_t>(variant, &CVariant::toVersion4);
    default:
        // E_DS402_DIO_ARRAY too: it becomes an E_DS402_U32_ARRAY, which has the same form.
        return take<NTypes::sDs402Array_t<unsigned int>>(variant, &CVariant::toDS402Array10);
    }
}

} // namespace

CVariant &CVariant::convertTo(NTypes::eTypes_t type, bool *ok)
{
    if (!canConvertTo(type))
        return *this;

    bool success = true;
    const auto ignore = [](auto) {};
    if (type == NTypes::E_2DF32F32 || type == NTypes::E_BYTEARRAY) {
        mType = type;
    } else if (mType == NTypes::E_BYTEARRAY && type >= NTypes::E_U8 && type <= NTypes::E_I32) {
        // The bytes stay; both 8-bit integers are then E_U8.
        mType = type == NTypes::E_I8 ? NTypes::E_U8 : type;
    } else if (visitNumber(type, ignore)) {
        success = takeNumber(*this, type);
    } else if (visitRecord(type, ignore)) {
        success = takeRecord(*this, type);
    } else if (visitFixedString(type, ignore) || isCharField(type) || type == NTypes::E_UTF16CHAR
               || type == NTypes::E_CHAR) {
        success = takeText(*this, type);
    } else {
        success = false;
        logWarning(QStringLiteral("CVariant::convertTo() : Data type '%1' is not supported.").arg(type));
    }
    if (ok != nullptr)
        *ok = success;
    return *this;
}

CVariant CVariant::convertTo(NTypes::eTypes_t type, bool *ok) const
{
    CVariant converted(*this);
    converted.convertTo(type, ok);
    return converted;
}
