// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include "BackwardText.h"
#include "PowersOfTen.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

// digits / 10^decimals, written with all these decimals.
struct Fixed
{
    quint64 digits;
    int decimals;
};

// The same times 10^exponent, with one digit before the point.
struct Scientific
{
    Fixed mantissa;
    int exponent;
};

void prependFixed(BackwardText &text, Fixed number)
{
    for (int left = number.decimals; left >= 2; left -= 2, number.digits /= 100)
        text.prependPair(number.digits % 100);
    if (number.decimals % 2 != 0) {
        text.prependDigit(number.digits % 10);
        number.digits /= 10;
    }
    if (number.decimals > 0)
        text.prepend(u'.');
    text.prependInteger(number.digits);
}

QString fixedText(bool negative, const Fixed &number)
{
    BackwardText text;
    prependFixed(text, number);
    if (negative)
        text.prepend(u'-');
    return text.text();
}

QString scientificText(bool negative, const Scientific &number)
{
    BackwardText text;
    const auto exponent = static_cast<quint64>(std::abs(number.exponent));
    if (exponent < 100)
        text.prependPair(exponent);
    else
        text.prependInteger(exponent);
    text.prepend(number.exponent < 0 ? u'-' : u'+');
    text.prepend(u'e');
    prependFixed(text, number.mantissa);
    if (negative)
        text.prepend(u'-');
    return text.text();
}

// A double of 1 or more is (2^52 + fraction) * 2^(exponent - 52); the same holds below 1, down to the
// subnormals.
constexpr int fractionBits = std::numeric_limits<double>::digits - 1;
constexpr int exponentBias = std::numeric_limits<double>::max_exponent - 1;

static_assert(std::numeric_limits<double>::is_iec559 && fractionBits == 52 && exponentBias == 1023,
              "the bits of binary64");

quint64 bitsOfDouble(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

int exponentOf(double magnitude)
{
    return static_cast<int>(bitsOfDouble(magnitude) >> fractionBits) - exponentBias;
}

// The largest power by which scaled() multiplies.
constexpr int maxPlaces = static_cast<int>(powersOfTen<quint64>.size()) - 1;

// magnitude * 10^places, an exact half rounded up. The product of 53 and 64 bits is exact; one of doubles
// would be rounded itself. Nothing where the integer arithmetic ends: from 2^53 on, infinity and NaN among
// these, and when the result has more than 64 bits.
#if defined(__SIZEOF_INT128__) && !defined(J6CORE_NO_INT128)
std::optional<quint64> scaled(double magnitude, int places)
{
    __extension__ using Wide = unsigned __int128;
    constexpr quint64 hiddenBit = Q_UINT64_C(1) << fractionBits;
    constexpr int productBits = 53 + 64;

    const int shift = fractionBits - exponentOf(magnitude);
    if (shift <= 0)
        return std::nullopt;
    if (shift > productBits) // less than a half, as are zero and the subnormals, which have no hidden bit
        return 0;
    const quint64 mantissa = (bitsOfDouble(magnitude) & (hiddenBit - 1)) | hiddenBit;
    const Wide product = Wide(mantissa) * powersOfTen<quint64>[static_cast<std::size_t>(places)];
    const Wide rounded = (product + (Wide(1) << (shift - 1))) >> shift;
    if (rounded > std::numeric_limits<quint64>::max())
        return std::nullopt;
    return static_cast<quint64>(rounded);
}
#else
std::optional<quint64> scaled(double, int)
{
    return std::nullopt;
}
#endif

// How many digits stand before the point; below 0.1 it is minus the number of zeros behind the point. Each of
// the doubles 0.1, 0.01 and 0.001 is the first one that is no less than the decimal number.
int integerDigits(double magnitude)
{
    if (magnitude < 1.0)
        return -int(magnitude < 0.1) - int(magnitude < 0.01) - int(magnitude < 0.001);
    // log10(2) is 1233/4096 nearly enough for 64 bits.
    const int digits = ((exponentOf(magnitude) + 1) * 1233) >> 12;
    return digits + int(magnitude >= powersOfTen<double>[static_cast<std::size_t>(digits)]);
}

template<int count>
void chopZeros(Fixed &number)
{
    constexpr quint64 power = powersOfTen<quint64>[count];
    if (number.decimals >= count && number.digits % power == 0) {
        number.digits /= power;
        number.decimals -= count;
    }
}

// Without the zeros at the end of up to 15 decimals.
Fixed chopped(Fixed number)
{
    chopZeros<8>(number);
    chopZeros<4>(number);
    chopZeros<2>(number);
    chopZeros<1>(number);
    return number;
}

// 'g' for numbers from 0.0001 to where the exponent form begins, computed exactly.
std::optional<Fixed> pointForm(double magnitude, int significantDigits)
{
    const double limit = powersOfTen<double>[static_cast<std::size_t>(significantDigits)];
    if (!(magnitude >= 0.0001 && magnitude < limit))
        return std::nullopt;
    const int decimals = significantDigits - integerDigits(magnitude);
    const std::optional<quint64> digits = scaled(magnitude, decimals);
    if (!digits || (decimals == 0 && static_cast<double>(*digits) == limit))
        return std::nullopt;
    return chopped({*digits, decimals});
}

// 'g' for numbers from where the exponent form begins to 2^63, computed exactly. A fraction cannot change how
// the whole number is rounded, for a half is rounded up.
std::optional<Scientific> wholeForm(double magnitude, int significantDigits)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double first = powersOfTen<double>[static_cast<std::size_t>(significantDigits)];
    if (!(magnitude >= first && magnitude < limit))
        return std::nullopt;
    const auto whole = static_cast<quint64>(magnitude);
    int digits = significantDigits + 1;
    while (digits < maxPlaces && whole >= powersOfTen<quint64>[static_cast<std::size_t>(digits)])
        ++digits;
    const quint64 power = powersOfTen<quint64>[static_cast<std::size_t>(digits - significantDigits)];
    const quint64 rounded = whole / power + quint64(2 * (whole % power) >= power);
    if (rounded == powersOfTen<quint64>[static_cast<std::size_t>(significantDigits)])
        return Scientific{{1, 0}, digits}; // nines rounded up
    return Scientific{chopped({rounded, significantDigits - 1}), digits - 1};
}

// What nines below it are rounded up to; the point form begins with it.
bool isTenThousandth(const Scientific &number)
{
    return number.exponent == -4 && number.mantissa.digits == 1;
}

#ifdef __cpp_lib_to_chars
// The fewest digits that are this number and no other.
Scientific shortest(double magnitude)
{
    std::array<char, 32> text{};
    char *const end = text.data() + text.size();
    std::to_chars(text.data(), end, magnitude, std::chars_format::scientific);
    const char *unit = text.data();
    Fixed mantissa{static_cast<quint64>(*unit++ - '0'), 0};
    if (*unit == '.') {
        for (++unit; *unit != 'e'; ++unit, ++mantissa.decimals)
            mantissa.digits = 10 * mantissa.digits + static_cast<quint64>(*unit - '0');
    }
    ++unit;
    int exponent = 0;
    std::from_chars(*unit == '+' ? unit + 1 : unit, end, exponent);
    return {mantissa, exponent};
}

// The mantissa with at most so many digits. Nothing when the shortest digits end in the very middle between
// two results: the number itself may be on either side of it. Otherwise both are on the same side, for the
// middle is the shorter text of the two.
std::optional<Fixed> rounded(const Fixed &mantissa, int significantDigits)
{
    const int excess = mantissa.decimals + 1 - significantDigits;
    if (excess <= 0)
        return mantissa;
    const quint64 power = powersOfTen<quint64>[static_cast<std::size_t>(excess)];
    const quint64 rest = mantissa.digits % power;
    if (2 * rest == power)
        return std::nullopt;
    return chopped({mantissa.digits / power + quint64(2 * rest > power), significantDigits - 1});
}

// 'g' for numbers that need an exponent, and for what is rounded to 0.0001, which needs none any more. A
// subnormal has fewer than 15 digits to rely on.
std::optional<Scientific> exponentForm(double magnitude, int significantDigits)
{
    if (!std::isnormal(magnitude))
        return std::nullopt;
    const Scientific exact = shortest(magnitude);
    const std::optional<Fixed> mantissa = rounded(exact.mantissa, significantDigits);
    if (!mantissa)
        return std::nullopt;
    const bool carries = mantissa->digits == 10; // nines rounded up
    const Scientific number{carries ? Fixed{1, 0} : *mantissa, exact.exponent + int(carries)};
    const bool needsNoExponent = number.exponent >= -4 && number.exponent < significantDigits;
    if (needsNoExponent && !isTenThousandth(number))
        return std::nullopt;
    return number;
}
#else
std::optional<Scientific> exponentForm(double, int)
{
    return std::nullopt;
}
#endif

template<typename Integer>
QString integerText(Integer value)
{
    using Unsigned = std::make_unsigned_t<Integer>;
    const bool negative = value < 0;
    const auto bits = static_cast<Unsigned>(value);
    BackwardText text;
    text.prependInteger(negative ? Unsigned(0) - bits : bits);
    if (negative)
        text.prepend(u'-');
    return text.text();
}

} // namespace

QString textOfInteger(qint32 value)
{
    return integerText(value);
}

QString textOfInteger(quint32 value)
{
    return integerText(value);
}

QString textOfInteger(qint64 value)
{
    return integerText(value);
}

QString textOfInteger(quint64 value)
{
    return integerText(value);
}

QString textOfSignificant(double value, int significantDigits)
{
    if (value == 0)
        return QStringLiteral("0");
    const double magnitude = std::fabs(value);
    if (const std::optional<Fixed> number = pointForm(magnitude, significantDigits))
        return fixedText(value < 0, *number);
    if (const std::optional<Scientific> number = wholeForm(magnitude, significantDigits))
        return scientificText(value < 0, *number);
    if (const std::optional<Scientific> number = exponentForm(magnitude, significantDigits))
        return isTenThousandth(*number) ? fixedText(value < 0, {1, 4}) : scientificText(value < 0, *number);
    return QString::number(value, 'g', significantDigits);
}

QString textOfFixed(double value, int decimals)
{
    if (decimals >= 0 && decimals <= maxPlaces) {
        if (const std::optional<quint64> digits = scaled(std::fabs(value), decimals))
            return fixedText(value < 0, {*digits, decimals});
    }
    return QString::number(value, 'f', decimals);
}
