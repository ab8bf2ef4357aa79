// SPDX-License-Identifier: MIT
#ifndef NUMBERSAMPLES_H
#define NUMBERSAMPLES_H

#include <QVector>
#include <QtGlobal>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

// Numbers of every kind, the same ones in every run.
namespace NumberSamples {

// How many samples a row draws. J6CORE_NUMBER_SAMPLES asks for more than the suite has time for; 10000000 is
// worth it after a change of how numbers are written or read (a Release build takes some minutes).
inline int sampleCount()
{
    constexpr int usual = 100000;
    bool isSet = false;
    const int count = qEnvironmentVariableIntValue("J6CORE_NUMBER_SAMPLES", &isSet);
    return isSet ? count : usual;
}

// A source of samples; each copy starts anew.
template<typename T>
using Source = std::function<T(std::mt19937_64 &random)>;

inline int upTo(int last, std::mt19937_64 &random)
{
    return static_cast<int>(random() % static_cast<unsigned int>(last + 1));
}

// Any number that the type's bits can mean, integers of every length among them.
template<typename T>
T anyBits(std::mt19937_64 &random)
{
    quint64 bits = random();
    if constexpr (std::is_integral<T>::value)
        return static_cast<T>(static_cast<T>(bits) >> upTo(8 * int(sizeof(T)) - 1, random));
    T value{};
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Numbers as people write them: a few digits and a moderate power of ten.
template<typename T>
T decimal(std::mt19937_64 &random)
{
    const quint64 digits = random() >> (10 + upTo(53, random));
    const double value = static_cast<double>(digits) / std::pow(10.0, upTo(22, random) - 3);
    return static_cast<T>(random() % 2 == 0 ? value : -value);
}

// Exactly in the middle between two shorter decimal numbers, as 67927.25, or one step away from it.
template<typename T>
T nearTie(std::mt19937_64 &random)
{
    const quint64 number = 2 * (random() >> (12 + upTo(50, random))) + 1;
    const T tie = std::ldexp(static_cast<T>(number), -1 - upTo(20, random));
    const T targets[] = {tie, T(0), std::numeric_limits<T>::infinity()};
    return std::nextafter(tie, targets[upTo(2, random)]);
}

// Numbers of an even distribution over the digits before the point, with all their bits.
template<typename T>
T moderate(std::mt19937_64 &random)
{
    const T fraction = static_cast<T>(1.0 + std::ldexp(static_cast<double>(random() >> 12), -52));
    return std::ldexp(random() % 2 == 0 ? fraction : -fraction, upTo(90, random) - 25);
}

// Whole numbers from a million on, exactly in the middle between two of six or of fifteen digits (as far as
// the type can hold them), or one step away from it. Digits that are mostly nines carry over.
template<typename T>
T nearWholeTie(std::mt19937_64 &random)
{
    const int digits = random() % 2 == 0 ? 6 : 15;
    const auto power = static_cast<quint64>(std::llround(std::pow(10.0, digits)));
    const quint64 mantissa =
        random() % 4 == 0 ? power - 1 - random() % 3 : power / 10 + random() % (power - power / 10);
    quint64 number = 10 * mantissa + 5;
    for (int zeros = upTo(17 - digits, random); zeros > 0; --zeros)
        number *= 10;
    const T tie = static_cast<T>(number);
    const T targets[] = {tie, T(0), std::numeric_limits<T>::infinity()};
    const T near = std::nextafter(tie, targets[upTo(2, random)]);
    return random() % 2 == 0 ? near : -near;
}

// On both sides of what is rounded up to 0.0001, where the point form begins.
template<typename T>
T nearTenThousandth(std::mt19937_64 &random)
{
    const double digits = 9.0 + static_cast<double>(random() % 11);
    const double value =
        0.0001 * (1.0 + (random() % 4 == 0 ? 1 : -1) * digits * std::pow(10.0, -upTo(18, random)));
    return static_cast<T>(random() % 2 == 0 ? value : -value);
}

template<typename T>
void appendWithNeighbours(QVector<T> &values, T value)
{
    constexpr T infinity = std::numeric_limits<T>::infinity();
    T below = value;
    T above = value;
    values << value << -value;
    for (int step = 0; step < 3; ++step) {
        below = std::nextafter(below, T(0));
        above = std::nextafter(above, infinity);
        values << below << -below << above << -above;
    }
}

// Read by the standard library: neither the tested one nor Qt has a part in it.
template<typename T>
T parsed(const std::string &text)
{
    if constexpr (std::is_same<T, float>::value)
        return std::strtof(text.c_str(), nullptr);
    else
        return std::strtod(text.c_str(), nullptr);
}

// Powers of ten and two, five times those, and the ends of the ranges, with their neighbours.
template<typename T>
QVector<T> floatEdges()
{
    using Limits = std::numeric_limits<T>;
    QVector<T> values{
        T(0), -T(0), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -Limits::quiet_NaN()};
    for (int exponent = Limits::min_exponent10 - Limits::digits10 - 1; exponent <= Limits::max_exponent10;
         ++exponent) {
        for (const char *digits :
             {"1e", "5e", "9.5e", "9.99995e", "9.999995e", "9.99999999999995e", "9.999999999999995e"})
            appendWithNeighbours(values, parsed<T>(digits + std::to_string(exponent)));
    }
    for (int exponent = Limits::min_exponent - Limits::digits; exponent < Limits::max_exponent; ++exponent)
        appendWithNeighbours(values, std::ldexp(T(1), exponent));
    appendWithNeighbours(values, Limits::min());
    appendWithNeighbours(values, Limits::denorm_min());
    appendWithNeighbours(values, Limits::max());
    return values;
}

// All powers of two and ten, and the ends of the range, with what lies up to two beside them.
template<typename T>
QVector<T> integerEdges()
{
    QVector<T> values;
    const auto append = [&values](quint64 bits) {
        for (int step = -2; step <= 2; ++step) {
            const quint64 close = bits + static_cast<quint64>(step);
            values << static_cast<T>(close) << static_cast<T>(0 - close);
        }
    };
    for (int exponent = 0; exponent < 64; ++exponent)
        append(quint64(1) << exponent);
    quint64 power = 1;
    for (int exponent = 0; exponent < 20; ++exponent, power *= 10)
        append(power);
    return values;
}

} // namespace NumberSamples

#endif // NUMBERSAMPLES_H
