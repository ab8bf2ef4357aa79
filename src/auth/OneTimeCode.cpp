// SPDX-License-Identifier: MIT
#include "OneTimeCode.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>
#include <QtEndian>

#include <array>
#include <cmath>
#include <limits>

namespace {

// 10^digits modulo 2^32, or 0 where 10^digits is below 1 or no signed 64-bit number.
quint32 divisor(int digits)
{
    constexpr int mostDigits = 18;
    if (digits < 0 || digits > mostDigits)
        return 0;
    quint64 power = 1;
    for (int i = 0; i < digits; ++i)
        power *= 10;
    return static_cast<quint32>(power);
}

QChar lastDigit(quint32 number)
{
    return QChar(static_cast<ushort>(u'0' + number % 10));
}

// Whether textOfCode() gives this text for as many digits as it has. Looks at every character, so that the
// time does not tell how many of them fit.
bool isTextOfCode(const QString &text, quint32 code)
{
    int difference = divisor(text.size()) == 0 ? 1 : 0;
    for (int i = text.size() - 1; i >= 0; --i, code /= 10)
        difference |= text.at(i).unicode() ^ lastDigit(code).unicode();
    return difference == 0;
}

// The code of a counter under the key of `mac`, which prepares it once for all counters: a fifth of the time.
quint32 codeOfCounter(QMessageAuthenticationCode &mac, qint64 counter, int digits)
{
    std::array<char, sizeof counter> message{};
    qToLittleEndian(counter, message.data());
    mac.reset();
    mac.addData(message.data(), static_cast<int>(message.size()));
    return OneTimeCode::codeOfMac(mac.result().toBase64(), digits);
}

} // namespace

quint32 OneTimeCode::codeOfMac(const QByteArray &mac, int digits)
{
    const quint32 modulus = divisor(digits);
    if (mac.size() < int(sizeof(qint32)) || modulus == 0)
        return 0;
    const auto number = qFromLittleEndian<qint32>(mac.constData());
    return static_cast<quint32>(number >> 1) % modulus; // an arithmetic shift
}

qint64 OneTimeCode::counterAt(qint64 milliseconds, quint64 t0, quint32 step)
{
    // Also what x86 processors make of a number that does not fit, and thus what peers compute.
    constexpr auto none = std::numeric_limits<qint64>::min();
    constexpr double twoTo63 = 9223372036854775808.0;
    if (step == 0)
        return none;
    const double elapsed = static_cast<double>(milliseconds) / 1000.0 - static_cast<double>(t0);
    const double steps = std::floor(elapsed / step);
    // 64 bits of milliseconds are far fewer seconds, so only a large t0 leads out of the range.
    return steps >= -twoTo63 ? static_cast<qint64>(steps) : none;
}

quint32 OneTimeCode::codeAt(qint64 milliseconds, const Agreement &agreement)
{
    QMessageAuthenticationCode mac(QCryptographicHash::Sha1, agreement.key);
    return codeOfCounter(mac, counterAt(milliseconds, agreement.t0, agreement.step), agreement.digits);
}

QString OneTimeCode::textOfCode(quint32 code, int digits)
{
    if (divisor(digits) == 0)
        return {};
    QString text(digits, Qt::Uninitialized);
    for (auto place = text.rbegin(); place != text.rend(); ++place, code /= 10)
        *place = lastDigit(code);
    return text;
}

quint64 OneTimeCode::shiftedStart(quint64 t0, quint32 step, qint64 stepsBack)
{
    const quint32 shift = step * static_cast<quint32>(stepsBack);
    return t0 + shift;
}

OneTimeCode::Verdict OneTimeCode::validate(const QString &code, const Agreement &agreement, quint32 tolerance,
                                           Clock clock)
{
    if (code.length() != agreement.digits)
        return WrongLength;
    // A tolerance that is negative as a signed number leaves no step to try. 64 bits, so that the counter can
    // pass the last step.
    const qint64 range = static_cast<qint32>(tolerance);
    QMessageAuthenticationCode mac(QCryptographicHash::Sha1, agreement.key);
    for (qint64 i = range; i >= -range; --i) {
        const quint64 start = shiftedStart(agreement.t0, agreement.step, i);
        const qint64 counter = counterAt(clock(), start, agreement.step);
        if (isTextOfCode(code, codeOfCounter(mac, counter, agreement.digits)))
            return Accepted;
    }
    return Refused;
}
