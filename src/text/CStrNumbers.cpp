// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <CDataTypeParser.h>
#include <CMath.h>

#include "NumberParsing.h"
#include "NumberText.h"
#include "Utf16Units.h"

#include <QLocale>
#include <QStringRef>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

// The parsers of all types below 64 bits are the 32-bit ones.
template<typename T>
using ParsedAs = std::conditional_t<sizeof(T) == sizeof(qint64), T,
                                    std::conditional_t<std::is_signed<T>::value, qint32, quint32>>;

template<typename T>
std::optional<T> parseInteger(const QString &text, int base = 10)
{
    using Limits = std::numeric_limits<T>;
    bool ok = false;
    const auto number = parsedInteger<ParsedAs<T>>(text, &ok, base);
    if (!ok || number < Limits::min() || number > Limits::max())
        return std::nullopt;
    return static_cast<T>(number);
}

template<typename T>
std::optional<T> parseFloat(const QString &text)
{
    bool ok = false;
    const T number = parsedFloat<T>(text, &ok);
    return ok ? std::optional<T>(number) : std::nullopt;
}

// The three shapes of every parser: into an out-parameter, with a flag, and (value_or) with a fallback.
template<typename T>
bool store(const std::optional<T> &number, T &value)
{
    if (number)
        value = *number;
    return number.has_value();
}

template<typename T>
T flagged(const std::optional<T> &number, bool *ok)
{
    if (ok != nullptr)
        *ok = number.has_value();
    return number.value_or(T{});
}

// A fixed-point number is an integer part above `fractionBits` bits of fraction. A shift by the whole width
// would be undefined, hence the distinction.
constexpr unsigned int valueBits = std::numeric_limits<unsigned int>::digits;

constexpr unsigned int fractionMask(unsigned int fractionBits)
{
    return fractionBits < valueBits ? (1U << fractionBits) - 1U : ~0U;
}

constexpr unsigned int integerPart(unsigned int value, unsigned int fractionBits)
{
    return fractionBits < valueBits ? value >> fractionBits : 0U;
}

constexpr unsigned int raisedInteger(unsigned int integer, unsigned int fractionBits)
{
    return fractionBits < valueBits ? integer << fractionBits : 0U;
}

static_assert(fractionMask(0) == 0U && fractionMask(31) == 0x7FFFFFFFU && fractionMask(32) == 0xFFFFFFFFU,
              "the low bits, all of them from 32 on");

// The text of the units before the first zero unit; `data` may have any alignment, as byte arrays do.
QString textOfUnits(const void *data, int maxUnits)
{
    return QString(static_cast<const QChar *>(data), Utf16Units::textLength(data, maxUnits));
}

} // namespace

bool CStr::strToU8(const QString &text, unsigned char &value, int base)
{
    return store(parseInteger<unsigned char>(text, base), value);
}

unsigned char CStr::strToU8(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<unsigned char>(text, base), ok);
}

unsigned char CStr::strToU8(unsigned char fallback, const QString &text, int base)
{
    return parseInteger<unsigned char>(text, base).value_or(fallback);
}

bool CStr::strToU16(const QString &text, unsigned short &value, int base)
{
    return store(parseInteger<unsigned short>(text, base), value);
}

unsigned short CStr::strToU16(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<unsigned short>(text, base), ok);
}

unsigned short CStr::strToU16(unsigned short fallback, const QString &text, int base)
{
    return parseInteger<unsigned short>(text, base).value_or(fallback);
}

bool CStr::strToU32(const QString &text, unsigned int &value, int base)
{
    return store(parseInteger<unsigned int>(text, base), value);
}

unsigned int CStr::strToU32(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<unsigned int>(text, base), ok);
}

unsigned int CStr::strToU32(unsigned int fallback, const QString &text, int base)
{
    return parseInteger<unsigned int>(text, base).value_or(fallback);
}

bool CStr::strToU64(const QString &text, unsigned long long &value, int base)
{
    return store(parseInteger<unsigned long long>(text, base), value);
}

unsigned long long CStr::strToU64(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<unsigned long long>(text, base), ok);
}

unsigned long long CStr::strToU64(unsigned long long fallback, const QString &text, int base)
{
    return parseInteger<unsigned long long>(text, base).value_or(fallback);
}

bool CStr::strToI8(const QString &text, signed char &value, int base)
{
    return store(parseInteger<signed char>(text, base), value);
}

signed char CStr::strToI8(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<signed char>(text, base), ok);
}

signed char CStr::strToI8(signed char fallback, const QString &text)
{
    return parseInteger<signed char>(text).value_or(fallback);
}

bool CStr::strToI16(const QString &text, short &value, int base)
{
    return store(parseInteger<short>(text, base), value);
}

short CStr::strToI16(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<short>(text, base), ok);
}

short CStr::strToI16(short fallback, const QString &text)
{
    return parseInteger<short>(text).value_or(fallback);
}

bool CStr::strToI32(const QString &text, int &value, int base)
{
    return store(parseInteger<int>(text, base), value);
}

int CStr::strToI32(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<int>(text, base), ok);
}

int CStr::strToI32(int fallback, const QString &text)
{
    return parseInteger<int>(text).value_or(fallback);
}

bool CStr::strToI64(const QString &text, long long &value, int base)
{
    return store(parseInteger<long long>(text, base), value);
}

long long CStr::strToI64(const QString &text, bool *ok, int base)
{
    return flagged(parseInteger<long long>(text, base), ok);
}

long long CStr::strToI64(long long fallback, const QString &text)
{
    return parseInteger<long long>(text).value_or(fallback);
}

bool CStr::strToF32(const QString &text, float &value)
{
    return store(parseFloat<float>(text), value);
}

float CStr::strToF32(const QString &text, bool *ok)
{
    return flagged(parseFloat<float>(text), ok);
}

float CStr::strToF32(float fallback, const QString &text)
{
    return parseFloat<float>(text).value_or(fallback);
}

bool CStr::strToF64(const QString &text, double &value)
{
    return store(parseFloat<double>(text), value);
}

double CStr::strToF64(const QString &text, bool *ok)
{
    return flagged(parseFloat<double>(text), ok);
}

double CStr::strToF64(double fallback, const QString &text)
{
    return parseFloat<double>(text).value_or(fallback);
}

QString CStr::fromF32(float value, int decimals)
{
    constexpr int significantDigits = 6;
    const int room = significantDigits - static_cast<int>(CMath::countIntegerDigitsF32(value));
    return textOfFixed(static_cast<double>(value), std::max(0, std::min(decimals, room)));
}

QString CStr::fromF64(double value, int decimals)
{
    return textOfFixed(value, decimals);
}

QString CStr::doubleToString(double value, int precision, char format)
{
    const QLocale locale;
    QString text = locale.toString(value, format, precision);
    text.remove(locale.groupSeparator());
    return text;
}

QString CStr::nTypeToStr(NTypes::eTypes_t type)
{
    return CDataTypeParser::typeToStr(type);
}

QString CStr::fixPointToStr(unsigned int value, unsigned int fractionBits, const QChar &separator)
{
    QString text = QString::number(integerPart(value, fractionBits));
    text += separator;
    text += QString::number(value & fractionMask(fractionBits));
    return text;
}

unsigned int CStr::strToFixPoint(const QString &text, bool *ok, unsigned int fractionBits,
                                 const QChar &separator)
{
    bool parsed = false;
    unsigned int value = 0;
    const int position = text.indexOf(separator);
    if (position >= 0 && text.lastIndexOf(separator) == position) {
        value = raisedInteger(text.leftRef(position).toUInt(&parsed), fractionBits);
        if (parsed)
            value |= text.midRef(position + 1).toUInt(&parsed) & fractionMask(fractionBits);
    }
    if (ok != nullptr)
        *ok = parsed;
    return value;
}

QString CStr::fromLatin1(const char *data, int maxLen)
{
    if (data == nullptr || maxLen < 1)
        return {};
    return QString::fromLatin1(data, static_cast<int>(qstrnlen(data, static_cast<unsigned int>(maxLen))));
}

QString CStr::fromUtf16(const unsigned short *data, int byteLen)
{
    constexpr int unitSize = sizeof(unsigned short);
    if (data == nullptr || byteLen < unitSize)
        return {};
    return textOfUnits(data, byteLen / unitSize);
}

QString CStr::fromUtf16(const QByteArray &bytes)
{
    constexpr int unitSize = sizeof(unsigned short);
    return textOfUnits(bytes.constData(), bytes.size() / unitSize);
}

void CStr::toUtf16(const QString &text, unsigned short *dest, int byteLen)
{
    constexpr std::size_t unitSize = sizeof(unsigned short);
    if (dest == nullptr || byteLen < static_cast<int>(unitSize))
        return;
    const auto size = static_cast<std::size_t>(byteLen);
    const auto textSize = unitSize * static_cast<std::size_t>(text.size());
    std::memset(dest, 0, size);
    std::memcpy(dest, text.constData(), std::min(size - unitSize, textSize));
}
