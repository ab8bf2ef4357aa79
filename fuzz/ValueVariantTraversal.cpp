// SPDX-License-Identifier: MIT
// Any QVariant, as models and settings hand it over: its type deduced, taken as each type, and stored under a
// tag that it need not fit.
#include "Traversals.h"

#include <CVariant.h>

#include <Properties.h>
#include <ValueChecks.h>
#include <Variants.h>

#include <utility>

namespace {

// Bytes of a string field's size are the fixed string of that size if they are UTF-16.
NTypes::eTypes_t tagOfBytes(const QByteArray &bytes)
{
    const bool isText = CString32::isUTF16(bytes);
    switch (bytes.size()) {
    case CString32::byteCount:
        return isText ? NTypes::E_STRING32 : NTypes::E_CHARSTR64;
    case CString64::byteCount:
        return isText ? NTypes::E_STRING64 : NTypes::E_CHARSTR128;
    case CString128::byteCount:
        return isText ? NTypes::E_STRING128 : NTypes::E_CHARSTR256;
    default:
        return NTypes::E_BYTEARRAY;
    }
}

// The tag of a type that is taken as it is; E_UNKNOWN for one that has none.
NTypes::eTypes_t tagOfUserType(int type)
{
    const std::pair<int, NTypes::eTypes_t> tags[] = {
        {qMetaTypeId<CString32>(), NTypes::E_STRING32},
        {qMetaTypeId<CString64>(), NTypes::E_STRING64},
        {qMetaTypeId<CString128>(), NTypes::E_STRING128},
        {qMetaTypeId<NTypes::sDateTime_t>(), NTypes::E_DATETIME},
        {qMetaTypeId<NTypes::sVersion_t>(), NTypes::E_VERSION},
        {qMetaTypeId<NTypes::uIPv4HAddr_t>(), NTypes::E_IPV4ADDR},
        {qMetaTypeId<NTypes::sCommand_t>(), NTypes::E_COMMAND},
        {qMetaTypeId<NTypes::sDs402Record01_t>(), NTypes::E_DS402_ACC_REC},
        {qMetaTypeId<NTypes::sDs402Array_t<qint16>>(), NTypes::E_DS402_I16_ARRAY},
        {qMetaTypeId<NTypes::sDs402Array_t<qint32>>(), NTypes::E_DS402_I32_ARRAY},
        {qMetaTypeId<NTypes::sDs402Array_t<quint16>>(), NTypes::E_DS402_U16_ARRAY},
        {qMetaTypeId<NTypes::sDs402Array_t<quint32>>(), NTypes::E_DS402_U32_ARRAY},
        {qMetaTypeId<NTypes::sVersion4_t>(), NTypes::E_VERSION_4},
    };
    for (const auto &[held, tag] : tags) {
        if (held == type)
            return tag;
    }
    return NTypes::E_UNKNOWN;
}

NTypes::eTypes_t deducedTag(const QVariant &variant)
{
    switch (variant.userType()) {
    case QMetaType::UChar:
        return NTypes::E_U8;
    case QMetaType::SChar:
        return NTypes::E_I8;
    case QMetaType::UShort:
        return NTypes::E_U16;
    case QMetaType::Short:
        return NTypes::E_I16;
    case QMetaType::UInt:
    case QMetaType::ULong:
        return NTypes::E_U32;
    case QMetaType::Int:
    case QMetaType::Long:
        return NTypes::E_I32;
    case QMetaType::Float:
        return NTypes::E_F32;
    case QMetaType::ULongLong:
        return NTypes::E_U64;
    case QMetaType::LongLong:
        return NTypes::E_I64;
    case QMetaType::Double:
        return NTypes::E_F64;
    case QMetaType::QChar:
        return NTypes::E_UTF16CHAR;
    case QMetaType::Char:
        return NTypes::E_CHAR;
    case QMetaType::QString:
        return tagOfText(variant.toString());
    case QMetaType::QByteArray:
        return tagOfBytes(variant.toByteArray());
    default:
        return tagOfUserType(variant.userType());
    }
}

void checkDeduced(const QVariant &variant, int inputSize)
{
    const CVariant value = bounded(allowance(inputSize), "a value of a QVariant takes its size",
                                   [&variant] { return CVariant(variant); });
    require(value.type() == deducedTag(variant), "the tag follows from the type",
            QString::number(variant.userType()));
    require(value.type() != NTypes::E_UNKNOWN || isEmpty(value),
            "a type without a tag leaves an empty variant");
    CVariant assigned(QStringLiteral("replaced"));
    assigned = variant;
    require(isSame(assigned, value), "assigning a QVariant is constructing from it");
    if (value.type() != NTypes::E_CHAR && value.type() != NTypes::E_UNKNOWN)
        require(isSame(CVariant(heldBy(value)), value), "a value comes back from the QVariant that it gives");
    checkValue(value);
}

// A number the plain way.
CVariant plainNumber(const QVariant &variant, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_U8:
        return static_cast<unsigned char>(variant.toUInt());
    case NTypes::E_U16:
        return static_cast<unsigned short>(variant.toUInt());
    case NTypes::E_U32:
        return variant.toUInt();
    case NTypes::E_I8:
        return static_cast<signed char>(variant.toInt());
    case NTypes::E_I16:
        return static_cast<short>(variant.toInt());
    case NTypes::E_I32:
        return variant.toInt();
    case NTypes::E_F32:
        return variant.toFloat();
    case NTypes::E_U64:
        return variant.toULongLong();
    case NTypes::E_I64:
        return variant.toLongLong();
    default:
        return variant.toDouble();
    }
}

bool isAnyOf(int type, int a, int b)
{
    return type == a || type == b;
}

// Whether a record's type is taken as documented: numbers replace some records instead of becoming one, bytes
// are raw data, and anything else leaves the tag.
bool isTagOfRecord(const CVariant &value, const QVariant &variant, NTypes::eTypes_t type)
{
    const int held = variant.userType();
    if (type == NTypes::E_DATETIME && isAnyOf(held, QMetaType::Long, QMetaType::ULong))
        return isSame(value, static_cast<unsigned int>(variant.toULongLong()));
    if (type == NTypes::E_COMMAND && isAnyOf(held, QMetaType::Int, QMetaType::UInt))
        return isSame(value, variant.toUInt());
    if (type == NTypes::E_VERSION_4 && isAnyOf(held, QMetaType::LongLong, QMetaType::ULongLong))
        return isSame(value, static_cast<unsigned long long>(variant.toUInt()));
    if (held == QMetaType::QByteArray && type != NTypes::E_COMMAND) {
        const bool isRaw = type >= NTypes::E_DS402_ACC_REC && type <= NTypes::E_DS402_U32_ARRAY;
        return isSame(value, isRaw ? rawValue(variant.toByteArray(), type)
                                   : CVariant::fromByteArray(variant.toByteArray(), type));
    }
    return value.type() == (type == NTypes::E_DS402_DIO_ARRAY ? NTypes::E_DS402_U32_ARRAY : type);
}

bool isExchanged(const CVariant &value, const QVariant &variant, NTypes::eTypes_t type)
{
    if (type == NTypes::E_UNKNOWN || !isCatalogued(type))
        return isEmpty(value);
    if (isNumber(type))
        return isSame(value, plainNumber(variant, type));
    if (type == NTypes::E_STRING32)
        return isSame(value, CString32(variant));
    if (type == NTypes::E_STRING64)
        return isSame(value, CString64(variant));
    if (type == NTypes::E_STRING128)
        return isSame(value, CString128(variant));
    if (isCharField(type) || type == NTypes::E_CHAR)
        return isSame(value, CVariant::fromStr(variant.toString(), type));
    if (type == NTypes::E_UTF16CHAR)
        return isSame(value, variant.toChar());
    if (isRecord(type))
        return isTagOfRecord(value, variant, type);
    return isSame(value, tagged(variant.toByteArray(), type));
}

void checkExchange(const QVariant &variant, NTypes::eTypes_t type)
{
    const CVariant value = CVariant::fromVariant(variant, type);
    require(isExchanged(value, variant, type), "a QVariant is taken as the type",
            QString::number(type) + QLatin1Char(' ') + QString::fromLatin1(variant.typeName()));
    require(isSame(CVariant(variant, type), value), "the constructor takes it alike");
    CVariant member = tagged(QVariant(), type);
    require(isSame(member.fromVariant(variant), value), "the variant's own type does the same");
}

} // namespace

void traverseValueVariant(const QByteArray &input)
{
    InputReader reader(input);
    const NTypes::eTypes_t type = takeTag(reader);
    const NTypes::eTypes_t otherType = takeTag(reader);
    const QVariant variant = takeVariant(reader);
    const QVariant other = takeVariant(reader);

    checkDeduced(variant, input.size());
    for (int target = -1; target <= 33; ++target)
        checkExchange(variant, tagOf(target));
    checkExchange(variant, type);

    const CVariant unchecked = tagged(variant, type);
    require(unchecked.type() == type && heldBy(unchecked).userType() == variant.userType(),
            "a value is stored as it is");
    checkValue(CVariant::fromVariant(variant, type));
    checkValue(unchecked);
    checkComparison(unchecked, tagged(other, otherType));
    checkComparison(unchecked, tagged(other, type));
    checkComparison(CVariant(variant), CVariant(other));
}
