// SPDX-License-Identifier: MIT
#ifndef CHMAC_H
#define CHMAC_H

#include <j6Core_export.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QMessageAuthenticationCode>
#include <QString>

/**
 * @brief Keyed message authentication codes (HMAC, RFC 2104), and one-time numeric codes made with them.
 *
 * An object computes one MAC over data that comes in parts; the static members do everything at once.
 *
 * The one-time codes are this library's own scheme, fixed because codes made by one side must be accepted by
 * the other. It is neither HOTP (RFC 4226) nor TOTP (RFC 6238), and codes are not interchangeable with them:
 *
 * | what                 | here                                                                         |
 * |----------------------|------------------------------------------------------------------------------|
 * | counter              | whole steps of `step` seconds since `t0`, a signed 64-bit number             |
 * | message              | the 8 bytes of the counter, little-endian                                    |
 * | MAC                  | the Base64 text of the HMAC-SHA1 of the message, see hmacSha1()              |
 * | number               | the first 4 characters of that text as a little-endian number, shifted right |
 * | code                 | the remainder of the number divided by 10^digits, see hotp()                 |
 *
 * The parameters of the one-time codes:
 * - `key`: the secret, any bytes; an empty key is one, too.
 * - `t0`: start of the count, in seconds since 1970-01-01T00:00:00 UTC.
 * - `step`: length of one time step in seconds. With 0 there are no steps, and the code never changes.
 * - `digits`: number of decimal digits, 1 to 9 in earnest. From 10 on the divisor is 10^digits modulo 2^32
 *   and the code has at most 10 digits that say something. Below 0 and above 18 the divisor would be 0: the
 *   code is 0 and its text empty.
 *
 * Before `t0` the counter is negative. What 64 bits cannot hold, and the counter of step 0, is -2^63.
 *
 * The static members keep no state and may be called from any thread; an object is used by one thread at a
 * time. Nothing here logs.
 *
 * @code
 * CHmac mac(QCryptographicHash::Sha1, QByteArrayLiteral("Jefe"));
 * mac.addData(QByteArrayLiteral("what do ya want "));
 * mac.addData(QByteArrayLiteral("for nothing?"));
 * mac.result().toHex(); // "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"
 *
 * const QByteArray key = QByteArrayLiteral("12345678901234567890");
 * const QString code = CHmac::totpStr(key, 0, 30, 6);
 * CHmac::validateTotp(code, key, 0, 30, 6, 1); // 0: accepted during this step and the next one
 * @endcode
 */
class J6CORE_EXPORT CHmac
{
public:
    CHmac(QCryptographicHash::Algorithm method, const QByteArray &key);
    ~CHmac();
    CHmac(const CHmac &) = delete;
    CHmac &operator=(const CHmac &) = delete;

    /// @brief Takes another key and begins anew: data that was added before is forgotten.
    void setKey(const QByteArray &key);
    /// @brief Appends to the message. Data that is added after result() counts after resetData() only.
    void addData(const QByteArray &data);
    /// @brief Begins a new message under the same key.
    void resetData();
    /// @brief The raw MAC of the message. Qt keeps it until resetData() or setKey().
    QByteArray result() const;

    /// @brief The raw MAC of `message` under `key`; as long as a hash of `method`.
    static QByteArray hmac(const QByteArray &message, QCryptographicHash::Algorithm method,
                           const QByteArray &key);

    /// @brief The HMAC-SHA1 of `message` under `key` as Base64 text (RFC 4648, standard alphabet with
    /// padding): 28 characters of which the last is "=".
    static QByteArray hmacSha1(const QByteArray &message, const QByteArray &key);

    /**
     * @brief The numeric code of a MAC text; there is no dynamic truncation by an offset.
     * @return the first 4 bytes as a signed little-endian number, shifted right by one bit with its sign, as
     * unsigned 32 bits modulo 10^digits: "AAAA" with 6 digits gives 397792. 0 for fewer than 4 bytes and for
     * `digits` below 0 or above 18.
     */
    static unsigned int hotp(const QByteArray &mac, int digits);

    /// @brief The code of the present time step, as a number.
    static unsigned int totp(const QByteArray &key, unsigned long long t0, unsigned int step, int digits);

    /// @brief The code of the present time step as exactly `digits` decimal digits, with leading zeros; empty
    /// for `digits` below 1 or above 18.
    static QString totpStr(const QByteArray &key, unsigned long long t0, unsigned int step, int digits);

    /**
     * @brief Whether `code` is the code of the present time step or of one of the `tolerance` steps before.
     *
     * Codes of future steps are refused. The search does run over them, too, but its 32-bit arithmetic moves
     * `t0` forward by 2^32 - n * step seconds instead of backward by n * step, so in place of the step n
     * ahead it tries one about 136 years back; all products of `step` are taken modulo 2^32.
     *
     * @param tolerance number of steps; the codes of 2 * tolerance + 1 steps are computed one after the other
     * until one fits, each with a look at the clock. The time thus grows with it, to hours for its largest
     * values: never take it from outside unchecked. From 2^31 on nothing is accepted.
     * @return 0 when the code is accepted; 1 when it is not; 2 when its length is not `digits`, in which case
     * no MAC is computed. Texts are compared in a time that does not depend on where they differ.
     * @note With 0 digits the empty text is the code of every step.
     */
    static int validateTotp(const QString &code, const QByteArray &key, unsigned long long t0,
                            unsigned int step, int digits, unsigned int tolerance);

private:
    QMessageAuthenticationCode mMac;
};

#endif // CHMAC_H
