// SPDX-License-Identifier: MIT
#ifndef BACKWARDTEXT_H
#define BACKWARDTEXT_H

#include <QString>
#include <QStringView>

#include <array>
#include <cstddef>
#include <cstring>

// A short text of numbers, written from its end to its beginning because division yields the last digits
// first. Its one allocation is the QString at the end.
class BackwardText
{
public:
    void prepend(char16_t unit) { mUnits[--mBegin] = unit; }

    // Two digits of a number below 100.
    void prependPair(unsigned int number)
    {
        mBegin -= 2;
        std::memcpy(&mUnits[mBegin], &digitPairs[2 * std::size_t{number}], 2 * sizeof(char16_t));
    }

    template<typename Unsigned>
    void prependInteger(Unsigned value)
    {
        for (; value >= 100; value /= 100)
            prependPair(static_cast<unsigned int>(value % 100));
        if (value >= 10)
            prependPair(static_cast<unsigned int>(value));
        else
            prepend(static_cast<char16_t>(u'0' + value));
    }

    QString text() const
    {
        return QStringView(&mUnits[mBegin], static_cast<qsizetype>(capacity - mBegin)).toString();
    }

private:
    // The units of "00", "01" ... "99" one after the other.
    static constexpr std::array<char16_t, 200> makeDigitPairs()
    {
        std::array<char16_t, 200> pairs{};
        for (std::size_t number = 0; number < 100; ++number) {
            pairs[2 * number] = static_cast<char16_t>(u'0' + number / 10);
            pairs[2 * number + 1] = static_cast<char16_t>(u'0' + number % 10);
        }
        return pairs;
    }

    // Four numbers of 16 bits and the points between them.
    static constexpr std::size_t capacity = 24;
    static const std::array<char16_t, 200> digitPairs;

    std::array<char16_t, capacity> mUnits{};
    std::size_t mBegin = capacity;
};

inline constexpr std::array<char16_t, 200> BackwardText::digitPairs = makeDigitPairs();

#endif // BACKWARDTEXT_H
