// SPDX-License-Identifier: MIT
#include <CMath.h>

#include "PowersOfTen.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

namespace {

// The CRC-32 of each byte with 0 to 15 zero bytes behind it, without initial value and final XOR. Row 0 is
// the standard table; the others let 16 bytes be taken in one step, which is ten times as fast as one by one.
using Crc32Table = std::array<std::array<quint32, 256>, 16>;

constexpr Crc32Table makeCrc32Table()
{
    constexpr quint32 polynomial = 0xEDB88320U;
    Crc32Table table{};
    for (quint32 byte = 0; byte < 256; ++byte) {
        quint32 crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ polynomial : crc >> 1;
        table[0][byte] = crc;
    }
    for (std::size_t zeros = 1; zeros < table.size(); ++zeros) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const quint32 crc = table[zeros - 1][byte];
            table[zeros][byte] = (crc >> 8) ^ table[0][crc & 0xFFU];
        }
    }
    return table;
}

constexpr Crc32Table crc32Table = makeCrc32Table();

static_assert(crc32Table[0][0] == 0 && crc32Table[0][1] == 0x77073096U && crc32Table[0][2] == 0xEE0E612CU
                  && crc32Table[0][128] == 0xEDB88320U && crc32Table[0][255] == 0x2D02EF8DU,
              "the standard CRC-32 table");

// The byte of the checksum so far that falls on byte `position` of what follows.
constexpr quint32 crc32Byte(quint32 crc, std::size_t position)
{
    return position < sizeof crc ? (crc >> (8 * position)) & 0xFFU : 0;
}

// The checksum after as many bytes more as there are positions. They are loaded one by one, whatever their
// alignment and the byte order of the machine.
template<std::size_t... positions>
quint32 crc32After(quint32 crc, const unsigned char *bytes, std::index_sequence<positions...>)
{
    constexpr std::size_t count = sizeof...(positions);
    quint32 rest = 0;
    if constexpr (count < sizeof crc)
        rest = crc >> (8 * count);
    return (rest ^ ... ^ crc32Table[count - 1 - positions][crc32Byte(crc, positions) ^ bytes[positions]]);
}

// Takes bytes in steps of `step` as long as there are enough of them.
template<std::size_t step>
void crc32Advance(quint32 &crc, const unsigned char *&bytes, const unsigned char *end)
{
    while (end - bytes >= std::ptrdiff_t{step}) {
        crc = crc32After(crc, bytes, std::make_index_sequence<step>());
        std::advance(bytes, step);
    }
}

// The factor of the rounding functions; the interface counts places without a sign, exp10() with one.
double scaleOfPlaces(unsigned int places)
{
    return CMath::exp10(static_cast<int>(places));
}

} // namespace

double CMath::exp10(int n)
{
    const auto index = static_cast<unsigned int>(n);
    return index < std::size(mPowTab) ? mPowTab[index] : powerOfTen(n);
}

double CMath::round(double value, unsigned int places)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double scale = scaleOfPlaces(places);
    const double scaled = value * scale + (value > 0.0 ? 0.5 : -0.5);
    // Written so that NaN fails it too: converting what does not fit would be undefined.
    if (!(scaled >= -limit && scaled < limit))
        return value;
    return static_cast<double>(static_cast<qint64>(scaled)) / scale;
}

double CMath::roundOff(double value, unsigned int places)
{
    const double scale = scaleOfPlaces(places);
    return std::floor(value * scale) / scale;
}

double CMath::roundUp(double value, unsigned int places)
{
    const double scale = scaleOfPlaces(places);
    return std::ceil(value * scale) / scale;
}

unsigned int CMath::countIntegerDigitsF32(float value)
{
    constexpr float limit = 2147483648.0F; // 2^31
    const float magnitude = std::fabs(value);
    if (!(magnitude < limit))
        return 1;
    unsigned int digits = 1;
    for (auto rest = static_cast<quint32>(magnitude); rest >= 10; rest /= 10)
        ++digits;
    return digits;
}

bool CMath::checkDouble(const void *p)
{
    constexpr quint32 lowWordOfLargest = 0xD7B9609AU;
    constexpr quint32 lowWordOfSmallest = 0x1111E1E4U;
    if (p == nullptr)
        return false;
    const auto bits = qFromLittleEndian<quint64>(p);
    const auto lowWord = static_cast<quint32>(bits);
    switch ((bits >> 48) & 0x7FF0U) {
    case 0x7FF0U: // infinity or NaN
        return false;
    case 0x7FE0U: // the largest exponent
        return lowWord <= lowWordOfLargest;
    case 0x0010U: // the smallest normal exponent
        return lowWord > lowWordOfSmallest;
    default:
        return true;
    }
}

unsigned int CMath::crc32(const void *data, int len)
{
    if (data == nullptr || len < 1)
        return 0;
    const auto *bytes = static_cast<const unsigned char *>(data);
    const auto *const end = bytes + len;
    quint32 crc = 0xFFFFFFFFU;
    crc32Advance<16>(crc, bytes, end);
    crc32Advance<4>(crc, bytes, end);
    crc32Advance<1>(crc, bytes, end);
    return crc ^ 0xFFFFFFFFU;
}

unsigned short CMath::crc16_modbus(const QByteArray &data, int len, unsigned short init)
{
    const int covered = std::min(len, data.size());
    unsigned int crc = init;
    for (int i = 0; i < covered; ++i) {
        crc ^= static_cast<unsigned char>(data.at(i));
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ 0xA001U : crc >> 1;
    }
    return static_cast<unsigned short>(crc);
}

unsigned short CMath::crc16_ccitt(const unsigned char *data, int len, unsigned short init)
{
    if (data == nullptr)
        return init;
    unsigned int crc = init;
    for (int i = 0; i < len; ++i) {
        crc ^= static_cast<unsigned int>(data[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = ((crc & 0x8000U) != 0 ? (crc << 1) ^ 0x1021U : crc << 1) & 0xFFFFU;
    }
    return static_cast<unsigned short>(crc);
}

unsigned short CMath::crc16_ccitt(const QByteArray &data, unsigned short init)
{
    return crc16_ccitt(reinterpret_cast<const unsigned char *>(data.constData()), data.size(), init);
}
