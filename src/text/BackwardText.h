// SPDX-License-Identifier: MIT
#ifndef BACKWARDTEXT_H
#define BACKWARDTEXT_H

#include <QString>
#include <QStringView>

#include <array>
#include <cstddef>
#include <cstring>

// The units of "00", "01" ... "99" one after the other.
struct DigitPairs
{
    std::array<char16_t, 200> units{};

    constexpr DigitPairs()
    {
        for (std::size_t number = 0; number < 100; ++number) {
            units[2 * number] = static_cast<char16_t>(u'0' + number / 10);
            units[2 * number + 1] = static_cast<char16_t>(u'0' + number % 10);
        }
    }
};

inline constexpr DigitPairs digitPairs;

// A short text of numbers, written from its end to its beginning because division yields the last digits
// first. Its one allocation is the QString.
class BackwardText
{
public:
    void prepend(char16_t unit) { mUnits[--mBegin] = unit; }

    void prependDigit(quint64 digit) { prepend(static_cast<char16_t>(u'0' + digit)); }

    void prependPair(quint64 number)
    {
        mBegin -= 2;
        std::memcpy(&mUnits[mBegin], &digitPairs.units[2 * number], 2 * sizeof(char16_t));
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

    QString text() const
    {
        return QStringView(&mUnits[mBegin], static_cast<qsizetype>(capacity - mBegin)).toString();
    }

private:
    // The longest texts: a sign, a point and 20 digits with a zero before the point; four numbers of 16 bits
    // and the points between them.
    static constexpr std::size_t capacity = 24;

    std::array<char16_t, capacity> mUnits{};
    std::size_t mBegin = capacity;
};

#endif // BACKWARDTEXT_H
