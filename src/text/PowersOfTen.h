// SPDX-License-Identifier: MIT
#ifndef POWERSOFTEN_H
#define POWERSOFTEN_H

#include <QtGlobal>

#include <array>
#include <cmath>

// 10^0 to 10^19: all powers that 64 bits hold, each exact as quint64 and as double.
template<typename Number>
constexpr std::array<Number, 20> makePowersOfTen()
{
    std::array<Number, 20> powers{1};
    for (std::size_t exponent = 1; exponent < powers.size(); ++exponent)
        powers[exponent] = 10 * powers[exponent - 1];
    return powers;
}

template<typename Number>
static constexpr std::array<Number, 20> powersOfTen = makePowersOfTen<Number>();

static_assert(powersOfTen<quint64>.back() == Q_UINT64_C(10000000000000000000)
                  && powersOfTen<double>.back() == 10000000000000000000.0,
              "the largest power of ten of 64 bits");

// pow(10.0, exponent). The C library is not asked where one division gives the nearest double: that of
// mingw-w64 makes 10^-2 a unit too large.
inline double powerOfTen(int exponent)
{
    constexpr const auto &powers = powersOfTen<double>;
    constexpr int last = static_cast<int>(powers.size()) - 1;
    if (exponent < -last || exponent > last)
        return std::pow(10.0, exponent);
    return exponent < 0 ? 1.0 / powers[static_cast<std::size_t>(-exponent)]
                        : powers[static_cast<std::size_t>(exponent)];
}

#endif // POWERSOFTEN_H
