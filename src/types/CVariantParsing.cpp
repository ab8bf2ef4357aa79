// SPDX-License-Identifier: MIT
// A value from its text.
#include <CVariant.h>

#include <CDataTypeParser.h>
#include <CStr.h>

#include "CVariantHeld.h"
#include "RecordParsing.h"
#include "TypeCatalogue.h"
#include "diagnostics/LogLine.h"
#include "text/NumberParsing.h"

#include <algorithm>

namespace {

// Beside a failure Qt gives infinity for a number beyond the range.
template<typename Float>
Float orZero(Float number, const bool &ok)
{
    return ok ? number : Float(0);
}

// Base 0: "0x" is hexadecimal, a leading zero octal. Integers of 8 and 16 bits keep the low-order bits.
template<typename T>
T numberOf(const QString &text, bool &ok)
{
    if constexpr (std::is_floating_point<T>::value)
        return orZero(parsedFloat<T>(text, &ok), ok);
    else if constexpr (std::is_same<T, qulonglong>::value || std::is_same<T, qlonglong>::value)
        return parsedInteger<T>(text, &ok, 0);
    else if constexpr (std::is_signed<T>::value)
        return static_cast<T>(parsedInteger<qint32>(text, &ok, 0));
    else
        return static_cast<T>(parsedInteger<quint32>(text, &ok, 0));
}

// The text as the field would give it back: Latin-1, cut to the field and at the first zero.
QString parsedCharField(const QString &text, NTypes::eTypes_t type)
{
    const QByteArray field = text.toLatin1();
    if (field.isEmpty())
        return QLatin1String("");
    return CStr::fromLatin1(field.constData(), std::min(field.size(), int(TypeCatalogue::sizeOf(type))));
}

} // namespace

// The integers of all sizes in one way, for an empty variant: a switch over mixed types is mispredicted at
// every second value.
Q_ALWAYS_INLINE bool CVariant::takePlainInteger(const QString &text, NTypes::eTypes_t type)
{
    if (type > NTypes::E_I64 || type == NTypes::E_F32)
        return false;
    const HeldInPlace::Form &form = HeldInPlace::formOf(type);
    const auto number =
        form.size == 0 ? std::nullopt : plainInteger(text, form.signBit != 0, safeDigits(form.size));
    if (!number)
        return false;
    HeldInPlace::put(mValue, form.type, static_cast<quint64>(*number));
    mType = type;
    return true;
}

template<typename String>
inline CVariant CVariant::parsedString(const QString &text, NTypes::eTypes_t type)
{
    CVariant result;
    result.emplace<String>([&] { return String(text); }, type);
    return result;
}

// A value of a type that is no number; empty for one that has no text form.
inline CVariant CVariant::textValue(const QString &text, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_UNKNOWN:
        return {};
    case NTypes::E_STRING32:
        return parsedString<CString32>(text, type);
    case NTypes::E_STRING64:
        return parsedString<CString64>(text, type);
    case NTypes::E_STRING128:
        return parsedString<CString128>(text, type);
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
        return CVariant().setRawData(QVariant(parsedCharField(text, type)), type);
    case NTypes::E_DATETIME:
        return parsedDateTime(text);
    case NTypes::E_UTF16CHAR:
        return text.isEmpty() ? QChar(0) : text.at(0);
    case NTypes::E_CHAR:
        return text.isEmpty() ? '\0' : QString(text.at(0)).toLatin1().at(0);
    case NTypes::E_VERSION:
        return parsedVersion(text);
    case NTypes::E_IPV4ADDR:
        return parsedAddress(text);
    case NTypes::E_VERSION_4:
        return parsedVersion4(text);
    case NTypes::E_2DF32F32:
    case NTypes::E_BYTEARRAY:
    case NTypes::E_DS402_ACC_REC:
    case NTypes::E_DS402_I16_ARRAY:
    case NTypes::E_DS402_I32_ARRAY:
    case NTypes::E_DS402_DIO_ARRAY:
    case NTypes::E_DS402_U16_ARRAY:
    case NTypes::E_DS402_U32_ARRAY: {
        const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
        return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
    }
    default:
        logWarning(QStringLiteral("CVariant::fromStr() : Data type '%1 (%2)' is not supported.")
                       .arg(type)
                       .arg(CDataTypeParser::typeToStr(type)));
        return {};
    }
}

inline CVariant CVariant::parsedText(const QString &text, NTypes::eTypes_t type, bool *ok)
{
    CVariant result = textValue(text, type);
    if (ok != nullptr && type != NTypes::E_UNKNOWN)
        *ok = result.mValue.isValid();
    return result;
}

// One variable in each of these functions, or the compiler would move it out.
inline CVariant CVariant::parsedNumber(const QString &text, NTypes::eTypes_t type, bool *ok)
{
    CVariant result;
    bool parsed = result.takePlainInteger(text, type);
    if (!parsed) {
        visitNumber(type, [&](auto held) {
            result.assign(numberOf<typename decltype(held)::Type>(text, parsed), type);
        });
    }
    if (ok != nullptr)
        *ok = parsed;
    return result;
}

CVariant CVariant::fromStr(const QString &text, NTypes::eTypes_t type, bool *ok)
{
    // A command is parsed as the number it is, and stays one.
    const NTypes::eTypes_t numberType = type == NTypes::E_COMMAND ? NTypes::E_U32 : type;
    const bool isNumber = numberType >= NTypes::E_U8 && numberType <= NTypes::E_F64;
    return isNumber ? parsedNumber(text, numberType, ok) : parsedText(text, type, ok);
}

CVariant &CVariant::fromStr(const QString &text, bool *ok)
{
    takeParsed(fromStr(text, mType, ok), mType);
    return *this;
}

CVariant::CVariant(const QString &text, NTypes::eTypes_t type)
{
    if (type >= NTypes::E_UNKNOWN && type <= NTypes::E_VERSION_4)
        takeParsed(fromStr(text, type), type);
}

CVariant::CVariant(const QLatin1String &text, NTypes::eTypes_t type) : CVariant(QString(text), type) {}

CVariant::CVariant(const char *text, NTypes::eTypes_t type) : CVariant(QString::fromUtf8(text), type) {}

// A parsed value as it is; the type's default value when parsing gave none.
void CVariant::takeParsed(const CVariant &parsed, NTypes::eTypes_t type)
{
    if (!parsed.isNull()) {
        *this = parsed;
        return;
    }
    mType = type;
    mValue = defaultValue(type);
}
