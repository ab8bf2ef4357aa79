// SPDX-License-Identifier: MIT
#ifndef UTF16UNITS_H
#define UTF16UNITS_H

#include <QtEndian>
#include <QtGlobal>

#include <cstddef>
#include <cstring>

// Four UTF-16 units looked at in one step: the first one in the lowest bits, whatever the processor's byte
// order and the alignment of the bytes.
namespace Utf16Units {

constexpr int stepUnits = 4;
constexpr int stepBytes = 8;

// The same unit four times.
constexpr quint64 fourTimes(quint16 unit)
{
    return unit * Q_UINT64_C(0x0001000100010001);
}

// Up to four units, zeros in place of those that are missing.
inline quint64 load(const char *bytes, int size = stepBytes)
{
    quint64 units = 0;
    std::memcpy(&units, bytes, static_cast<std::size_t>(size));
    return qFromLittleEndian(units);
}

// Whether one of them is D800 or above. That is 8000 + 5800: such a unit has the top bit, and its other bits
// and 2800 together reach it, too.
constexpr bool reachesSurrogates(quint64 units)
{
    const quint64 sums = (units & fourTimes(0x7FFF)) + fourTimes(0x2800);
    return (units & sums & fourTimes(0x8000)) != 0;
}

static_assert(!reachesSurrogates(0x0000'7FFF'8000'D7FF) && !reachesSurrogates(0xD7FF'D7FF'D7FF'0000)
                  && reachesSurrogates(0x0000'0000'0000'D800) && reachesSurrogates(0xFFFF'0000'0000'0000),
              "exact for each unit");

// A top bit at the first zero unit; there may be more above it, none below it.
constexpr quint64 zeroMarks(quint64 units)
{
    return (units - fourTimes(1)) & ~units & fourTimes(0x8000);
}

// How many units stand before the first zero unit, of at most `maxUnits`.
inline int textLength(const void *data, int maxUnits)
{
    const auto *bytes = static_cast<const char *>(data);
    for (int units = 0; units < maxUnits; units += stepUnits, bytes += stepBytes) {
        const int left = maxUnits - units;
        const quint64 zeros = zeroMarks(left < stepUnits ? load(bytes, 2 * left) : load(bytes));
        if (zeros != 0)
            return units + static_cast<int>(qCountTrailingZeroBits(zeros)) / 16;
    }
    return maxUnits;
}

} // namespace Utf16Units

#endif // UTF16UNITS_H
