// SPDX-License-Identifier: MIT
// Any secret, start, step, number of digits, code and time, with a small tolerance: what the library says
// beside the scheme in its plainest form, and a code that was made is accepted. CHmac only adds the clock.
#include "Traversals.h"

#include <CHmac.h>

#include "auth/OneTimeCode.h"

#include <InputReader.h>
#include <Properties.h>

#include <QtEndian>

#include <cmath>
#include <limits>

using OneTimeCode::Agreement;

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a clock has no other place
qint64 now = 0; // of the input, in milliseconds

qint64 clockOfInput()
{
    return now;
}

// RFC 2104.
QByteArray plainMac(const QByteArray &message, QByteArray key, QCryptographicHash::Algorithm method)
{
    const int blockSize = method == QCryptographicHash::Sha512 ? 128 : 64;
    if (key.size() > blockSize)
        key = QCryptographicHash::hash(key, method);
    key = key.leftJustified(blockSize, '\0');
    QByteArray inner = key;
    QByteArray outer = key;
    for (int i = 0; i < blockSize; ++i) {
        inner[i] = static_cast<char>(key.at(i) ^ 0x36);
        outer[i] = static_cast<char>(key.at(i) ^ 0x5c);
    }
    return QCryptographicHash::hash(outer + QCryptographicHash::hash(inner + message, method), method);
}

quint32 plainCodeOfMac(const QByteArray &mac, int digits)
{
    if (mac.size() < 4 || digits < 0 || digits > 18)
        return 0;
    quint64 power = 1;
    for (int i = 0; i < digits; ++i)
        power *= 10;
    const auto number = qFromLittleEndian<quint32>(mac.constData());
    return ((number >> 1) | (number & 0x80000000)) % static_cast<quint32>(power);
}

qint64 counterNow(const Agreement &agreement)
{
    const double elapsed = static_cast<double>(now) / 1000.0 - static_cast<double>(agreement.t0);
    const double steps = std::floor(elapsed / agreement.step);
    return agreement.step == 0 || steps < -9223372036854775808.0 ? std::numeric_limits<qint64>::min()
                                                                 : static_cast<qint64>(steps);
}

QString plainText(const Agreement &agreement, qint64 counter)
{
    if (agreement.digits < 1 || agreement.digits > 18)
        return {};
    QByteArray message(8, '\0');
    qToLittleEndian(counter, message.data());
    const quint32 code = plainCodeOfMac(plainMac(message, agreement.key, QCryptographicHash::Sha1).toBase64(),
                                        agreement.digits);
    return QString::number(code).rightJustified(agreement.digits, QLatin1Char('0')).right(agreement.digits);
}

int validate(const QString &code, const Agreement &agreement, quint32 tolerance)
{
    return OneTimeCode::validate(code, agreement, tolerance, clockOfInput);
}

void checkMac(const QByteArray &key, const QByteArray &message, int split)
{
    constexpr QCryptographicHash::Algorithm methods[] = {QCryptographicHash::Md5, QCryptographicHash::Sha1,
                                                         QCryptographicHash::Sha256,
                                                         QCryptographicHash::Sha512};
    for (const QCryptographicHash::Algorithm method : methods) {
        const QByteArray mac = CHmac::hmac(message, method, key);
        require(mac == plainMac(message, key, method), "a MAC is that of RFC 2104");
        CHmac inParts(method, QByteArrayLiteral("another key"));
        inParts.addData(message);
        inParts.setKey(key);
        inParts.addData(message.left(split));
        inParts.addData(message.mid(split));
        require(inParts.result() == mac && inParts.result() == mac, "parts make the MAC of the whole");
        inParts.resetData();
        inParts.addData(message);
        require(inParts.result() == mac, "a new message begins anew");
    }
    const QByteArray text = CHmac::hmacSha1(message, key);
    require(text.size() == 28 && text.endsWith('=')
                && QByteArray::fromBase64(text) == CHmac::hmac(message, QCryptographicHash::Sha1, key),
            "the text is the MAC in Base64");
}

void checkNumber(const QByteArray &mac, int digits)
{
    const quint32 code = CHmac::hotp(mac, digits);
    require(code == plainCodeOfMac(mac, digits), "a code is the remainder of the first four bytes");
    quint32 limit = 1;
    for (int i = 0; i < digits && i < 9; ++i)
        limit *= 10;
    require(digits < 0 || digits > 9 || code < limit, "a code has no more digits than are asked for");
}

bool hasText(const Agreement &agreement)
{
    return agreement.digits >= 1 && agreement.digits <= 18;
}

void checkMadeCode(const Agreement &agreement, quint32 tolerance)
{
    const quint32 number = OneTimeCode::codeAt(now, agreement);
    const QString text = OneTimeCode::textOfCode(number, agreement.digits);
    require(text == plainText(agreement, counterNow(agreement)), "a code is the one of its step", text);
    require(!hasText(agreement) || agreement.digits > 9 || text.toUInt() == number,
            "text and number are one code", text);
    require(validate(text, agreement, tolerance) == (text.size() == agreement.digits ? 0 : 2),
            "a code that was made is accepted", text);
}

// With whole seconds and starts of 32 bits a double tells each step from the next.
void checkCodeOfStepBefore(const Agreement &agreement, quint32 tolerance)
{
    constexpr qint64 furthest = qint64(1) << 42;
    if (!hasText(agreement) || agreement.step == 0 || agreement.t0 >> 32 != 0 || now < -furthest
        || now > furthest)
        return;
    now -= now % 1000;
    const QString former = plainText(agreement, counterNow(agreement) - 1);
    require(validate(former, agreement, tolerance + 1) == 0, "a code of the step before is accepted", former);
}

void checkAnyCode(const QString &code, const Agreement &agreement, quint32 tolerance)
{
    const std::size_t steps = 2 * tolerance + 1;
    const std::size_t size =
        static_cast<std::size_t>(code.size()) + static_cast<std::size_t>(agreement.key.size());
    const int verdict =
        bounded(4096 + (2048 + 4 * size) * steps, "a step costs memory in proportion to code and key",
                [&] { return validate(code, agreement, tolerance); });
    require(code.size() == agreement.digits ? verdict == 0 || verdict == 1 : verdict == 2,
            "a code of another length is known by that", code);
    require(code.size() != agreement.digits || validate(code, agreement, 0x80000000) == 1,
            "a negative tolerance accepts nothing", code);
    QString other = code;
    if (!other.isEmpty() && code.size() == agreement.digits) {
        other[0] = QChar(0x0660);
        require(validate(other, agreement, tolerance) == 1, "only ASCII digits are accepted", other);
    }
}

} // namespace

void traverseOneTimeCode(const QByteArray &input)
{
    InputReader reader(input);
    Agreement agreement = {};
    agreement.t0 = reader.take<quint64>();
    agreement.step = reader.take<quint32>();
    agreement.digits = reader.takeChoice(256) - 128;
    const auto tolerance = static_cast<quint32>(reader.takeChoice(4));
    now = reader.take<qint64>();
    agreement.key = reader.takeBlock();
    const QByteArray rest = reader.takeRest();
    checkMac(agreement.key, rest, rest.size() / 2);
    checkNumber(rest, agreement.digits);
    checkMadeCode(agreement, tolerance);
    checkCodeOfStepBefore(agreement, tolerance);
    checkAnyCode(InputReader(rest).takeText(), agreement, tolerance);
}
