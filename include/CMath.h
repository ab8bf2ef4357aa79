// SPDX-License-Identifier: MIT
#ifndef CMATH_H
#define CMATH_H

#include <j6Core_export.h>

#include <QByteArray>

/**
 * @brief Numeric helpers: checksums, decimal rounding, the digits of a float and the plausibility of doubles.
 *
 * All members are static and keep no state; they may be called from any thread. None of them reports an
 * error: no data gives a CRC-16's initial value and 0 as CRC-32, and of a number that cannot be rounded
 * round() tells below what becomes of it.
 *
 * @code
 * CMath::round(2.345, 2);                                          // 2.35
 * CMath::crc32("123456789", 9);                                    // 0xCBF43926
 * CMath::crc16_modbus(QByteArrayLiteral("123456789"), 9, 0xFFFF);  // 0x4B37
 * CMath::crc16_ccitt(QByteArrayLiteral("123456789"), 0xFFFF);      // 0x29B1
 * @endcode
 */
class J6CORE_EXPORT CMath
{
public:
    CMath() = delete;

    /// @brief The powers of ten 10^0 to 10^4.
    static constexpr double mPowTab[5] = {1.0, 10.0, 100.0, 1000.0, 10000.0};

    /// @name Powers and rounding
    /// Plain binary arithmetic on the value scaled by `exp10(places)`, without a decimal correction: 1.005 is
    /// stored as slightly less than that, so rounding it to two places gives 1.0. `places` is the number of
    /// decimal places; a number above 2^31 - 1 reaches exp10() as a negative one.
    ///
    /// Beyond the powers that a double holds the quotient is none either: with 10^places = 0 (-324 places and
    /// less) a value that is scaled to 0 gives 0 / 0, which is NaN. With 10^places infinite (309 places to
    /// 2^31 - 1) roundOff() and roundUp() give NaN, and round() returns the value unchanged.
    /// @{

    /// @brief 10 to the power n; 0 to 4 come from mPowTab. For n from -22 to 22 it is the double nearest to
    /// the power, from 0 on the power itself. Any other n is computed with `pow`, as exactly as the C library
    /// does.
    static double exp10(int n);

    /// @brief The nearest multiple of 10^-places, halves away from zero: round(2.5, 0) is 3, round(-2.5, 0)
    /// is -3, round(-0.2, 0) is 0 without a sign. NaN, and a value that exceeds 64 bits once scaled, are
    /// returned unchanged.
    static double round(double value, unsigned int places);

    /// @brief The next multiple of 10^-places toward minus infinity: roundOff(-1.5, 0) is -2.
    static double roundOff(double value, unsigned int places);

    /// @brief The next multiple of 10^-places toward plus infinity: roundUp(-1.5, 0) is -1.
    static double roundUp(double value, unsigned int places);

    /// @}

    /// @brief The number of decimal digits in the integer part of |value|, 1 to 10. It is 1 when |value| is
    /// below 1, and also for NaN and from 2^31 on, where the integer part is no 32-bit number.
    static unsigned int countIntegerDigitsF32(float value);

    /**
     * @brief Whether the 8 bytes at `p`, a little-endian double of any alignment, are a plausible number.
     *
     * False for infinities and NaN, for null `p`, and near the two ends of the range, of which only the
     * exponent and the low 32 bits are looked at: with the largest exponent a low word above 0xD7B9609A is
     * refused, with the smallest normal exponent one up to 0x1111E1E4. Those are the low words of
     * 1.797693e+308 and 2.225074e-308. Zero, subnormal and negative numbers are plausible. The bytes are
     * never loaded as a floating-point number.
     */
    static bool checkDouble(const void *p);

    /// @name Checksums
    /// A CRC-16 may be computed in parts, each with the result of the part before as its initial value. A
    /// null data pointer is as no data, whatever the length.
    /// @{

    /// @brief CRC-32 (ISO-HDLC: reflected polynomial 0xEDB88320, initial value and final XOR 0xFFFFFFFF) of
    /// `len` bytes; 0 when len is below 1.
    static unsigned int crc32(const void *data, int len);

    /**
     * @brief CRC-16 over the first min(len, size) bytes: reflected polynomial 0xA001, no final XOR.
     *
     * With init 0xFFFF it is CRC-16/MODBUS. Returns init when there is no byte to cover: len below 1 or empty
     * data. Meant for up to 65535 bytes, as peers count them in 16 bits; longer data is covered to its end
     * all the same.
     */
    static unsigned short crc16_modbus(const QByteArray &data, int len, unsigned short init);

    /// @brief CRC-16 over `len` bytes: polynomial 0x1021, not reflected, no final XOR; init when len is below
    /// 1. With init 0xFFFF it is CRC-16/IBM-3740 ("CCITT-FALSE"), with init 0 CRC-16/XMODEM.
    static unsigned short crc16_ccitt(const unsigned char *data, int len, unsigned short init);

    /// @brief The same over all bytes of `data`.
    static unsigned short crc16_ccitt(const QByteArray &data, unsigned short init);

    /// @}
};

#endif // CMATH_H
