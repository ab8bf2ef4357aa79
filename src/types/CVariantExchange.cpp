// SPDX-License-Identifier: MIT
// Exchange with QVariant.
#include <CVariant.h>

#include <CDataTypeParser.h>

#include "CVariantHeld.h"
#include "TypeCatalogue.h"
#include "diagnostics/LogLine.h"
#include "text/Utf16Check.h"

#include <utility>

namespace {

// The tag of a Qt type that is held as it is; E_UNKNOWN for one that has none or needs a conversion.
NTypes::eTypes_t tagOfHeldType(int qtType)
{
    const std::pair<int, NTypes::eTypes_t> tags[] = {
        {QMetaType::UChar, NTypes::E_U8},
        {QMetaType::SChar, NTypes::E_I8},
        {QMetaType::UShort, NTypes::E_U16},
        {QMetaType::Short, NTypes::E_I16},
        {QMetaType::UInt, NTypes::E_U32},
        {QMetaType::Int, NTypes::E_I32},
        {QMetaType::Float, NTypes::E_F32},
        {QMetaType::ULongLong, NTypes::E_U64},
        {QMetaType::LongLong, NTypes::E_I64},
        {QMetaType::Double, NTypes::E_F64},
        {QMetaType::QChar, NTypes::E_UTF16CHAR},
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
        if (held == qtType)
            return tag;
    }
    return NTypes::E_UNKNOWN;
}

CVariant ofText(const QString &text)
{
    if (text.size() <= 63)
        return CString32(text);
    if (text.size() <= 127)
        return CString64(text);
    return CString128(text);
}

// Bytes of a string field's size: UTF-16 if they can be, else 8-bit characters. Every message names
// E_CHARSTR64.
template<typename FixedString>
CVariant ofField(const QByteArray &bytes, NTypes::eTypes_t eightBitType, int line)
{
    if (isUtf16(bytes))
        return FixedString(bytes);
    logWarning(
        QStringLiteral("CVariant::operator =(const QVariant&) : mType is ambiguous, it can be NTypes::%1 or "
                       "NTypes::E_CHARSTR64. Line %2")
            .arg(CDataTypeParser::typeToEnum(eightBitType))
            .arg(line));
    return CVariant().setRawData(QVariant(bytes), eightBitType);
}

CVariant ofBytes(const QByteArray &bytes)
{
    switch (bytes.size()) {
    case CString32::byteCount:
        return ofField<CString32>(bytes, NTypes::E_CHARSTR64, __LINE__);
    case CString64::byteCount:
        return ofField<CString64>(bytes, NTypes::E_CHARSTR128, __LINE__);
    case CString128::byteCount:
        return ofField<CString128>(bytes, NTypes::E_CHARSTR256, __LINE__);
    default:
        return CVariant().setRawData(QVariant(bytes), NTypes::E_BYTEARRAY);
    }
}

// A value whose tag follows from the Qt type.
CVariant deduced(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Long:
        return static_cast<int>(value.toLongLong());
    case QMetaType::ULong:
        return static_cast<unsigned int>(value.toULongLong());
    case QMetaType::Char:
        return value.value<char>();
    case QMetaType::QString:
        return ofText(value.toString());
    case QMetaType::QByteArray:
        return ofBytes(value.toByteArray());
    default:
        break;
    }
    const NTypes::eTypes_t tag = tagOfHeldType(value.userType());
    if (tag != NTypes::E_UNKNOWN)
        return CVariant().setRawData(value, tag);
    logWarning(QStringLiteral(
                   "CVariant::operator =(const QVariant&) : userType() %1 is not supported in this method. "
                   "Line %2")
                   .arg(value.userType())
                   .arg(__LINE__));
    return {};
}

bool isLong(const QVariant &value)
{
    return value.userType() == QMetaType::Long || value.userType() == QMetaType::ULong;
}

bool isInt(const QVariant &value)
{
    return value.userType() == QMetaType::Int || value.userType() == QMetaType::UInt;
}

bool isLongLong(const QVariant &value)
{
    return value.userType() == QMetaType::LongLong || value.userType() == QMetaType::ULongLong;
}

// Numbers that replace a record of their size instead of becoming one.
bool takesNumber(const QVariant &value, NTypes::eTypes_t type, CVariant &result)
{
    if (type == NTypes::E_DATETIME && isLong(value))
        result = static_cast<unsigned int>(value.toULongLong());
    else if (type == NTypes::E_COMMAND && isInt(value))
        result = value.toUInt();
    else if (type == NTypes::E_VERSION_4 && isLongLong(value))
        result = static_cast<unsigned long long>(value.toUInt());
    else
        return false;
    return true;
}

// Records that have a text form are parsed from it; all but the command are read from raw bytes.
bool hasTextForm(NTypes::eTypes_t type)
{
    return type == NTypes::E_DATETIME || type == NTypes::E_VERSION || type == NTypes::E_IPV4ADDR
           || type == NTypes::E_VERSION_4;
}

CVariant recordOf(const QVariant &value, NTypes::eTypes_t type)
{
    CVariant result;
    if (takesNumber(value, type, result))
        return result;
    if (hasTextForm(type) && value.userType() == QMetaType::QString)
        return CVariant::fromStr(value.toString(), type);
    if (type != NTypes::E_COMMAND && value.userType() == QMetaType::QByteArray) {
        const QByteArray bytes = value.toByteArray();
        return hasTextForm(type)
                   ? CVariant::fromByteArray(bytes, type, 1)
                   : CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
    }
    // Qt knows no conversion from its own date-time to the record.
    if (type == NTypes::E_DATETIME && value.userType() == QMetaType::QDateTime)
        return value.toDateTime();
    // A digital-I/O array becomes an E_DS402_U32_ARRAY, as in convertTo().
    visitRecord(type, [&](auto held) { result = heldAs<typename decltype(held)::Type>(value); });
    return result;
}

template<typename T>
T numberOf(const QVariant &value)
{
    if constexpr (std::is_same<T, float>::value)
        return value.toFloat();
    else if constexpr (std::is_same<T, double>::value)
        return value.toDouble();
    else if constexpr (std::is_same<T, qulonglong>::value)
        return value.toULongLong();
    else if constexpr (std::is_same<T, qlonglong>::value)
        return value.toLongLong();
    else if constexpr (std::is_signed<T>::value)
        return static_cast<T>(value.toInt());
    else
        return static_cast<T>(value.toUInt());
}

} // namespace

CVariant CVariant::fromVariant(const QVariant &value, NTypes::eTypes_t type)
{
    if (type == NTypes::E_UNKNOWN)
        return {};
    if (!TypeCatalogue::contains(type)) {
        logWarning(
            QStringLiteral("CVariant::fromVariant : Data type %1 (%2) is not supported in this method.")
                .arg(type)
                .arg(CDataTypeParser::typeToStr(type)));
        return {};
    }
    CVariant result;
    if (visitNumber(type, [&](auto held) { result = numberOf<typename decltype(held)::Type>(value); }))
        return result;
    if (visitFixedString(type, [&](auto held) { result = typename decltype(held)::Type(value); }))
        return result;
    if (isCharField(type) || type == NTypes::E_CHAR)
        return fromStr(value.toString(), type);
    if (type == NTypes::E_UTF16CHAR)
        return value.toChar();
    if (type == NTypes::E_2DF32F32 || type == NTypes::E_BYTEARRAY)
        return result.setRawData(QVariant(value.toByteArray()), type);
    return recordOf(value, type);
}

CVariant &CVariant::fromVariant(const QVariant &value)
{
    return *this = fromVariant(value, mType);
}

CVariant::CVariant(const QVariant &value, NTypes::eTypes_t type) : CVariant(fromVariant(value, type)) {}

CVariant::CVariant(const QVariant &value) : CVariant(deduced(value)) {}

CVariant::CVariant(const QString &text) : CVariant(ofText(text)) {}

CVariant::CVariant(const QLatin1String &text) : CVariant(ofText(text)) {}

CVariant::CVariant(const QByteArray &bytes) : CVariant(ofBytes(bytes)) {}

CVariant &CVariant::operator=(const QVariant &value)
{
    return *this = deduced(value);
}

CVariant &CVariant::operator=(const QString &text)
{
    return *this = ofText(text);
}

CVariant &CVariant::operator=(const QLatin1String &text)
{
    return *this = ofText(text);
}

CVariant &CVariant::operator=(const QByteArray &bytes)
{
    return *this = ofBytes(bytes);
}

// The fixed strings' way into a QVariant leads through the typed value, so that both hold the same.

CString32::operator QVariant() const
{
    unsigned short units[unitCount];
    copyUnits(units);
    return CVariant(units);
}

CString64::operator QVariant() const
{
    unsigned short units[unitCount];
    copyUnits(units);
    return CVariant(units);
}

CString128::operator QVariant() const
{
    unsigned short units[unitCount];
    copyUnits(units);
    return CVariant(units);
}
