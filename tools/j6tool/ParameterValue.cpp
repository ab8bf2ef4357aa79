// SPDX-License-Identifier: MIT
#include "ParameterValue.h"

#include "HexText.h"
#include "VisibleText.h"

#include <CDataTypeParser.h>
#include <CStr.h>

#include <QDate>
#include <QTime>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace j6tool {

namespace {

// From here on a float's integer digits are not counted, and a double has more digits than are significant.
constexpr float largeF32 = 2147483648.0F;
constexpr double largeF64 = 1e15;

int typeSize(NTypes::eTypes_t type)
{
    return int(CDataTypeParser::typeSize(type));
}

bool isFloatingPoint(NTypes::eTypes_t type)
{
    return type == NTypes::E_F32 || type == NTypes::E_F64;
}

bool readsAsZero(const QString &text)
{
    return std::none_of(text.begin(), text.end(),
                        [](QChar c) { return c >= QLatin1Char('1') && c <= QLatin1Char('9'); });
}

bool isOnTheCalendar(const NTypes::sDateTime_t &record)
{
    static const NTypes::sDateTime_t empty = {};
    const NTypes::sDate_t date = record.date;
    const NTypes::sTime_t time = record.time;
    return record == empty
           || (QDate::isValid(date.year, date.month, date.day)
               && QTime::isValid(time.hour, time.minute, time.second, time.hundredths * 10));
}

QString upToTerminator(const QString &text)
{
    return text.left(text.indexOf(QChar(0)));
}

QByteArray littleEndianUnit(QChar unit)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian(unit.unicode(), bytes.data());
    return bytes;
}

} // namespace

std::optional<Nj6Units::eUnit_t> unitFromText(const QString &text)
{
    const bool isDecimal = std::all_of(
        text.begin(), text.end(), [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
    int code = 0;
    if (!isDecimal || !CStr::strToI32(text, code, 10))
        return std::nullopt;
    return static_cast<Nj6Units::eUnit_t>(code);
}

std::optional<Error> lengthMisfit(const QByteArray &bytes, NTypes::eTypes_t type)
{
    const bool fits = type == NTypes::E_BYTEARRAY ? !bytes.isEmpty() : bytes.size() == typeSize(type);
    if (fits)
        return std::nullopt;
    const QString wanted =
        type == NTypes::E_BYTEARRAY ? QStringLiteral("1 or more") : QString::number(typeSize(type));
    return Error{QStringLiteral("%1 has %2 bytes where %3 has %4")
                     .arg(quoted(hexFromBytes(bytes)), QString::number(bytes.size()),
                          CDataTypeParser::typeToStr(type), wanted)};
}

CVariant valueFromBytes(const QByteArray &bytes, NTypes::eTypes_t type)
{
    // The byte as it is: read as a text, one above 0x7F would be replaced.
    if (type == NTypes::E_CHAR)
        return CVariant(bytes.at(0));
    return CVariant::fromByteArray(bytes, type);
}

QByteArray bytesFromValue(const CVariant &value)
{
    switch (value.type()) {
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
    case NTypes::E_CHAR:
        return value.toByteArray().leftJustified(value.typeSize(), '\0', true);
    case NTypes::E_UTF16CHAR:
        return littleEndianUnit(value.toUtf16Char());
    default:
        return value.toByteArray();
    }
}

bool isTextType(NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_STRING32:
    case NTypes::E_STRING64:
    case NTypes::E_STRING128:
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
    case NTypes::E_UTF16CHAR:
    case NTypes::E_CHAR:
        return true;
    default:
        return false;
    }
}

QString exactText(const CVariant &value)
{
    if (isTextType(value.type()))
        return upToTerminator(value.toStr());
    NTypes::sDateTime_t record = {};
    if (value.type() == NTypes::E_DATETIME && value.toDateTime(record) && !isOnTheCalendar(record))
        return QStringLiteral("invalid date-time");
    return value.toStr();
}

QString displayText(const CVariant &value, Nj6Units::eUnit_t unit)
{
    if (!isFloatingPoint(value.type()))
        return exactText(value);
    const bool isSingle = value.type() == NTypes::E_F32;
    const double number = value.toF64();
    if (!(std::fabs(number) < (isSingle ? double(largeF32) : largeF64)))
        return exactText(value);
    const int digits = CUnitParser::digits(unit);
    const QString text = isSingle ? CStr::fromF32(value.toF32(), digits) : CStr::fromF64(number, digits);
    return number != 0.0 && readsAsZero(text) ? exactText(value) : text;
}

bool isSameValue(const QByteArray &a, const QByteArray &b, NTypes::eTypes_t type)
{
    if (a == b)
        return true;
    const CVariant valueA = valueFromBytes(a, type);
    const CVariant valueB = valueFromBytes(b, type);
    return valueA.compareValue(valueB) && (!isFloatingPoint(type) || valueA.toStr() == valueB.toStr());
}

} // namespace j6tool
