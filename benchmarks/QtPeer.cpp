// SPDX-License-Identifier: MIT
#include "QtPeer.h"

#include <QDateTime>
#include <QHostAddress>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>

namespace {

constexpr int string32Units = 32;

// 8- and 16-bit integers become an int.
template<typename T>
QVariant load(const QByteArray &bytes)
{
    return bytes.size() == int(sizeof(T)) ? QVariant(qFromLittleEndian<T>(bytes.constData())) : QVariant();
}

template<typename T>
QByteArray store(T value)
{
    QByteArray bytes(int(sizeof value), Qt::Uninitialized);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QString textOfField(const QByteArray &bytes)
{
    const auto *const units = reinterpret_cast<const QChar *>(bytes.constData());
    const auto *const end = std::find(units, units + bytes.size() / 2, QChar(0));
    return QString(units, int(end - units));
}

QByteArray fieldOfText(const QString &text)
{
    QByteArray bytes(2 * string32Units, '\0');
    std::memcpy(bytes.data(), text.utf16(), std::size_t(2 * std::min(string32Units, text.size())));
    return bytes;
}

// A date-time word: from the lowest byte hundredths, second, minute, hour, day, month, and 16 bits of year.
QString dateTimeText(quint64 word)
{
    const auto byte = [word](int number) { return int((word >> 8 * number) & 0xFF); };
    const QDateTime dateTime(QDate(int(word >> 48), byte(5), byte(4)),
                             QTime(byte(3), byte(2), byte(1), 10 * byte(0)));
    return dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

quint64 dateTimeWord(const QString &text)
{
    const QDateTime dateTime = QDateTime::fromString(text, Qt::ISODate);
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    return quint64(date.year()) << 48 | quint64(date.month()) << 40 | quint64(date.day()) << 32
           | quint64(time.hour()) << 24 | quint64(time.minute()) << 16 | quint64(time.second()) << 8
           | quint64(time.msec() / 10);
}

QString versionText(quint32 word)
{
    return QStringLiteral("%1.%2.%3").arg(word >> 24).arg((word >> 16) & 0xFF).arg(word & 0xFFFF);
}

quint32 versionWord(const QString &text)
{
    const QVector<QStringRef> parts = text.splitRef(QLatin1Char('.'));
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
    case NTypes::E_DATETIME:
        return {load<quint64>(bytes), type};
    case NTypes::E_I64:
        return {load<qint64>(bytes), type};
    case NTypes::E_F64:
        return {load<double>(bytes), type};
    case NTypes::E_STRING32:
        return {textOfField(bytes), type};
    case NTypes::E_BYTEARRAY:
        return {bytes, type};
    default:
        return {};
    }
}

QtPeer QtPeer::fromText(const QString &text, NTypes::eTypes_t type)
{
    bool ok = false;
    switch (type) {
    case NTypes::E_U8:
        return {quint8(text.toUInt(&ok, 0)), type};
    case NTypes::E_I8:
        return {qint8(text.toInt(&ok, 0)), type};
    case NTypes::E_U16:
        return {quint16(text.toUInt(&ok, 0)), type};
    case NTypes::E_I16:
        return {qint16(text.toInt(&ok, 0)), type};
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
        return {text.left(string32Units), type};
    case NTypes::E_VERSION:
        return {versionWord(text), type};
    case NTypes::E_IPV4ADDR:
        return {QHostAddress(text).toIPv4Address(), type};
    case NTypes::E_DATETIME:
        return {dateTimeWord(text), type};
    case NTypes::E_BYTEARRAY:
        return {QByteArray::fromHex(text.toLatin1()), type};
    default:
        return {};
    }
}

QString QtPeer::toText() const
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_I8:
    case NTypes::E_U16:
    case NTypes::E_I16:
    case NTypes::E_I32:
        return QString::number(value.toInt());
    case NTypes::E_U32:
        return QString::number(value.toUInt());
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
        return dateTimeText(value.toULongLong());
    case NTypes::E_BYTEARRAY:
        return QString::fromLatin1(value.toByteArray().toHex());
    default:
        return {};
    }
}

bool QtPeer::equals(const QtPeer &other) const
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_I8:
    case NTypes::E_U16:
    case NTypes::E_I16:
    case NTypes::E_I32:
        return value.toInt() == other.value.toInt();
    case NTypes::E_U32:
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
        return value.toUInt() == other.value.toUInt();
    case NTypes::E_F32:
        return std::fabs(value.toFloat() - other.value.toFloat()) <= FLT_EPSILON;
    case NTypes::E_U64:
    case NTypes::E_DATETIME:
        return value.toULongLong() == other.value.toULongLong();
    case NTypes::E_I64:
        return value.toLongLong() == other.value.toLongLong();
    case NTypes::E_F64:
        return std::fabs(value.toDouble() - other.value.toDouble()) <= DBL_EPSILON;
    default:
        return value == other.value;
    }
}

bool QtPeer::canConvertTo(NTypes::eTypes_t target) const
{
    if (target == type)
        return true;
    const bool isNumber = type >= NTypes::E_U8 && type <= NTypes::E_F64;
    switch (target) {
    case NTypes::E_U8:
    case NTypes::E_I8:
    case NTypes::E_U16:
    case NTypes::E_I16:
    case NTypes::E_I32:
        return type != NTypes::E_STRING32 && value.canConvert(QMetaType::Int);
    case NTypes::E_U32:
        return type != NTypes::E_STRING32 && value.canConvert(QMetaType::UInt);
    case NTypes::E_U64:
    case NTypes::E_I64:
        return type != NTypes::E_STRING32 && value.canConvert(QMetaType::LongLong);
    case NTypes::E_F32:
    case NTypes::E_F64:
        return type != NTypes::E_STRING32 && value.canConvert(QMetaType::Double);
    case NTypes::E_STRING32:
        return type == NTypes::E_BYTEARRAY;
    case NTypes::E_CHARSTR64:
        return isNumber || type == NTypes::E_VERSION || type == NTypes::E_DATETIME
               || type == NTypes::E_BYTEARRAY;
    case NTypes::E_DATETIME:
        return type == NTypes::E_U64 || type == NTypes::E_I64 || type == NTypes::E_BYTEARRAY;
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
        return type == NTypes::E_U32 || type == NTypes::E_I32 || type == NTypes::E_BYTEARRAY;
    default:
        return false;
    }
}

QByteArray QtPeer::toBytes() const
{
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_I8:
        return store(qint8(value.toInt()));
    case NTypes::E_U16:
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
    case NTypes::E_DATETIME:
        return store(value.toULongLong());
    case NTypes::E_I64:
        return store(value.toLongLong());
    case NTypes::E_F64:
        return store(value.toDouble());
    case NTypes::E_STRING32:
        return fieldOfText(value.toString());
    case NTypes::E_BYTEARRAY:
        return value.toByteArray();
    default:
        return {};
    }
}

QDataStream &operator<<(QDataStream &stream, const QtPeer &peer)
{
    return stream << peer.value << qint32(peer.type);
}

QDataStream &operator>>(QDataStream &stream, QtPeer &peer)
{
    qint32 type = 0;
    stream >> peer.value >> type;
    peer.type = static_cast<NTypes::eTypes_t>(type);
    return stream;
}
