// SPDX-License-Identifier: MIT
// Any numbers as texts and any texts as numbers, beside Qt's own functions and the standard library's; the
// arithmetic and the text buffers that go with them.
#include "Traversals.h"

#include <CStr.h>

#include <InputReader.h>
#include <MathChecks.h>
#include <Properties.h>
#include <TextBufferChecks.h>
#include <ValueChecks.h>

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

// The widest parser of the sign; below 64 bits it is the 32-bit one.
template<typename Number>
bool parsedByQt(const QString &text, int base, Number &number)
{
    bool ok = false;
    qint64 asSigned = 0;
    quint64 asUnsigned = 0;
    if constexpr (std::is_same<Number, unsigned long long>::value)
        asUnsigned = text.toULongLong(&ok, base);
    else if constexpr (std::is_same<Number, long long>::value)
        asSigned = text.toLongLong(&ok, base);
    else if constexpr (std::is_unsigned<Number>::value)
        asUnsigned = text.toUInt(&ok, base);
    else
        asSigned = text.toInt(&ok, base);
    using Limits = std::numeric_limits<Number>;
    if constexpr (std::is_unsigned<Number>::value) {
        number = static_cast<Number>(asUnsigned);
        return ok && asUnsigned <= Limits::max();
    } else {
        number = static_cast<Number>(asSigned);
        return ok && asSigned >= Limits::min() && asSigned <= Limits::max();
    }
}

// The three shapes of a parser, and the arguments that they share.
template<typename Number, typename... Base>
void checkShapes(const QString &text, bool isNumber, Number expected,
                 bool (*store)(const QString &, Number &, Base...),
                 Number (*flagged)(const QString &, bool *, Base...), Base... base)
{
    auto number = Number(42);
    require(store(text, number, base...) == isNumber, "a text is a number where Qt's parser says so");
    require(bytesOf(number) == bytesOf(isNumber ? expected : Number(42)),
            "a failure leaves the number alone");
    bool ok = !isNumber;
    require(bytesOf(flagged(text, &ok, base...)) == bytesOf(isNumber ? expected : Number(0)),
            "the number is Qt's, or 0");
    require(ok == isNumber, "the flag tells of the success");
    require(bytesOf(flagged(text, nullptr, base...)) == bytesOf(flagged(text, &ok, base...)),
            "the flag may be null");
}

constexpr bool isBase(int base)
{
    return base == 0 || (base >= 2 && base <= 36);
}

template<typename Number>
Number checkInteger(const QString &text, int base, bool (*store)(const QString &, Number &, int),
                    Number (*flagged)(const QString &, bool *, int), Number fallback)
{
    Number number{};
    const bool isNumber = isBase(base) && parsedByQt(text, base, number);
    checkShapes<Number, int>(text, isNumber, number, store, flagged, base);
    return isNumber ? number : fallback;
}

void checkIntegers(const QString &text, int base)
{
    const auto u8 = checkInteger<unsigned char>(text, base, &CStr::strToU8, &CStr::strToU8, 7);
    const auto u16 = checkInteger<unsigned short>(text, base, &CStr::strToU16, &CStr::strToU16, 7);
    const auto u32 = checkInteger<unsigned int>(text, base, &CStr::strToU32, &CStr::strToU32, 7);
    const auto u64 = checkInteger<unsigned long long>(text, base, &CStr::strToU64, &CStr::strToU64, 7);
    require(CStr::strToU8(7, text, base) == u8 && CStr::strToU16(7, text, base) == u16
                && CStr::strToU32(7, text, base) == u32 && CStr::strToU64(7, text, base) == u64,
            "a failure gives the fallback");
    checkInteger<signed char>(text, base, &CStr::strToI8, &CStr::strToI8, 7);
    checkInteger<short>(text, base, &CStr::strToI16, &CStr::strToI16, 7);
    checkInteger<int>(text, base, &CStr::strToI32, &CStr::strToI32, 7);
    checkInteger<long long>(text, base, &CStr::strToI64, &CStr::strToI64, 7);
    const auto i8 = checkInteger<signed char>(text, 10, &CStr::strToI8, &CStr::strToI8, 7);
    const auto i16 = checkInteger<short>(text, 10, &CStr::strToI16, &CStr::strToI16, 7);
    const auto i32 = checkInteger<int>(text, 10, &CStr::strToI32, &CStr::strToI32, 7);
    const auto i64 = checkInteger<long long>(text, 10, &CStr::strToI64, &CStr::strToI64, 7);
    require(CStr::strToI8(7, text) == i8 && CStr::strToI16(7, text) == i16 && CStr::strToI32(7, text) == i32
                && CStr::strToI64(7, text) == i64,
            "the fallback of a signed number is in base 10");
}

// What the standard library reads, whatever the locale, wherever both take the whole text for a number.
void checkByStandard(const QString &text, bool isNumber, double number)
{
    const QByteArray latin1 = text.toLatin1();
    const char *const end = latin1.constData() + latin1.size();
    double standard = 0.0;
    const auto [last, error] = std::from_chars(latin1.constData(), end, standard);
    if (last != end || latin1.isEmpty() || !isNumber)
        return;
    require(error == std::errc(), "a number outside the range fails");
    require(std::isnan(number) ? std::isnan(standard) : number == standard,
            "a number is the one that the standard library reads");
}

void checkFloats(const QString &text)
{
    bool isDouble = false;
    const double value = text.toDouble(&isDouble);
    checkShapes<double>(text, isDouble, value, &CStr::strToF64, &CStr::strToF64);
    checkByStandard(text, isDouble, value);
    require(bytesOf(CStr::strToF64(7.5, text)) == bytesOf(isDouble ? value : 7.5),
            "a failure gives the fallback");
    bool isFloat = false;
    const float single = text.toFloat(&isFloat);
    checkShapes<float>(text, isFloat, single, &CStr::strToF32, &CStr::strToF32);
    require(bytesOf(CStr::strToF32(7.5F, text)) == bytesOf(isFloat ? single : 7.5F),
            "a failure gives the fallback");
    require(!isFloat || isDouble, "every number of single precision is one of double precision");
}

void checkFormatting(double value, int decimals, char format)
{
    const QString text = bounded(allowance(0), "a number's text takes its digits",
                                 [value, decimals] { return CStr::fromF64(value, decimals); });
    require(text == QString::number(value, 'f', decimals), "a number's text is Qt's", text);
    const QString shortest = CStr::fromF64(value, QLocale::FloatingPointShortest);
    bool ok = false;
    const double again = CStr::strToF64(shortest, &ok);
    require(ok && (std::isnan(value) ? std::isnan(again) : again == value), "the shortest text reads back");
    const QLocale locale;
    require(CStr::doubleToString(value, decimals, format)
                == locale.toString(value, format, decimals).remove(locale.groupSeparator()),
            "the locale's text has no groups");

    const auto single = static_cast<float>(value);
    const double magnitude = std::fabs(std::trunc(static_cast<double>(single)));
    const int digits = magnitude < 2147483648.0 ? QString::number(magnitude, 'f', 0).size() : 1;
    const int shown = std::max(0, std::min(decimals, 6 - digits));
    require(CStr::fromF32(single, decimals) == QString::number(static_cast<double>(single), 'f', shown),
            "a float shows at most six digits");
}

unsigned int plainFixPoint(const QString &text, bool &ok, unsigned int fractionBits, QChar separator)
{
    ok = false;
    const QStringList parts = text.split(separator, Qt::KeepEmptyParts);
    if (parts.size() != 2)
        return 0;
    const quint64 integer = parts.at(0).toUInt(&ok);
    if (!ok)
        return 0;
    const unsigned int bits = std::min(fractionBits, 32U);
    const quint64 fraction = parts.at(1).toUInt(&ok);
    return static_cast<unsigned int>((integer << bits) | (fraction & ((quint64(1) << bits) - 1)));
}

void checkFixPoint(const QString &text, unsigned int value, unsigned int fractionBits, QChar separator)
{
    const QString shown = CStr::fixPointToStr(value, fractionBits, separator);
    bool ok = false;
    // A digit, or what counts as white space or a sign, is no separator that can be found again.
    if (separator.isPunct() && separator != QLatin1Char('-'))
        require(CStr::strToFixPoint(shown, &ok, fractionBits, separator) == value && ok,
                "a fixed-point number comes back from its text", shown);
    bool plainOk = false;
    for (const QString &each : {text, shown}) {
        const unsigned int plain = plainFixPoint(each, plainOk, fractionBits, separator);
        require(CStr::strToFixPoint(each, &ok, fractionBits, separator) == plain && ok == plainOk,
                "a fixed-point text is two numbers around one separator", each);
    }
}

// What all parsers together may ask for; their results are checked one by one.
void checkParsersMemory(const QString &text, int base, unsigned int fractionBits, QChar separator)
{
    bounded(allowance(text.size()), "integers of a text cost memory in proportion to it", [&text, base] {
        CStr::strToU8(text, nullptr, base);
        CStr::strToU16(text, nullptr, base);
        CStr::strToU32(text, nullptr, base);
        CStr::strToU64(text, nullptr, base);
        CStr::strToI8(text, nullptr, base);
        CStr::strToI16(text, nullptr, base);
        CStr::strToI32(text, nullptr, base);
        CStr::strToI64(text, nullptr, base);
    });
    bounded(allowance(text.size()), "other numbers of a text cost memory in proportion to it", [&] {
        CStr::strToF32(text);
        CStr::strToF64(text);
        CStr::strToFixPoint(text, nullptr, fractionBits, separator);
    });
}

void checkFormatsMemory(double value, int decimals, char format, unsigned int fractionBits, QChar separator)
{
    bounded(allowance(0), "the texts of a number take its digits", [&] {
        CStr::fromF64(value, QLocale::FloatingPointShortest);
        CStr::fromF32(static_cast<float>(value), decimals);
        CStr::doubleToString(value, decimals, format);
        CStr::fixPointToStr(plainOf<quint32>(bytesOf(value)), fractionBits, separator);
    });
}

} // namespace

void traverseNumberTexts(const QByteArray &input)
{
    InputReader reader(input);
    const auto value = reader.take<double>();
    const int decimals = reader.takeChoice(256) - 128;
    const int base = reader.takeChoice(256) - 128;
    const auto places = reader.take<quint32>();
    const auto separator = reader.take<QChar>();
    const QByteArray bytes = reader.takeRest();
    const QString text = InputReader(bytes).takeText();

    const char format = "efgEG"[places % 5];
    const auto fractionBits = static_cast<unsigned int>(decimals);
    checkParsersMemory(text, base, fractionBits, separator);
    checkFormatsMemory(value, decimals, format, fractionBits, separator);
    checkIntegers(text, base);
    checkFloats(text);
    checkFormatting(value, decimals, format);
    checkFixPoint(text, plainOf<quint32>(bytesOf(value)), fractionBits, separator);
    checkFixPoint(text, places, static_cast<quint8>(base) % 40U, separator);
    checkArithmetic(value, places);
    checkArithmetic(static_cast<double>(plainOf<float>(bytesOf(value))), places % 8);
    checkChecksums(bytes, decimals, static_cast<unsigned short>(places));
    checkTextBuffers(bytes, decimals);
}
