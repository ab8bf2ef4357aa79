// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include "PowersOfTen.h"

#include <QStringView>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

// The units of "00", "01" ... "99" one after the other.
constexpr std::array<char16_t, 200> makeDigitPairs()
{
    std::array<char16_t, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char16_t>(u'0' + number / 10);
        pairs[2 * number + 1] = static_cast<char16_t>(u'0' + number % 10);
    }
    return pairs;
}

constexpr std::array<char16_t, 200> digitPairs = makeDigitPairs();

// The text of a number, written from its end to its beginning because division yields the last digits first.
class BackwardText
{
public:
    void prepend(char16_t unit) { mUnits[--mBegin] = unit; }

    void prependDigit(quint64 digit) { prepend(static_cast<char16_t>(u'0' + digit)); }

    void prependPair(quint64 number)
    {
        mBegin -= 2;
        std::memcpy(&mUnits[mBegin], &digitPairs[2 * number], 2 * sizeof(char16_t));
    }

    template<typename Unsigned>
    void prependInteger(Unsigned value)
    {
        for (; value >= 100; value /= 100)
            prependPair(value % 100);
        if (value >= 10)
            prependPair(value);
        else
            prependDigit(value);
    }

    // value / 10^decimals with all its decimals.
    void prependFixed(quint64 value, int decimals)
    {
        for (int left = decimals; left >= 2; left -= 2, value /= 100)
            prependPair(value % 100);
        if (decimals % 2 != 0) {
            prependDigit(value % 10);
            value /= 10;
        }
        if (decimals > 0)
            prepend(u'.');
        prependInteger(value);
    }

    QString text() const
    {
        return QStringView(&mUnits[mBegin], static_cast<qsizetype>(capacity - mBegin)).toString();
    }

private:
    // A sign, a point and 20 digits, and the zero before the point when all the digits are decimals.
    static constexpr std::size_t capacity = 24;

    std::array<char16_t, capacity> mUnits;
    std::size_t mBegin = capacity;
};

QString fixedText(bool negative, quint64 value, int decimals)
{
    BackwardText text;
    text.prependFixed(value, decimals);
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

// magnitude * 10^places, an exact half rounded up. The product of 53 and 64 bits is exact, so that there is no
// second rounding as with a product of doubles. Nothing where the integer arithmetic ends: at 2^53, which
// leaves out infinity and NaN too, or when the result has more than 64 bits.
#ifdef __SIZEOF_INT128__
std::optional<quint64> scaled(double magnitude, int places)
{
    __extension__ using Wide = unsigned __int128;
    constexpr quint64 hiddenBit = Q_UINT64_C(1) << fractionBits;
    constexpr int productBits = 53 + 64;

    const int shift = fractionBits - exponentOf(magnitude);
    if (shift <= 0)
        return std::nullopt;
    if (shift
        > productBits) // less than a half; zero and the subnormals, which have no hidden bit, among them
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
void chopZeros(quint64 &value, int &decimals)
{
    constexpr quint64 power = powersOfTen<quint64>[count];
    if (decimals >= count && value % power == 0) {
        value /= power;
        decimals -= count;
    }
}

// Without the zeros at the end of up to 15 decimals.
QString choppedText(bool negative, quint64 value, int decimals)
{
    chopZeros<8>(value, decimals);
    chopZeros<4>(value, decimals);
    chopZeros<2>(value, decimals);
    chopZeros<1>(value, decimals);
    return fixedText(negative, value, decimals);
}

} // namespace

template<typename Integer>
QString textOfInteger(Integer value)
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

template QString textOfInteger(qint32 value);
template QString textOfInteger(quint32 value);
template QString textOfInteger(qint64 value);
template QString textOfInteger(quint64 value);

QString textOfSignificant(double value, int significantDigits)
{
    const double magnitude = std::fabs(value);
    if (magnitude == 0)
        return QStringLiteral("0");
    const double exponentForm = powersOfTen<double>[static_cast<std::size_t>(significantDigits)];
    if (magnitude >= 0.0001 && magnitude < exponentForm) {
        const int places = significantDigits - integerDigits(magnitude);
        const std::optional<quint64> digits = scaled(magnitude, places);
        // Rounding may have led to the exponent form.
        if (digits && (places > 0 || static_cast<double>(*digits) < exponentForm))
            return choppedText(value < 0, *digits, places);
    }
    return QString::number(value, 'g', significantDigits);
}

QString textOfFixed(double value, int decimals)
{
    if (decimals >= 0 && decimals <= maxPlaces) {
        if (const std::optional<quint64> digits = scaled(std::fabs(value), decimals))
            return fixedText(value < 0, *digits, decimals);
    }
    return QString::number(value, 'f', decimals);
}
