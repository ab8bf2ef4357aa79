// SPDX-License-Identifier: MIT
#include "QtPeer.h"

#include <QDateTime>
#include <QHostAddress>
#include <QStringList>
#include <QtEndian>

#include <cfloat>
#include <cmath>
#include <cstring>

namespace {

template<typename T>
QVariant load(const QByteArray &bytes)
{
    return bytes.size() == int(sizeof(T)) ? QVariant::fromValue(qFromLittleEndian<T>(bytes.constData()))
                                          : QVariant();
}

template<typename T>
QByteArray store(T value)
{
    QByteArray bytes(int(sizeof value), Qt::Uninitialized);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QVariant textField(const QByteArray &bytes)
{
    const QString text(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2);
    const int end = text.indexOf(QChar(0));
    return end < 0 ? text : text.left(end);
}

QVariant dateTimeField(const QByteArray &bytes)
{
    const auto *b = reinterpret_cast<const uchar *>(bytes.constData());
    return QDateTime(QDate(qFromLittleEndian<quint16>(b + 6), b[5], b[4]),
                     QTime(b[3], b[2], b[1], b[0] * 10));
}

QByteArray dateTimeBytes(const QDateTime &dateTime)
{
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    QByteArray bytes(8, Qt::Uninitialized);
    bytes[0] = char(time.msec() / 10);
    bytes[1] = char(time.second());
    bytes[2] = char(time.minute());
    bytes[3] = char(time.hour());
    bytes[4] = char(date.day());
    bytes[5] = char(date.month());
    qToLittleEndian<quint16>(quint16(date.year()), bytes.data() + 6);
    return bytes;
}

QString versionText(quint32 version)
{
    return QStringLiteral("%1.%2.%3").arg(version >> 24).arg((version >> 16) & 0xFF).arg(version & 0xFFFF);
}

quint32 versionOf(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return parts.size() == 3 ? parts[0].toUInt() << 24 | parts[1].toUInt() << 16 | parts[2].toUInt() : 0;
}

} // namespace

QtPeer QtPeer::fromBytes(const QByteArray &bytes, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_U8:
        return {load<quint8>(bytes), type};
    case NTypes::E_I8:
        return {load<qint8>(bytes), type};
    case NTypes::E_U16:
        return {load<quint16>(bytes), type};
    case NTypes::E_I16:
        return {load<qint16>(bytes), type};
    case NTypes::E_U32:
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
        return {load<quint32>(bytes), type};
    case NTypes::E_I32:
        return {load<qint32>(bytes), type};
    case NTypes::E_F32:
        return {load<float>(bytes), type};
    case NTypes::E_U64:
        return {load<quint64>(bytes), type};
    case NTypes::E_I64:
        return {load<qint64>(bytes), type};
    case NTypes::E_F64:
        return {load<double>(bytes), type};
    case NTypes::E_STRING32:
        return {textField(bytes), type};
    case NTypes::E_DATETIME:
        return {dateTimeField(bytes), type};
    default:
        return {};
    }
}

QtPeer QtPeer::fromText(const QString &text, NTypes::eTypes_t type)
{
    bool ok = false;
    switch (type) {
    case NTypes::E_U8:
        return {QVariant::fromValue(quint8(text.toUInt(&ok, 0))), type};
    case NTypes::E_I8:
        return {QVariant::fromValue(qint8(text.toInt(&ok, 0))), type};
    case NTypes::E_U16:
        return {QVariant::fromValue(quint16(text.toUInt(&ok, 0))), type};
    case NTypes::E_I16:
        return {QVariant::fromValue(qint16(text.toInt(&ok, 0))), type};
    case NTypes::E_U32:
        return {text.toUInt(&ok, 0), type};
    case NTypes::E_I32:
        return {text.toInt(&ok, 0), type};
    case NTypes::E_F32:
        return {text.toFloat(&ok), type};
    case NTypes::E_U64:
        return {text.toULongLong(&ok, 0), type};
    case NTypes::E_I64:
        return {text.toLongLong(&ok, 0), type};
    case NTypes::E_F64:
        return {text.toDouble(&ok), type};
    case NTypes::E_STRING32:
        return {text, type};
    case NTypes::E_VERSION:
        return {versionOf(text), type};
    case NTypes::E_IPV4ADDR:
        return {QHostAddress(text).toIPv4Address(), type};
    case NTypes::E_DATETIME:
        return {QDateTime::fromString(text, Qt::ISODate), type};
    default:
        return {};
    }
}

QString QtPeer::toText() const
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_U16:
    case NTypes::E_U32:
        return QString::number(value.toUInt());
    case NTypes::E_I8:
    case NTypes::E_I16:
    case NTypes::E_I32:
        return QString::number(value.toInt());
    case NTypes::E_F32:
        return QString::number(double(value.toFloat()), 'g', 6);
    case NTypes::E_U64:
        return QString::number(value.toULongLong());
    case NTypes::E_I64:
        return QString::number(value.toLongLong());
    case NTypes::E_F64:
        return QString::number(value.toDouble(), 'g', 15);
    case NTypes::E_STRING32:
        return value.toString();
    case NTypes::E_VERSION:
        return versionText(value.toUInt());
    case NTypes::E_IPV4ADDR:
        return QHostAddress(value.toUInt()).toString();
    case NTypes::E_DATETIME:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    default:
        return {};
    }
}

bool QtPeer::equals(const QtPeer &other) const
{
    switch (type) {
    case NTypes::E_F32:
        return std::fabs(value.toFloat() - other.value.toFloat()) <= FLT_EPSILON;
    case NTypes::E_F64:
        return std::fabs(value.toDouble() - other.value.toDouble()) <= DBL_EPSILON;
    case NTypes::E_U64:
        return value.toULongLong() == other.value.toULongLong();
    case NTypes::E_U8:
    case NTypes::E_U16:
    case NTypes::E_U32:
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
        return value.toUInt() == other.value.toUInt();
    case NTypes::E_I8:
    case NTypes::E_I16:
    case NTypes::E_I32:
        return value.toInt() == other.value.toInt();
    case NTypes::E_I64:
        return value.toLongLong() == other.value.toLongLong();
    default:
        return value == other.value;
    }
}

QByteArray QtPeer::toBytes() const
{
    switch (type) {
    case NTypes::E_U8:
        return store(quint8(value.toUInt()));
    case NTypes::E_I8:
        return store(qint8(value.toInt()));
    case NTypes::E_U16:
        return store(quint16(value.toUInt()));
    case NTypes::E_I16:
        return store(qint16(value.toInt()));
    case NTypes::E_U32:
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
        return store(value.toUInt());
    case NTypes::E_I32:
        return store(value.toInt());
    case NTypes::E_F32:
        return store(value.toFloat());
    case NTypes::E_U64:
        return store(value.toULongLong());
    case NTypes::E_I64:
        return store(value.toLongLong());
    case NTypes::E_F64:
        return store(value.toDouble());
    case NTypes::E_STRING32: {
        QByteArray bytes(64, '\0');
        const QString text = value.toString();
        std::memcpy(bytes.data(), text.utf16(), size_t(qMin(64, 2 * text.size())));
        return bytes;
    }
    case NTypes::E_DATETIME:
        return dateTimeBytes(value.toDateTime());
    default:
        return {};
    }
}
