// SPDX-License-Identifier: MIT
// The stream form, which may arrive from anywhere.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "NumberStream.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace {

// Qt writes a QVariant as a type number, a null flag (since Qt 4.2), for user types their name, and the
// value.
constexpr int typeNumberSize = 4;
constexpr int nameLengthSize = 4;
constexpr quint32 longestName = 64; // with the terminating zero that is written

bool isOwnType(int type)
{
    const int ownTypes[] = {
        qMetaTypeId<CString32>(),
        qMetaTypeId<CString64>(),
        qMetaTypeId<CString128>(),
        qMetaTypeId<NTypes::sVersion_t>(),
        qMetaTypeId<NTypes::sVersion4_t>(),
        qMetaTypeId<NTypes::uIPv4HAddr_t>(),
        qMetaTypeId<NTypes::sCommand_t>(),
        qMetaTypeId<NTypes::sDateTime_t>(),
        qMetaTypeId<NTypes::sDs402Record01_t>(),
        qMetaTypeId<NTypes::sDs402Array_t<qint16>>(),
        qMetaTypeId<NTypes::sDs402Array_t<qint32>>(),
        qMetaTypeId<NTypes::sDs402Array_t<quint16>>(),
        qMetaTypeId<NTypes::sDs402Array_t<quint32>>(),
    };
    return std::find(std::begin(ownTypes), std::end(ownTypes), type) != std::end(ownTypes);
}

// Single values whose loading is bounded by the bytes that are there. Containers reserve what a length field
// says and nest without end; other values load files or function pointers.
bool isSingleValue(quint32 type)
{
    switch (type) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::Char:
    case QMetaType::ULong:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Float:
    case QMetaType::SChar:
    case QMetaType::QChar:
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QUuid:
    case QMetaType::QUrl:
    case QMetaType::QLocale:
    case QMetaType::QPoint:
    case QMetaType::QPointF:
    case QMetaType::QSize:
    case QMetaType::QSizeF:
    case QMetaType::QRect:
    case QMetaType::QRectF:
    case QMetaType::QLine:
    case QMetaType::QLineF:
        return true;
    default:
        return false;
    }
}

quint32 numberIn(const QDataStream &stream, const QByteArray &bytes, int position)
{
    const char *const data = bytes.constData() + position;
    return stream.byteOrder() == QDataStream::BigEndian ? qFromBigEndian<quint32>(data)
                                                        : qFromLittleEndian<quint32>(data);
}

// The meta-type number as this Qt counts: Qt 4 had the types beyond the first group elsewhere.
quint32 currentTypeNumber(const QDataStream &stream, quint32 written)
{
    constexpr quint32 qt4UserType = 127;
    constexpr quint32 qt4FirstExtension = 128;
    constexpr quint32 movedDownBy = 97;
    if (stream.version() >= QDataStream::Qt_5_0)
        return written;
    if (written == qt4UserType)
        return QMetaType::User;
    return written >= qt4FirstExtension && written != QMetaType::User ? written - movedDownBy : written;
}

// What to expect of the QVariant that begins at the stream's position, from a look ahead: Ok for a value that
// is safe to load, ReadCorruptData for one that is refused, ReadPastEnd when not even its type is there.
QDataStream::Status expected(const QDataStream &stream)
{
    QIODevice *const device = stream.device();
    if (device == nullptr)
        return QDataStream::ReadPastEnd;
    if (stream.version() < QDataStream::Qt_4_0)
        return QDataStream::ReadCorruptData;
    const int nameLengthAt = typeNumberSize + (stream.version() >= QDataStream::Qt_4_2 ? 1 : 0);
    const int nameAt = nameLengthAt + nameLengthSize;
    const QByteArray head = device->peek(nameAt + int(longestName));
    if (head.size() < typeNumberSize)
        return QDataStream::ReadPastEnd;

    const quint32 type = currentTypeNumber(stream, numberIn(stream, head, 0));
    if (type != QMetaType::User)
        return isSingleValue(type) ? QDataStream::Ok : QDataStream::ReadCorruptData;
    if (head.size() < nameAt)
        return QDataStream::ReadPastEnd;
    const quint32 length = numberIn(stream, head, nameLengthAt);
    if (length > longestName)
        return QDataStream::ReadCorruptData;
    const QByteArray name = head.mid(nameAt, int(length));
    if (name.size() < int(length))
        return QDataStream::ReadPastEnd;
    return isOwnType(QMetaType::type(name.constData())) ? QDataStream::Ok : QDataStream::ReadCorruptData;
}

} // namespace

QDataStream &operator<<(QDataStream &stream, const CVariant &value)
{
    if (!writeNumber(stream, value.mValue, value.mType))
        stream << value.mValue << static_cast<qint32>(value.mType);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, CVariant &value)
{
    value.clear();
    if (readNumber(stream, value.mValue, value.mType))
        return stream;
    const QDataStream::Status status = expected(stream);
    if (status != QDataStream::Ok) {
        stream.setStatus(status);
        return stream;
    }
    qint32 type = NTypes::E_UNKNOWN;
    stream >> value.mValue >> type;
    value.mType = static_cast<NTypes::eTypes_t>(type);
    if (stream.status() != QDataStream::Ok)
        value.clear();
    return stream;
}
