// SPDX-License-Identifier: MIT
#ifndef POWERSOFTEN_H
#define POWERSOFTEN_H

#include <QtGlobal>

#include <array>
#include <cmath>

template<typename Number, std::size_t Count>
constexpr std::array<Number, Count> makePowersOfTen()
{
    std::array<Number, Count> powers{1};
    for (std::size_t exponent = 1; exponent < Count; ++exponent)
        powers[exponent] = 10 * powers[exponent - 1];
    return powers;
}

// 10^0 to 10^19: all powers that 64 bits hold, each exact as quint64 and as double.
template<typename Number>
static constexpr std::array<Number, 20> powersOfTen = makePowersOfTen<Number, 20>();

// 10^0 to 10^22: all powers that are exact as double, as 5^22 has less than 53 bits.
static constexpr std::array<double, 23> exactPowersOfTen = makePowersOfTen<double, 23>();

static_assert(powersOfTen<quint64>.back() == Q_UINT64_C(10000000000000000000)
                  && powersOfTen<double>.back() == 10000000000000000000.0,
              "the largest power of ten of 64 bits");
static_assert(exactPowersOfTen.back() == 1e22, "5^22 times 2^22");

// pow(10.0, exponent). The C library is not asked where one division gives the nearest double: that of
// mingw-w64 makes 10^-2 a unit too large.
inline double powerOfTen(int exponent)
{
    constexpr int last = static_cast<int>(exactPowersOfTen.size()) - 1;
    if (exponent < -last || exponent > last)
        return std::pow(10.0, exponent);
    return exponent < 0 ? 1.0 / exactPowersOfTen[static_cast<std::size_t>(-exponent)]
                        : exactPowersOfTen[static_cast<std::size_t>(exponent)];
}

#endif // POWERSOFTEN_H
