// SPDX-License-Identifier: MIT
#include "NumberParsing.h"

#include "PowersOfTen.h"

#include <cfloat>
#include <cstdlib>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

// Reads a text from its beginning.
class PlainReader
{
public:
    explicit PlainReader(const QString &text) : mNext(text.constBegin()), mEnd(text.constEnd()) {}

    bool atEnd() const { return mNext == mEnd; }
    int left() const { return static_cast<int>(mEnd - mNext); }

    bool isAt(char16_t unit) const { return !atEnd() && mNext->unicode() == unit; }

    bool skip(char16_t unit)
    {
        const bool found = isAt(unit);
        mNext += int(found);
        return found;
    }

    // Appends the digits that follow to the number and tells how many they were.
    template<typename Unsigned>
    int readDigits(Unsigned &number)
    {
        const QChar *const begin = mNext;
        for (; !atEnd(); ++mNext) {
            const unsigned int digit = mNext->unicode() - unsigned{u'0'};
            if (digit > 9)
                break;
            number = 10 * number + digit;
        }
        return static_cast<int>(mNext - begin);
    }

    // An 'e', a sign and two digits, and nothing behind them.
    bool readExponent(int &exponent)
    {
        constexpr int size = 4;
        if (left() != size || !skip(u'e'))
            return false;
        const bool negative = skip(u'-');
        unsigned int number = 0;
        const bool isPlain = (negative || skip(u'+')) && readDigits(number) == 2;
        exponent = negative ? -static_cast<int>(number) : static_cast<int>(number);
        return isPlain;
    }

private:
    const QChar *mNext;
    const QChar *mEnd;
};

// number * 10^exponent where the power is exact: the product or quotient is rounded once, as the whole
// decimal number would be.
std::optional<double> scaled(double number, int exponent)
{
    const auto places = static_cast<std::size_t>(std::abs(exponent));
    if (places >= powersOfTen<double>.size())
        return std::nullopt;
    return exponent < 0 ? number / powersOfTen<double>[places] : number * powersOfTen<double>[places];
}

// The processor multiplies and divides doubles with no more bits than they have.
constexpr bool dividesExactly = FLT_EVAL_METHOD == 0;

std::optional<double> plainDouble(const QString &text)
{
    constexpr quint64 lastExact = Q_UINT64_C(1) << std::numeric_limits<double>::digits;

    PlainReader reader(text);
    const bool negative = reader.skip(u'-');
    quint64 number = 0;
    const int digits = reader.readDigits(number);
    const bool hasPoint = digits > 0 && reader.skip(u'.');
    const int decimals = hasPoint ? reader.readDigits(number) : 0;
    int exponent = 0;
    const bool isPlain =
        digits > 0 && hasPoint == (decimals > 0) && (reader.atEnd() || reader.readExponent(exponent));
    if (!isPlain || digits + decimals > std::numeric_limits<quint64>::digits10 || number > lastExact)
        return std::nullopt;
    // Not a branch: signs cannot be predicted.
    constexpr double signs[] = {1.0, -1.0};
    return scaled(signs[int(negative)] * static_cast<double>(number), exponent - decimals);
}

template<typename Integer>
Integer integerByQt(const QString &text, bool *ok, int base)
{
    if constexpr (std::is_same<Integer, qint32>::value)
        return text.toInt(ok, base);
    else if constexpr (std::is_same<Integer, quint32>::value)
        return text.toUInt(ok, base);
    else if constexpr (std::is_same<Integer, qint64>::value)
        return text.toLongLong(ok, base);
    else
        return text.toULongLong(ok, base);
}

template<typename Float>
Float floatByQt(const QString &text, bool *ok)
{
    if constexpr (std::is_same<Float, float>::value)
        return text.toFloat(ok);
    else
        return text.toDouble(ok);
}

// The number read by hand, if it is one, else Qt's answer.
template<typename Number, typename Plain, typename ByQt>
Number plainOr(const std::optional<Plain> &plain, bool *ok, ByQt byQt)
{
    if (!plain)
        return byQt();
    if (ok != nullptr)
        *ok = true;
    return static_cast<Number>(*plain);
}

} // namespace

std::optional<qint64> plainInteger(const QString &text, bool isSigned, int maxDigits)
{
    PlainReader reader(text);
    // In this order, because signs and lengths cannot be predicted, but what is not plain is rare.
    const bool negative = reader.skip(u'-');
    const int digits = reader.left();
    if (digits < 1 || digits > maxDigits || (negative && !isSigned) || (reader.isAt(u'0') && digits > 1))
        return std::nullopt;
    quint64 number = 0;
    if (reader.readDigits(number) < digits)
        return std::nullopt;
    const auto value = static_cast<qint64>(number);
    return negative ? -value : value;
}

template<typename Integer>
Integer parsedInteger(const QString &text, bool *ok, int base)
{
    if (base != 0 && base != 10)
        return integerByQt<Integer>(text, ok, base);
    return plainOr<Integer>(plainInteger(text, std::is_signed<Integer>::value, safeDigits(sizeof(Integer))),
                            ok, [&] { return integerByQt<Integer>(text, ok, base); });
}

template qint32 parsedInteger(const QString &text, bool *ok, int base);
template quint32 parsedInteger(const QString &text, bool *ok, int base);
template qint64 parsedInteger(const QString &text, bool *ok, int base);
template quint64 parsedInteger(const QString &text, bool *ok, int base);

template<typename Float>
Float parsedFloat(const QString &text, bool *ok)
{
    // A float is a narrowed double to Qt too; no plain number is beyond its range at either end.
    return plainOr<Float>(dividesExactly ? plainDouble(text) : std::nullopt, ok,
                          [&] { return floatByQt<Float>(text, ok); });
}

template float parsedFloat(const QString &text, bool *ok);
template double parsedFloat(const QString &text, bool *ok);
