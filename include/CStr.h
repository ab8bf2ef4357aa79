// SPDX-License-Identifier: MIT
#ifndef CSTR_H
#define CSTR_H

#include <NTypes.h>
#include <j6Core_export.h>

#include <QByteArray>
#include <QString>

/**
 * @brief Text helpers: numbers from and to text, fixed-point texts and raw text buffers.
 *
 * All members are static and keep no state; they may be called from any thread (doubleToString() reads the
 * default locale, so not while another thread sets it). Nothing here writes to a log: a failure shows in the
 * result alone.
 *
 * Every parser comes in three shapes with the same rules:
 *
 * | shape | result on success | result on failure |
 * |---|---|---|
 * | out-parameter `(text, value)` | true, the number is in `value` | false, `value` is untouched |
 * | flag `(text, ok)` | the number, `ok` gets true | 0, `ok` gets false; `ok` may be null |
 * | fallback `(fallback, text)` | the number | `fallback` |
 *
 * @code
 * quint16 port = 502;
 * CStr::strToU16(text, port);                                    // keeps 502 when the text is no such number
 * bool ok = false;
 * const quint32 mask = CStr::strToU32(text, &ok, 0);             // "0x1F", "037" and "31" are all 31
 * const qint32 offset = CStr::strToI32(0, text);                 // 0 when the text is no such number
 * CStr::fromF32(12345.678F, 3);                                  // "12345.7"
 * CStr::fixPointToStr(0x00018000, 16, QLatin1Char('.'));         // "1.32768"
 * @endcode
 */
class J6CORE_EXPORT CStr
{
public:
    CStr() = default;

    /**
     * @name Integers from text
     * White space (of Unicode) around the number and a sign are accepted, group separators and other
     * characters are not; an unsigned number takes no minus. A number outside the range of the type fails.
     * The locale is irrelevant.
     *
     * `base`, always the third argument, is 2 to 36, or 0 to let the text choose: "0x" in front is
     * hexadecimal, "0" octal, anything else decimal. Base 16 accepts the "0x" as well. Any other base fails.
     * The fallback shapes of the signed types take no base: they always parse in base 10.
     * @{
     */
    static bool strToU8(const QString &text, unsigned char &value, int base = 10);
    static unsigned char strToU8(const QString &text, bool *ok = nullptr, int base = 10);
    static unsigned char strToU8(unsigned char fallback, const QString &text, int base = 10);

    static bool strToU16(const QString &text, unsigned short &value, int base = 10);
    static unsigned short strToU16(const QString &text, bool *ok = nullptr, int base = 10);
    static unsigned short strToU16(unsigned short fallback, const QString &text, int base = 10);

    static bool strToU32(const QString &text, unsigned int &value, int base = 10);
    static unsigned int strToU32(const QString &text, bool *ok = nullptr, int base = 10);
    static unsigned int strToU32(unsigned int fallback, const QString &text, int base = 10);

    static bool strToU64(const QString &text, unsigned long long &value, int base = 10);
    static unsigned long long strToU64(const QString &text, bool *ok = nullptr, int base = 10);
    static unsigned long long strToU64(unsigned long long fallback, const QString &text, int base = 10);

    static bool strToI8(const QString &text, signed char &value, int base = 10);
    static signed char strToI8(const QString &text, bool *ok = nullptr, int base = 10);
    static signed char strToI8(signed char fallback, const QString &text);

    static bool strToI16(const QString &text, short &value, int base = 10);
    static short strToI16(const QString &text, bool *ok = nullptr, int base = 10);
    static short strToI16(short fallback, const QString &text);

    static bool strToI32(const QString &text, int &value, int base = 10);
    static int strToI32(const QString &text, bool *ok = nullptr, int base = 10);
    static int strToI32(int fallback, const QString &text);

    static bool strToI64(const QString &text, long long &value, int base = 10);
    static long long strToI64(const QString &text, bool *ok = nullptr, int base = 10);
    static long long strToI64(long long fallback, const QString &text);
    /** @} */

    /**
     * @name Floating-point numbers from text
     * The decimal separator is '.', whatever the locale; an exponent is accepted, group separators are not.
     * The texts "inf", "+inf", "-inf" and "nan" in any case are numbers. A number beyond the largest of the
     * type, or so small that it would become 0, fails, and a failure is always 0.0, never infinity.
     * @{
     */
    static bool strToF32(const QString &text, float &value);
    static float strToF32(const QString &text, bool *ok = nullptr);
    static float strToF32(float fallback, const QString &text);

    static bool strToF64(const QString &text, double &value);
    static double strToF64(const QString &text, bool *ok = nullptr);
    static double strToF64(double fallback, const QString &text);
    /** @} */

    /// @name Numbers to text
    /// @{

    /**
     * @brief The value in fixed notation with '.', with at most `decimals` decimals.
     *
     * A float carries about six significant digits, so there are at most six less the integer digits that
     * CMath::countIntegerDigitsF32() counts, and none from 100000 on. From 2^31 on that count is 1, so up to
     * five decimals (all 0) appear again. Negative `decimals` count as 0. Infinity and NaN are "inf", "-inf"
     * and "nan".
     */
    static QString fromF32(float value, int decimals);

    /// @brief The value in fixed notation with '.' and exactly `decimals` decimals, however many, as
    /// `QString::number(value, 'f', decimals)` gives it; the text must fit into memory. A negative number
    /// means six, `QLocale::FloatingPointShortest` the shortest text that reads back. Infinity and NaN are
    /// "inf", "-inf" and "nan".
    static QString fromF64(double value, int decimals);

    /// @brief The value as the default QLocale writes it (`format` and `precision` as for QLocale::toString:
    /// 'e', 'f', 'g' and their capitals), with the locale's decimal separator but without its group
    /// separators.
    static QString doubleToString(double value, int precision, char format);

    /// @brief The catalogue name of the type ("UNIT_U8" ...), as CDataTypeParser::typeToStr() gives it.
    static QString nTypeToStr(NTypes::eTypes_t type);

    /// @}

    /// @name Fixed-point numbers
    /// The text is the integer part and the raw bit field of the fraction, both in decimal, around the
    /// separator: it is no decimal fraction, 0x00050003 with 16 fraction bits is "5.3". With 32 or more
    /// fraction bits the whole value is fraction and the integer part is 0. The two functions are each
    /// other's inverse.
    /// @{

    static QString fixPointToStr(unsigned int value, unsigned int fractionBits, const QChar &separator);

    /**
     * @brief The value of a fixed-point text; the flag is stored through `ok` unless that is null.
     *
     * Both parts are unsigned decimal 32-bit numbers around exactly one separator; bits that do not fit their
     * field are dropped. 0 and false when there is not exactly one separator or the integer part is no
     * number; the value of the integer part alone and false when the fraction is none.
     */
    static unsigned int strToFixPoint(const QString &text, bool *ok, unsigned int fractionBits,
                                      const QChar &separator);

    /// @}

    /// @name Raw text buffers
    /// UTF-16 units are in host order (little-endian) and are taken as they are: a byte-order mark or an
    /// unpaired surrogate is a unit like any other. A null pointer gives a null text.
    /// @{

    /// @brief The Latin-1 text up to the first NUL or `maxLen` bytes; null when maxLen is below 1.
    static QString fromLatin1(const char *data, int maxLen);

    /// @brief The units up to the first zero unit or the byteLen / 2 units there are; null when byteLen is
    /// below 2. Inverse of toUtf16().
    static QString fromUtf16(const unsigned short *data, int byteLen);

    /// @brief The units up to the first zero unit or all size / 2 units, of which an odd last byte is none.
    /// Zero bytes of two neighbouring units are no zero unit. Empty, but never null, when there is no unit.
    static QString fromUtf16(const QByteArray &bytes);

    /**
     * @brief Fills the `byteLen` bytes at `dest` with the text's units and zeros behind them; the last unit
     * is always 0.
     *
     * A longer text is cut after byteLen - 2 bytes, without regard for surrogate pairs, and with an odd
     * byteLen inside a unit. Nothing is written when dest is null or byteLen is below 2.
     */
    static void toUtf16(const QString &text, unsigned short *dest, int byteLen);

    /// @}
};

#endif // CSTR_H
