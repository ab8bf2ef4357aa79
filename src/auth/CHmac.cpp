// SPDX-License-Identifier: MIT
#include <CHmac.h>

#include "OneTimeCode.h"

#include <QDateTime>

namespace {

// The one place that looks at the clock.
qint64 systemClock()
{
    return QDateTime::currentMSecsSinceEpoch();
}

} // namespace

CHmac::CHmac(QCryptographicHash::Algorithm method, const QByteArray &key) : mMac(method, key) {}

CHmac::~CHmac() = default;

void CHmac::setKey(const QByteArray &key)
{
    mMac.setKey(key);
}

void CHmac::addData(const QByteArray &data)
{
    mMac.addData(data);
}

void CHmac::resetData()
{
    mMac.reset();
}

QByteArray CHmac::result() const
{
    return mMac.result();
}

QByteArray CHmac::hmac(const QByteArray &message, QCryptographicHash::Algorithm method, const QByteArray &key)
{
    return QMessageAuthenticationCode::hash(message, key, method);
}

QByteArray CHmac::hmacSha1(const QByteArray &message, const QByteArray &key)
{
    return hmac(message, QCryptographicHash::Sha1, key).toBase64();
}

unsigned int CHmac::hotp(const QByteArray &mac, int digits)
{
    return OneTimeCode::codeOfMac(mac, digits);
}

unsigned int CHmac::totp(const QByteArray &key, unsigned long long t0, unsigned int step, int digits)
{
    return OneTimeCode::codeAt(systemClock(), {key, t0, step, digits});
}

QString CHmac::totpStr(const QByteArray &key, unsigned long long t0, unsigned int step, int digits)
{
    return OneTimeCode::textOfCode(totp(key, t0, step, digits), digits);
}

int CHmac::validateTotp(const QString &code, const QByteArray &key, unsigned long long t0, unsigned int step,
                        int digits, unsigned int tolerance)
{
    return OneTimeCode::validate(code, {key, t0, step, digits}, tolerance, systemClock);
}
