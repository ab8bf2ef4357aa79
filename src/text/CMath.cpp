// SPDX-License-Identifier: MIT
#include <CMath.h>

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Entry i is the CRC-32 of the single byte i, without initial value and final XOR.
constexpr std::array<quint32, 256> makeCrc32Table()
{
    constexpr quint32 polynomial = 0xEDB88320U;
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ polynomial : crc >> 1;
        table[byte] = crc;
    }
    return table;
}

constexpr std::array<quint32, 256> crc32Table = makeCrc32Table();

static_assert(crc32Table[0] == 0 && crc32Table[1] == 0x77073096U && crc32Table[2] == 0xEE0E612CU
                  && crc32Table[128] == 0xEDB88320U && crc32Table[255] == 0x2D02EF8DU,
              "the standard CRC-32 table");

// The factor of the rounding functions; the interface counts places without a sign, exp10() with one.
double scaleOfPlaces(unsigned int places)
{
    return CMath::exp10(static_cast<int>(places));
}

} // namespace

double CMath::exp10(int n)
{
    const auto index = static_cast<unsigned int>(n);
    return index < std::size(mPowTab) ? mPowTab[index] : std::pow(10.0, n);
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
    quint32 crc = 0xFFFFFFFFU;
    std::for_each(bytes, bytes + len,
                  [&crc](unsigned char byte) { crc = (crc >> 8) ^ crc32Table[(crc ^ byte) & 0xFFU]; });
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
