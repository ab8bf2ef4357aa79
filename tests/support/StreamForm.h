// SPDX-License-Identifier: MIT
#ifndef STREAMFORM_H
#define STREAMFORM_H

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QMetaType>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)

// The bytes that a value's stream operator writes.
template<typename Value>
QByteArray streamed(const Value &value, QDataStream::ByteOrder order = QDataStream::BigEndian,
                    int version = QDataStream::Qt_5_15)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream.setVersion(version);
    stream << value;
    return bytes;
}

// Reads a value from the start of the bytes. What the reading left over is in `rest`.
template<typename Value>
QDataStream::Status readFrom(const QByteArray &bytes, Value &value,
                             QDataStream::ByteOrder order = QDataStream::BigEndian,
                             int version = QDataStream::Qt_5_15, QByteArray *rest = nullptr)
{
    QDataStream stream(bytes);
    stream.setByteOrder(order);
    stream.setVersion(version);
    stream >> value;
    if (rest != nullptr)
        *rest = stream.device()->readAll();
    return stream.status();
}

#endif // STREAMFORM_H
