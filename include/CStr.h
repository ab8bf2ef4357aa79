// SPDX-License-Identifier: MIT
#ifndef CSTR_H
#define CSTR_H

#include <NTypes.h>
#include <Nj6UserLevel.h>
#include <j6Core_export.h>

#include <QByteArray>
#include <QDate>
#include <QLocale>
#include <QString>

class QDataStream;

/**
 * @brief Text helpers: numbers, versions, revisions, serial numbers, sizes, titles and raw text buffers.
 *
 * All members are static and keep no state; they may be called from any thread (doubleToString() reads the
 * default locale, so not while another thread sets it). Nothing here writes to a log: a failure shows in the
 * result alone.
 *
 * Texts that users read are translated at every call by QCoreApplication::translate() with the context
 * "CStr", so that a change of the language shows at once (Nj6Translations::load()). What is parsed back
 * (numbers, versions, revisions, codes) is never translated and never follows a locale. Names that are put
 * into a text stay as they are, also when they hold a "%1".
 *
 * Every number parser comes in three shapes with the same rules:
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
 * CStr::versionToStr(0x01020003U, 2, 2, 4);                      // "01.02.0003"
 * CStr::revisionToString(0x00010005U);                           // "1.005"
 * CStr::memSizeToString(10240);                                  // "10.0 KiB"
 * CStr::userlevelText(Nj6UserLevel::E_OEM);                      // "OEM"
 * CStr::createDeviceSelectionValue(QStringLiteral("X axis"), 7); // "X axis [s/n: 7]"
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

    /**
     * @name Versions
     * A 32-bit version holds major in bits 24 to 31, minor in bits 16 to 23 and build in bits 0 to 15. The
     * parts of a text stand between single points, are decimal and obey the rules of strToU8() (build:
     * strToU16()).
     * @{
     */

    /// @brief "major.minor.build", each part filled with leading zeros up to its width. A part wider than its
    /// width is written whole; a negative width is none. The text must fit into memory.
    static QString versionToStr(unsigned int value, int majorWidth, int minorWidth, int buildWidth);
    /// @brief "first.second.third.fourth" of a four-part version.
    static QString versionToStr(NTypes::sVersion4x8_t version);
    /// @brief "major.minor.build", the text of a CVariant with this version. Inverse: stringToVersion().
    static QString versionToStr(NTypes::uVersion_t version);
    static QString versionToStr(unsigned int value);

    /// @brief "major.minor".
    static QString versionToShortStr(NTypes::uVersion_t version);
    static QString versionToShortStr(unsigned int value);

    /// @brief Reads exactly three parts (four for an sVersion4x8_t). False, and `version` untouched, when
    /// there are more or fewer or one is no number of its range.
    static bool stringToVersion(const QString &text, NTypes::sVersion_t &version);
    static bool stringToVersion(const QString &text, NTypes::uVersion_t &version);
    static bool stringToVersion(const QString &text, NTypes::sVersion4x8_t &version);

    /// @brief The version of a text "major.minor" (build 0) or "major.minor.build"; the flag is stored
    /// through `ok` unless that is null. After a part that is no number of its range the flag is false and
    /// that part and those behind it are 0; the parts before it keep their numbers. 0 and false for any
    /// other number of parts.
    static NTypes::uVersion_t stringToVersion(const QString &text, bool *ok = nullptr);

    /// @brief The version as an identification code: "0x" and eight upper-case hexadecimal digits.
    static QString identCodeToHexCode(NTypes::uVersion_t code);
    /// @brief The code of a hexadecimal text, with or without "0x"; 0 when it is no 32-bit number. Inverse of
    /// identCodeToHexCode().
    static NTypes::uVersion_t hexCodeToIdentCode(const QString &text);
    /** @} */

    /**
     * @name Revisions
     * A 32-bit revision holds major in its high 16 bits and minor in its low ones, a 16-bit revision one byte
     * of each. The argument's type decides which is meant.
     * @{
     */

    /// @brief "major.minor" with at least three digits of minor (two for 16 bits): 0x00010005 is "1.005".
    static QString revisionToString(unsigned int revision);
    static QString revisionToString(unsigned short revision);

    /// @brief Reads "major.minor" or "major" alone (minor 0) by _splitStringAtDot(). False, and `revision`
    /// untouched, when that fails or a number is outside 0 to 65535 (0 to 255 for 16 bits). Minor is a
    /// number, not a fraction: "1.5" is minor 5, as is "1.005".
    static bool stringToRevision(const QString &text, unsigned int &revision);
    static bool stringToRevision(const QString &text, unsigned short &revision);

    /// @brief The decimal 32-bit numbers, signs allowed, before and behind the only point of a text; without
    /// a point `minor` is 0. Each number that cannot be parsed is stored as 0. The result tells about the
    /// last number only: "x.5" is 0, 5 and true. With two or more points it is false and nothing is stored.
    static bool _splitStringAtDot(const QString &text, int &major, int &minor);
    /** @} */

    /// @name Serial numbers, names and sizes
    /// @{

    /// @brief The decimal number in groups: one digit and then three each, as many as there are:
    /// "1 234 567 890", "1 234 5", "7".
    static QString serialToString(unsigned int serial);

    /// @brief A name without its white space (of Unicode), cut to 14 characters and grouped as 5, 2, 3 and 4
    /// by blanks. A shorter name is filled with blanks in front of each group that it does not reach, so the
    /// result has at least 13 characters.
    static QString formatSapName(const QString &name);

    /// @brief A size in the largest unit (1024 each) that makes it at least 10: "10239 Byte", "10.0 KiB",
    /// "10.0 MiB" ... "10 PiB". Byte and PiB are whole (PiB truncated), the others have one decimal; the
    /// separator is '.'. A negative size is in Byte.
    static QString memSizeToString(long long bytes);

    /**
     * @brief The text itself while it has at most `maxLen` UTF-16 units, otherwise its beginning and " ...",
     * together at most `maxLen` units. `cut` tells which.
     *
     * With `atWord` the beginning ends before the last blank (U+0020) in it, unless that is its first unit.
     * From 3 downwards `maxLen` leaves no room: the result is then " ..." or, with `atWord`, the whole text
     * and " ...". Units are counted without regard for surrogate pairs, so a pair may be cut in two.
     */
    static QString cutString(const QString &text, unsigned int maxLen, bool &cut, bool atWord);

    /// @brief Where the accelerator mark of a menu text is: the position of the character before the first
    /// single '&' that stands before a word character, or 0 when that '&' is the first character; -1 without
    /// one.
    static int indexOfAmpersand(const QString &text);

    /// @brief The translated name of a user level; "Unknown (32)" for a number that is none.
    static QString userlevelText(Nj6UserLevel::eUserLevel_t level);
    static QString userlevelText(unsigned int level);

    /// @brief "name [s/n: serial]", the entry of a device in a selection list.
    static QString createDeviceSelectionValue(const QString &name, unsigned int serial);
    /// @brief "sub-device - name [s/n: serial]".
    static QString createSubDeviceSelectionValue(const QString &subName, const QString &deviceName,
                                                 unsigned int serial);
    /// @}

    /// @name Build dates and titles
    /// Build dates come from the compiler's `__DATE__`: "Nov  5 2024", with English months in any case.
    /// @{

    /// @brief The date of a build date, whatever the default locale; a null or invalid date when the text is
    /// none. Blanks around the three parts do not matter.
    // NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the tools know it by this name
    static QDate createQDateFrom__DATE__(const QString &text);
    /// @brief The date of a build date in the locale's short format; empty when the text is no date.
    static QString createDate(const QLocale &locale, const QString &text);

    /// @brief "[ Vversion ]" or, with `extra`, "[ Vversion ] - extra".
    static QString getVersionString(const QString &version, const QString &extra = QString());
    /// @brief "[ Vversion - date ]" with the date of createDate(), followed by " - extra" if there is one.
    static QString getVersionString(const QString &version, const QString &buildDate, const QLocale &locale,
                                    const QString &extra = QString());

    /// @brief "appName - long company name - " and the version text with build date and `extra`.
    static QString createApplicationTitle(const QLocale &locale, const QString &buildDate,
                                          const QString &appName, const QString &version,
                                          const QString &extra = QString());
    /// @brief "short company name appName - Vversion - [ Build build - 2024-11-05 ]"; without build date
    /// "... - [ Build build ]". A text that is no date leaves its place empty: " -  ]". The locale is not
    /// used.
    static QString createShortApplicationTitle(const QLocale &locale, const QString &appName,
                                               const QString &version, const QString &buildDate,
                                               unsigned int build);
    /// @}

    /// @name Files and streams
    /// @{

    /// @brief The path of a log file in CPath::logPath(), which is created: the file name without directory
    /// and last suffix, of the running program if `name` is empty, and ".log". With `withThreadId` "_TID"
    /// and the calling thread's id (QThread::currentThreadId(), hexadecimal) stand before ".log". The file
    /// itself is not created.
    static QString createLogFileName(const QString &name, bool withThreadId);

    /// @brief Whether the stream's status is Ok. If not, `message` becomes the translated text for users that
    /// tells `valueName`, the value read last, and the reason; otherwise it is untouched.
    static bool inStreamStatus(const QDataStream &stream, const QString &valueName, QString &message);

    /// @}
};

#endif // CSTR_H
