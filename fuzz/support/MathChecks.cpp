// SPDX-License-Identifier: MIT
// CMath beside the formulas of its manual.
#include "MathChecks.h"

#include "ValueChecks.h"

#include <CMath.h>

#include <Properties.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double twoToThe63 = 9223372036854775808.0;

bool isSameNumber(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || bytesOf(a) == bytesOf(b);
}

double plainPower(unsigned int places)
{
    const double powers[] = {1.0, 10.0, 100.0, 1000.0, 10000.0};
    return places < std::size(powers) ? powers[places] : std::pow(10.0, static_cast<int>(places));
}

double plainRound(double value, unsigned int places)
{
    const double scale = plainPower(places);
    const double scaled = value * scale + (value > 0.0 ? 0.5 : -0.5);
    if (std::isnan(scaled) || scaled < -twoToThe63 || scaled >= twoToThe63)
        return value;
    // Adding 0 takes the sign off a zero, which the 64-bit integer has not.
    return (std::trunc(scaled) + 0.0) / scale;
}

void checkRounding(double value, unsigned int places)
{
    const double scale = plainPower(places);
    require(isSameNumber(CMath::exp10(static_cast<int>(places)), scale),
            "a power is that of the table or pow");
    const double rounded = CMath::round(value, places);
    require(isSameNumber(rounded, plainRound(value, places)), "rounding is the plain arithmetic",
            QString::number(value, 'g', 17));
    require(std::isnan(rounded) || CMath::round(-value, places) == -rounded,
            "rounding has no preferred sign");
    require(isSameNumber(CMath::roundOff(value, places), std::floor(value * scale) / scale),
            "rounding off goes down");
    require(isSameNumber(CMath::roundUp(value, places), std::ceil(value * scale) / scale),
            "rounding up goes up");
}

unsigned int plainDigits(float value)
{
    const double magnitude = std::floor(std::fabs(static_cast<double>(value)));
    if (!(magnitude < 2147483648.0))
        return 1;
    return static_cast<unsigned int>(QString::number(static_cast<qint32>(magnitude)).size());
}

bool isPlainlyPlausible(double value)
{
    const auto bits = plainOf<quint64>(bytesOf(value));
    const auto low = static_cast<quint32>(bits);
    const auto exponent = (bits >> 48) & 0x7FF0U;
    if (bits == 0)
        return true;
    return exponent != 0x7FF0 && !(exponent == 0x7FE0 && low > 0xD7B9609A)
           && !(exponent == 0x0010 && low <= 0x1111E1E4);
}

// One bit after the other.
quint32 plainCrc32(const QByteArray &bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xEDB88320 : crc >> 1;
    }
    return bytes.isEmpty() ? 0 : crc ^ 0xFFFFFFFF;
}

// The division of the bits, the highest of a byte first, by x^16 and the polynomial.
quint16 plainCrc16(const QByteArray &bytes, quint16 init, quint16 polynomial)
{
    quint32 rest = init;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const quint32 next = (static_cast<quint8>(byte) >> bit) & 1U;
            const bool divides = (rest >> 15) != next;
            rest = ((rest << 1) & 0xFFFF) ^ (divides ? polynomial : 0U);
        }
    }
    return static_cast<quint16>(rest);
}

template<typename Number>
Number reflected(Number number)
{
    quint32 result = 0;
    for (std::size_t bit = 0; bit < 8 * sizeof(Number); ++bit)
        result = result << 1 | (static_cast<quint32>(number) >> bit & 1U);
    return static_cast<Number>(result);
}

// The same with the lowest bit of a byte first.
quint16 plainReflectedCrc16(QByteArray bytes, quint16 init, quint16 polynomial)
{
    for (char &byte : bytes)
        byte = static_cast<char>(reflected(static_cast<quint8>(byte)));
    return reflected(plainCrc16(bytes, reflected(init), polynomial));
}

void checkPlainCrc16(const QByteArray &bytes, quint16 init)
{
    require(CMath::crc16_ccitt(bytes, init) == plainCrc16(bytes, init, 0x1021),
            "the CRC-16 of the CCITT is that of its polynomial");
    require(CMath::crc16_modbus(bytes, bytes.size(), init) == plainReflectedCrc16(bytes, init, 0x8005),
            "the CRC-16 of Modbus is that of its polynomial");
}

} // namespace

void checkArithmetic(double value, unsigned int places)
{
    checkRounding(value, places);
    checkRounding(value, places % 20);
    const auto single = static_cast<float>(value);
    require(CMath::countIntegerDigitsF32(single) == plainDigits(single),
            "the digits are those of the integer");
    require(CMath::checkDouble(&value) == isPlainlyPlausible(value), "plausible is what the bits say");
    const QByteArray unaligned = 'x' + bytesOf(value);
    require(CMath::checkDouble(unaligned.constData() + 1) == CMath::checkDouble(&value),
            "any alignment will do");
    require(!CMath::checkDouble(nullptr), "no number is not plausible");
}

void checkChecksums(const QByteArray &bytes, int count, unsigned short init)
{
    const int covered = std::max(0, std::min(count, bytes.size()));
    const QByteArray part = bytes.left(covered);
    const QByteArray rest = bytes.mid(covered);
    const auto *const data = reinterpret_cast<const unsigned char *>(bytes.constData());
    require(CMath::crc32(bytes.constData(), bytes.size()) == plainCrc32(bytes)
                && CMath::crc32(bytes.constData(), covered) == plainCrc32(part)
                && CMath::crc32(rest.constData(), rest.size()) == plainCrc32(rest),
            "the CRC-32 is that of one bit after the other");
    checkPlainCrc16(bytes, init);
    require(CMath::crc16_modbus(bytes, count, init) == CMath::crc16_modbus(part, part.size(), init),
            "a CRC-16 covers the bytes that there are");
    const auto modbus = CMath::crc16_modbus(part, part.size(), init);
    require(CMath::crc16_modbus(rest, rest.size(), modbus) == CMath::crc16_modbus(bytes, bytes.size(), init),
            "a CRC-16 goes on from its parts");
    const auto ccitt = CMath::crc16_ccitt(part, init);
    require(CMath::crc16_ccitt(rest, ccitt) == CMath::crc16_ccitt(bytes, init), "so does the other CRC-16");
    require(CMath::crc16_ccitt(data, covered, init) == ccitt, "both forms of a CRC-16 are one");
    require(CMath::crc16_ccitt(data, -1, init) == init && CMath::crc16_modbus(bytes, -1, init) == init
                && CMath::crc32(data, -1) == 0,
            "no byte leaves the initial value");
}
