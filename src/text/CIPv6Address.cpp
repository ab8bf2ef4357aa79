// SPDX-License-Identifier: MIT
#include <CIPv6Address.h>

#include "diagnostics/LogLine.h"

#include <QDataStream>
#include <QDebug>
#include <QRegExp>
#include <QStringList>

#include <algorithm>
#include <cstring>

namespace {

constexpr int groupCount = 8;

// An expression of its own for every call: matching writes into it. Qt keeps the compiled form.
bool passesForAnAddress(const QString &text)
{
    QRegExp expression(QStringLiteral("^([0-9a-fA-F]{1,4}|:|0)(:([0-9a-fA-F]{0,4})|){7}$"));
    return expression.indexIn(text) == 0;
}

} // namespace

CIPv6Address::CIPv6Address() = default;

CIPv6Address::CIPv6Address(const CIPv6Address &other) = default;

CIPv6Address::CIPv6Address(const unsigned char *bytes)
{
    setAddress(bytes);
}

CIPv6Address::CIPv6Address(const QByteArray &bytes)
{
    setAddress(bytes);
}

CIPv6Address::CIPv6Address(const QVariant &variant)
{
    setAddress(variant);
}

CIPv6Address::CIPv6Address(const QString &text)
{
    setAddress(text);
}

CIPv6Address::~CIPv6Address() = default;

CIPv6Address &CIPv6Address::operator=(const CIPv6Address &other) = default;

CIPv6Address &CIPv6Address::operator=(const QVariant &variant)
{
    setAddress(variant);
    return *this;
}

CIPv6Address &CIPv6Address::operator=(const QString &text)
{
    setAddress(text);
    return *this;
}

void CIPv6Address::setAddress(const unsigned char *bytes)
{
    if (bytes != nullptr)
        std::memmove(mBytes.data(), bytes, mBytes.size()); // they may be its own
}

void CIPv6Address::setAddress(const QByteArray &bytes)
{
    if (bytes.size() == byteCount)
        std::copy(bytes.cbegin(), bytes.cend(), mBytes.begin());
}

void CIPv6Address::setAddress(const QVariant &variant)
{
    if (variant.userType() == QMetaType::QByteArray)
        setAddress(variant.toByteArray());
    else
        clear();
}

bool CIPv6Address::setAddress(const QString &text)
{
    if (!passesForAnAddress(text)) {
        clear();
        logWarning(QStringLiteral("CIPv6Address::setAddress() : %1 is not a IPv6-Address.").arg(text));
        return false;
    }
    const QStringList groups = text.split(QLatin1Char(':'));
    if (groups.size() != groupCount)
        return true;
    for (int i = 0; i < groupCount; ++i) {
        if (groups[i].isEmpty())
            continue;
        const uint number = groups[i].toUInt(nullptr, 16);
        (*this)[2 * i] = static_cast<unsigned char>(number);
        (*this)[2 * i + 1] = static_cast<unsigned char>(number >> 8);
    }
    return true;
}

QString CIPv6Address::str() const
{
    QStringList groups;
    for (int i = 0; i < groupCount; ++i)
        groups += QString::number((*this)[2 * i] + 256 * (*this)[2 * i + 1], 16);
    return groups.join(QLatin1Char(':'));
}

QByteArray CIPv6Address::byteArray() const
{
    return QByteArray(reinterpret_cast<const char *>(mBytes.data()), byteCount);
}

void CIPv6Address::clear()
{
    mBytes.fill(0);
}

QDataStream &operator<<(QDataStream &stream, const CIPv6Address &address)
{
    for (const unsigned char byte : address.mBytes)
        stream << static_cast<qint8>(byte);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, CIPv6Address &address)
{
    for (unsigned char &byte : address.mBytes) {
        qint8 value = 0;
        stream >> value;
        byte = static_cast<unsigned char>(value);
    }
    return stream;
}

QDebug operator<<(QDebug debug, const CIPv6Address &address)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << QStringLiteral("CIPv6Address(%1)").arg(address.str());
    return debug;
}
