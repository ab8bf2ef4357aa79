// SPDX-License-Identifier: MIT
#include "ValueParser.h"

#include "HexText.h"
#include "ParameterValue.h"
#include "VisibleText.h"

#include <CDataTypeParser.h>
#include <CStr.h>
#include <CVariant.h>

#include <QDate>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>

namespace j6tool {

namespace {

using Captures = QRegularExpressionMatch;

Captures matchWhole(const QString &pattern, const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text);
}

Error refusal(const QString &text, NTypes::eTypes_t type, const QString &expected)
{
    return Error{
        QStringLiteral("%1 is no %2 (%3)").arg(quoted(text), CDataTypeParser::typeToStr(type), expected)};
}

// What fromStr() makes of a text whose form has been checked.
Result<CVariant> parsed(const QString &text, NTypes::eTypes_t type, const QString &expected)
{
    bool ok = false;
    const CVariant value = CVariant::fromStr(text, type, &ok);
    if (!ok)
        return refusal(text, type, expected);
    return value;
}

bool isInRange(const QString &text, NTypes::eTypes_t type)
{
    const QString min = CDataTypeParser::minTypeValue(type);
    const QString max = CDataTypeParser::maxTypeValue(type);
    bool ok = false;
    if (min.startsWith(QLatin1Char('-'))) {
        const qint64 number = CStr::strToI64(text, &ok, 0);
        return ok && number >= CStr::strToI64(min, nullptr, 10) && number <= CStr::strToI64(max, nullptr, 10);
    }
    return CStr::strToU64(text, &ok, 0) <= CStr::strToU64(max, nullptr, 10) && ok;
}

Result<CVariant> parseInteger(const QString &text, NTypes::eTypes_t type)
{
    static const QString form = QStringLiteral("[+-]?(0[xX][0-9A-Fa-f]+|0[0-7]*|[1-9][0-9]*)");
    // A command is handled as its 32-bit number and has no range of its own.
    const NTypes::eTypes_t number = type == NTypes::E_COMMAND ? NTypes::E_U32 : type;
    const QString expected =
        QStringLiteral("an integer from %1 to %2")
            .arg(CDataTypeParser::minTypeValue(number), CDataTypeParser::maxTypeValue(number));
    if (!matchWhole(form, text).hasMatch() || !isInRange(text, number))
        return refusal(text, type, expected);
    const Result<CVariant> value = parsed(text, number, expected);
    return value && type == NTypes::E_COMMAND ? value->convertTo(type) : value;
}

Result<CVariant> parseFloatingPoint(const QString &text, NTypes::eTypes_t type)
{
    static const QString form = QStringLiteral("[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][+-]?[0-9]+)?");
    const QString expected =
        QStringLiteral("a finite decimal number in range, not so small that it becomes 0");
    if (!matchWhole(form, text).hasMatch())
        return refusal(text, type, expected);
    Result<CVariant> value = parsed(text, type, expected);
    const QString mantissa = text.section(QLatin1Char('e'), 0, 0, QString::SectionCaseInsensitiveSeps);
    const auto isNonZeroDigit = [](QChar c) { return c >= QLatin1Char('1') && c <= QLatin1Char('9'); };
    if (value && value->toF64() == 0.0 && std::any_of(mantissa.begin(), mantissa.end(), isNonZeroDigit))
        return refusal(text, type, expected);
    return value;
}

Result<CVariant> parseFixedString(const QString &text, NTypes::eTypes_t type)
{
    const int units = int(CDataTypeParser::typeSize(type)) / 2;
    const QString expected = QStringLiteral("a text of at most %1 UTF-16 units").arg(units);
    if (text.size() > units)
        return refusal(text, type, expected);
    return parsed(text, type, expected);
}

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

Result<CVariant> parseEightBitString(const QString &text, NTypes::eTypes_t type)
{
    const int size = int(CDataTypeParser::typeSize(type));
    const QString expected = QStringLiteral("a text of at most %1 ASCII characters").arg(size);
    if (text.size() > size || !isAscii(text))
        return refusal(text, type, expected);
    return parsed(text, type, expected);
}

Result<CVariant> parseUtf16Character(const QString &text, NTypes::eTypes_t type)
{
    if (text.size() > 1)
        return refusal(text, type, QStringLiteral("one UTF-16 unit, or none for zero"));
    return CVariant(text.isEmpty() ? QChar(0) : text.at(0));
}

Result<CVariant> parseCharacter(const QString &text, NTypes::eTypes_t type)
{
    if (text.size() > 1 || !isAscii(text))
        return refusal(text, type, QStringLiteral("one ASCII character, or none for zero"));
    return CVariant(text.isEmpty() ? '\0' : text.at(0).toLatin1());
}

Result<CVariant> parseDateTime(const QString &text, NTypes::eTypes_t type)
{
    static const QString date = QStringLiteral("([0-9]{4})-([0-9]{2})-([0-9]{2})");
    static const QString time =
        QStringLiteral("([01][0-9]|2[0-3]):([0-5][0-9]):([0-5][0-9])(\\.[0-9]{1,2})?");
    static const QString form = date + QStringLiteral("[T ]") + time;
    if (text == QLatin1String("0000-00-00 00:00:00"))
        return CVariant(NTypes::sDateTime_t{});
    const QString expected = QStringLiteral("a date-time of the form 2024-03-01 12:30:45.67");
    const Captures captures = matchWhole(form, text);
    const auto field = [&captures](int number) { return captures.captured(number).toInt(); };
    const int hundredths = captures.captured(7).mid(1).leftJustified(2, QLatin1Char('0')).toInt();
    if (!captures.hasMatch() || !QDate::isValid(field(1), field(2), field(3)))
        return refusal(text, type, expected);
    const Result<CVariant> value = parsed(text, type, expected);
    // The record must have the fields of the text, also in a time zone whose clock skips this hour.
    NTypes::sDateTime_t record = {};
    const bool hasFields = value && value->toDateTime(record) && record.date.year == field(1)
                           && record.date.month == field(2) && record.date.day == field(3)
                           && record.time.hour == field(4) && record.time.minute == field(5)
                           && record.time.second == field(6) && record.time.hundredths == hundredths;
    return hasFields ? value : Result<CVariant>(refusal(text, type, expected));
}

// Up to five digits, without further zeros in front. By hand: a list may have such parts by the hundred
// thousand, and a regular expression would be made anew for each.
bool isPlainNumber(const QString &text)
{
    constexpr int mostDigits = 5;
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    return !text.isEmpty() && text.size() <= mostDigits && std::all_of(text.begin(), text.end(), isDigit)
           && (text.size() == 1 || text.at(0) != QLatin1Char('0'));
}

// Numbers joined by points, without further digits in front, each at most its limit.
template<std::size_t Count>
std::optional<std::array<int, Count>> dottedNumbers(const QString &text, const std::array<int, Count> &limits)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    std::array<int, Count> numbers = {};
    if (parts.size() != int(Count))
        return std::nullopt;
    for (std::size_t i = 0; i < Count; ++i) {
        const QString &part = parts[int(i)];
        if (!isPlainNumber(part) || part.toInt() > limits[i])
            return std::nullopt;
        numbers[i] = part.toInt();
    }
    return numbers;
}

constexpr int maxU8 = std::numeric_limits<quint8>::max();
constexpr int maxU16 = std::numeric_limits<quint16>::max();

// The versions are made from their numbers: as texts, parts above 32767 would read as 0.
Result<CVariant> parseVersion(const QString &text, NTypes::eTypes_t type)
{
    const auto parts = dottedNumbers<3>(text, {maxU8, maxU8, maxU16});
    if (!parts)
        return refusal(text, type, QStringLiteral("three numbers such as 1.2.300, at most 255.255.65535"));
    const auto [major, minor, build] = *parts;
    return CVariant(NTypes::sVersion_t{quint16(build), quint8(minor), quint8(major)});
}

Result<CVariant> parseVersion4(const QString &text, NTypes::eTypes_t type)
{
    const auto parts = dottedNumbers<4>(text, {maxU16, maxU16, maxU16, maxU16});
    if (!parts)
        return refusal(text, type, QStringLiteral("four numbers such as 1.2.3.4, each at most 65535"));
    const auto [first, second, third, fourth] = *parts;
    return CVariant(NTypes::sVersion4_t{quint16(fourth), quint16(third), quint16(second), quint16(first)});
}

Result<CVariant> parseIPv4Address(const QString &text, NTypes::eTypes_t type)
{
    const QString expected = QStringLiteral("an address such as 192.168.1.10");
    if (!dottedNumbers<4>(text, {maxU8, maxU8, maxU8, maxU8}))
        return refusal(text, type, expected);
    return parsed(text, type, expected);
}

Result<CVariant> parseHex(const QString &text, NTypes::eTypes_t type)
{
    const Result<QByteArray> bytes = bytesFromHex(text);
    if (!bytes)
        return bytes.error();
    if (const std::optional<Error> misfit = lengthMisfit(*bytes, type))
        return *misfit;
    return parsed(text, type, QStringLiteral("hexadecimal digits"));
}

Result<CVariant> valueFromText(const QString &text, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_I8:
    case NTypes::E_U16:
    case NTypes::E_I16:
    case NTypes::E_U32:
    case NTypes::E_I32:
    case NTypes::E_U64:
    case NTypes::E_I64:
    case NTypes::E_COMMAND:
        return parseInteger(text, type);
    case NTypes::E_F32:
    case NTypes::E_F64:
        return parseFloatingPoint(text, type);
    case NTypes::E_STRING32:
    case NTypes::E_STRING64:
    case NTypes::E_STRING128:
        return parseFixedString(text, type);
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
        return parseEightBitString(text, type);
    case NTypes::E_UTF16CHAR:
        return parseUtf16Character(text, type);
    case NTypes::E_CHAR:
        return parseCharacter(text, type);
    case NTypes::E_DATETIME:
        return parseDateTime(text, type);
    case NTypes::E_VERSION:
        return parseVersion(text, type);
    case NTypes::E_VERSION_4:
        return parseVersion4(text, type);
    case NTypes::E_IPV4ADDR:
        return parseIPv4Address(text, type);
    default:
        return parseHex(text, type);
    }
}

// Whether the device bytes, read again, are the value that the user typed.
bool readsBack(const QByteArray &bytes, const CVariant &value, const QString &text)
{
    const CVariant readBack = valueFromBytes(bytes, value.type());
    if (isTextType(value.type()))
        return exactText(readBack) == text;
    // By compareValue(), a four-part version is not even equal to itself.
    if (value.type() == NTypes::E_VERSION_4)
        return bytes == bytesFromValue(value);
    return readBack.compareValue(value);
}

} // namespace

Result<QByteArray> bytesFromText(const QString &text, NTypes::eTypes_t type)
{
    const Result<CVariant> value = valueFromText(text, type);
    if (!value)
        return value.error();
    const QByteArray bytes = bytesFromValue(*value);
    if (value->type() != type || lengthMisfit(bytes, type) || !readsBack(bytes, *value, text))
        return refusal(text, type, QStringLiteral("it would not read back as the same value"));
    return bytes;
}

} // namespace j6tool
